#include "StairChart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "ChartFrame.h"

namespace genvara {
namespace {

constexpr int kMostHeights = 6;
constexpr int kMostAcross = 9;

struct Span {
    double least = std::numeric_limits<double>::infinity();
    double greatest = -std::numeric_limits<double>::infinity();

    void Take(double value) {
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
};

/// Draws the stairs of a chart into its frame.
class StairPainter {
  public:
    StairPainter(const StairChart::Figures& figures, const ChartFrame& frame, const AxisTicks& heights,
                 const Span& across)
        : m_figures(&figures), m_frame(&frame), m_heights(&heights), m_across(across) {}

    [[nodiscard]] double X(double value) const {
        const QRectF& plot = m_frame->Plot();
        const double range = m_across.greatest - m_across.least;
        return range > 0.0 ? plot.left() + (value - m_across.least) / range * plot.width()
                           : plot.center().x();
    }

    void DrawAcross() const {
        const AxisTicks ticks = TicksOver(m_across.least, m_across.greatest, kMostAcross);
        for (const double value : ticks.values) {
            const double margin = (m_across.greatest - m_across.least) * 1e-9;
            if (value >= m_across.least - margin && value <= m_across.greatest + margin) {
                const QString text = ShownNumber(value, ticks.decimals);
                m_frame->DrawBelow(X(value), m_frame->Letters().horizontalAdvance(text) + 1.0, 0, text);
            }
        }
        m_frame->DrawBelow(m_frame->Plot().center().x(), m_frame->Plot().width(), 1, m_figures->across);
    }

    void DrawMark(double value) const {
        QPainter& painter = m_frame->Painter();
        const QRectF& plot = m_frame->Plot();
        painter.setPen(QPen(m_frame->Colours().limit, 1.0, Qt::DashLine));
        painter.drawLine(QPointF(X(value), plot.top()), QPointF(X(value), plot.bottom()));
        // As fine as the eye can tell it on the axis; the table has all digits.
        constexpr double kParts = 2000.0;
        const double fineness = (m_across.greatest - m_across.least) / kParts;
        const int decimals =
            fineness > 0.0 ? std::clamp(static_cast<int>(std::ceil(-std::log10(fineness))), 0, 9) : 0;
        const QString text = ShownNumber(value, decimals);
        const double width = m_frame->Letters().horizontalAdvance(text);
        painter.setPen(m_frame->Colours().limit);
        const double left = std::min(X(value) + m_frame->Gap() / 3, plot.right() - width);
        painter.drawText(QPointF(left, plot.bottom() - m_frame->Letters().descent()), text);
    }

    void DrawLevel() const {
        if (!m_figures->level) {
            return;
        }
        const double y = m_frame->YOf(*m_heights, *m_figures->level);
        QPainter& painter = m_frame->Painter();
        painter.setPen(QPen(m_frame->Colours().other, 1.0, Qt::DotLine));
        painter.drawLine(QPointF(m_frame->Plot().left(), y), QPointF(m_frame->Plot().right(), y));
    }

    [[nodiscard]] QRectF DrawStretch(std::size_t index, bool selected) const {
        const StairChart::Stretch& stretch = m_figures->stretches[index];
        const QRectF& plot = m_frame->Plot();
        // Up to half way to its neighbours, so that all of the plot belongs to some stretch.
        const double left = index == 0 ? plot.left() : Middle(index - 1);
        const double right = index + 1 == m_figures->stretches.size() ? plot.right() : Middle(index);
        const QRectF place(left, plot.top(), right - left, plot.height());
        QPainter& painter = m_frame->Painter();
        const ChartColours& colours = m_frame->Colours();
        if (!stretch.height) {
            QColor faded = stretch.fails ? colours.fails : colours.grid;
            painter.fillRect(place, QBrush(faded, Qt::BDiagPattern));
            DrawLabel(place.center().x(), plot.center().y(), place.width(), stretch.label);
            return place;
        }
        const double y = m_frame->YOf(*m_heights, *stretch.height);
        constexpr double kLine = 2.5;
        painter.setPen(QPen(selected ? colours.selected : colours.value, selected ? kLine * 1.6 : kLine,
                            Qt::SolidLine, Qt::RoundCap));
        // A single point is seen as well as a stretch.
        const double half = stretch.from < stretch.to ? 0.0 : kLine;
        painter.drawLine(QPointF(X(stretch.from) - half, y), QPointF(X(stretch.to) + half, y));
        DrawRise(index, y);
        DrawLabel(place.center().x(), y - m_frame->Letters().height() * 0.9, place.width(), stretch.label);
        return place;
    }

