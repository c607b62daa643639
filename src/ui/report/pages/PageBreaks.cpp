#include "PageBreaks.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace genvara {
namespace {

/// Share of a page that may stay empty so that entries of one table stay together: more than the longest
/// table takes whose entries are bound in its rich text, so that word processors end their pages at the same
/// lines.
constexpr double kMostEmpty = 0.6;

/// Heights that differ by less are the same: sums of them are rounded.
constexpr double kSameHeight = 0.001;

bool IsEmpty(const RichParagraph& paragraph) {
    return paragraph.runs.empty();
}

bool BeginsWithTab(const RichParagraph& paragraph) {
    return !IsEmpty(paragraph) && paragraph.runs.front().text.starts_with('\t');
}

bool IsRule(const RichParagraph& paragraph) {
    const auto isLine = [](const RichRun& run) {
        return run.text.find_first_not_of('_') == std::string_view::npos;
    };
    return !IsEmpty(paragraph) && std::ranges::all_of(paragraph.runs, isLine);
}

/// Whether a paragraph is the last line of a table's entry: figures below their label.
bool EndsEntry(const RichParagraph& paragraph, const RichParagraph& next) {
    return BeginsWithTab(paragraph) && !paragraph.mark.bold && !BeginsWithTab(next) && !IsRule(next);
}

bool IsGap(const RichParagraph& paragraph) {
    return IsEmpty(paragraph) && !paragraph.mark.bold;
}

class Pages {
  public:
    Pages(std::span<const BoundLine> lines, double room) : m_lines(lines), m_room(room + kSameHeight) {
        m_places.reserve(lines.size());
    }

    /// Sets lines that stay together where they can; otherwise each part of them between bonds of a strength.
    void Place(std::size_t from, std::size_t to, LineBond weakest) {
        const double height = HeightOf(from, to);
        const bool isSingle = to - from == 1;
        const bool isForNext = (height <= m_room || isSingle) && !IsWorthParting(from, to, weakest);
        if (m_y + height > m_room && m_y > 0.0 && isForNext) {
            ++m_page;
            m_y = 0.0;
        }
        if (m_y + height <= m_room || isSingle) {
            Put(from, to);
            return;
        }
        while (from < to) {
            const std::size_t end = PartEnd(from, to, weakest);
            Place(from, end, static_cast<LineBond>(static_cast<int>(weakest) + 1));
            from = end;
        }
    }

    [[nodiscard]] std::vector<LinePlace> TakePlaces() { return std::move(m_places); }

  private:
    [[nodiscard]] double HeightOf(std::size_t from, std::size_t to) const {
        double height = 0.0;
        for (std::size_t line = from; line < to && height <= m_room; ++line) {
            height += m_lines[line].height;
        }
        return height;
    }

    /// Whether lines shall rather be parted than leave most of this page empty.
    [[nodiscard]] bool IsWorthParting(std::size_t from, std::size_t to, LineBond weakest) const {
        return weakest == LineBond::kEntries && m_room - m_y > kMostEmpty * m_room + kSameHeight &&
               PartEnd(from, to, weakest) < to;
    }

    [[nodiscard]] std::size_t PartEnd(std::size_t from, std::size_t to, LineBond weakest) const {
        std::size_t line = from;
        while (line + 1 < to && m_lines[line].bond > weakest) {
            ++line;
        }
        return line + 1;
    }

    void Put(std::size_t from, std::size_t to) {
        for (std::size_t line = from; line < to; ++line) {
            m_places.push_back({m_page, m_y});
            m_y += m_lines[line].height;
        }
    }

    std::span<const BoundLine> m_lines;
    double m_room;
    std::vector<LinePlace> m_places;
    int m_page = 0;
    double m_y = 0.0;
};

}  // namespace

LineBond BondBetween(const RichParagraph& paragraph, const RichParagraph& next) {
    // Long tables leave their entries unbound, for word processors that cannot move many lines.
    if (EndsEntry(paragraph, next)) {
        return LineBond::kEntries;
    }
    if (!paragraph.isWithNext) {
        return LineBond::kNone;
    }
    return IsGap(paragraph) ? LineBond::kEntries : LineBond::kParagraphs;
}

void BindLines(std::span<BoundLine> lines, bool isOnePiece) {
    for (std::size_t line = 0; line + 1 < lines.size(); ++line) {
        const bool isEnd = line == 0 || line + 2 == lines.size();
        lines[line].bond = isEnd ? LineBond::kEnds : isOnePiece ? LineBond::kLines : LineBond::kNone;
    }
}

std::vector<LinePlace> PlaceOnPages(std::span<const BoundLine> lines, double room) {
    Pages pages(lines, room);
    if (!lines.empty()) {
        pages.Place(0, lines.size(), LineBond::kNone);
    }
    return pages.TakePlaces();
}

}  // namespace genvara
