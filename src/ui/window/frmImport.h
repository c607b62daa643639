#pragma once

#include <QDialog>
#include <QString>

#include "ImportPreview.h"
#include "ImportTable.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace genvara {

class FrozenTable;

/// Shows what each row of a table of loads becomes, with what is wrong beside its cell, and lets all of it be
/// imported once nothing is.
class frmImport final : public QDialog {
    Q_OBJECT

  public:
    /// @param table outlives the dialog.
    /// @param origin where the table comes from, as in "loads.csv".
    frmImport(const ImportedTable& table, const QString& origin, QWidget* owner);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void Build(const QString& origin);
    void BuildTable();
    void FillList();
    /// Shows the cell that an entry of the list is about.
    void ShowFault(int entry);

    const ImportedTable* m_table;
    ImportPreview m_preview;
    QLabel* m_lblSummary;
    FrozenTable* m_tblPreview;
    QListWidget* m_lstFaults;
    QPushButton* m_cmdImport;
};

}  // namespace genvara
