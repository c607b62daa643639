#include "RichTextReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>

#include "CodePage.h"
#include "RichTextWords.h"

namespace genvara {
namespace {

using namespace rich_words;

constexpr std::string_view kSignature = "{\\rtf";

/// Groups whose state is kept. Deeper ones, which only damaged or hostile texts have, share the state of the
/// deepest: memory stays bounded whatever the text.
constexpr std::size_t kDeepestGroup = 200;
/// Least width and height that margins must leave for the text: an inch [twip].
constexpr std::int32_t kLeastText = 1440;
/// Letters of a control word and digits of its figure that are looked at.
constexpr std::size_t kLongestWord = 32;
constexpr std::size_t kLongestFigure = 10;

/// Characters that are written as a backslash and a sign.
struct ControlSign {
    char sign;
    char32_t character;
};
constexpr std::array<ControlSign, 6> kSigns{
    {{'\\', U'\\'}, {'{', U'{'}, {'}', U'}'}, {'~', 0xA0}, {'_', 0x2011}, {'\t', U'\t'}}};

/// The code page's characters by their byte.
char32_t CharacterOf(char byte) {
    static const auto characters = [] {
        std::array<char32_t, 256> all{};
        for (std::size_t code = 0; code < all.size(); ++code) {
            all.at(code) = DecodeUtf8(DecodeText(std::string(1, static_cast<char>(code)))).front();
        }
        return all;
    }();
    return characters.at(static_cast<unsigned char>(byte));
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Walks over the bytes and drives the document.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    RichDocument Read() {
        do {
            Step();
        } while (!m_rest.empty() && m_context.depth > 0);
        EndText();
        return std::move(m_context.document);
    }

  private:
    /// Ends the last line, also where groups of a torn text are still open.
    void EndText() {
        m_context.state.destination = Destination::kText;
        if (!m_context.paragraph.runs.empty()) {
            EndParagraph(m_context);
        }
    }

    void Step() {
        const char byte = Take();
        if (byte == '{') {
            OpenGroup();
        } else if (byte == '}') {
            CloseGroup();
        } else if (byte == '\\') {
            Control();
        } else if (byte == '\t') {
            AppendUnit(m_context, U'\t');
        } else if (static_cast<unsigned char>(byte) >= 0x20) {
            Byte(byte);
        }
    }

    char Take() {
        const char byte = m_rest.front();
        m_rest.remove_prefix(1);
        return byte;
    }

    void OpenGroup() {
        m_context.fallbacksLeft = 0;
        if (m_context.depth++ < kDeepestGroup) {
            m_context.outer.push_back(m_context.state);
        }
    }

    void CloseGroup() {
        m_context.fallbacksLeft = 0;
        --m_context.depth;
        if (m_context.depth >= kDeepestGroup) {
            return;
        }
        if (m_context.depth == 0) {
            EndText();
        }
        m_context.state = std::move(m_context.outer.back());
        m_context.outer.pop_back();
    }

    /// A character by its byte; in a font table the name of a face ends with a semicolon.
    void Byte(char byte) {
        const bool endsName = byte == ';' && m_context.state.destination == Destination::kFonts;
        if (!IsFallback() && !endsName) {
            AppendUnit(m_context, CharacterOf(byte));
        }
    }

    /// True for what stands in for a character that was read already.
    bool IsFallback() {
        if (m_context.fallbacksLeft == 0) {
            return false;
        }
        --m_context.fallbacksLeft;
        return true;
    }

    void Control() {
        if (m_rest.empty()) {
            return;
        }
        if (IsLetter(m_rest.front())) {
            const std::string_view name = TakeWhile(IsLetter);
            const Figure figure = TakeFigure();
            if (m_rest.starts_with(' ')) {
                m_rest.remove_prefix(1);
            }
            Word(name, figure);
        } else {
            Sign(Take());
        }
    }

    std::string_view TakeWhile(bool (*isOfKind)(char)) {
        const auto length =
            static_cast<std::size_t>(std::ranges::find_if_not(m_rest, isOfKind) - m_rest.begin());
        const std::string_view taken = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return taken;
    }

    /// A figure behind a control word; one that no 32 bits hold counts as absent.
    Figure TakeFigure() {
        const bool isNegative = m_rest.starts_with('-') && m_rest.size() > 1 && IsDigit(m_rest[1]);
        if (isNegative) {
            m_rest.remove_prefix(1);
        }
        const std::string_view digits = TakeWhile(IsDigit);
        std::int32_t value = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (digits.empty() || digits.size() > kLongestFigure || error != std::errc{}) {
            return std::nullopt;
        }
        return isNegative ? -value : value;
    }

    void Word(std::string_view name, Figure figure) {
        if (name == "bin") {
            const auto length = static_cast<std::size_t>(std::max(figure.value_or(0), 0));
            m_rest.remove_prefix(std::min(length, m_rest.size()));
            return;
        }
        if (IsFallback() || name.size() > kLongestWord) {
            return;
        }
        if (name == "u") {
            AppendUnit(m_context, static_cast<char16_t>(figure.value_or(0xFFFD)));
            m_context.fallbacksLeft = m_context.state.fallbackLength;
            return;
        }
        Act(m_context, name, figure);
    }

    void Sign(char sign) {
        if (sign == '\'') {
            HexByte();
            return;
        }
        if (sign == '*') {
            m_context.state.destination = Destination::kNothing;
            return;
        }
        if (IsFallback()) {
            return;
        }
        if (sign == '\r' || sign == '\n') {
            EndParagraph(m_context);
            return;
        }
        const auto* const found = std::ranges::find(kSigns, sign, &ControlSign::sign);
        if (found != kSigns.end()) {
            AppendUnit(m_context, found->character);
        }
    }

    void HexByte() {
        unsigned value = 0;
        const std::size_t length = std::min<std::size_t>(m_rest.size(), 2);
        const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + length, value, 16);
        if (error == std::errc{} && end == m_rest.data() + 2) {
            m_rest.remove_prefix(2);
            Byte(static_cast<char>(value));
        }
    }

    std::string_view m_rest;
    Context m_context;
};

RichDocument ReadPlainText(std::string_view bytes) {
    RichDocument document;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        RichParagraph& paragraph = document.paragraphs.emplace_back();
        if (!line.empty()) {
            paragraph.runs.push_back({{}, DecodeText(line)});
        }
    }
    return document;
}

}  // namespace

RichPage SoundPage(RichPage page) {
    page.width = std::max(page.width, kLeastText);
    page.height = std::max(page.height, kLeastText);
    if (page.width - page.left - page.right < kLeastText) {
        page.left = page.right = 0;
    }
    if (page.height - page.top - page.bottom < kLeastText) {
        page.top = page.bottom = 0;
    }
    return page;
}

RichDocument ReadRichText(std::string_view bytes) {
    RichDocument document = bytes.starts_with(kSignature) ? Reader(bytes).Read() : ReadPlainText(bytes);
    document.page = SoundPage(document.page);
    if (document.defaultTab <= 0) {
        document.defaultTab = RichDocument{}.defaultTab;
    }
    return document;
}

}  // namespace genvara
