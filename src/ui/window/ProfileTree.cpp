#include "ProfileTree.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <array>

#include "Pictures.h"

namespace genvara {
namespace {

/// Role of the hidden cell: "StepID" of a step, "LoadID" of a load.
constexpr int kIdRole = Qt::UserRole;
constexpr int kPictureSize = 20;   // pixels
constexpr int kColumnMargin = 24;  // pixels on both sides of a text together

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

/// A column of the tree.
struct Column {
    const char* caption;
    const char* widest;  ///< a text that it has to hold; null for the column that takes the room left
};
constexpr std::array<Column, 2> kColumns{
    {{QT_TRANSLATE_NOOP("genvara::ProfileTree", "Steps and loads"), nullptr},
     {QT_TRANSLATE_NOOP("genvara::ProfileTree", "Step"), "Step"}}};

/// A step knows its number from its place, so that no other step has to be told when it moves.
class StepNode final : public QTreeWidgetItem {
  public:
    explicit StepNode(const QString& text) : QTreeWidgetItem({text}) {
        setTextAlignment(profile_column::kNumber, Qt::AlignRight | Qt::AlignVCenter);
    }

    [[nodiscard]] QVariant data(int column, int role) const override {
        const bool number = column == profile_column::kNumber && role == Qt::DisplayRole;
        if (!number || treeWidget() == nullptr) {
            return QTreeWidgetItem::data(column, role);
        }
        // The toolkit asks, not changes.
        return treeWidget()->indexOfTopLevelItem(const_cast<StepNode*>(this)) + 1;  // NOLINT
    }
};

}  // namespace

ProfileTree::ProfileTree(const QString& name, QWidget* parent) : QTreeWidget(parent) {
    setObjectName(name);
    setAccessibleName(tr("Load steps and loads"));
    BuildColumns();
    setIconSize({kPictureSize, kPictureSize});
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
}

void ProfileTree::BuildColumns() {
    setColumnCount(static_cast<int>(kColumns.size()));
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    for (int column = 0; column < columnCount(); ++column) {
        const Column& look = kColumns[static_cast<std::size_t>(column)];
        headerItem()->setText(column, tr(look.caption));
        if (look.widest == nullptr) {
            header()->setSectionResizeMode(column, QHeaderView::Stretch);
        } else {
            header()->resizeSection(column,
                                    header()->fontMetrics().horizontalAdvance(look.widest) + kColumnMargin);
        }
    }
    header()->moveSection(profile_column::kNumber, 0);
}

QTreeWidgetItem* ProfileTree::InsertStep(std::int32_t position, const QString& text, std::int32_t stepId) {
    static const QIcon picture = Picture("step");
    auto* step = new StepNode(text);
    QFont bold = font();
    bold.setBold(true);
    for (int column = 0; column < columnCount(); ++column) {
        step->setFont(column, bold);
    }
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

QTreeWidgetItem* ProfileTree::FindLoad(std::int32_t stepPosition, std::int32_t loadId) const {
    QTreeWidgetItem* step = topLevelItem(stepPosition - 1);
    for (int place = 0; step != nullptr && place < step->childCount(); ++place) {
        if (LoadID(*step->child(place)) == loadId) {
            return step->child(place);
        }
    }
    return nullptr;
}

void ProfileTree::Remove(QTreeWidgetItem& node) {
    {
        const QSignalBlocker quiet(this);
        delete &node;  // NOLINT(cppcoreguidelines-owning-memory): a node is removed by deleting it
    }
    if (QTreeWidgetItem* next = currentItem()) {
        scrollToItem(next);
    }
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
