#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "FileIdentity.h"

namespace genvara {

/// What `-o` stands for where it names no file.
inline constexpr std::string_view kStandardOutput = "-";

/// What a command writes: what it is, and the endings that say so, in small letters.
struct OutputKind {
    std::string_view meaning;
    std::span<const std::string_view> endings;
};

/// A sentence on why a command must not write a file, or nothing: it is one of its inputs, by whatever name,
/// or its ending promises another kind of file. Endings that promise nothing are nobody's business.
[[nodiscard]] std::optional<std::string> RefusalOf(const std::string& output, const OutputKind& kind,
                                                   std::span<const InputFile> inputs);

}  // namespace genvara
