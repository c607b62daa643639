#include "FileIdentity.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>

namespace genvara {

bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) noexcept {
    struct stat first {};
    struct stat second {};
    return stat(one.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 && S_ISREG(first.st_mode) &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

std::optional<std::string> OverwriteRefusal(const std::filesystem::path& output,
                                            std::span<const InputFile> inputs) {
    const auto found =
        std::ranges::find_if(inputs, [&](const InputFile& input) { return IsSameFile(output, input.file); });
    if (found == inputs.end()) {
        return std::nullopt;
    }
    return fmt::format("{} is {} and is not written over.", output.string(), found->meaning);
}

}  // namespace genvara
