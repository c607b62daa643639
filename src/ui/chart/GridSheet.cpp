#include "GridSheet.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <optional>

#include "BarDelegate.h"

namespace genvara {
namespace {

constexpr double kPadding = 0.45;        ///< around a text, of its height
constexpr double kBarHeight = 0.32;      ///< of a text's height
constexpr double kWidestCaption = 7.0;   ///< heights of a line; a longer caption is broken
constexpr double kWidestOfPaper = 0.55;  ///< share that a column of words may take
constexpr double kLeastOfPaper = 0.25;   ///< share below which it is not made narrower

/// Width of the longest of a text's words, or of all of it where it is short.
double CaptionWidth(const QFontMetricsF& letters, const QString& text) {
    const double whole = letters.horizontalAdvance(text);
    const double most = letters.height() * kWidestCaption;
    if (whole <= most) {
        return whole;
    }
    double widest = 0.0;
    for (const QString& word : text.split(' ')) {
        widest = std::max(widest, letters.horizontalAdvance(word));
    }
    return std::max(widest, std::min(whole, most));
}

}  // namespace

GridSheet::GridSheet(const TextGrid& grid, double width, const QFont& font)
    : m_grid(&grid), m_font(font), m_bold(font), m_padding(QFontMetricsF(font).height() * kPadding) {
    m_bold.setBold(true);
    Measure(width);
    if (width > 0.0) {
        Narrow(width);
        const std::size_t groups = GroupsOf(width, m_widths.size());
        // As many columns in each group, rather than one that is left over.
        const std::size_t named = m_widths.empty() ? 0 : m_widths.size() - 1;
        Part(width, groups == 0 ? named : (named + groups - 1) / groups);
        if (groups > 1) {
            Widen(width);
        }
    } else {
        Part(0.0, m_widths.size());
    }
}

void GridSheet::Measure(double width) {
    const QFontMetricsF letters(m_font);
    const QFontMetricsF boldLetters(m_bold);
    for (std::size_t column = 0; column < m_grid->columns.size(); ++column) {
        double widest = 0.0;
        for (const std::vector<GridCell>& row : m_grid->rows) {
            widest = std::max(widest, boldLetters.horizontalAdvance(row[column].text));
        }
        if (width > 0.0) {
            widest = std::min(widest, width * kWidestOfPaper);
        }
        for (const QString& line : m_grid->columns[column].caption.split('\n')) {
            widest = std::max(widest, CaptionWidth(boldLetters, line));
        }
        m_widths.push_back(widest + 2.0 * m_padding);
    }
}

/// Breaks the longest of the columns of words, where all columns have room on the paper then.
void GridSheet::Narrow(double width) {
    std::optional<std::size_t> longest;
    double excess = -width;
    for (std::size_t column = 0; column < m_widths.size(); ++column) {
        excess += m_widths[column];
        if (!m_grid->columns[column].isNumber && (!longest || m_widths[column] > m_widths[*longest])) {
            longest = column;
        }
    }
    if (longest && excess > 0.0 && m_widths[*longest] - excess >= width * kLeastOfPaper) {
        m_widths[*longest] -= excess;
    }
}

/// Groups that columns come to, with at most so many besides the names of the rows.
std::size_t GridSheet::GroupsOf(double width, std::size_t most) {
    Part(width, most);
    return m_groups.size();
}

void GridSheet::Part(double width, std::size_t most) {
    m_groups.clear();
    double used = 0.0;
    for (std::size_t column = 0; column < m_widths.size(); ++column) {
        const bool begins =
            m_groups.empty() || (width > 0.0 && m_groups.back().size() > 1 &&
                                 (used + m_widths[column] > width + 0.5 || m_groups.back().size() > most));
        if (begins) {
            m_groups.emplace_back();
            used = 0.0;
            if (column > 0) {
                m_groups.back().push_back(0);
                used = m_widths.front();
            }
        }
        m_groups.back().push_back(column);
        used += m_widths[column];
    }
}

/// Gives the columns the paper's width, as far as the widest group leaves some.
void GridSheet::Widen(double width) {
    double widest = 0.0;
    for (const Group& group : m_groups) {
        widest = std::max(widest, Width(group) - m_widths.front());
    }
    const double factor = widest > 0.0 ? std::max(1.0, (width - m_widths.front()) / widest) : 1.0;
    for (std::size_t column = 1; column < m_widths.size(); ++column) {
        m_widths[column] *= factor;
    }
}

double GridSheet::HeightUpTo(double most, const Group& group) const {
    double height = HeadHeight(group);
    for (std::size_t row = 0; row < m_grid->rows.size() && height < most; ++row) {
        height += RowHeight(group, row);
    }
    return height;
}

double GridSheet::Width(const Group& group) const {
    double width = 0.0;
    for (const std::size_t column : group) {
        width += m_widths[column];
    }
    return width;
}

int GridSheet::Alignment(std::size_t column) const {
    return static_cast<int>(m_grid->columns[column].isNumber ? Qt::AlignRight : Qt::AlignLeft);
}

double GridSheet::TextHeight(const QString& text, std::size_t column, bool bold) const {
    const QFontMetricsF letters(bold ? m_bold : m_font);
    const QRectF room(0.0, 0.0, m_widths[column] - 2.0 * m_padding, 1e6);
    return std::max(letters.height(),
                    letters.boundingRect(room, Alignment(column) | Qt::TextWordWrap, text).height());
}

double GridSheet::HeadHeight(const Group& group) const {
    double height = 0.0;
    for (const std::size_t column : group) {
        height = std::max(height, TextHeight(m_grid->columns[column].caption, column, true));
    }
    return height + m_padding;
}

double GridSheet::RowHeight(const Group& group, std::size_t row) const {
    const double bar = QFontMetricsF(m_font).height() * (kBarHeight + kPadding / 2);
    double height = 0.0;
    for (const std::size_t column : group) {
        const GridCell& cell = m_grid->rows[row][column];
        height = std::max(height, TextHeight(cell.text, column, cell.isBold) + (cell.bar ? bar : 0.0));
    }
    return height + m_padding;
}

void GridSheet::DrawHead(QPainter& painter, const QPointF& place, const Group& group,
                         const ChartColours& colours) const {
    const double height = HeadHeight(group);
    painter.setFont(m_bold);
    painter.setPen(colours.text);
    double left = place.x();
    for (const std::size_t column : group) {
        const QRectF room(left + m_padding, place.y(), m_widths[column] - 2.0 * m_padding,
                          height - m_padding / 2);
        painter.drawText(room, Alignment(column) | static_cast<int>(Qt::AlignBottom) | Qt::TextWordWrap,
                         m_grid->columns[column].caption);
        left += m_widths[column];
    }
    painter.setPen(QPen(colours.faint, m_padding / 8));
    painter.drawLine(QPointF(place.x(), place.y() + height), QPointF(left, place.y() + height));
}

void GridSheet::DrawRow(QPainter& painter, const QPointF& place, const Group& group, std::size_t row,
                        const ChartColours& colours) const {
    const double height = RowHeight(group, row);
    const double line = QFontMetricsF(m_font).height();
    double left = place.x();
    for (const std::size_t column : group) {
        const GridCell& cell = m_grid->rows[row][column];
        const double width = m_widths[column] - 2.0 * m_padding;
        painter.setFont(cell.isBold ? m_bold : m_font);
        painter.setPen(colours.text);
        painter.drawText(QRectF(left + m_padding, place.y() + m_padding / 2, width, height),
                         Alignment(column) | Qt::TextWordWrap, cell.text);
        if (cell.bar) {
            const QRectF track(left + m_padding, place.y() + height - m_padding / 2 - line * kBarHeight,
                               width, line * kBarHeight);
            DrawCellBar(painter, track, *cell.bar, colours);
        }
        left += m_widths[column];
    }
    painter.setPen(QPen(colours.grid, m_padding / 10));
    painter.drawLine(QPointF(place.x(), place.y() + height), QPointF(left, place.y() + height));
}

}  // namespace genvara
