#include "ReportComposer.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <span>

#include "ReportFonts.h"

namespace genvara {
namespace {

/// A stop nearer than this is passed already: widths are rounded to 1/64 twip each.
constexpr double kNear = 1.0;
/// Wider than any line that is measured, and within what the text engine can count [twip].
constexpr double kAnyWidth = 10'000'000.0;
/// Letters that are set as one text. Longer ones, which fill several lines, are set in parts: the text
/// engine's time grows faster than the text, and its numbers end at widths of thousands of letters.
constexpr int kLongestText = 500;
/// Figures and units come again and again; longer texts hardly do.
constexpr int kLongestKnown = 16;

/// Formats that are told apart. A report has six; thousands, which only foreign texts have, would take
/// minutes to find fonts for, and stand in the first one.
constexpr std::size_t kMostFonts = 200;

constexpr QChar kTab = u'\t';
constexpr QChar kLineEnd = u'\n';

/// True for what has no shape of its own, or would break lines within the text engine.
bool IsUnseen(QChar character) {
    const QChar::Category category = character.category();
    const bool isControl = category == QChar::Other_Control && character != kTab && character != kLineEnd;
    return isControl || category == QChar::Separator_Line || category == QChar::Separator_Paragraph ||
           character == QChar::ObjectReplacementCharacter;
}

QTextOption Option(QTextOption::WrapMode wrapMode) {
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LeftToRight);
    option.setUseDesignMetrics(true);
    option.setWrapMode(wrapMode);
    return option;
}

/// Sets letters on lines: the first as wide as what is left of its row, the others as wide as the text.
void SetLines(QTextLayout& letters, double firstWidth, double otherWidth, QTextOption::WrapMode wrapMode) {
    letters.setTextOption(Option(wrapMode));
    letters.beginLayout();
    double width = firstWidth;
    for (QTextLine line = letters.createLine(); line.isValid(); line = letters.createLine()) {
        line.setLineWidth(width);
        width = otherWidth;
    }
    letters.endLayout();
}

/// Height of a line [twip] as word processors count it, so that their pages end at the same lines: letters in
/// dots of a sixth of a twip, then letters and gap in whole twips.
double LineHeight(const QFontMetricsF& letters) {
    constexpr double kDots = 6.0;
    const auto inDots = [](double twips) { return std::round(twips * kDots) / kDots; };
    return std::round(inDots(letters.ascent()) + inDots(letters.descent())) +
           std::round(inDots(std::max(0.0, letters.leading())));
}

double AdvanceOf(const QTextLine& line) {
    return std::max(0.0, line.cursorToX(line.textStart() + line.textLength()));
}

}  // namespace

ReportComposer::ReportComposer(const RichDocument& document, const RichPage& page)
    : m_document(document), m_page(page), m_textWidth(page.width - page.left - page.right) {}

void ReportComposer::Compose() {
    const std::vector<RichParagraph>& paragraphs = m_document.paragraphs;
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        const std::size_t first = m_rows.size();
        SetParagraph(paragraphs[i]);
        BindRows(first, i + 1 < paragraphs.size() ? &paragraphs[i + 1] : nullptr);
    }
    if (m_rows.empty()) {
        const RichParagraph none;
        SetParagraph(none);
    }
    SetOnPages();
}

void ReportComposer::SetParagraph(const RichParagraph& paragraph) {
    if (!m_rows.empty()) {
        m_text += kLineEnd;
    }
    m_paragraph = &paragraph;
    m_markFont = FontIndex(paragraph.mark);
    int at = static_cast<int>(m_text.size());
    AppendRuns(paragraph);
    const int end = static_cast<int>(m_text.size());
    BeginRow(at);
    std::optional<RichTabStop> stop;
    while (true) {
        const auto isBreak = [](QChar character) { return character == kTab || character == kLineEnd; };
        const auto next =
            static_cast<int>(std::find_if(m_text.cbegin() + at, m_text.cend(), isBreak) - m_text.cbegin());
        int part = PartEnd(at, next);
        const Segment segment = Measure(at, part);
        if (stop) {
            const double start = StartAt(*stop, segment);
            AddPiece({.from = at - 1, .count = 1, .x = m_x, .width = start - m_x});
        }
        PlaceSegment(segment);
        while (part < next) {
            const int from = std::exchange(part, PartEnd(part, next));
            PlaceSegment(Measure(from, part));
        }
        if (next == end) {
            break;
        }
        stop.reset();
        if (m_text.at(next) == kTab) {
            stop = StopFor(next);
        } else {
            EndRow(next, next + 1);
            BeginRow(next + 1);
        }
        at = next + 1;
    }
    EndRow(end, end);
}

