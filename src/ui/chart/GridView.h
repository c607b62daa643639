#pragma once

#include <QSortFilterProxyModel>
#include <QTableView>

#include "GridModel.h"

namespace genvara {

/// Shows a table, with bars in its cells.
class GridView final : public QTableView {
    Q_OBJECT

  public:
    enum class Choose { Cells, Rows };
    /// @param name object name. Rows to choose can be sorted by their columns; cells have their row's name
    /// aside.
    GridView(const QString& name, Choose choose, QWidget* parent = nullptr);

    /// Shows another table; a row that was chosen stays so.
    void Show(TextGrid grid);
    /// The table as it is shown, in its present order.
    [[nodiscard]] TextGrid Shown() const;
    /// Shows what is no longer of the project as it stands, in grey.
    void Stale(bool stale);

    // Positions in the table as it was given, whatever it is sorted by; -1 for none.
    [[nodiscard]] int ChosenRow() const;
    [[nodiscard]] int ChosenColumn() const;
    void ChooseRow(int row) { ChooseCell(row, 0); }
    void ChooseCell(int row, int column);

    /// Lets a column take the room that is left; a text that is too long goes on in a second line, or is cut.
    void Stretch(int column, bool wraps = true);

  signals:
    /// Another cell was chosen.
    void Chosen(int row, int column);
    /// A cell was double-clicked, or Enter was pressed in it.
    void Opened(int row, int column);

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void FitColumns();
    void FitRows();

    GridModel m_model;
    QSortFilterProxyModel m_sorted;
    bool m_isStale = false;
    bool m_isFilling = false;
    int m_stretched = -1;
};

}  // namespace genvara
