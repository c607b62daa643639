#include "FrozenTable.h"

#include <QHeaderView>
#include <QScrollBar>

namespace genvara {
namespace {

/// Share of the table that columns may cover [percent].
constexpr int kMostCovered = 60;

}  // namespace

FrozenTable::FrozenTable(int columns, QWidget* parent)
    : QTableView(parent), m_columns(columns), m_front(new QTableView(this)) {
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_front->setObjectName("tblFront");
    m_front->setFocusPolicy(Qt::NoFocus);
    m_front->setFrameStyle(QFrame::NoFrame);
    m_front->verticalHeader()->hide();
    m_front->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_front->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_front->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_front->setVerticalScrollMode(verticalScrollMode());
    m_front->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, m_front->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(m_front->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { Follow(); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { Follow(); });
    connect(horizontalHeader(), &QHeaderView::geometriesChanged, this, [this] { Follow(); });
    connect(verticalHeader(), &QHeaderView::geometriesChanged, this, [this] { Follow(); });
}

void FrozenTable::setModel(QAbstractItemModel* model) {
    QTableView::setModel(model);
    m_front->setModel(model);
    m_front->setSelectionModel(selectionModel());
    for (int column = 0; column < model->columnCount(); ++column) {
        m_front->setColumnHidden(column, column >= m_columns);
    }
    Follow();
}

int FrozenTable::Covered() const {
    return m_front->isHidden() ? 0 : m_front->width();
}

/// Lays the columns that stay over their twins, as long as some of those are scrolled away.
void FrozenTable::Follow() {
    m_front->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_front->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
    m_front->setAlternatingRowColors(alternatingRowColors());
    m_front->setWordWrap(wordWrap());
    m_front->setSelectionMode(selectionMode());
    m_front->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
    int width = 0;
    for (int column = 0; column < m_columns; ++column) {
        m_front->setColumnWidth(column, columnWidth(column));
        width += columnWidth(column);
    }
    const bool isNeeded = horizontalScrollBar()->value() > 0 && model() != nullptr;
    m_front->setVisible(isNeeded && width * 100 <= viewport()->width() * kMostCovered);
    m_front->setGeometry(frameWidth() + verticalHeader()->width(), frameWidth(), width,
                         viewport()->height() + horizontalHeader()->height());
    m_front->verticalScrollBar()->setValue(verticalScrollBar()->value());
}

void FrozenTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    Follow();
}

void FrozenTable::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QTableView::scrollTo(index, hint);
    const int hidden = Covered() - visualRect(index).left();
    if (index.column() >= m_columns && hidden > 0) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - hidden);
    }
}

}  // namespace genvara
