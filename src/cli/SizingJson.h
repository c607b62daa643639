#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "DesignResults.h"
#include "JsonText.h"
#include "SizedProject.h"

namespace genvara {

/// The whole of a sizing as one JSON object on one line: project, site, every step and load with its
/// figures, the run, and both lists.
/// @throws RaisedError of a load whose figure cannot be worked out.
[[nodiscard]] std::string SizingJson(const std::string& file, const SizedProject& sized);

/// A recommended set as the list of a sizing has it; null without one.
void SetMember(JsonText& json, std::string_view name, const std::optional<ChosenSet>& set);

/// The member "Error" with number, source and description.
void ErrorMember(JsonText& json, const RaisedError& failure);

/// The object that stands in the place of a project that failed.
[[nodiscard]] std::string ErrorJson(const std::string& file, const RaisedError& failure);

}  // namespace genvara
