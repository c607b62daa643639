#include "Names.h"

#include <cctype>
#include <cstddef>

namespace genvara::python {
namespace {

bool IsUpper(char character) {
    return std::isupper(static_cast<unsigned char>(character)) != 0;
}

bool IsLower(char character) {
    return std::islower(static_cast<unsigned char>(character)) != 0;
}

bool IsWordMark(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

/// Whether a word begins at a capital: behind a small letter, or as the last of several capitals unless these
/// are an abbreviation in the plural.
bool BeginsWord(std::string_view name, std::size_t at) {
    if (at == 0 || !IsUpper(name[at]) || name[at - 1] == '_') {
        return false;
    }
    if (!IsUpper(name[at - 1])) {
        return true;
    }
    const std::string_view rest = name.substr(at + 1);
    return !rest.empty() && IsLower(rest.front()) && rest != "s";
}

}  // namespace

std::string SnakeCase(std::string_view name) {
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (BeginsWord(name, i)) {
            text += '_';
        }
        text += static_cast<char>(std::tolower(static_cast<unsigned char>(name[i])));
    }
    return text;
}

std::string ConstantName(std::string_view caption) {
    std::string text;
    if (caption.starts_with('>')) {
        text = "ABOVE";
    }
    bool gap = !text.empty();
    for (const char character : caption) {
        if (!IsWordMark(character)) {
            gap = !text.empty();
            continue;
        }
        if (gap) {
            text += '_';
        }
        gap = false;
        text += static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    }
    return !text.empty() && std::isdigit(static_cast<unsigned char>(text.front())) != 0 ? "N" + text : text;
}

}  // namespace genvara::python
