#include "RichTextWords.h"

#include <algorithm>
#include <array>
#include <utility>

#include "CodePage.h"

namespace genvara::rich_words {
namespace {

/// Stops of a paragraph; word processors keep about as many.
constexpr std::size_t kMostStops = 64;
/// Widest page and farthest stop: 22 inches, as word processors have it [twip].
constexpr std::int32_t kLongest = 31680;
constexpr std::int32_t kSmallestSize = 2;     // half points
constexpr std::int32_t kLargestSize = 576;    // half points: 288 points, four inches
constexpr std::int32_t kWidestSpacing = 200;  // twips
constexpr std::int32_t kTwipsPerQuarterPoint = 5;
/// Bytes of a face's name; every run carries its own copy.
constexpr std::size_t kLongestFace = 64;

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
    context.state.isOnePiece = false;
    context.state.isWithNext = false;
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
    {"keep", [](Context& c, Figure) { c.state.isOnePiece = true; }},
    {"keepn", [](Context& c, Figure) { c.state.isWithNext = true; }},
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

}  // namespace

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
    context.paragraph.isOnePiece = context.state.isOnePiece;
    context.paragraph.isWithNext = context.state.isWithNext;
    context.document.paragraphs.push_back(std::exchange(context.paragraph, {}));
}

void Act(Context& context, std::string_view word, Figure figure) {
    const auto* const found = std::ranges::lower_bound(kWords, word, {}, &ControlWord::name);
    if (found != kWords.end() && found->name == word) {
        found->act(context, figure);
    }
}

}  // namespace genvara::rich_words
