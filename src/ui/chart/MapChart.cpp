#include "MapChart.h"

#include <algorithm>
#include <map>
#include <utility>

#include "ChartFrame.h"

namespace genvara {
namespace {

/// The answers of a map by their values, with what they are called.
using Keys = std::map<double, QString>;

Keys KeysOf(const std::vector<MapChart::Cell>& cells) {
    Keys keys;
    for (const MapChart::Cell& cell : cells) {
        if (cell.value) {
            keys.emplace(*cell.value, cell.label);
        }
    }
    return keys;
}

class MapPainter {
  public:
    MapPainter(const MapChart::Figures& figures, const ChartFrame& frame)
        : m_figures(&figures),
          m_frame(&frame),
          m_keys(KeysOf(figures.cells)),
          m_width(frame.Plot().width() / static_cast<double>(figures.columns.size())),
          m_height(frame.Plot().height() / static_cast<double>(figures.rows.size())) {}

    [[nodiscard]] QColor ColourOf(double value) const {
        const auto rank = std::distance(m_keys.begin(), m_keys.lower_bound(value));
        const auto last = static_cast<double>(m_keys.size()) - 1.0;
        return MapColour(m_frame->Colours(), last > 0.0 ? static_cast<double>(rank) / last : 0.0);
    }

    [[nodiscard]] QRectF DrawCell(std::size_t index, bool selected) const {
        const MapChart::Cell& cell = m_figures->cells[index];
        const std::size_t rows = m_figures->rows.size();
        const QRectF& plot = m_frame->Plot();
        const std::size_t column = index / rows;
        const QRectF place(plot.left() + m_width * static_cast<double>(column),
                           plot.bottom() - m_height * static_cast<double>(index % rows + 1), m_width,
                           m_height);
        QPainter& painter = m_frame->Painter();
        const ChartColours& colours = m_frame->Colours();
        QColor ground = colours.ground;
        if (cell.value) {
            ground = ColourOf(*cell.value);
            painter.fillRect(place, ground);
        } else {
            painter.fillRect(place, QBrush(cell.fails ? colours.fails : colours.other, Qt::BDiagPattern));
        }
        DrawLabel(cell, place, ground);
        if (selected) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(colours.isDark ? QColor(Qt::white) : QColor(Qt::black), 2.0));
            painter.drawRect(place.adjusted(1.0, 1.0, -1.0, -1.0));
        }
        return place;
    }

    void DrawAxes() const {
        const QFontMetricsF& letters = m_frame->Letters();
        const QRectF& plot = m_frame->Plot();
        const int columnStride = LabelStride(static_cast<int>(m_figures->columns.size()), m_width,
                                             Widest(m_figures->columns) + m_frame->Gap());
        for (std::size_t i = 0; i < m_figures->columns.size(); i += static_cast<std::size_t>(columnStride)) {
            m_frame->DrawBelow(plot.left() + m_width * (static_cast<double>(i) + 0.5), m_width * columnStride,
                               0, m_figures->columns[i]);
        }
        m_frame->DrawBelow(plot.center().x(), plot.width(), 1, m_figures->across);
        const int rowStride =
            LabelStride(static_cast<int>(m_figures->rows.size()), m_height, letters.height());
        QPainter& painter = m_frame->Painter();
        painter.setPen(m_frame->Colours().faint);
        for (std::size_t i = 0; i < m_figures->rows.size(); i += static_cast<std::size_t>(rowStride)) {
            const double middle = plot.bottom() - m_height * (static_cast<double>(i) + 0.5);
            painter.drawText(
                QPointF(plot.left() - m_frame->Gap() / 2 - letters.horizontalAdvance(m_figures->rows[i]),
                        middle + (letters.ascent() - letters.descent()) / 2),
                m_figures->rows[i]);
        }
    }

    /// The keys, largest on top, as far as there is room.
    void DrawKeys() const {
        const QFontMetricsF& letters = m_frame->Letters();
        QPainter& painter = m_frame->Painter();
        const double side = letters.ascent();
        const double left = m_frame->Plot().right() + m_frame->Gap();
        double top = m_frame->Plot().top();
        for (auto key = m_keys.rbegin(); key != m_keys.rend(); ++key) {
            if (top + letters.height() > m_frame->Plot().bottom()) {
                break;
            }
            painter.fillRect(QRectF(left, top, side, side), ColourOf(key->first));
            painter.setPen(m_frame->Colours().text);
            painter.drawText(QPointF(left + side + m_frame->Gap() / 2, top + letters.ascent()), key->second);
            top += letters.height() * 1.15;
        }
    }
    [[nodiscard]] double WidthOfKeys() const {
        double width = 0.0;
        for (const auto& [value, label] : m_keys) {
            width = std::max(width, m_frame->Letters().horizontalAdvance(label));
        }
        return width + m_frame->Letters().ascent() + m_frame->Gap() * 2;
    }
    [[nodiscard]] double Widest(const std::vector<QString>& labels) const {
        double width = 0.0;
        for (const QString& label : labels) {
            width = std::max(width, m_frame->Letters().horizontalAdvance(label));
        }
        return width;
    }

  private:
    void DrawLabel(const MapChart::Cell& cell, const QRectF& place, const QColor& ground) const {
        const QFontMetricsF& letters = m_frame->Letters();
        if (letters.horizontalAdvance(cell.label) + 4.0 > place.width() ||
            letters.height() > place.height()) {
            return;
        }
        m_frame->Painter().setPen(cell.value ? TextOn(ground) : m_frame->Colours().text);
        m_frame->Painter().drawText(place, Qt::AlignCenter, cell.label);
    }

    const MapChart::Figures* m_figures;
    const ChartFrame* m_frame;
    Keys m_keys;
    double m_width;
    double m_height;
};

}  // namespace

MapChart::MapChart(TextGrid table, Figures figures)
    : m_table(std::move(table)), m_figures(std::move(figures)) {}

std::vector<QRectF> MapChart::Draw(QPainter& painter, const QRectF& area, const ChartColours& colours,
                                   int selected) const {
    painter.save();
    ChartFrame frame(painter, area, colours);
    frame.DrawTitle(m_table.title);
    std::vector<QRectF> places(m_figures.cells.size());
    if (m_figures.cells.empty() || !m_figures.note.isEmpty()) {
        frame.DrawNote(m_figures.note);
        painter.restore();
        return places;
    }
    painter.setPen(colours.faint);
    painter.drawText(QPointF(frame.Plot().left(), frame.Plot().top() + frame.Letters().ascent()),
                     m_figures.up);
    const MapPainter measure(m_figures, frame);
    const AxisTicks none{.least = 0.0, .greatest = 1.0, .values = {}};
    frame.ReserveLeft(none, QString());
    frame.ReserveLeft(measure.Widest(m_figures.rows));
    frame.ReserveBottom(2);
    frame.ReserveRight(std::min(measure.WidthOfKeys(), area.width() / 3));
    frame.ReserveTop(frame.Letters().height() * 1.3);
    const MapPainter map(m_figures, frame);
    for (std::size_t i = 0; i < places.size(); ++i) {
        places[i] = map.DrawCell(i, static_cast<int>(i) == selected);
    }
    map.DrawAxes();
    map.DrawKeys();
    painter.restore();
    return places;
}

}  // namespace genvara
