#include "BarDelegate.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "GridModel.h"

namespace genvara {
namespace {

constexpr int kBarHeight = 5;  // pixels
constexpr int kGap = 2;        // pixels between a text and its bar
constexpr int kMargin = 5;     // pixels
constexpr int kRoom = 3;       // pixels above and below
constexpr int kLeastBar = 80;  // pixels

}  // namespace

void DrawCellBar(QPainter& painter, const QRectF& track, const CellBar& bar, const ChartColours& colours) {
    if (!(bar.most > 0.0)) {
        return;
    }
    const double line = track.height() / 5.0;
    const auto x = [&](double value) {
        return track.left() + std::clamp(value / bar.most, 0.0, 1.0) * track.width();
    };
    painter.fillRect(track, colours.grid);
    const QRectF shape(track.topLeft(), QPointF(x(bar.value), track.bottom()));
    painter.fillRect(shape, bar.fails ? colours.fails : colours.value);
    if (bar.fails) {
        painter.fillRect(shape, QBrush(colours.ground, Qt::BDiagPattern));
        painter.setPen(QPen(colours.fails.darker(), line));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(shape);
    }
    const double mark = x(bar.limit);
    painter.setPen(QPen(colours.limit, 2.0 * line, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(mark, track.top() - 2.0 * line), QPointF(mark, track.bottom() + 2.0 * line));
}

void BarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const QVariant held = index.data(GridModel::BarRole);
    if (!held.isValid()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const auto bar = held.value<CellBar>();
    // The text above, on the ground of the whole cell.
    QStyleOptionViewItem whole(option);
    initStyleOption(&whole, index);
    const QWidget* widget = option.widget;
    const QStyle* style = widget->style();
    const QString text = std::exchange(whole.text, QString());
    style->drawControl(QStyle::CE_ItemViewItem, &whole, painter, widget);
    // Text and bar stand in the middle together, so that rows of several lines have them on one line.
    const int height = whole.fontMetrics.height() + kGap + kBarHeight;
    const QRect inner(option.rect.left() + kMargin, option.rect.top() + (option.rect.height() - height) / 2,
                      option.rect.width() - 2 * kMargin, whole.fontMetrics.height());
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    painter->save();
    painter->setFont(whole.font);
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(inner, static_cast<int>(whole.displayAlignment),
                      whole.fontMetrics.elidedText(text, Qt::ElideRight, inner.width()));
    const QRectF track(inner.left(), inner.bottom() + 1 + kGap, inner.width(), kBarHeight);
    if (isSelected) {
        painter->fillRect(track.adjusted(-2, -3, 2, 3), option.palette.color(QPalette::Base));
    }
    DrawCellBar(*painter, track, bar, ColoursOf(option.palette));
    painter->restore();
}

QSize BarDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize text = QStyledItemDelegate::sizeHint(option, index);
    return index.data(GridModel::BarRole).isValid()
               ? QSize(std::max(text.width() + kMargin, kLeastBar),
                       text.height() + kGap + kBarHeight + 2 * kRoom)
               : QSize(text.width() + kMargin, text.height() + 2 * kRoom);
}

}  // namespace genvara
