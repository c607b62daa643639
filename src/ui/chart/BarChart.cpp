#include "BarChart.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ChartFrame.h"

namespace genvara {
namespace {

constexpr int kMostTicks = 6;
constexpr double kBarShare = 0.64;     ///< of the room for a bar
constexpr double kWidestBar = 5.0;     ///< heights of a line
constexpr double kRoomForNames = 4.0;  ///< heights of a line

/// Draws the bars of a chart into its frame.
class BarPainter {
  public:
    BarPainter(const BarChart::Figures& figures, const ChartFrame& frame, const AxisTicks& ticks)
        : m_figures(&figures),
          m_frame(&frame),
          m_ticks(&ticks),
          m_slot(frame.Plot().width() / static_cast<double>(figures.bars.size())) {}

    [[nodiscard]] double Left(std::size_t bar) const {
        return m_frame->Plot().left() + m_slot * static_cast<double>(bar);
    }

    [[nodiscard]] QRectF DrawBar(std::size_t index, bool selected) const {
        const BarChart::Bar& bar = m_figures->bars[index];
        const QRectF& plot = m_frame->Plot();
        const QRectF slot(Left(index), plot.top(), m_slot, plot.height());
        QPainter& painter = m_frame->Painter();
        const ChartColours& colours = m_frame->Colours();
        if (bar.value) {
            const double width = std::min(m_slot * kBarShare, m_frame->Letters().height() * kWidestBar);
            const double top = m_frame->YOf(*m_ticks, *bar.value);
            const QRectF shape(slot.center().x() - width / 2, top, width, plot.bottom() - top);
            painter.fillRect(shape, bar.fails ? colours.fails : colours.value);
            if (bar.fails) {
                painter.fillRect(shape, QBrush(colours.ground, Qt::BDiagPattern));
            }
            if (selected || bar.fails) {
                painter.setPen(
                    QPen(selected ? colours.selected : colours.fails.darker(), selected ? 2.0 : 1.0));
                painter.setBrush(Qt::NoBrush);
                painter.drawRect(shape);
            }
        }
        return slot;
    }

    /// On its ground, so that a limit that crosses it does not cross it out.
    void DrawValue(std::size_t index) const {
        const BarChart::Bar& bar = m_figures->bars[index];
        if (!bar.value) {
            return;
        }
        const QString text = ShownNumber(*bar.value, m_figures->decimals);
        const QFontMetricsF& letters = m_frame->Letters();
        const double width = letters.horizontalAdvance(text);
        if (width + 2.0 > m_slot) {
            return;
        }
        QPainter& painter = m_frame->Painter();
        const QPointF place(Left(index) + m_slot / 2 - width / 2,
                            m_frame->YOf(*m_ticks, *bar.value) - letters.descent());
        painter.fillRect(
            QRectF(place - QPointF(1.0, letters.ascent() * 0.85), QSizeF(width + 2.0, letters.ascent())),
            m_frame->Colours().ground);
        painter.setPen(m_frame->Colours().text);
        painter.drawText(place, text);
    }

    void DrawLimit(const BarChart::Limit& limit) const {
        QPainterPath line;
        bool isOpen = false;
        for (std::size_t i = 0; i < limit.heights.size() && i < m_figures->bars.size(); ++i) {
            if (!limit.heights[i]) {
                isOpen = false;
                continue;
            }
            const QPointF from(Left(i), m_frame->YOf(*m_ticks, *limit.heights[i]));
            if (isOpen) {
                line.lineTo(from);
            } else {
                line.moveTo(from);
            }
            line.lineTo(from + QPointF(m_slot, 0.0));
            isOpen = true;
        }
        QPainter& painter = m_frame->Painter();
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(m_frame->Colours().limit, 2.0));
        painter.drawPath(line);
    }

    void DrawNames() const {
        const QFontMetricsF& letters = m_frame->Letters();
        double widest = 0.0;
        for (const BarChart::Bar& bar : m_figures->bars) {
            widest = std::max(widest, letters.horizontalAdvance(bar.number));
        }
        const int stride =
            LabelStride(static_cast<int>(m_figures->bars.size()), m_slot, widest + m_frame->Gap() * 0.6);
        for (std::size_t i = 0; i < m_figures->bars.size(); ++i) {
            const double centre = Left(i) + m_slot / 2;
            if (i % static_cast<std::size_t>(stride) == 0) {
                m_frame->DrawBelow(centre, m_slot * stride, 0, m_figures->bars[i].number);
            }
            if (HasRoomForNames()) {
                m_frame->DrawBelow(centre, m_slot - m_frame->Gap() * 0.6, 1, m_figures->bars[i].name);
            }
        }
    }
    [[nodiscard]] bool HasRoomForNames() const {
        return m_slot > m_frame->Letters().height() * kRoomForNames;
    }

  private:
    const BarChart::Figures* m_figures;
    const ChartFrame* m_frame;
    const AxisTicks* m_ticks;
    double m_slot;
};

bool HasNames(const std::vector<BarChart::Bar>& bars) {
    return std::ranges::any_of(bars, [](const BarChart::Bar& bar) { return !bar.name.isEmpty(); });
}

}  // namespace

BarChart::BarChart(TextGrid table, Figures figures)
    : m_table(std::move(table)), m_figures(std::move(figures)) {}

double BarChart::Greatest() const {
    double greatest = 0.0;
    const auto take = [&greatest](const std::optional<double>& value) {
        greatest = value && std::isfinite(*value) ? std::max(greatest, *value) : greatest;
    };
    for (const Bar& bar : m_figures.bars) {
        take(bar.value);
    }
    for (const Limit& limit : m_figures.limits) {
        std::ranges::for_each(limit.heights, take);
    }
    return greatest;
}

std::vector<QRectF> BarChart::Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                                   int selected) const {
    painter.save();
    ChartFrame frame(painter, area, colours);
    frame.DrawTitle(m_table.title);
    std::vector<QRectF> places(m_figures.bars.size());
    if (m_figures.bars.empty() || !m_figures.note.isEmpty()) {
        frame.DrawNote(m_figures.note);
        painter.restore();
        return places;
    }
    const AxisTicks ticks = TicksFromZero(Greatest(), kMostTicks);
    frame.ReserveLeft(ticks, m_figures.unit);
    frame.ReserveBottom(HasNames(m_figures.bars) ? 2 : 1);
    std::vector<ChartFrame::EndLabel> labels;
    for (const Limit& limit : m_figures.limits) {
        if (!limit.heights.empty() && limit.heights.back()) {
            labels.push_back(
                {.y = frame.YOf(ticks, *limit.heights.back()), .text = limit.label, .colour = colours.limit});
        }
    }
    frame.ReserveRight(frame.WidthOf(labels));
    frame.DrawHeights(ticks, m_figures.unit);
    const BarPainter bars(m_figures, frame, ticks);
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = bars.DrawBar(i, static_cast<int>(i) == selected);
    }
    for (const Limit& limit : m_figures.limits) {
        bars.DrawLimit(limit);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        bars.DrawValue(i);
    }
    bars.DrawNames();
    frame.DrawEndLabels(std::move(labels));
    painter.restore();
    return places;
}

}  // namespace genvara
