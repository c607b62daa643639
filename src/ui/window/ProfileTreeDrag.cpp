// Dragging steps and loads within the tree: where they may be dropped, and what shows it.

#include <QCoreApplication>
#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPainter>

#include "ProfileFollower.h"
#include "ProfileTree.h"

namespace genvara {
namespace {

constexpr const char* kFormat = "application/x-genvara-node";
constexpr int kScrollZone = 24;  // pixels at the edges

/// "process step load".
QByteArray TextOf(ProfilePlace place) {
    return QByteArray::number(QCoreApplication::applicationPid()) + ' ' + QByteArray::number(place.stepId) +
           ' ' + QByteArray::number(place.loadId);
}

/// The place of a text; nothing for any other text, and for one of another process.
ProfilePlace PlaceIn(const QByteArray& text) {
    const QList<QByteArray> words = text.split(' ');
    if (words.size() != 3 || words[0] != QByteArray::number(QCoreApplication::applicationPid())) {
        return {};
    }
    bool step = false;
    bool load = false;
    const ProfilePlace place{.stepId = words[1].toInt(&step), .loadId = words[2].toInt(&load)};
    return step && load ? place : ProfilePlace{};
}

}  // namespace

std::unique_ptr<QMimeData> ProfileTree::DragData(const QTreeWidgetItem& node) {
    auto data = std::make_unique<QMimeData>();
    data->setData(kFormat, TextOf(PlaceOf(node)));
    return data;
}

void ProfileTree::startDrag(Qt::DropActions /*actions*/) {
    const QTreeWidgetItem* node = Selected();
    if (node == nullptr) {
        return;
    }
    auto* drag = new QDrag(this);
    drag->setMimeData(DragData(*node).release());
    const QIcon picture = node->icon(profile_column::kText);
    drag->setPixmap(picture.pixmap(iconSize()));
    drag->exec(Qt::MoveAction);
}

ProfileTree::Drop ProfileTree::DropOf(const QDropEvent& event) const {
    const QTreeWidgetItem* dragged = nullptr;
    if (const ProfilePlace place = PlaceIn(event.mimeData()->data(kFormat))) {
        dragged = FindPlace(*this, place);
        if (dragged != nullptr && !(PlaceOf(*dragged) == place)) {
            dragged = nullptr;  // the load is gone, and this is its step
        }
    }
    if (dragged == nullptr || topLevelItemCount() == 0) {
        return {};
    }
    const QPoint point = event.position().toPoint();
    QTreeWidgetItem* under = itemAt(point);
    if (under == nullptr) {
        under = topLevelItem(topLevelItemCount() - 1);  // below the last row
    }
    const std::int32_t from = StepPosition(*dragged);
    const std::int32_t onto = StepPosition(*under);
    const QTreeWidgetItem* step = topLevelItem(onto - 1);
    if (!IsStep(*dragged)) {
        return {.what = onto == from ? ProfilePlace{} : PlaceOf(*dragged),
                .position = onto,
                .mark = visualItemRect(step)};
    }
    const QRect row = visualItemRect(under);
    const bool before = IsStep(*under) && point.y() < row.center().y();
    // What stands behind the dragged step moves up once that has gone.
    const std::int32_t place = (before ? onto : onto + 1) - (from < onto + (before ? 0 : 1) ? 1 : 0);
    const QTreeWidgetItem* last =
        step->isExpanded() && step->childCount() > 0 ? step->child(step->childCount() - 1) : step;
    const int line = before ? row.top() : visualItemRect(last).bottom();
    return {.what = place == from ? ProfilePlace{} : PlaceOf(*dragged),
            .position = place,
            .mark = QRect(0, line, viewport()->width(), 1)};
}

void ProfileTree::MarkDrop(const QRect& mark) {
    if (m_dropMark != mark) {
        m_dropMark = mark;
        viewport()->update();
    }
}

void ProfileTree::dragEnterEvent(QDragEnterEvent* event) {
    event->setAccepted(event->mimeData()->hasFormat(kFormat));
}

void ProfileTree::dragMoveEvent(QDragMoveEvent* event) {
    const Drop drop = DropOf(*event);
    MarkDrop(drop.what ? drop.mark : QRect());
    event->setDropAction(Qt::MoveAction);
    event->setAccepted(static_cast<bool>(drop.what));
    const int y = event->position().toPoint().y();
    if (y < kScrollZone || y > viewport()->height() - kScrollZone) {
        startAutoScroll();
    }
}

void ProfileTree::dragLeaveEvent(QDragLeaveEvent* event) {
    MarkDrop({});
    QTreeWidget::dragLeaveEvent(event);
}

void ProfileTree::dropEvent(QDropEvent* event) {
    const Drop drop = DropOf(*event);
    MarkDrop({});
    stopAutoScroll();
    setState(NoState);
    event->setAccepted(static_cast<bool>(drop.what));
    if (drop.what) {
        // Behind the drag, which has a loop of events of its own.
        QMetaObject::invokeMethod(
            this, [this, drop] { emit Dropped(drop.what, drop.position); }, Qt::QueuedConnection);
    }
}

void ProfileTree::PaintDropMark() {
    if (m_dropMark.isNull()) {
        return;
    }
    constexpr int kThickness = 2;
    QPainter painter(viewport());
    painter.setPen(QPen(palette().color(QPalette::Highlight), kThickness));
    if (m_dropMark.height() > 1) {
        painter.drawRect(m_dropMark.adjusted(1, 1, -1, -1));
    } else {
        painter.drawLine(m_dropMark.topLeft(), m_dropMark.topRight());
    }
}

}  // namespace genvara
