#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <map>
#include <utility>
#include <vector>

#include "ImportTable.h"

namespace genvara {

/// What each row of a table of loads becomes, as a table view shows it: the step, the load and its figures,
/// and behind them the cells as they stand in the table. A cell that something is wrong with says so in
/// words, on the ground of an error.
class ImportPreview final : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// Columns of what a row becomes; those of the table itself stand behind them.
    enum Column { Result, Step, Type, Name, Quantity, RunningKW, RunningKVA, StartingKW, StartingKVA, Own };

    /// The table outlives the model.
    explicit ImportPreview(const ImportedTable& table, QObject* parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// The cell that a fault stands beside; none for a fault of the table as a whole.
    [[nodiscard]] QModelIndex CellOf(const TableFault& fault) const;

  private:
    [[nodiscard]] QString Text(const ImportedRow& row, int column) const;
    [[nodiscard]] QString ResultText(int row) const;
    /// What stands in the table for a column, whatever it shows otherwise.
    [[nodiscard]] QString TypedText(const ImportedRow& row, int column) const;
    [[nodiscard]] QString OwnText(const ImportedRow& row, std::size_t column) const;
    [[nodiscard]] QString FaultText(int row, int column) const;
    [[nodiscard]] int ColumnOf(std::int32_t tableColumn) const;

    const ImportedTable* m_table;
    EntryNumbers m_numbers;
    std::vector<std::size_t> m_own;                   ///< columns of the table that stand behind
    std::map<std::size_t, int> m_shown;               ///< column of the table, and where it stands here
    std::map<std::pair<int, int>, QString> m_faults;  ///< sentences by row and column
    std::map<int, int> m_faultsOfRow;
};

}  // namespace genvara
