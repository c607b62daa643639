#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace genvara {

/// What tells whether a file is still what it was: size, time of its last change, and a hash of its bytes.
struct FileStamp {
    std::uintmax_t size = 0;
    std::int64_t changed = 0;  ///< in the file system's own ticks
    std::uint64_t hash = 0;    ///< 64-bit FNV-1a

    bool operator==(const FileStamp&) const = default;
};

/// The stamp of a file; nothing for one that is not there or cannot be read.
[[nodiscard]] std::optional<FileStamp> StampOf(const std::filesystem::path& file);

/// Whether a file that is there holds other bytes than it did. One that was written anew with the same bytes
/// does not, and its bytes are read only if size or time are others.
[[nodiscard]] bool HoldsOtherBytes(const std::filesystem::path& file, const FileStamp& than);

}  // namespace genvara