void ReportComposer::AppendRuns(const RichParagraph& paragraph) {
    m_stretches.clear();
    for (const RichRun& run : paragraph.runs) {
        const auto from = static_cast<int>(m_text.size());
        m_text += QString::fromStdString(run.text).removeIf(IsUnseen);
        const auto to = static_cast<int>(m_text.size());
        if (to > from) {
            m_stretches.push_back({from, to, FontIndex(run.format)});
        }
    }
}

void ReportComposer::BeginRow(int from) {
    m_row = {.from = from, .firstPiece = m_pieces.size()};
    m_x = 0.0;
}

/// @param to behind the last character that is shown
/// @param next where the next row begins: behind a line break
void ReportComposer::EndRow(int to, int next) {
    const auto [ascent, descent] = HeightsOf(m_row.from, next);
    m_row.to = to;
    m_row.height = ascent + descent;
    m_row.baseline = ascent;
    m_row.pieceCount = m_pieces.size() - m_row.firstPiece;
    const double room = std::max(0.0, m_textWidth - m_x);
    m_row.start = m_paragraph->alignment == RichAlignment::kCentre  ? room / 2
                  : m_paragraph->alignment == RichAlignment::kRight ? room
                                                                    : 0.0;
    for (std::size_t i = m_row.firstPiece; i < m_pieces.size(); ++i) {
        m_pieces[i].x += m_row.start;
    }
    m_rows.push_back(m_row);
    m_lines.push_back({.height = m_row.height});
}

/// Binds the rows of the present paragraph, from its first one on, to each other and to the next paragraph.
void ReportComposer::BindRows(std::size_t first, const RichParagraph* next) {
    BindLines(std::span(m_lines).subspan(first), m_paragraph->isOnePiece);
    if (next != nullptr) {
        m_lines.back().bond = BondBetween(*m_paragraph, *next);
    }
}

/// Rows know their height and the baseline below their upper edge until all of them are there.
void ReportComposer::SetOnPages() {
    const std::vector<LinePlace> places = PlaceOnPages(m_lines, m_page.height - m_page.top - m_page.bottom);
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        m_rows[i].page = places[i].page;
        m_rows[i].top = m_page.top + places[i].top;
        m_rows[i].baseline += m_rows[i].top;
    }
}

/// The greatest height above and below the baseline; those of the paragraph's end for an empty row.
std::pair<double, double> ReportComposer::HeightsOf(int from, int to) const {
    std::pair<double, double> heights{0.0, 0.0};
    const auto grow = [&](const SetFont& font) {
        heights = {std::max(heights.first, font.ascent), std::max(heights.second, font.descent)};
    };
    auto stretch = std::ranges::upper_bound(m_stretches, from, {}, &Stretch::to);
    for (; stretch != m_stretches.end() && stretch->from < to; ++stretch) {
        grow(m_fonts[stretch->font]);
    }
    if (from == to) {
        grow(m_fonts[m_markFont]);
    }
    return heights;
}

/// The first stop that is still ahead and within the text's width.
std::optional<RichTabStop> ReportComposer::NextStop() const {
    for (const RichTabStop& stop : m_paragraph->stops) {
        if (stop.position > m_x + kNear && stop.position <= m_textWidth) {
            return stop;
        }
    }
    const double passed = std::floor((m_x + kNear) / m_document.defaultTab);
    const double position = (passed + 1) * m_document.defaultTab;
    if (position > m_textWidth) {
        return std::nullopt;
    }
    return RichTabStop{RichTabKind::kLeft, static_cast<std::int32_t>(position)};
}

/// The stop that a tab leads to, on a new line if this one has none left.
RichTabStop ReportComposer::StopFor(int tab) {
    std::optional<RichTabStop> stop = NextStop();
    if (!stop && m_x > 0.0) {
        EndRow(tab, tab);
        BeginRow(tab);
        stop = NextStop();
    }
    return stop.value_or(RichTabStop{RichTabKind::kLeft, static_cast<std::int32_t>(m_textWidth)});
}

/// Where a segment begins whose tab leads to a stop; never before what stands there already.
double ReportComposer::StartAt(const RichTabStop& stop, const Segment& segment) const {
    double before = 0.0;
    if (segment.letters != nullptr && stop.kind == RichTabKind::kRight) {
        before = segment.width;
    } else if (segment.letters != nullptr && stop.kind == RichTabKind::kCentre) {
        before = segment.width / 2;
    } else if (segment.letters != nullptr && stop.kind == RichTabKind::kDecimal) {
        const auto point = m_text.mid(segment.from, segment.to - segment.from).indexOf(u'.');
        before = point < 0 ? segment.width : segment.letters->lineAt(0).cursorToX(static_cast<int>(point));
    }
    return std::max(m_x, stop.position - before);
}

