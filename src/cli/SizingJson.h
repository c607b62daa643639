#pragma once

#include <string>

#include "SizedProject.h"

namespace genvara {

/// The whole of a sizing as one JSON object on one line: project, site, every step and load with its
/// figures, the run, and both lists.
/// @throws RaisedError of a load whose figure cannot be worked out.
[[nodiscard]] std::string SizingJson(const std::string& file, const SizedProject& sized);

/// The object that stands in the place of a project that failed.
[[nodiscard]] std::string ErrorJson(const std::string& file, const RaisedError& failure);

}  // namespace genvara
