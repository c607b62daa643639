#pragma once

#include <optional>
#include <string>

#include "Explain.h"
#include "JsonText.h"

namespace genvara {

/// The member "Tightest" with name, step and margin; null without any.
void TightestMember(JsonText& json, const std::optional<Tightest>& tightest);

/// An explanation as one JSON object on one line: how many candidates there were, and each set that was asked
/// for with every test at every step.
[[nodiscard]] std::string ExplanationJson(const std::string& file, const Explanation& explanation);

}  // namespace genvara
