#pragma once

#include <QRectF>
#include <QStyledItemDelegate>

#include "ChartColours.h"
#include "TextGrid.h"

namespace genvara {

/// Draws a bar on its track, with the mark of its limit; line widths hang on the track's height.
void DrawCellBar(QPainter& painter, const QRectF& track, const CellBar& bar, const ChartColours& colours);

/// Shows the bar of a cell below its text: how far it reaches towards its mark. A bar beyond it is hatched.
class BarDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace genvara
