#include "ProfileTree.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <array>

#include "Pictures.h"

namespace genvara {
namespace {

/// Role of the hidden cell: "StepID" of a step, "LoadID" of a load.
constexpr int kIdRole = Qt::UserRole;
constexpr int kPictureSize = 20;  // pixels

/// Pictures of the kinds by their code.
constexpr std::array<const char*, 9> kKindPictures{
    "airconditioning", "charger", "lighting", "medical", "misc", "motor", "office", "ups", "vfd"};

const QIcon& PictureOfKind(std::int32_t loadType) {
    static const std::array<QIcon, kKindPictures.size()> pictures = [] {
        std::array<QIcon, kKindPictures.size()> icons;
        for (std::size_t kind = 0; kind < icons.size(); ++kind) {
            icons[kind] = Picture(kKindPictures[kind]);
        }
        return icons;
    }();
    return pictures.at(static_cast<std::size_t>(loadType));
}

}  // namespace

ProfileTree::ProfileTree(const QString& name, QWidget* parent) : QTreeWidget(parent) {
    setObjectName(name);
    setAccessibleName(tr("Load steps and loads"));
    setHeaderHidden(true);
    setColumnCount(1);
    setIconSize({kPictureSize, kPictureSize});
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
}

QTreeWidgetItem* ProfileTree::InsertStep(std::int32_t position, const QString& text, std::int32_t stepId) {
    static const QIcon picture = Picture("step");
    auto* step = new QTreeWidgetItem({text});
    QFont bold = font();
    bold.setBold(true);
    step->setFont(0, bold);
    step->setIcon(0, picture);
    step->setData(0, kIdRole, stepId);
    const bool inside = position >= 1 && position <= topLevelItemCount();
    insertTopLevelItem(inside ? position - 1 : topLevelItemCount(), step);
    step->setExpanded(true);
    return step;
}

QTreeWidgetItem* ProfileTree::AddLoad(QTreeWidgetItem& step, const QString& text, std::int32_t loadId,
                                      std::int32_t loadType) {
    auto* load = new QTreeWidgetItem({text});
    load->setIcon(0, PictureOfKind(loadType));
    LoadID(*load, loadId);
    step.addChild(load);
    step.setExpanded(true);
    return load;
}

void ProfileTree::Remove(QTreeWidgetItem& node) {
    const QSignalBlocker quiet(this);
    delete &node;  // NOLINT(cppcoreguidelines-owning-memory): a node is removed by deleting it
}

std::int32_t ProfileTree::StepID(const QTreeWidgetItem& step) {
    return step.data(0, kIdRole).toInt();
}

std::int32_t ProfileTree::LoadID(const QTreeWidgetItem& load) {
    return load.data(0, kIdRole).toInt();
}

void ProfileTree::LoadID(QTreeWidgetItem& load, std::int32_t id) {
    load.setData(0, kIdRole, id);
}

QTreeWidgetItem* ProfileTree::Selected() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? nullptr : selected.front();
}

std::int32_t ProfileTree::StepPosition(const QTreeWidgetItem& node) const {
    const QTreeWidgetItem* step = node.parent() == nullptr ? &node : node.parent();
    return indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(step)) +
           1;  // NOLINT: the toolkit asks, not changes
}

void ProfileTree::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() > 0) {
        return;
    }
    constexpr int kInset = 24;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(
        viewport()->rect().adjusted(kInset, kInset, -kInset, -kInset),
        Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
        tr("The load profile is empty.\n\nAdd a step, then the loads that are switched on with it."));
}

void ProfileTree::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool onNode = Selected() != nullptr && modifiers == Qt::NoModifier;
    if (onNode && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        emit EditAsked();
    } else if (onNode && event->key() == Qt::Key_Delete) {
        emit DeleteAsked();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

void ProfileTree::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && itemAt(event->position().toPoint()) != nullptr) {
        emit EditAsked();
    }
}

}  // namespace genvara
