#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Text in memory is UTF-8; project files, reports and profile files hold Windows-1252.
namespace genvara {

/// Text of the 8-bit code page, with the number of characters that it could not hold.
struct EncodedText {
    std::string bytes;
    std::size_t lostCharacters = 0;
};

/// The code page's byte for a character; nothing where it has none.
[[nodiscard]] std::optional<char> EncodeCharacter(char32_t character);

/// UTF-8 to Windows-1252; a character that the code page lacks becomes a question mark and is counted.
[[nodiscard]] EncodedText EncodeText(std::string_view utf8);

/// Windows-1252 to UTF-8. The five bytes without a character stand for the control codes of their number,
/// so that every byte survives a round trip.
[[nodiscard]] std::string DecodeText(std::string_view bytes);

/// The characters of a UTF-8 text; a byte that is no part of a valid sequence becomes U+FFFD.
[[nodiscard]] std::u32string DecodeUtf8(std::string_view utf8);

/// Whether a text is valid UTF-8 from its first byte to its last.
[[nodiscard]] bool IsUtf8(std::string_view text);

/// Appends one character to a UTF-8 text.
void AppendUtf8(std::string& text, char32_t character);

}  // namespace genvara
