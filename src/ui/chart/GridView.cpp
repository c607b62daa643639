#include "GridView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "BarDelegate.h"

namespace genvara {
namespace {

constexpr int kWidestColumn = 420;  // pixels
constexpr int kMostLines = 2;
constexpr int kNarrowColumn = 36;  // characters
constexpr int kRowRoom = 10;       // pixels above and below the lines together
constexpr int kStaleVeil = 150;    // of 255

}  // namespace

GridView::GridView(const QString& name, Choose choose, QWidget* parent)
    : QTableView(parent), m_model(choose == Choose::Cells) {
    setObjectName(name);
    m_sorted.setSourceModel(&m_model);
    m_sorted.setSortRole(GridModel::SortRole);
    m_sorted.setSortCaseSensitivity(Qt::CaseInsensitive);
    setModel(&m_sorted);
    setItemDelegate(new BarDelegate(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(false);
    horizontalHeader()->setHighlightSections(false);
    // Below the last name the ground is that of the table, whose rows end there.
    verticalHeader()->viewport()->setBackgroundRole(QPalette::Base);
    horizontalHeader()->setMinimumSectionSize(40);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    if (choose == Choose::Rows) {
        setSelectionBehavior(QAbstractItemView::SelectRows);
        verticalHeader()->hide();
        setShowGrid(false);
        setAlternatingRowColors(true);
        setSortingEnabled(true);
        horizontalHeader()->setSortIndicatorClearable(true);
        horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    }
    connect(this, &QTableView::activated, this, [this](const QModelIndex& index) {
        const QModelIndex source = m_sorted.mapToSource(index);
        emit Opened(source.row(), source.column());
    });
}

void GridView::Show(TextGrid grid) {
    const int row = ChosenRow();
    const int column = ChosenColumn();
    m_isFilling = true;
    setAccessibleName(grid.title);
    m_model.Show(std::move(grid));
    FitColumns();
    ChooseCell(row, column);
    m_isFilling = false;
}

void GridView::FitColumns() {
    resizeColumnsToContents();
    FitRows();
    for (int column = 0; column < m_sorted.columnCount(); ++column) {
        setColumnWidth(column, std::min(columnWidth(column), kWidestColumn));
    }
    if (m_stretched >= 0 && m_stretched < m_sorted.columnCount()) {
        horizontalHeader()->setSectionResizeMode(m_stretched, QHeaderView::Stretch);
        FitRows();
    }
}

/// All rows as high as the highest; a text of more than two lines, three in a narrow column, ends there and
/// has its tip.
void GridView::FitRows() {
    const bool isNarrow = m_stretched >= 0 && m_stretched < m_sorted.columnCount() &&
                          columnWidth(m_stretched) < kNarrowColumn * fontMetrics().averageCharWidth();
    const int most = (kMostLines + (isNarrow ? 1 : 0)) * fontMetrics().lineSpacing() + kRowRoom;
    int highest = 0;
    for (int row = 0; row < m_sorted.rowCount(); ++row) {
        highest = std::max(highest, sizeHintForRow(row));
    }
    verticalHeader()->setDefaultSectionSize(std::min(highest, most));
}

void GridView::Stretch(int column, bool wraps) {
    setWordWrap(wraps);
    m_stretched = column;
    // Behind the resizing of all columns, which goes on in this signal.
    connect(
        horizontalHeader(), &QHeaderView::sectionResized, this,
        [this](int section) {
            if (section == m_stretched) {
                FitRows();
            }
        },
        Qt::QueuedConnection);
    connect(&m_sorted, &QAbstractItemModel::layoutChanged, this, [this] { FitRows(); });
}

TextGrid GridView::Shown() const {
    const TextGrid& grid = m_model.Grid();
    TextGrid shown{.title = grid.title, .columns = grid.columns};
    for (int row = 0; row < m_sorted.rowCount(); ++row) {
        const int source = m_sorted.mapToSource(m_sorted.index(row, 0)).row();
        shown.rows.push_back(grid.rows[static_cast<std::size_t>(source)]);
    }
    return shown;
}

void GridView::Stale(bool stale) {
    m_isStale = stale;
    viewport()->update();
}

int GridView::ChosenRow() const {
    return m_sorted.mapToSource(currentIndex()).row();
}

int GridView::ChosenColumn() const {
    return m_sorted.mapToSource(currentIndex()).column();
}

void GridView::ChooseCell(int row, int column) {
    const QModelIndex source = m_model.index(row, std::max(column, 0));
    if (!source.isValid()) {
        setCurrentIndex({});
        return;
    }
    const QModelIndex index = m_sorted.mapFromSource(source);
    if (index != currentIndex()) {
        setCurrentIndex(index);
    }
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (current.isValid() && !m_isFilling) {
        const QModelIndex source = m_sorted.mapToSource(current);
        emit Chosen(source.row(), source.column());
    }
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (currentIndex().isValid()) {
            emit Opened(ChosenRow(), ChosenColumn());
        }
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        event->ignore();
        return;
    }
    QTableView::keyPressEvent(event);
}

void GridView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (m_isStale) {
        QColor veil = palette().color(QPalette::Base);
        veil.setAlpha(kStaleVeil);
        QPainter(viewport()).fillRect(viewport()->rect(), veil);
    }
}

}  // namespace genvara
