#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace genvara {

/// Why a file could not be saved under a name, found out before anything is written: "its folder does not
/// exist". A user's file is an ordinary one, so that a folder, a device or a pipe of that name is an obstacle
/// too.
/// @return the end of a sentence; nothing if the file can be saved, as far as one can know without writing
/// it.
[[nodiscard]] std::optional<std::string> WriteObstacle(const std::filesystem::path& file);

/// The same for a failure that showed only while the file was written.
/// @param systemError its number, an errno value, or 53 for what is not there.
/// @param description the system's own words, for a number that is none of the usual ones.
[[nodiscard]] std::string WriteObstacle(const std::filesystem::path& file, int systemError,
                                        const std::string& description);

}  // namespace genvara
