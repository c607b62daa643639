#include "GridModel.h"

#include <QFont>
#include <QStringList>
#include <utility>

namespace genvara {

GridModel::GridModel(bool namesAside, QObject* parent)
    : QAbstractTableModel(parent), m_namesAside(namesAside) {}

void GridModel::Show(TextGrid grid) {
    const bool isAlike =
        grid.columns.size() == m_grid.columns.size() && grid.rows.size() == m_grid.rows.size();
    if (!isAlike) {
        beginResetModel();
        m_grid = std::move(grid);
        endResetModel();
        return;
    }
    m_grid = std::move(grid);
    if (rowCount() > 0 && columnCount() > 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_grid.rows.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_grid.columns.size()) - Aside();
}

/// The first cell; a number with what it is one of: "Step 3".
QString GridModel::NameOf(int row) const {
    const GridColumn& column = m_grid.columns.front();
    const QString& text = At(row, 0).text;
    return column.isNumber && !text.isEmpty() ? column.caption.simplified() + " " + text : text;
}

QString GridModel::RestOf(int row) const {
    QStringList texts;
    for (std::size_t column = 1; column < m_grid.columns.size(); ++column) {
        const QString& text = m_grid.rows[static_cast<std::size_t>(row)][column].text;
        const QString caption = m_grid.columns[column].caption.simplified();
        if (!text.isEmpty()) {
            texts += caption.isEmpty() ? text : caption + ": " + text;
        }
    }
    return texts.join(", ");
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const GridCell& cell = At(index.row(), index.column());
    const bool isRowsName = !m_namesAside && index.column() == 0;
    switch (role) {
        case Qt::DisplayRole:
            return cell.text;
        case Qt::ToolTipRole:
            return cell.tip.isEmpty() ? QVariant() : cell.tip;
        case Qt::AccessibleTextRole:
            return isRowsName ? NameOf(index.row()) : cell.text;
        case Qt::AccessibleDescriptionRole:
            return isRowsName ? RestOf(index.row()) : cell.tip;
        case Qt::TextAlignmentRole:
            return static_cast<int>(
                Qt::AlignVCenter |
                (m_grid.columns[ColumnAt(index.column())].isNumber ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::FontRole: {
            if (!cell.isBold) {
                return {};
            }
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        case SortRole:
            return cell.number ? QVariant(*cell.number) : QVariant(cell.text);
        case BarRole:
            return cell.bar ? QVariant::fromValue(*cell.bar) : QVariant();
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section < 0 || section >= (orientation == Qt::Horizontal ? columnCount() : rowCount())) {
        return {};
    }
    if (orientation == Qt::Vertical) {
        const GridCell* name =
            Aside() == 1 ? &m_grid.rows[static_cast<std::size_t>(section)].front() : nullptr;
        if (role == Qt::DisplayRole) {
            return name == nullptr ? QVariant(section + 1) : QVariant(name->text);
        }
        return role == Qt::ToolTipRole && name != nullptr && !name->tip.isEmpty() ? QVariant(name->tip)
                                                                                  : QVariant();
    }
    const GridColumn& column = m_grid.columns[ColumnAt(section)];
    if (role == Qt::DisplayRole) {
        return column.caption;
    }
    if (role == Qt::ToolTipRole && !column.tip.isEmpty()) {
        return column.tip;
    }
    if (role == Qt::TextAlignmentRole && Aside() == 0) {
        return static_cast<int>(Qt::AlignVCenter | (column.isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

}  // namespace genvara
