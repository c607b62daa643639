#include "RichTextBuilder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

#include "CodePage.h"
#include "RichTextDocument.h"

namespace genvara {
namespace {

/// Fonts, page and defaults.
///
/// A Letter page with margins of 3/4 inch at the sides and 1/2 inch above and below leaves 10080 twips. The
/// widest lines need it: the rules (59 underscores of 14 points, 9300 twips) and three percentages of three
/// digits behind the last column's stop (7920 + 2000 twips). Without a page of its own each reader would take
/// its own default, and the usual one, 8640 twips wide, breaks these lines. The low margins keep a sizing
/// report with several reasons for rejection on one page.
///
/// A default tab of 900 twips brings the values behind "Project" with two tabs and "Customer" with one into
/// one column; letters set wider by a tenth of a point, which nobody sees, carry the label "Step Totals" past
/// the quantity's stop, so that its figures stand under their headings.
constexpr std::string_view kPrologue =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1"
    "{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\froman\\fcharset0 Times New Roman;}}\r\n"
    "\\paperw12240\\paperh15840\\margl1080\\margr1080\\margt720\\margb720\\deftab900\\expndtw2\\keep";

constexpr std::array<std::string_view, 2> kFaces{"Arial", "Times New Roman"};

struct AttributeWord {
    std::int32_t bit;
    std::string_view on;
    std::string_view off;
};
constexpr std::array<AttributeWord, 2> kAttributeWords{
    {{rich_text::kBold, "\\b", "\\b0"}, {rich_text::kItalic, "\\i", "\\i0"}}};

/// A character that stands for itself.
bool IsPlain(char byte) noexcept {
    return byte >= 0x20 && byte < 0x7F && byte != '\\' && byte != '{' && byte != '}';
}

bool IsBeyondAscii(char byte) noexcept {
    return static_cast<unsigned char>(byte) >= 0x80;
}

/// Bytes at the front of a text that are of a kind.
std::size_t Leading(std::string_view text, bool (*isOfKind)(char) noexcept) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, isOfKind) - text.begin());
}

}  // namespace

RichTextBuilder::RichTextBuilder() : m_text(kPrologue) {}

void RichTextBuilder::Word(std::string_view word) {
    if (m_closed) {
        return;
    }
    m_paragraph.text += word;
    m_afterWord = m_afterWord || !word.empty();
}

/// A word that stands before a paragraph's text, on it and those that follow.
void RichTextBuilder::ParagraphWord(std::string_view word) {
    Word(word);
    m_paragraph.wordsTo = m_paragraph.text.size();
}

void RichTextBuilder::BeginSection() {
    ParagraphWord("\\sectd");
}

void RichTextBuilder::Alignment(std::string_view word) {
    ParagraphWord(word);
    m_paragraph.alignment = word;
}

void RichTextBuilder::TabStop(std::string_view type, std::int32_t position) {
    const std::string stop = fmt::format("{}\\tx{}", type, position);
    ParagraphWord(stop);
    m_paragraph.stops += stop;
}

void RichTextBuilder::ResetParagraph() {
    ParagraphWord(kPlainParagraph);
    m_paragraph.resets = true;
    m_paragraph.alignment = {};
    m_paragraph.stops.clear();
}

void RichTextBuilder::Font(std::string_view face, std::int32_t size, std::int32_t mask, std::int32_t value) {
    const auto* const found = std::ranges::find(kFaces, face);
    if (found != kFaces.end() && m_face != face) {
        m_face = *found;
        Word(fmt::format("\\f{}", found - kFaces.begin()));
    }
    if (size != 0 && m_size != size) {
        m_size = size;
        Word(fmt::format("\\fs{}", 2 * size));
    }
    for (const AttributeWord& attribute : kAttributeWords) {
        const bool on = value != rich_text::kOff;
        if ((mask & attribute.bit) != 0 && ((m_attributes & attribute.bit) != 0) != on) {
            m_attributes ^= attribute.bit;
            Word(on ? attribute.on : attribute.off);
        }
    }
}

void RichTextBuilder::Insert(std::string_view text) {
    if (!m_takesText) {
        return;
    }
    while (!text.empty()) {
        std::size_t taken = Leading(text, IsPlain);
        if (taken > 0) {
            PlainRun(text.substr(0, taken));
        } else if (text.starts_with("\r\n")) {
            EndParagraph();
            taken = 2;
        } else {
            taken = std::max<std::size_t>(Leading(text, IsBeyondAscii), 1);
            std::ranges::for_each(DecodeUtf8(text.substr(0, taken)),
                                  [this](char32_t character) { Special(character); });
        }
        text.remove_prefix(taken);
    }
}

void RichTextBuilder::Close() {
    if (!m_closed) {
        m_block.Write(m_text);
        m_text += m_paragraph.text;
        m_text += '}';
    }
    m_closed = true;
    m_takesText = false;
}

void RichTextBuilder::EndParagraph() {
    m_paragraph.isBold = (m_attributes & rich_text::kBold) != 0;
    if (m_block.EndsBefore(m_paragraph)) {
        m_block.Write(m_text);
    }
    m_block.Add(std::exchange(m_paragraph, {}));
    m_afterWord = false;
}

void RichTextBuilder::PlainRun(std::string_view text) {
    if (m_afterWord) {
        m_paragraph.text += ' ';
    }
    m_afterWord = false;
    m_paragraph.text += text;
    m_paragraph.isEmpty = false;
    m_paragraph.isRule = m_paragraph.isRule && text.find_first_not_of('_') == std::string_view::npos;
    m_paragraph.hasPlain = m_paragraph.hasPlain || (m_attributes & rich_text::kBold) == 0;
}

/// A word that ends in white space of its own.
void RichTextBuilder::Break(std::string_view word) {
    m_paragraph.text += word;
    m_afterWord = false;
}

void RichTextBuilder::Special(char32_t character) {
    m_paragraph.beginsWithTab = m_paragraph.beginsWithTab || (m_paragraph.isEmpty && character == U'\t');
    m_paragraph.isEmpty = false;
    m_paragraph.isRule = false;
    if (character == U'\t') {
        Break("\\tab ");
    } else if (character == U'\r' || character == U'\n') {
        Break("\\line ");
    } else if (character == U'\\' || character == U'{' || character == U'}') {
        m_paragraph.text += '\\';
        m_paragraph.text += static_cast<char>(character);
        m_afterWord = false;
    } else {
        Beyond(character);
    }
}

/// A character beyond plain ASCII: a byte of the code page, or its number with a question mark for
/// readers that know no better.
void RichTextBuilder::Beyond(char32_t character) {
    m_afterWord = false;
    if (const std::optional<char> byte = EncodeCharacter(character)) {
        fmt::format_to(std::back_inserter(m_paragraph.text), "\\'{:02x}", static_cast<unsigned char>(*byte));
    } else if (character < 0x10000) {
        Unit(static_cast<std::uint32_t>(character));
    } else {
        const auto rest = static_cast<std::uint32_t>(character) - 0x10000U;
        Unit(0xD800U + (rest >> 10U));
        Unit(0xDC00U + (rest & 0x3FFU));
    }
}

/// One 16-bit unit of a character, signed as rich text has it.
void RichTextBuilder::Unit(std::uint32_t unit) {
    fmt::format_to(std::back_inserter(m_paragraph.text), "\\u{}?", static_cast<std::int16_t>(unit));
}

}  // namespace genvara
