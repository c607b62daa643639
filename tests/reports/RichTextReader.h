#pragma once

#include <cstdlib>
#include <string>

#include "CodePage.h"

namespace genvara {

/// The text of a rich text as a reader shows it, UTF-8: paragraphs and line breaks as LF, tabs as tabs.
[[nodiscard]] inline std::string ShownText(const std::string& rich) {
    std::string text;
    char32_t high = 0;
    const auto add = [&](char32_t unit) {
        if (unit >= 0xD800 && unit < 0xDC00) {
            high = unit;
        } else if (unit >= 0xDC00 && unit < 0xE000) {
            AppendUtf8(text, 0x10000 + ((high - 0xD800) << 10U) + (unit - 0xDC00));
        } else {
            AppendUtf8(text, unit);
        }
    };
    for (std::size_t i = rich.find("}}") + 2; i < rich.size(); ++i) {
        const char byte = rich[i];
        if (byte == '\\' && rich[i + 1] == '\'') {
            text +=
                DecodeText(std::string(1, static_cast<char>(std::stoi(rich.substr(i + 2, 2), nullptr, 16))));
            i += 3;
        } else if (byte == '\\' && (rich[i + 1] == '\\' || rich[i + 1] == '{' || rich[i + 1] == '}')) {
            text += rich[++i];
        } else if (byte == '\\') {
            std::size_t end = i + 1;
            while (end < rich.size() && std::isalpha(static_cast<unsigned char>(rich[end])) != 0) {
                ++end;
            }
            const std::string word = rich.substr(i + 1, end - i - 1);
            const std::size_t digits = rich.find_first_not_of("-0123456789", end);
            if (word == "u") {
                add(static_cast<char32_t>(std::stoi(rich.substr(end, digits - end)) & 0xFFFF));
                i = digits;  // at the question mark
                continue;
            }
            text += word == "par" || word == "line" ? "\n" : word == "tab" ? "\t" : "";
            i = rich[digits] == ' ' ? digits : digits - 1;
        } else if (byte != '\r' && byte != '\n' && byte != '{' && byte != '}') {
            text += byte;
        }
    }
    return text;
}

}  // namespace genvara
