#include "frmImport.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "FormGrid.h"
#include "FrozenTable.h"
#include "LastChance.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kWidth = 940;  // pixels
constexpr int kHeight = 560;
constexpr int kListLines = 5;
constexpr int kWidestColumn = 220;
/// Rows that a column's width is fitted to: more would take their time, and look the same.
constexpr int kFittedRows = 200;

}  // namespace

frmImport::frmImport(const ImportedTable& table, const QString& origin, QWidget* owner)
    : QDialog(owner),
      m_table(&table),
      m_preview(table),
      m_lblSummary(new QLabel),
      m_tblPreview(new FrozenTable(ImportPreview::Quantity)),
      m_lstFaults(new QListWidget),
      m_cmdImport(new QPushButton(tr("&Import"))) {
    Build(origin);
    FillList();
    const QSize room = screen()->availableSize() * 0.9;
    resize(std::min(kWidth, room.width()), std::min(kHeight, room.height()));
}

void frmImport::Build(const QString& origin) {
    setObjectName("frmImport");
    setWindowTitle(tr("Import Loads"));
    BuildTable();
    auto* caption = new QLabel(
        tr("What the &rows of %1 become, all units together:").arg(QString(origin).replace('&', "&&")));
    caption->setBuddy(m_tblPreview);
    caption->setWordWrap(true);
    m_lblSummary->setObjectName("lblSummary");
    m_lblSummary->setWordWrap(true);
    m_lblSummary->setTextFormat(Qt::PlainText);
    QFont bold = m_lblSummary->font();
    bold.setBold(true);
    m_lblSummary->setFont(bold);
    m_lstFaults->setObjectName("lstFaults");
    m_lstFaults->setAccessibleName(tr("Faults and notes"));
    m_lstFaults->setMaximumHeight(fontMetrics().lineSpacing() * (kListLines + 1));
    m_lstFaults->setWordWrap(true);
    m_cmdImport->setObjectName("cmdImport");
    m_cmdImport->setDefault(true);
    auto* cancel = new QPushButton(tr("Cancel"));
    cancel->setObjectName("cmdCancel");
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(m_cmdImport, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kGap);
    column->addWidget(caption);
    column->addWidget(m_tblPreview, 1);
    column->addWidget(m_lblSummary);
    column->addWidget(m_lstFaults);
    column->addWidget(buttons);
    connect(m_lstFaults, &QListWidget::currentRowChanged, this, Event([this](int row) { ShowFault(row); }));
    connect(m_cmdImport, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmImport::BuildTable() {
    m_tblPreview->setObjectName("tblPreview");
    m_tblPreview->setAccessibleName(tr("Rows of the table"));
    m_tblPreview->setModel(&m_preview);
    m_tblPreview->setTabKeyNavigation(false);
    m_tblPreview->setWordWrap(false);
    m_tblPreview->setAlternatingRowColors(true);
    m_tblPreview->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tblPreview->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_tblPreview->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + metrics::kGap);
    m_tblPreview->horizontalHeader()->setResizeContentsPrecision(kFittedRows);
    m_tblPreview->horizontalHeader()->setMaximumSectionSize(kWidestColumn);
    m_tblPreview->resizeColumnsToContents();
    m_tblPreview->setCurrentIndex(m_preview.index(0, 0));
}

void frmImport::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    ShowFault(m_lstFaults->currentRow());  // only now is it known how much of the table is seen
}

void frmImport::FillList() {
    for (const TableFault& fault : m_table->faults) {
        m_lstFaults->addItem(ToQt(FaultLine(fault)));
    }
    for (const std::string& note : m_table->notes) {
        m_lstFaults->addItem(tr("Note: %1").arg(ToQt(note)));
    }
    m_lstFaults->setVisible(m_lstFaults->count() > 0);
    m_lblSummary->setText(ToQt(ImportSummary(*m_table)));
    m_cmdImport->setEnabled(m_table->CanBeAdded());
    if (!m_table->faults.empty()) {
        m_lstFaults->setCurrentRow(0);
        m_lstFaults->setFocus();
    } else {
        m_tblPreview->setFocus();
    }
}

void frmImport::ShowFault(int entry) {
    if (entry < 0 || entry >= static_cast<int>(m_table->faults.size())) {
        return;
    }
    const QModelIndex cell = m_preview.CellOf(m_table->faults.at(static_cast<std::size_t>(entry)));
    if (cell.isValid()) {
        m_tblPreview->setCurrentIndex(cell);
        m_tblPreview->scrollTo(cell);
    }
}

}  // namespace genvara