  private:
    [[nodiscard]] double Middle(std::size_t before) const {
        return (X(m_figures->stretches[before].to) + X(m_figures->stretches[before + 1].from)) / 2;
    }
    /// The thin line to the stretch before: it slants where it is not known at which value the answer
    /// changes.
    void DrawRise(std::size_t index, double y) const {
        if (index == 0 || !m_figures->stretches[index - 1].height) {
            return;
        }
        const StairChart::Stretch& before = m_figures->stretches[index - 1];
        QPainter& painter = m_frame->Painter();
        painter.setPen(QPen(m_frame->Colours().value, 1.0, Qt::DotLine));
        painter.drawLine(QPointF(X(before.to), m_frame->YOf(*m_heights, *before.height)),
                         QPointF(X(m_figures->stretches[index].from), y));
    }
    /// Few labels may reach beyond their stretch; of many, those that have no room are left out.
    void DrawLabel(double centre, double middle, double room, const QString& text) const {
        const QFontMetricsF& letters = m_frame->Letters();
        const double width = letters.horizontalAdvance(text);
        constexpr std::size_t kFew = 8;
        if (width > room - 4.0 && m_figures->stretches.size() > kFew) {
            return;
        }
        const QRectF& plot = m_frame->Plot();
        const double left =
            std::clamp(centre - width / 2, plot.left(), std::max(plot.left(), plot.right() - width));
        m_frame->Painter().setPen(m_frame->Colours().text);
        m_frame->Painter().drawText(QPointF(left, middle + (letters.ascent() - letters.descent()) / 2), text);
    }

    const StairChart::Figures* m_figures;
    const ChartFrame* m_frame;
    const AxisTicks* m_heights;
    Span m_across;
};

}  // namespace

StairChart::StairChart(TextGrid table, Figures figures)
    : m_table(std::move(table)), m_figures(std::move(figures)) {}

std::vector<QRectF> StairChart::Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                                     int selected) const {
    painter.save();
    ChartFrame frame(painter, area, colours);
    frame.DrawTitle(m_table.title);
    std::vector<QRectF> places(m_figures.stretches.size());
    if (m_figures.stretches.empty() || !m_figures.note.isEmpty()) {
        frame.DrawNote(m_figures.note);
        painter.restore();
        return places;
    }
    Span across;
    double highest = m_figures.level.value_or(0.0);
    for (const Stretch& stretch : m_figures.stretches) {
        across.Take(stretch.from);
        across.Take(stretch.to);
        highest = std::max(highest, stretch.height.value_or(0.0));
    }
    constexpr double kHeadroom = 1.08;  // for the labels above the stretches
    const AxisTicks heights = TicksFromZero(highest * kHeadroom, kMostHeights);
    frame.ReserveLeft(heights, m_figures.unit);
    frame.ReserveBottom(2);
    std::vector<ChartFrame::EndLabel> labels;
    if (m_figures.level) {
        labels.push_back({.y = frame.YOf(heights, *m_figures.level),
                          .text = m_figures.levelLabel,
                          .colour = colours.other});
    }
    frame.ReserveRight(std::max(frame.WidthOf(labels), frame.Letters().height()));
    frame.DrawHeights(heights, m_figures.unit);
    const StairPainter stairs(m_figures, frame, heights, across);
    stairs.DrawAcross();
    stairs.DrawLevel();
    for (const double mark : m_figures.marks) {
        stairs.DrawMark(mark);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = stairs.DrawStretch(i, static_cast<int>(i) == selected);
    }
    frame.DrawEndLabels(std::move(labels));
    painter.restore();
    return places;
}

}  // namespace genvara
