#pragma once

#include <QTableView>
#include <vector>

#include "Chart.h"
#include "GridModel.h"

namespace genvara {

/// Shows a chart. To everything but the eye it is the table behind the chart: keys walk through its rows, a
/// screen reader reads its cells, and what the mouse points at tells its figures.
class ChartView final : public QTableView {
    Q_OBJECT

  public:
    /// @param name object name.
    explicit ChartView(const QString& name, QWidget* parent = nullptr);

    void Show(ChartPtr chart);
    [[nodiscard]] const ChartPtr& Shown() const noexcept { return m_chart; }
    /// What stands here while there is no chart.
    void Hint(const QString& text);
    /// Shows what is no longer of the project as it stands, in grey.
    void Stale(bool stale);

    /// Row that is marked; -1 for none.
    [[nodiscard]] int MarkedRow() const { return currentIndex().isValid() ? currentIndex().row() : -1; }
    void MarkRow(int row);

    // Where rows lie on the picture, in place of a table's cells.
    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& /*index*/, ScrollHint /*hint*/ = EnsureVisible) override {}
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  signals:
    /// Another row was marked, by mouse or keys.
    void Marked(int row);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] int horizontalOffset() const override { return 0; }
    [[nodiscard]] int verticalOffset() const override { return 0; }

  private:
    [[nodiscard]] QString TipOf(int row) const;

    ChartPtr m_chart;
    QString m_hint;
    GridModel m_model;
    std::vector<QRectF> m_places;  ///< of the rows, as they were drawn last
    bool m_isStale = false;
};

}  // namespace genvara
