#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Chart.h"

namespace genvara {

/// What one figure is over two others: a field of cells, deeper in colour as it grows, with its keys beside.
class MapChart final : public Chart {
  public:
    struct Cell {
        std::optional<double> value;  ///< that the colour hangs on; none where there is no answer
        QString label{};              ///< in the cell, where there is room, and beside the map
        bool fails = false;           ///< there is no answer because of a failure
    };
    struct Figures {
        QString across;  ///< name and unit of the horizontal axis
        QString up;      ///< of the vertical one
        std::vector<QString> columns;
        std::vector<QString> rows;  ///< from the bottom
        std::vector<Cell> cells;  ///< column by column from the left, each from the bottom; rows of the table
        QString note{};           ///< stands in place of the map
    };

    /// @param table a row for each cell.
    MapChart(TextGrid table, Figures figures);

    [[nodiscard]] const TextGrid& Table() const noexcept override { return m_table; }
    [[nodiscard]] const Figures& Shown() const noexcept { return m_figures; }
    std::vector<QRectF> Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                             int selected) const override;

  private:
    TextGrid m_table;
    Figures m_figures;
};

}  // namespace genvara
