#pragma once

#include <QFont>
#include <QPointF>
#include <cstddef>
#include <vector>

#include "ChartColours.h"
#include "TextGrid.h"

class QPainter;

namespace genvara {

/// A table set for paper. One that is too wide for it is parted into groups of columns, each with the names
/// of the rows. Lengths are in the unit of the font.
class GridSheet {
  public:
    /// @param width of the paper; 0 for as much as the table wants
    /// @param font with its size in the painter's unit. The table outlives the sheet.
    GridSheet(const TextGrid& grid, double width, const QFont& font);

    /// Columns that stand side by side, by their positions in the table.
    using Group = std::vector<std::size_t>;
    [[nodiscard]] const std::vector<Group>& Groups() const noexcept { return m_groups; }
    [[nodiscard]] double Width(const Group& group) const;
    /// Height of a group with its head; rows are counted until it reaches the most that matters.
    [[nodiscard]] double HeightUpTo(double most, const Group& group) const;
    [[nodiscard]] double HeadHeight(const Group& group) const;
    [[nodiscard]] double RowHeight(const Group& group, std::size_t row) const;

    void DrawHead(QPainter& painter, const QPointF& place, const Group& group,
                  const ChartColours& colours) const;
    void DrawRow(QPainter& painter, const QPointF& place, const Group& group, std::size_t row,
                 const ChartColours& colours) const;

  private:
    void Measure(double width);
    void Narrow(double width);
    void Part(double width, std::size_t most);
    [[nodiscard]] std::size_t GroupsOf(double width, std::size_t most);
    void Widen(double width);
    [[nodiscard]] double TextHeight(const QString& text, std::size_t column, bool bold) const;
    [[nodiscard]] int Alignment(std::size_t column) const;

    const TextGrid* m_grid;
    QFont m_font;
    QFont m_bold;
    double m_padding;
    std::vector<double> m_widths;
    std::vector<Group> m_groups;
};

}  // namespace genvara
