#pragma once

#include <cstdint>
#include <string>

#include "Explain.h"
#include "ExplainCommand.h"
#include "SizedProject.h"

namespace genvara {

/// An explanation as an engineer reads it: how many sets there were to choose from, the first recommended set
/// beside the next smaller one, and for each set one line a test with its worst step.
/// @param minLoading least loading of a recommended set [percent].
[[nodiscard]] std::string ExplanationTable(const std::string& file, const SizedProject& sized,
                                           const Explanation& explanation, const ExplainArguments& arguments,
                                           std::int32_t minLoading);

}  // namespace genvara
