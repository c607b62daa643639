#include "ReportSelection.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <utility>

namespace genvara {
namespace {

using Bounds = std::pair<int, int>;

/// Next boundary of a kind from a position, forwards or back. Looks no farther than the text's line, so that
/// a long report costs no more than a short one.
int Boundary(const QString& text, int position, QTextBoundaryFinder::BoundaryType type, bool forwards) {
    const auto size = static_cast<int>(text.size());
    if (position == (forwards ? size : 0) || text.at(forwards ? position : position - 1) == u'\n') {
        return std::clamp(position + (forwards ? 1 : -1), 0, size);
    }
    const auto from = static_cast<int>(QStringView(text).first(position).lastIndexOf(u'\n')) + 1;
    const auto end = static_cast<int>(text.indexOf(u'\n', position));
    QTextBoundaryFinder finder(type, text.mid(from, (end < 0 ? size : end) - from));
    finder.setPosition(position - from);
    const auto found = forwards ? finder.toNextBoundary() : finder.toPreviousBoundary();
    return found < 0 ? position : from + static_cast<int>(found);
}

Bounds UnitAt(const ReportLayout& layout, int position, ReportSelection::Unit unit) {
    if (unit == ReportSelection::Unit::kCharacter) {
        return {position, position};
    }
    const ReportRow& row = layout.Rows().at(layout.RowOf(position));
    if (unit == ReportSelection::Unit::kRow) {
        return {row.from, row.to};
    }
    const QString text = layout.Text().mid(row.from, row.to - row.from);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    finder.setPosition(std::min(position - row.from, static_cast<int>(text.size())));
    const auto from = finder.isAtBoundary() && finder.position() < text.size() ? finder.position()
                                                                               : finder.toPreviousBoundary();
    const auto to = finder.toNextBoundary();
    return {row.from + static_cast<int>(std::max<qsizetype>(from, 0)),
            row.from + static_cast<int>(to < 0 ? text.size() : to)};
}

/// The same place of a neighbouring row; an end of the text where there is none.
int RowAway(const ReportLayout& layout, int position, double column, bool down) {
    const std::size_t row = layout.RowOf(position);
    if (down) {
        return row + 1 < layout.Rows().size() ? layout.PositionIn(row + 1, column)
                                              : static_cast<int>(layout.Text().size());
    }
    return row > 0 ? layout.PositionIn(row - 1, column) : 0;
}

}  // namespace

int ReportSelection::From() const noexcept {
    return std::min(m_anchor, m_cursor);
}

int ReportSelection::To() const noexcept {
    return std::max(m_anchor, m_cursor);
}

void ReportSelection::Set(int position) {
    Set(position, position);
}

void ReportSelection::Set(int anchor, int cursor) {
    m_anchor = m_unitFrom = m_unitTo = anchor;
    m_cursor = cursor;
    m_unit = Unit::kCharacter;
    m_column = -1.0;
}

void ReportSelection::Begin(const ReportLayout& layout, int position, Unit unit) {
    const auto [from, to] = UnitAt(layout, position, unit);
    Set(from, to);
    m_unitTo = to;
    m_unit = unit;
}

void ReportSelection::Extend(const ReportLayout& layout, int position) {
    const auto [from, to] = UnitAt(layout, position, m_unit);
    const bool backwards = position < m_unitFrom;
    m_anchor = backwards ? m_unitTo : m_unitFrom;
    m_cursor = backwards ? from : std::max(to, m_unitTo);
    m_column = -1.0;
}

void ReportSelection::Extend(const ReportLayout& layout, Move move) {
    const QString& text = layout.Text();
    const std::size_t row = layout.RowOf(m_cursor);
    const double column = m_column < 0.0 ? layout.XOf(row, m_cursor) : m_column;
    const auto boundary = [&](QTextBoundaryFinder::BoundaryType type, bool forwards) {
        return Boundary(text, m_cursor, type, forwards);
    };
    m_column = -1.0;
    switch (move) {
        case Move::kLeft:
            m_cursor = boundary(QTextBoundaryFinder::Grapheme, false);
            break;
        case Move::kRight:
            m_cursor = boundary(QTextBoundaryFinder::Grapheme, true);
            break;
        case Move::kWordLeft:
            m_cursor = boundary(QTextBoundaryFinder::Word, false);
            break;
        case Move::kWordRight:
            m_cursor = boundary(QTextBoundaryFinder::Word, true);
            break;
        case Move::kRowStart:
            m_cursor = layout.Rows()[row].from;
            break;
        case Move::kRowEnd:
            m_cursor = layout.Rows()[row].to;
            break;
        case Move::kTextStart:
            m_cursor = 0;
            break;
        case Move::kTextEnd:
            m_cursor = static_cast<int>(text.size());
            break;
        case Move::kUp:
        case Move::kDown:
            m_cursor = RowAway(layout, m_cursor, column, move == Move::kDown);
            m_column = column;
            break;
    }
    m_unit = Unit::kCharacter;
}

}  // namespace genvara