/// Where the first part of a text ends: all of it, or as much as is set at once, up to a blank if there is
/// one.
int ReportComposer::PartEnd(int from, int to) const {
    if (to - from <= kLongestText) {
        return to;
    }
    const QStringView part = QStringView(m_text).mid(from, kLongestText);
    const auto blank = static_cast<int>(part.lastIndexOf(u' '));
    if (blank > 0) {
        return from + blank + 1;
    }
    return from + kLongestText - (part.back().isHighSurrogate() ? 1 : 0);
}

ReportComposer::Segment ReportComposer::Measure(int from, int to) {
    Segment segment{.from = from, .to = to};
    if (from == to) {
        return segment;
    }
    segment.letters = Letters(from, to);
    segment.width = AdvanceOf(segment.letters->lineAt(0));
    segment.shownWidth = segment.letters->lineAt(0).naturalTextWidth();
    return segment;
}

void ReportComposer::PlaceSegment(const Segment& segment) {
    if (segment.from == segment.to) {
        return;
    }
    if (m_x + segment.shownWidth <= m_textWidth + kNear) {
        AddPiece({.letters = segment.letters,
                  .from = segment.from,
                  .count = segment.to - segment.from,
                  .x = m_x,
                  .width = segment.width});
    } else {
        WrapSegment(segment);
    }
}

/// Spreads a segment over as many rows as it needs.
void ReportComposer::WrapSegment(const Segment& segment) {
    const std::shared_ptr<QTextLayout> letters = NewLetters(segment.from, segment.to);
    const double room = m_textWidth - m_x;
    SetLines(*letters, room, m_textWidth, QTextOption::WordWrap);
    if (m_x > 0.0 && letters->lineAt(0).naturalTextWidth() > room) {
        EndRow(segment.from, segment.from);
        BeginRow(segment.from);
    }
    SetLines(*letters, m_textWidth - m_x, m_textWidth, QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (int i = 0; i < letters->lineCount(); ++i) {
        const QTextLine line = letters->lineAt(i);
        const int from = segment.from + line.textStart();
        if (i > 0) {
            EndRow(from, from);
            BeginRow(from);
        }
        AddPiece({.letters = letters,
                  .line = i,
                  .from = from,
                  .count = line.textLength(),
                  .x = m_x,
                  .width = AdvanceOf(line)});
    }
}

/// Letters on one line; those of short texts that look alike are set once.
std::shared_ptr<QTextLayout> ReportComposer::Letters(int from, int to) {
    const auto stretch = std::ranges::upper_bound(m_stretches, from, {}, &Stretch::to);
    const bool isKnown = to - from <= kLongestKnown && to <= stretch->to;
    const std::pair key{isKnown ? stretch->font : 0, isKnown ? m_text.mid(from, to - from) : QString()};
    if (const auto found = m_known.constFind(key); isKnown && found != m_known.constEnd()) {
        return *found;
    }
    const std::shared_ptr<QTextLayout> letters = NewLetters(from, to);
    SetLines(*letters, kAnyWidth, kAnyWidth, QTextOption::NoWrap);
    if (isKnown) {
        m_known.insert(key, letters);
    }
    return letters;
}

std::shared_ptr<QTextLayout> ReportComposer::NewLetters(int from, int to) const {
    auto stretch = std::ranges::upper_bound(m_stretches, from, {}, &Stretch::to);
    auto letters = std::make_shared<QTextLayout>(m_text.mid(from, to - from), m_fonts[stretch->font].font);
    QList<QTextLayout::FormatRange> formats;
    for (; stretch != m_stretches.end() && stretch->from < to; ++stretch) {
        const int begin = std::max(stretch->from, from);
        QTextCharFormat format;
        format.setFont(m_fonts[stretch->font].font);
        formats.append({begin - from, std::min(stretch->to, to) - begin, format});
    }
    if (formats.size() > 1) {
        letters->setFormats(formats);
    }
    return letters;
}

std::size_t ReportComposer::FontIndex(const RichFormat& format) {
    const auto found = std::ranges::find(m_fonts, format, &SetFont::format);
    if (found == m_fonts.end() && m_fonts.size() >= kMostFonts) {
        return 0;
    }
    if (found == m_fonts.end()) {
        const QFont font = ReportFont(format);
        const QFontMetricsF heights(font);
        m_fonts.push_back({format, font, heights.ascent(), LineHeight(heights) - heights.ascent()});
        return m_fonts.size() - 1;
    }
    return static_cast<std::size_t>(found - m_fonts.begin());
}

void ReportComposer::AddPiece(ReportPiece piece) {
    m_x += piece.width;
    m_pieces.push_back(std::move(piece));
}

}  // namespace genvara
