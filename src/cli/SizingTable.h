#pragma once

#include <string>

#include "SizedProject.h"

namespace genvara {

/// File, project and site, a line each.
[[nodiscard]] std::string ProjectHeading(const std::string& file, const SizedProject& sized);

/// A sizing as an engineer reads it: the site, the load profile, the recommended sets with their loading and
/// worst figures against the limits, and the undersized sets with the reasons and what was missing most.
/// @throws RaisedError of a load whose figure cannot be worked out.
[[nodiscard]] std::string SizingTable(const std::string& file, const SizedProject& sized);

}  // namespace genvara
