#include "ChartView.h"

#include <QFontInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace genvara {
namespace {

constexpr QSize kSize(420, 230);       // pixels
constexpr QSize kLeastSize(260, 170);  // pixels
constexpr QMargins kHintMargins(24, 8, 24, 8);
constexpr double kStaleOpacity = 0.4;

}  // namespace

ChartView::ChartView(const QString& name, QWidget* parent) : QTableView(parent), m_model(false) {
    setObjectName(name);
    setModel(&m_model);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    viewport()->setMouseTracking(true);
}

void ChartView::Show(ChartPtr chart) {
    const int marked = MarkedRow();
    const QSignalBlocker quiet(this);
    m_chart = std::move(chart);
    m_places.clear();
    m_model.Show(m_chart ? m_chart->Table() : TextGrid{});
    setAccessibleName(m_chart ? m_chart->Table().title : m_hint);
    MarkRow(marked);
    viewport()->update();
}

void ChartView::Hint(const QString& text) {
    m_hint = text;
    if (!m_chart) {
        setAccessibleName(text);
    }
    viewport()->update();
}

void ChartView::Stale(bool stale) {
    m_isStale = stale;
    viewport()->update();
}

void ChartView::MarkRow(int row) {
    if (row >= 0 && row < m_model.rowCount()) {
        setCurrentIndex(m_model.index(row, 0));
    } else {
        setCurrentIndex({});
    }
}

void ChartView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(viewport());
    const ChartColours colours = ColoursOf(palette());
    painter.fillRect(viewport()->rect(), colours.ground);
    if (!m_chart) {
        painter.setPen(colours.faint);
        painter.drawText(viewport()->rect().marginsRemoved(kHintMargins), Qt::AlignCenter | Qt::TextWordWrap,
                         m_hint);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_isStale ? kStaleOpacity : 1.0);
    QFont letters = font();
    letters.setPixelSize(QFontInfo(letters).pixelSize());
    painter.setFont(letters);
    m_places = m_chart->Draw(painter, viewport()->rect(), colours, hasFocus() ? MarkedRow() : -1);
    if (hasFocus()) {
        painter.setOpacity(1.0);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.0));
        painter.drawRect(QRectF(viewport()->rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}

QRect ChartView::visualRect(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    return index.isValid() && row < m_places.size() ? m_places[row].toAlignedRect() : QRect();
}

QModelIndex ChartView::indexAt(const QPoint& point) const {
    for (std::size_t row = 0; row < m_places.size(); ++row) {
        if (m_places[row].contains(point)) {
            return m_model.index(static_cast<int>(row), 0);
        }
    }
    return {};
}

QSize ChartView::sizeHint() const {
    return kSize;
}

QSize ChartView::minimumSizeHint() const {
    return kLeastSize;
}

QString ChartView::TipOf(int row) const {
    QStringList lines;
    const TextGrid& table = m_model.Grid();
    const std::vector<GridCell>& cells = table.rows[static_cast<std::size_t>(row)];
    for (std::size_t column = 0; column < cells.size(); ++column) {
        if (!cells[column].text.isEmpty()) {
            lines += table.columns[column].caption.simplified() + ": " + cells[column].text;
        }
    }
    return lines.join('\n');
}

bool ChartView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex index = indexAt(help->pos());
        if (index.isValid()) {
            QToolTip::showText(help->globalPos(), TipOf(index.row()).toHtmlEscaped().replace('\n', "<br>"),
                               this, visualRect(index));
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QTableView::viewportEvent(event);
}

void ChartView::wheelEvent(QWheelEvent* event) {
    event->ignore();  // whatever the chart stands in scrolls
}

void ChartView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    viewport()->update();
    if (current.row() != previous.row() && current.isValid()) {
        emit Marked(current.row());
    }
}

QModelIndex ChartView::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/) {
    const int last = m_model.rowCount() - 1;
    if (last < 0) {
        return {};
    }
    const int row = MarkedRow();
    switch (action) {
        case MoveLeft:
        case MoveUp:
        case MovePrevious:
            return m_model.index(std::clamp(row - 1, 0, last), 0);
        case MoveHome:
        case MovePageUp:
            return m_model.index(0, 0);
        case MoveEnd:
        case MovePageDown:
            return m_model.index(last, 0);
        default:
            return m_model.index(std::clamp(row + 1, 0, last), 0);
    }
}

void ChartView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    selectionModel()->select(indexAt(rect.topLeft()), command);
}

}  // namespace genvara
