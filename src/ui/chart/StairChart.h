#pragma once

#include <optional>
#include <vector>

#include "Chart.h"

namespace genvara {

/// What one figure is over a range of another: level stretches, with a mark where it changes.
class StairChart final : public Chart {
  public:
    /// A stretch with one answer; a row of the table.
    struct Stretch {
        double from = 0.0;
        double to = 0.0;
        std::optional<double> height{};  ///< none where there is no answer
        QString label{};                 ///< stands at its end
        bool fails = false;              ///< there is no answer because of a failure
    };
    struct Figures {
        QString across;                  ///< name and unit of the horizontal axis
        QString unit;                    ///< of the heights
        std::vector<Stretch> stretches;  ///< rising
        std::vector<double> marks{};     ///< where the answer changes, as far as it is known exactly
        std::optional<double> level{};   ///< a line across, for comparison
        QString levelLabel{};
        QString note{};  ///< stands in place of the stairs
    };

    /// @param table a row for each stretch.
    StairChart(TextGrid table, Figures figures);

    [[nodiscard]] const TextGrid& Table() const noexcept override { return m_table; }
    [[nodiscard]] const Figures& Shown() const noexcept { return m_figures; }
    std::vector<QRectF> Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                             int selected) const override;

  private:
    TextGrid m_table;
    Figures m_figures;
};

}  // namespace genvara
