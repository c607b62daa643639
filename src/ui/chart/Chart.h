#pragma once

#include <QRectF>
#include <memory>
#include <vector>

#include "ChartColours.h"
#include "TextGrid.h"

class QPainter;

namespace genvara {

/// A picture of a table. Nothing changes it, so that any number of views, pages and threads may share it.
class Chart {
  public:
    Chart() = default;
    virtual ~Chart() = default;
    Chart(const Chart&) = delete;
    Chart& operator=(const Chart&) = delete;
    Chart(Chart&&) = delete;
    Chart& operator=(Chart&&) = delete;

    /// The table behind the chart; its title says what to see.
    [[nodiscard]] virtual const TextGrid& Table() const noexcept = 0;

    /// Draws title, axes and figures into an area, in the painter's font; sizes hang on that font alone, so
    /// that the same chart is sharp on every device.
    /// @param selected row of the table that is marked; -1 for none
    /// @return where each row of the table is shown; null rectangles for those that are not.
    virtual std::vector<QRectF> Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                                     int selected) const = 0;
};

using ChartPtr = std::shared_ptr<const Chart>;

}  // namespace genvara
