#pragma once

#include <optional>
#include <vector>

#include "Chart.h"

namespace genvara {

/// Bars from zero, with limits as lines across them.
class BarChart final : public Chart {
  public:
    struct Bar {
        QString number;               ///< its shortest name, below it
        QString name{};               ///< below that, where there is room
        std::optional<double> value;  ///< none for a bar that cannot be drawn
        bool fails = false;           ///< is hatched
    };
    /// A line across the bars, with a height for each of them.
    struct Limit {
        QString label;
        std::vector<std::optional<double>> heights;
    };
    struct Figures {
        QString unit;
        int decimals = 1;
        std::vector<Bar> bars;
        std::vector<Limit> limits{};
        QString note{};  ///< stands in place of the bars
    };

    /// @param table a row for each bar.
    BarChart(TextGrid table, Figures figures);

    [[nodiscard]] const TextGrid& Table() const noexcept override { return m_table; }
    [[nodiscard]] const Figures& Shown() const noexcept { return m_figures; }
    std::vector<QRectF> Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                             int selected) const override;

  private:
    [[nodiscard]] double Greatest() const;

    TextGrid m_table;
    Figures m_figures;
};

}  // namespace genvara
