#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CodePage.h"

namespace genvara {

/// A text made of arbitrary numbers: mostly ASCII and its neighbours, control characters and line ends among
/// them, and one in seven from all of the characters that there are.
[[nodiscard]] inline std::string TextOf(const std::vector<std::uint32_t>& codes) {
    std::string text;
    for (const std::uint32_t code : codes) {
        const std::uint32_t character = code % 7 == 0 ? code % 0x110000 : code % 0x180;
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        AppendUtf8(text, surrogate ? U'?' : static_cast<char32_t>(character));
    }
    return text;
}

/// A text with each of its line ends (CR LF, CR, LF) as LF, as a reader shows it.
[[nodiscard]] inline std::string WithLineFeeds(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            shown += '\n';
            i += text.substr(i + 1).starts_with('\n') ? 1 : 0;
        } else {
            shown += text[i];
        }
    }
    return shown;
}

}  // namespace genvara
