#include "CodePage.h"

#include <iconv.h>

#include <array>
#include <cstdint>
#include <map>

namespace genvara {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// What the system's converter makes of one byte of Windows-1252; the byte's own number where it has no
/// answer.
char32_t ConvertByte(iconv_t converter, unsigned char byte) {
    auto input = static_cast<char>(byte);
    std::uint32_t output = 0;
    char* from = &input;
    char* to = reinterpret_cast<char*>(&output);  // NOLINT: iconv speaks bytes
    std::size_t fromLeft = 1;
    std::size_t toLeft = sizeof output;
    const bool converted = iconv(converter, &from, &fromLeft, &to, &toLeft) != static_cast<std::size_t>(-1);
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    return converted && toLeft == 0 ? output : byte;
}

/// Both directions of the code page, asked of the system's converter once.
struct CodePageMap {
    std::array<char32_t, 256> character{};
    std::map<char32_t, char> byte;

    CodePageMap() {
        iconv_t converter = iconv_open("WCHAR_T", "WINDOWS-1252");
        const bool available = converter != reinterpret_cast<iconv_t>(-1);  // NOLINT: the interface's failure
        for (unsigned code = 0; code < character.size(); ++code) {
            const auto value = static_cast<unsigned char>(code);
            character[code] = available ? ConvertByte(converter, value) : value;
            byte.emplace(character[code], static_cast<char>(value));
        }
        if (available) {
            iconv_close(converter);
        }
    }
};

const CodePageMap& Map() {
    static const CodePageMap map;
    return map;
}

/// Shape of a UTF-8 sequence by its first byte.
struct SequenceShape {
    unsigned char mask;
    unsigned char lead;
    std::size_t length;
    char32_t lowest;
};

constexpr std::array<SequenceShape, 4> kShapes{
    {{0x80, 0x00, 1, 0x0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

/// Takes one character from the front of a text that is not empty.
char32_t TakeCharacter(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    for (const SequenceShape& shape : kShapes) {
        if ((first & shape.mask) != shape.lead || text.size() < shape.length) {
            continue;
        }
        char32_t character = first & static_cast<unsigned char>(~shape.mask);
        bool valid = true;
        for (const char next : text.substr(1, shape.length - 1)) {
            valid = valid && (static_cast<unsigned char>(next) & 0xC0U) == 0x80U;
            character = (character << 6U) | (static_cast<unsigned char>(next) & 0x3FU);
        }
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        if (valid && character >= shape.lowest && character <= 0x10FFFF && !surrogate) {
            text.remove_prefix(shape.length);
            return character;
        }
    }
    text.remove_prefix(1);
    return kReplacement;
}

}  // namespace

std::optional<char> EncodeCharacter(char32_t character) {
    const auto found = Map().byte.find(character);
    return found == Map().byte.end() ? std::nullopt : std::optional(found->second);
}

EncodedText EncodeText(std::string_view utf8) {
    EncodedText encoded;
    encoded.bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const char32_t character = TakeCharacter(utf8);
        const std::optional<char> byte =
            character < 0x80 ? static_cast<char>(character) : EncodeCharacter(character);
        encoded.bytes += byte.value_or('?');
        encoded.lostCharacters += byte ? 0 : 1;
    }
    return encoded;
}

std::string DecodeText(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        AppendUtf8(text, Map().character[static_cast<unsigned char>(byte)]);
    }
    return text;
}

std::u32string DecodeUtf8(std::string_view utf8) {
    std::u32string characters;
    while (!utf8.empty()) {
        characters += TakeCharacter(utf8);
    }
    return characters;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t before = text.size();
        // A byte alone that reads as the replacement stands for one that is none.
        if (TakeCharacter(text) == kReplacement && before - text.size() == 1) {
            return false;
        }
    }
    return true;
}

void AppendUtf8(std::string& text, char32_t character) {
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | (character >> 6U));
        tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0U | (character >> 12U));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | (character >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace genvara
