#pragma once

#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <vector>

#include "ChartAxis.h"
#include "ChartColours.h"

namespace genvara {

/// What all charts draw alike: title, axes with their labels, and labels at the ends of lines.
class ChartFrame {
  public:
    ChartFrame(QPainter& painter, const QRectF& area, const ChartColours& colours);

    /// Draws the title in bold above the rest, on two lines at most.
    void DrawTitle(const QString& title);
    /// Draws a sentence in the middle, in place of a chart.
    void DrawNote(const QString& note);

    /// Leaves room for the labels of a vertical axis, beside and above it.
    void ReserveLeft(const AxisTicks& ticks, const QString& unit);
    void ReserveLeft(double width) { m_plot.setLeft(m_plot.left() + width); }
    void ReserveTop(double height) { m_plot.setTop(m_plot.top() + height); }
    void ReserveRight(double width) { m_plot.setRight(m_plot.right() - width); }
    /// Leaves room for lines of labels below.
    void ReserveBottom(int lines);

    /// What is left for the figures.
    [[nodiscard]] const QRectF& Plot() const noexcept { return m_plot; }
    [[nodiscard]] const QFontMetricsF& Letters() const noexcept { return m_letters; }
    [[nodiscard]] QPainter& Painter() const noexcept { return *m_painter; }
    [[nodiscard]] const ChartColours& Colours() const noexcept { return *m_colours; }
    /// Distance between things, from the font.
    [[nodiscard]] double Gap() const noexcept { return m_gap; }

    /// Draws a vertical axis with its lines across the plot.
    void DrawHeights(const AxisTicks& ticks, const QString& unit) const;
    [[nodiscard]] double YOf(const AxisTicks& ticks, double value) const;

    /// Draws a text centred below the plot, on a line counted from 0.
    void DrawBelow(double centre, double width, int line, const QString& text) const;

    /// Label at the end of a line, at a height.
    struct EndLabel {
        double y;
        QString text;
        QColor colour;
    };
    /// Width that labels want, as far as the area has it to spare.
    [[nodiscard]] double WidthOf(const std::vector<EndLabel>& labels) const;
    /// Draws labels right of the plot, moved apart where they would touch.
    void DrawEndLabels(std::vector<EndLabel> labels) const;

  private:
    /// A label in one line, or in two where it is too wide: its words, its figure.
    [[nodiscard]] QStringList LinesOf(const QString& label, double room) const;

    QPainter* m_painter;
    const ChartColours* m_colours;
    QFontMetricsF m_letters;
    QRectF m_area;
    QRectF m_plot;
    double m_gap;
};

}  // namespace genvara
