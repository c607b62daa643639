#pragma once

#include <QAbstractTableModel>

#include "TextGrid.h"

namespace genvara {

/// A table as views, copies and screen readers take it. Where rows are chosen, a reader stands on the first
/// cell and is told the rest of the row there.
class GridModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// What of a cell is more than its text.
    enum Role : int {
        SortRole = Qt::UserRole,  ///< the number of a cell, or its text
        BarRole,                  ///< its `CellBar`, if any
    };

    /// @param namesAside the first column stands beside the rows as their header.
    explicit GridModel(bool namesAside, QObject* parent = nullptr);

    /// Shows another table. One with the same rows and columns keeps selection and scroll position.
    void Show(TextGrid grid);
    [[nodiscard]] bool HasNamesAside() const noexcept { return m_namesAside; }
    [[nodiscard]] const TextGrid& Grid() const noexcept { return m_grid; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    [[nodiscard]] QString NameOf(int row) const;
    [[nodiscard]] QString RestOf(int row) const;
    /// Where a shown column stands in the table.
    [[nodiscard]] std::size_t ColumnAt(int shown) const noexcept {
        const int column = shown + Aside();
        return static_cast<std::size_t>(column);
    }
    [[nodiscard]] int Aside() const noexcept { return m_namesAside && !m_grid.columns.empty() ? 1 : 0; }
    [[nodiscard]] const GridCell& At(int row, int column) const {
        return m_grid.rows[static_cast<std::size_t>(row)][ColumnAt(column)];
    }

    TextGrid m_grid;
    bool m_namesAside;
};

}  // namespace genvara

Q_DECLARE_METATYPE(genvara::CellBar)
