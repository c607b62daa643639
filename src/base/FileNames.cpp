#include "FileNames.h"

#include <algorithm>

namespace genvara {
namespace {

/// Most bytes of a name without its extension: what all file systems take, with room for a number behind it.
constexpr std::size_t kMostBytes = 200;
/// What file names of other systems cannot hold either.
constexpr std::string_view kForbidden = "/\\:*?\"<>|";

bool IsForbidden(char byte) {
    return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F' ||
           kForbidden.find(byte) != std::string_view::npos;
}

/// Cut between two characters.
std::string_view CutTo(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return text;
    }
    const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
    while (most > 0 && isInside(text[most])) {
        --most;
    }
    return text.substr(0, most);
}

}  // namespace

std::string FileNameFor(std::string_view name, std::string_view extension) {
    std::string file(name);
    std::ranges::replace_if(file, IsForbidden, '-');
    const std::size_t first =
        file.find_first_not_of(" .-");  // a point hides a file, a hyphen looks like an option
    if (first == std::string::npos) {
        return {};
    }
    file = CutTo(std::string_view(file).substr(first), kMostBytes);
    file.erase(file.find_last_not_of(" .") + 1);
    return file + std::string(extension);
}

}  // namespace genvara
