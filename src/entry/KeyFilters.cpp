#include "KeyFilters.h"

#include "CodePage.h"

namespace genvara {
namespace {

bool IsDigit(char32_t key) noexcept {
    return key >= U'0' && key <= U'9';
}

KeyVerdict PassIf(bool accepted) noexcept {
    return accepted ? KeyVerdict::Pass : KeyVerdict::Refuse;
}

}  // namespace

KeyVerdict NumericKeyFilter(std::string_view text, char32_t key, std::string_view separator) {
    const std::u32string separators = DecodeUtf8(separator);
    const bool isSeparator = !separators.empty() && key == separators.front();
    if (!isSeparator) {
        return PassIf(key == kBackspace || IsDigit(key));
    }
    return PassIf(DecodeUtf8(text).find(key) == std::u32string::npos);
}

KeyVerdict DigitKeyFilter(char32_t key) noexcept {
    return PassIf(key == kBackspace || IsDigit(key));
}

KeyVerdict NonZeroDigitKeyFilter(std::string_view text, char32_t key) noexcept {
    const bool blank = text.find_first_not_of(' ') == std::string_view::npos;
    return key == U'0' && blank ? KeyVerdict::Refuse : DigitKeyFilter(key);
}

KeyVerdict MaxLengthKeyFilter(std::size_t textLength, std::size_t selectionLength, std::size_t most,
                              char32_t key) noexcept {
    return PassIf(textLength < most || key == kBackspace || selectionLength > 0);
}

std::string StripAtNull(std::string_view text) {
    const std::size_t end = text.find('\0');
    return std::string(end == std::string_view::npos ? std::string_view{} : text.substr(0, end));
}

}  // namespace genvara
