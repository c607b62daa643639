#include "ImportPreview.h"

#include <QColor>
#include <algorithm>
#include <array>
#include <string_view>

#include "FieldError.h"
#include "TableFields.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kDecimals = 2;

/// Columns of a table that are shown as what they become.
struct BecomesColumn {
    std::string_view member;
    int column;
};
constexpr std::array<BecomesColumn, 4> kBecomes{{{kStepColumn, ImportPreview::Step},
                                                 {kTypeColumn, ImportPreview::Type},
                                                 {"name", ImportPreview::Name},
                                                 {"Quantity", ImportPreview::Quantity}}};

}  // namespace

ImportPreview::ImportPreview(const ImportedTable& table, QObject* parent)
    : QAbstractTableModel(parent), m_table(&table) {
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        const auto* const becomes = std::ranges::find_if(
            kBecomes, [&](const BecomesColumn& known) { return table.columns[column].IsOf(known.member); });
        if (becomes != kBecomes.end()) {
            m_shown[column] = becomes->column;
        } else {
            m_shown[column] = Own + static_cast<int>(m_own.size());
            m_own.push_back(column);
        }
    }
    for (const TableFault& fault : table.faults) {
        const QModelIndex cell = CellOf(fault);
        if (cell.isValid()) {
            QString& sentence = m_faults[{cell.row(), cell.column()}];
            sentence += (sentence.isEmpty() ? "" : "\n") + ToQt(fault.text);
            ++m_faultsOfRow[cell.row()];
        }
    }
}

int ImportPreview::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table->rows.size());
}

int ImportPreview::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Own + static_cast<int>(m_own.size());
}

int ImportPreview::ColumnOf(std::int32_t tableColumn) const {
    const auto found = m_shown.find(static_cast<std::size_t>(tableColumn) - 1);
    return tableColumn <= 0 || found == m_shown.end() ? Result : found->second;
}

QModelIndex ImportPreview::CellOf(const TableFault& fault) const {
    const auto row = std::ranges::lower_bound(m_table->rows, fault.row, {}, &ImportedRow::number);
    if (fault.row == 0 || row == m_table->rows.end() || row->number != fault.row) {
        return {};
    }
    return index(static_cast<int>(row - m_table->rows.begin()), ColumnOf(fault.column));
}

QString ImportPreview::FaultText(int row, int column) const {
    const auto found = m_faults.find({row, column});
    return found == m_faults.end() ? QString() : found->second;
}

QString ImportPreview::ResultText(int row) const {
    const auto found = m_faultsOfRow.find(row);
    if (found != m_faultsOfRow.end()) {
        return found->second == 1 ? tr("1 fault") : tr("%1 faults").arg(found->second);
    }
    return m_table->rows.at(static_cast<std::size_t>(row)).load ? tr("OK") : tr("Faults");
}

QString ImportPreview::OwnText(const ImportedRow& row, std::size_t column) const {
    return column < row.cells.size() ? ToQt(row.cells[column]).simplified() : QString();
}

QString ImportPreview::TypedText(const ImportedRow& row, int column) const {
    QString typed;
    for (const auto& [own, shown] : m_shown) {
        typed = shown == column && typed.isEmpty() ? OwnText(row, own) : typed;
    }
    return typed;
}

QString ImportPreview::Text(const ImportedRow& row, int column) const {
    const auto figure = [&](double ImportedFigures::*member) {
        return row.figures ? ToQt(m_numbers.Fixed((*row.figures).*member, kDecimals)) : QString();
    };
    switch (column) {
        case Step:
            return row.step == 0 ? QString()
                                 : tr("%1  %2").arg(row.step).arg(ToQt(row.stepDescription).simplified());
        case Type:
            return ToQt(row.kind);
        case Name:
            return row.load ? ToQt(row.load->name()) : TypedText(row, column);
        case Quantity:
            return row.load ? QString::number(row.load->Quantity()) : TypedText(row, column);
        case RunningKW:
            return figure(&ImportedFigures::runningKW);
        case RunningKVA:
            return figure(&ImportedFigures::runningKVA);
        case StartingKW:
            return figure(&ImportedFigures::startingKW);
        case StartingKVA:
            return figure(&ImportedFigures::startingKVA);
        default:
            return OwnText(row, m_own.at(static_cast<std::size_t>(column - Own)));
    }
}

QVariant ImportPreview::data(const QModelIndex& index, int role) const {
    const ImportedRow& row = m_table->rows.at(static_cast<std::size_t>(index.row()));
    const QString fault = FaultText(index.row(), index.column());
    switch (role) {
        case Qt::DisplayRole: {
            if (index.column() == Result) {
                return ResultText(index.row());
            }
            if (fault.isEmpty()) {
                return Text(row, index.column());
            }
            const QString typed = TypedText(row, index.column());
            return typed.isEmpty() ? tr("Fault: blank") : tr("Fault: %1").arg(typed);
        }
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole:
            return fault;
        case Qt::BackgroundRole:
            return fault.isEmpty() ? QVariant() : QVariant(FieldError::kGround);
        case Qt::ForegroundRole:
            return fault.isEmpty() ? QVariant() : QVariant(QColor(Qt::black));
        case Qt::TextAlignmentRole: {
            const bool isNumber = index.column() >= Quantity && index.column() <= StartingKVA;
            return static_cast<int>(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
        }
        default:
            return {};
    }
}

QVariant ImportPreview::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        return m_table->rows.at(static_cast<std::size_t>(section)).number;
    }
    const std::array<QString, Own> captions{tr("Result"),      tr("Step"),        tr("Type"),
                                            tr("Name"),        tr("Qty"),         tr("Running kW"),
                                            tr("Running kVA"), tr("Starting kW"), tr("Starting kVA")};
    return section < Own
               ? captions.at(static_cast<std::size_t>(section))
               : ToQt(m_table->columns.at(m_own.at(static_cast<std::size_t>(section - Own))).heading)
                     .simplified();
}

}  // namespace genvara
