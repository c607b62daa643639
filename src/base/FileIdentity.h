#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace genvara {

/// Whether two names lead to one ordinary file, be it by another spelling, a symbolic link or a hard link. A
/// name that leads nowhere is no other's.
[[nodiscard]] bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) noexcept;

/// A file that a run reads, and what it is to the user, as in "the project".
struct InputFile {
    std::filesystem::path file;
    std::string_view meaning;
};

/// A sentence that refuses to write an output over an input of the same run, by whatever name, or nothing.
/// Asked before the run, so that a slip of the hand costs no file.
[[nodiscard]] std::optional<std::string> OverwriteRefusal(const std::filesystem::path& output,
                                                          std::span<const InputFile> inputs);

}  // namespace genvara
