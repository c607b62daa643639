#pragma once

#include <string>

#include "Explain.h"

namespace genvara {

/// An explanation as one JSON object on one line: how many candidates there were, and each set that was asked
/// for with every test at every step.
[[nodiscard]] std::string ExplanationJson(const std::string& file, const Explanation& explanation);

}  // namespace genvara
