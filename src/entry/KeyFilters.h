#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Which typed characters entry fields take. All of it is told by the text alone; a refused key is dropped
/// with a beep by whoever asked.
namespace genvara {

/// The key code of the backspace, which every filter lets pass where it can do no harm.
inline constexpr char32_t kBackspace = 8;

enum class KeyVerdict { Pass, Refuse };

/// Digits, one decimal separator, and backspace. The minus sign is refused like any other character.
/// @param text what the field holds.
/// @param separator decimal separator of the user's locale, of which the first character counts.
[[nodiscard]] KeyVerdict NumericKeyFilter(std::string_view text, char32_t key, std::string_view separator);

/// Digits and backspace.
[[nodiscard]] KeyVerdict DigitKeyFilter(char32_t key) noexcept;

/// Digits and backspace, but no "0" as the first character of a field that is blank after trimming.
[[nodiscard]] KeyVerdict NonZeroDigitKeyFilter(std::string_view text, char32_t key) noexcept;

/// Refuses what would make the text longer than `most` characters; a selection is typed over, and so any key
/// passes while there is one.
[[nodiscard]] KeyVerdict MaxLengthKeyFilter(std::size_t textLength, std::size_t selectionLength,
                                            std::size_t most, char32_t key) noexcept;

/// The part before the first character of code 0. A text WITHOUT one gives an empty text.
[[nodiscard]] std::string StripAtNull(std::string_view text);

}  // namespace genvara
