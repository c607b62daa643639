#include "ProfileWriter.h"

#include <algorithm>
#include <cstddef>

namespace genvara {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool SameName(std::string_view one, std::string_view other) {
    const auto folded = [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    };
    return std::ranges::equal(one, other, {}, folded, folded);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A line without its end, by where it begins and stops in a content.
struct Line {
    std::size_t begin;
    std::size_t end;   ///< behind the last byte of the text
    std::size_t next;  ///< begin of the line after it
};

Line LineAt(std::string_view content, std::size_t begin) {
    const std::size_t end = std::min(content.find_first_of("\r\n", begin), content.size());
    const bool pair = content.substr(end).starts_with(kLineEnd);
    return {.begin = begin, .end = end, .next = std::min(end + (pair ? 2 : 1), content.size())};
}

std::string_view SectionName(std::string_view line) {
    const std::string_view text = Trimmed(line);
    const std::size_t close = text.find(']');
    return text.starts_with('[') && close != std::string_view::npos ? Trimmed(text.substr(1, close - 1))
                                                                    : std::string_view{};
}

bool IsSection(std::string_view line) {
    return Trimmed(line).starts_with('[');
}

void EndLastLine(std::string& content) {
    if (!content.empty() && content.back() != '\n' && content.back() != '\r') {
        content += kLineEnd;
    }
}

}  // namespace

std::string WithProfileValue(std::string content, std::string_view section, std::string_view key,
                             std::string_view value) {
    const std::string entry = std::string(key) + "=" + std::string(value);
    bool inSection = false;
    std::size_t insertAt = std::string::npos;
    for (std::size_t at = 0; at < content.size();) {
        const Line line = LineAt(content, at);
        const std::string_view text = std::string_view(content).substr(line.begin, line.end - line.begin);
        if (IsSection(text)) {
            if (inSection) {
                break;
            }
            inSection = SameName(SectionName(text), section);
            insertAt = inSection ? line.next : insertAt;
        } else if (inSection && !Trimmed(text).empty()) {
            const std::size_t equals = text.find('=');
            if (equals != std::string_view::npos && SameName(Trimmed(text.substr(0, equals)), key)) {
                const std::size_t valueAt = line.begin + equals + 1;
                return content.replace(valueAt, line.end - valueAt, value);
            }
            insertAt = line.next;
        }
        at = line.next;
    }
    if (!inSection) {
        EndLastLine(content);
        return content.append("[").append(section).append("]\r\n").append(entry).append(kLineEnd);
    }
    // A last line without an end would run into the new one.
    if (insertAt == content.size()) {
        EndLastLine(content);
        insertAt = content.size();
    }
    return content.insert(insertAt, entry + std::string(kLineEnd));
}

}  // namespace genvara
