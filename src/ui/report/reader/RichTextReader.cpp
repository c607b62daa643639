#include "RichTextReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

#include "CodePage.h"

namespace genvara {
namespace {

constexpr std::string_view kSignature = "{\\rtf";

/// Groups whose state is kept. Deeper ones, which only damaged or hostile texts have, share the state of the
/// deepest: memory stays bounded whatever the text.
constexpr std::size_t kDeepestGroup = 200;
/// Stops of a paragraph; word processors keep about as many.
constexpr std::size_t kMostStops = 64;
/// Widest page and farthest stop: 22 inches, as word processors have it [twip].
constexpr std::int32_t kLongest = 31680;
/// Least width and height that margins must leave for the text: an inch [twip].
constexpr std::int32_t kLeastText = 1440;
constexpr std::int32_t kSmallestSize = 2;     // half points
constexpr std::int32_t kLargestSize = 576;    // half points: 288 points, four inches
constexpr std::int32_t kWidestSpacing = 200;  // twips
constexpr std::int32_t kTwipsPerQuarterPoint = 5;
/// Bytes of a face's name; every run carries its own copy.
constexpr std::size_t kLongestFace = 64;
/// Letters of a control word and digits of its figure that are looked at.
constexpr std::size_t kLongestWord = 32;
constexpr std::size_t kLongestFigure = 10;

/// What a group's text is for.
enum class Destination { kText, kFonts, kNothing };

/// What a group takes over from the group around it, and loses at its end.
struct State {
    Destination destination = Destination::kText;
    RichFormat format;
    std::int32_t font = 0;
    RichAlignment alignment = RichAlignment::kLeft;
    std::vector<RichTabStop> stops;
    RichTabKind nextStop = RichTabKind::kLeft;
    std::int32_t fallbackLength = 1;  // characters that stand in for one given by its number
};

/// The document in the making and the reader's state.
struct Context {
    RichDocument document;
    RichParagraph paragraph;
    State state;
    std::vector<State> outer;
    std::size_t depth = 0;  // of all groups, kept or not
    std::map<std::int32_t, std::string> faces;
    std::int32_t defaultFont = 0;
    std::int32_t fallbacksLeft = 0;
    char32_t highSurrogate = 0;
};

/// A control word's figure, where it has one.
using Figure = std::optional<std::int32_t>;

bool IsOn(Figure figure) {
    return figure.value_or(1) != 0;
}

const std::string& FaceOf(const Context& context, std::int32_t font) {
    static const std::string none;
    const auto found = context.faces.find(font);
    return found == context.faces.end() ? none : found->second;
}

RichFormat PresentFormat(const Context& context) {
    RichFormat format = context.state.format;
    format.face = FaceOf(context, context.state.font);
    return format;
}

void Append(Context& context, std::string_view utf8) {
    if (context.state.destination == Destination::kFonts) {
        std::string& face = context.faces[context.state.font];
        face += face.size() < kLongestFace ? utf8 : "";
    }
    if (context.state.destination != Destination::kText || utf8.empty()) {
        return;
    }
    RichFormat format = PresentFormat(context);
    std::vector<RichRun>& runs = context.paragraph.runs;
    if (runs.empty() || runs.back().format != format) {
        runs.push_back({std::move(format), std::string(utf8)});
    } else {
        runs.back().text += utf8;
    }
}

/// A unit of 16 bits: a character, or half of one.
void AppendUnit(Context& context, char32_t unit) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::string text;
    const bool isLow = unit >= 0xDC00 && unit < 0xE000;
    if (context.highSurrogate != 0 && !isLow) {
        AppendUtf8(text, kReplacement);
    }
    if (isLow) {
        AppendUtf8(text, context.highSurrogate == 0
                             ? kReplacement
                             : 0x10000 + ((context.highSurrogate - 0xD800) << 10U) + (unit - 0xDC00));
    }
    context.highSurrogate = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
    if (!isLow && context.highSurrogate == 0) {
        AppendUtf8(text, unit);
    }
    Append(context, text);
}

void EndParagraph(Context& context) {
    if (context.state.destination != Destination::kText) {
        return;
    }
    context.paragraph.alignment = context.state.alignment;
    context.paragraph.stops = context.state.stops;
    context.paragraph.mark = PresentFormat(context);
    context.document.paragraphs.push_back(std::exchange(context.paragraph, {}));
}

void AddStop(Context& context, Figure position) {
    const RichTabStop stop{std::exchange(context.state.nextStop, RichTabKind::kLeft), position.value_or(0)};
    std::vector<RichTabStop>& stops = context.state.stops;
    if (stop.position <= 0 || stop.position > kLongest) {
        return;
    }
    const auto place = std::ranges::lower_bound(stops, stop.position, {}, &RichTabStop::position);
    if (place != stops.end() && place->position == stop.position) {
        *place = stop;
    } else if (stops.size() < kMostStops) {
        stops.insert(place, stop);
    }
}

void SetSize(Context& context, Figure halfPoints) {
    if (halfPoints.value_or(0) > 0) {
        context.state.format.halfPoints = std::clamp(*halfPoints, kSmallestSize, kLargestSize);
    }
}

void SetSpacing(Context& context, std::int64_t twips) {
    context.state.format.spacing =
        static_cast<std::int32_t>(std::clamp<std::int64_t>(twips, -kWidestSpacing, kWidestSpacing));
}

void SetDefaultFont(Context& context, Figure font) {
    context.defaultFont = font.value_or(0);
    context.state.font = context.defaultFont;
}

void SetFont(Context& context, Figure font) {
    context.state.font = font.value_or(0);
    if (context.state.destination == Destination::kFonts) {
        context.faces[context.state.font].clear();
    }
}

void ResetParagraph(Context& context) {
    context.state.alignment = RichAlignment::kLeft;
    context.state.stops.clear();
    context.state.nextStop = RichTabKind::kLeft;
}

void ResetFormat(Context& context) {
    context.state.format = {};
    context.state.font = context.defaultFont;
}

/// A length of the page, unless it is out of any range.
void SetLength(std::int32_t& length, Figure twips) {
    if (twips.value_or(-1) >= 0 && *twips <= kLongest) {
        length = *twips;
    }
}

template <RichAlignment Value>
void Align(Context& context, Figure /*figure*/) {
    context.state.alignment = Value;
}

template <RichTabKind Kind>
void NextStop(Context& context, Figure /*figure*/) {
    context.state.nextStop = Kind;
}

template <char32_t Character>
void Letter(Context& context, Figure /*figure*/) {
    AppendUnit(context, Character);
}

template <std::int32_t RichPage::*Length>
void PageLength(Context& context, Figure twips) {
    SetLength(context.document.page.*Length, twips);
}

template <Destination Value>
void Divert(Context& context, Figure /*figure*/) {
    if (context.state.destination == Destination::kText) {
        context.state.destination = Value;
    }
}

struct ControlWord {
    std::string_view name;
    void (*act)(Context&, Figure);
};

/// The words that mean something to us, in the order of their letters.
constexpr std::array kWords = std::to_array<ControlWord>({
    {"b", [](Context& c, Figure f) { c.state.format.bold = IsOn(f); }},
    {"bullet", Letter<0x2022>},
    {"cell", Letter<U'\t'>},
    {"colortbl", Divert<Destination::kNothing>},
    {"comment", Divert<Destination::kNothing>},
    {"deff", SetDefaultFont},
    {"deftab", [](Context& c, Figure f) { SetLength(c.document.defaultTab, f); }},
    {"emdash", Letter<0x2014>},
    {"emspace", Letter<0x2003>},
    {"endash", Letter<0x2013>},
    {"enspace", Letter<0x2002>},
    {"expnd",
     [](Context& c, Figure f) { SetSpacing(c, std::int64_t{f.value_or(0)} * kTwipsPerQuarterPoint); }},
    {"expndtw", [](Context& c, Figure f) { SetSpacing(c, f.value_or(0)); }},
    {"f", SetFont},
    {"fonttbl", Divert<Destination::kFonts>},
    {"footer", Divert<Destination::kNothing>},
    {"footerf", Divert<Destination::kNothing>},
    {"footerl", Divert<Destination::kNothing>},
    {"footerr", Divert<Destination::kNothing>},
    {"footnote", Divert<Destination::kNothing>},
    {"fs", SetSize},
    {"header", Divert<Destination::kNothing>},
    {"headerf", Divert<Destination::kNothing>},
    {"headerl", Divert<Destination::kNothing>},
    {"headerr", Divert<Destination::kNothing>},
    {"i", [](Context& c, Figure f) { c.state.format.italic = IsOn(f); }},
    {"info", Divert<Destination::kNothing>},
    {"ldblquote", Letter<0x201C>},
    {"line", Letter<U'\n'>},
    {"lquote", Letter<0x2018>},
    {"margb", PageLength<&RichPage::bottom>},
    {"margl", PageLength<&RichPage::left>},
    {"margr", PageLength<&RichPage::right>},
    {"margt", PageLength<&RichPage::top>},
    {"object", Divert<Destination::kNothing>},
    {"page", [](Context& c, Figure) { EndParagraph(c); }},
    {"paperh", PageLength<&RichPage::height>},
    {"paperw", PageLength<&RichPage::width>},
    {"par", [](Context& c, Figure) { EndParagraph(c); }},
    {"pard", [](Context& c, Figure) { ResetParagraph(c); }},
    {"pict", Divert<Destination::kNothing>},
    {"plain", [](Context& c, Figure) { ResetFormat(c); }},
    {"qc", Align<RichAlignment::kCentre>},
    {"qj", Align<RichAlignment::kLeft>},
    {"ql", Align<RichAlignment::kLeft>},
    {"qr", Align<RichAlignment::kRight>},
    {"rdblquote", Letter<0x201D>},
    {"row", [](Context& c, Figure) { EndParagraph(c); }},
    {"rquote", Letter<0x2019>},
    {"rxe", Divert<Destination::kNothing>},
    {"sect", [](Context& c, Figure) { EndParagraph(c); }},
    {"stylesheet", Divert<Destination::kNothing>},
    {"tab", Letter<U'\t'>},
    {"tc", Divert<Destination::kNothing>},
    {"tqc", NextStop<RichTabKind::kCentre>},
    {"tqdec", NextStop<RichTabKind::kDecimal>},
    {"tqr", NextStop<RichTabKind::kRight>},
    {"tx", AddStop},
    {"uc", [](Context& c, Figure f) { c.state.fallbackLength = std::clamp(f.value_or(1), 0, 255); }},
    {"xe", Divert<Destination::kNothing>},
});
static_assert(std::ranges::is_sorted(kWords, {}, &ControlWord::name));

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
        const auto* const found = std::ranges::lower_bound(kWords, name, {}, &ControlWord::name);
        if (found != kWords.end() && found->name == name) {
            found->act(m_context, figure);
        }
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

/// Margins that leave too little for the text give way to none.
void MendPage(RichPage& page) {
    page.width = std::max(page.width, kLeastText);
    page.height = std::max(page.height, kLeastText);
    if (page.width - page.left - page.right < kLeastText) {
        page.left = page.right = 0;
    }
    if (page.height - page.top - page.bottom < kLeastText) {
        page.top = page.bottom = 0;
    }
}

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

RichDocument ReadRichText(std::string_view bytes) {
    RichDocument document = bytes.starts_with(kSignature) ? Reader(bytes).Read() : ReadPlainText(bytes);
    MendPage(document.page);
    if (document.defaultTab <= 0) {
        document.defaultTab = RichDocument{}.defaultTab;
    }
    return document;
}

}  // namespace genvara
