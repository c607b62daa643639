#include "ChartFrame.h"

#include <QTextLayout>
#include <algorithm>

#include "TextGrid.h"

namespace genvara {
namespace {

constexpr double kGapOfHeight = 0.4;      ///< of a line's height
constexpr double kMostLabelShare = 0.36;  ///< of the area's width

}  // namespace

ChartFrame::ChartFrame(QPainter& painter, const QRectF& area, const ChartColours& colours)
    : m_painter(&painter),
      m_colours(&colours),
      m_letters(painter.font()),
      m_area(area),
      m_plot(area),
      m_gap(m_letters.height() * kGapOfHeight) {
    m_plot.adjust(m_gap, m_gap, -m_gap, -m_gap);
}

void ChartFrame::DrawTitle(const QString& title) {
    QFont bold = m_painter->font();
    bold.setBold(true);
    const QFontMetricsF letters(bold);
    m_painter->save();
    m_painter->setFont(bold);
    m_painter->setPen(m_colours->text);
    QString left = title.simplified();
    constexpr int kMostLines = 2;
    for (int line = 0; line < kMostLines && !left.isEmpty(); ++line) {
        QString part = left;
        if (line + 1 < kMostLines && letters.horizontalAdvance(part) > m_plot.width()) {
            qsizetype end = part.size();
            while (end > 0 && letters.horizontalAdvance(part.left(end)) > m_plot.width()) {
                end = part.lastIndexOf(' ', end - 1);
            }
            part = end > 0 ? part.left(end) : part;
        }
        const QString shown = letters.elidedText(part, Qt::ElideRight, m_plot.width());
        m_painter->drawText(QPointF(m_plot.left(), m_plot.top() + letters.ascent()), shown);
        m_plot.setTop(m_plot.top() + letters.height());
        left = left.mid(part.size()).trimmed();
    }
    m_plot.setTop(m_plot.top() + m_gap);
    m_painter->restore();
}

void ChartFrame::DrawNote(const QString& note) {
    m_painter->setPen(m_colours->faint);
    m_painter->drawText(m_plot, Qt::AlignCenter | Qt::TextWordWrap, note);
}

void ChartFrame::ReserveLeft(const AxisTicks& ticks, const QString& unit) {
    double width = 0.0;
    for (const double value : ticks.values) {
        width = std::max(width, m_letters.horizontalAdvance(ShownNumber(value, ticks.decimals)));
    }
    m_plot.setLeft(m_plot.left() + std::max(width, m_letters.horizontalAdvance(unit)) + m_gap);
    if (!unit.isEmpty()) {
        m_plot.setTop(m_plot.top() + m_letters.height() * 1.2);
    }
}

void ChartFrame::ReserveBottom(int lines) {
    m_plot.setBottom(m_plot.bottom() - m_letters.height() * lines - m_gap / 2);
}

double ChartFrame::YOf(const AxisTicks& ticks, double value) const {
    const double share = (value - ticks.least) / (ticks.greatest - ticks.least);
    return m_plot.bottom() - std::clamp(share, 0.0, 1.0) * m_plot.height();
}

void ChartFrame::DrawHeights(const AxisTicks& ticks, const QString& unit) const {
    m_painter->save();
    const double right = m_plot.left() - m_gap / 2;
    for (const double value : ticks.values) {
        const double y = YOf(ticks, value);
        m_painter->setPen(QPen(m_colours->grid, 1.0));
        m_painter->drawLine(QPointF(m_plot.left(), y), QPointF(m_plot.right(), y));
        m_painter->setPen(m_colours->faint);
        const QString text = ShownNumber(value, ticks.decimals);
        m_painter->drawText(QPointF(right - m_letters.horizontalAdvance(text),
                                    y + (m_letters.ascent() - m_letters.descent()) / 2),
                            text);
    }
    m_painter->setPen(m_colours->faint);
    m_painter->drawText(
        QPointF(right - m_letters.horizontalAdvance(unit), m_plot.top() - m_letters.height() * 0.7), unit);
    m_painter->restore();
}

void ChartFrame::DrawBelow(double centre, double width, int line, const QString& text) const {
    const QString shown = m_letters.elidedText(text, Qt::ElideRight, width);
    const double y = m_plot.bottom() + m_gap / 2 + m_letters.height() * line + m_letters.ascent();
    m_painter->setPen(m_colours->faint);
    m_painter->drawText(QPointF(centre - m_letters.horizontalAdvance(shown) / 2, y), shown);
}

QStringList ChartFrame::LinesOf(const QString& label, double room) const {
    // A figure and its unit are what must not be cut off.
    const qsizetype figure = label.lastIndexOf(' ', label.lastIndexOf(' ') - 1);
    const bool isBroken = figure > 0 && m_letters.horizontalAdvance(label) > room;
    QStringList lines =
        isBroken ? QStringList{label.left(figure), label.mid(figure + 1)} : QStringList{label};
    for (QString& line : lines) {
        line = m_letters.elidedText(line, Qt::ElideRight, room);
    }
    return lines;
}

double ChartFrame::WidthOf(const std::vector<EndLabel>& labels) const {
    double width = 0.0;
    for (const EndLabel& label : labels) {
        for (const QString& line : LinesOf(label.text, m_area.width() * kMostLabelShare - m_gap)) {
            width = std::max(width, m_letters.horizontalAdvance(line) + m_gap);
        }
    }
    return width;
}

void ChartFrame::DrawEndLabels(std::vector<EndLabel> labels) const {
    std::ranges::sort(labels, {}, &EndLabel::y);
    const double left = m_plot.right() + m_gap / 2;
    std::vector<QStringList> lines;
    std::vector<double> halves;  // of the labels' heights
    for (const EndLabel& label : labels) {
        lines.push_back(LinesOf(label.text, m_area.right() - m_gap / 2 - left));
        halves.push_back(m_letters.height() * static_cast<double>(lines.back().size()) / 2);
    }
    double top = m_plot.top() - m_letters.height() / 2;
    std::vector<double> middles;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        middles.push_back(std::max(labels[i].y, top + halves[i]));
        top = middles[i] + halves[i];
    }
    // What was pushed beyond the plot goes up again, and takes along what stands in its way.
    double bottom = m_plot.bottom() + m_letters.height() / 2;
    for (std::size_t i = labels.size(); i-- > 0;) {
        middles[i] = std::min(middles[i], bottom - halves[i]);
        bottom = middles[i] - halves[i];
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        m_painter->setPen(labels[i].colour);
        double baseline = middles[i] - halves[i] + m_letters.ascent();
        for (const QString& line : lines[i]) {
            m_painter->drawText(QPointF(left, baseline), line);
            baseline += m_letters.height();
        }
    }
}

}  // namespace genvara
