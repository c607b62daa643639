#pragma once

#include <string>
#include <string_view>

namespace genvara {

/// A file name for something that has a name of its own, such as a project: what a file name cannot hold, or
/// what a shell or another system stumbles over, becomes a hyphen, and a long one is cut.
/// @param name UTF-8.
/// @param extension with its point, as in ".prj".
/// @return empty if nothing of the name is left.
[[nodiscard]] std::string FileNameFor(std::string_view name, std::string_view extension);

}  // namespace genvara
