#include "OrderTree.h"

#include <QDropEvent>
#include <QHeaderView>

#include "Texts.h"

namespace genvara {
namespace {

constexpr int kStepRole = Qt::UserRole;
constexpr int kLoadRole = Qt::UserRole + 1;

std::optional<LoadPlace> PlaceOf(const QTreeWidgetItem* item) {
    if (item == nullptr || item->data(0, kLoadRole).toInt() == 0) {
        return std::nullopt;
    }
    return LoadPlace{item->data(0, kStepRole).toInt(), item->data(0, kLoadRole).toInt()};
}

}  // namespace

OrderTree::OrderTree(const QString& name, const QString& title, bool takesDrags, QWidget* parent)
    : QTreeWidget(parent) {
    setObjectName(name);
    setAccessibleName(title);
    setColumnCount(2);
    setHeaderLabels({title, tr("Moved")});
    setColumnHidden(1, takesDrags);  // nothing has moved in the order that rules are dragged in
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setItemsExpandable(false);
    setRootIsDecorated(false);
    if (takesDrags) {
        setDragEnabled(true);
        setAcceptDrops(true);
        setDragDropMode(QAbstractItemView::DragDrop);
        setDropIndicatorShown(true);
    }
}

void OrderTree::Show(const StudyProject& project, const LoadOrder& order) {
    clear();
    QFont bold = font();
    bold.setBold(true);
    int number = 0;
    for (const std::vector<LoadPlace>& loads : order) {
        auto* step = new QTreeWidgetItem(this, {tr("Step %1").arg(++number), QString()});
        step->setFont(0, bold);
        step->setFlags(Qt::ItemIsEnabled);
        for (const LoadPlace& place : loads) {
            const Load& load = *std::next(project.loadProfile.LoadStep(place.step).begin(), place.load - 1);
            auto* item = new QTreeWidgetItem(
                step, {QString("%1 x %2").arg(load.Quantity()).arg(ToQt(load.name())),
                       place.step == number ? QString() : tr("now in step %1").arg(place.step)});
            item->setData(0, kStepRole, place.step);
            item->setData(0, kLoadRole, place.load);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
                           Qt::ItemIsDropEnabled);
        }
        if (loads.empty()) {
            auto* item = new QTreeWidgetItem(step, {tr("no load"), QString()});
            item->setFlags(Qt::ItemIsEnabled);
        }
    }
    expandAll();
}

std::vector<LoadPlace> OrderTree::SelectedLoads() const {
    std::vector<LoadPlace> places;
    for (int step = 0; step < topLevelItemCount(); ++step) {
        for (int load = 0; load < topLevelItem(step)->childCount(); ++load) {
            const QTreeWidgetItem* item = topLevelItem(step)->child(load);
            if (const auto place = PlaceOf(item); place && item->isSelected()) {
                places.push_back(*place);
            }
        }
    }
    return places;
}

std::optional<LoadPlace> OrderTree::LoadAt(const QPoint& point) const {
    return PlaceOf(itemAt(point));
}

void OrderTree::dragMoveEvent(QDragMoveEvent* event) {
    QTreeWidget::dragMoveEvent(event);
    const auto dragged = PlaceOf(currentItem());
    const auto target = LoadAt(event->position().toPoint());
    event->setAccepted(event->source() == this && dragged && target && *dragged != *target);
}

void OrderTree::dropEvent(QDropEvent* event) {
    const auto dragged = PlaceOf(currentItem());
    const auto target = LoadAt(event->position().toPoint());
    // Nothing moves: what was dropped is a rule, or nothing.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    if (event->source() == this && dragged && target && *dragged != *target) {
        emit Dropped(*dragged, *target);
    }
}

}  // namespace genvara
