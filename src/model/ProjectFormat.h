#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "ProjectSource.h"

namespace genvara {

/// What a project is kept in.
enum class ProjectFormat : std::uint8_t {
    Records,  ///< `.prj`: values by their position
    Json,     ///< `.json`: members by their names
};

/// The format that a file's ending names, in capitals or not; nothing for any other ending.
[[nodiscard]] std::optional<ProjectFormat> FormatOfName(const std::filesystem::path& file);

/// The format of a file that is there: JSON begins with a brace, whatever the file is called, and what is
/// called `.json` is meant to be JSON, whatever it begins with.
[[nodiscard]] ProjectFormat FormatOf(const PeekedSource& content, const std::filesystem::path& file);

}  // namespace genvara
