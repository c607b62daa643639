#include "ProfileTree.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <vector>

#include "LoadKinds.h"
#include "Pictures.h"

namespace genvara {
namespace {

/// Role of the hidden cell: "StepID" of a step, "LoadID" of a load.
constexpr int kIdRole = Qt::UserRole;
constexpr int kPictureSize = 20;   // pixels
constexpr int kIndentation = 16;   // pixels
constexpr int kNumberMargin = 16;  // pixels on both sides of a number together

/// Drawn once for all trees.
const QIcon& PictureOfKind(std::int32_t loadType) {
    static const std::vector<QIcon> pictures = [] {
        std::vector<QIcon> icons;
        for (const LoadKind& kind : LoadKinds()) {
            icons.push_back(Picture(kind.picture));
        }
        return icons;
    }();
    return pictures.at(static_cast<std::size_t>(loadType));
}

/// Asks for everything but its name when it is looked at: a step's number comes from its place, so that no
/// other step has to be told when one moves, and figures come from the records.
class ProfileNode final : public QTreeWidgetItem {
  public:
    explicit ProfileNode(const QString& text) : QTreeWidgetItem({text}) {}

    [[nodiscard]] QVariant data(int column, int role) const override {
        const auto* tree = static_cast<const ProfileTree*>(treeWidget());
        if (column != profile_column::kText && role == Qt::TextAlignmentRole) {
            return {Qt::AlignRight | Qt::AlignVCenter};
        }
        if (tree == nullptr) {
            return QTreeWidgetItem::data(column, role);
        }
        if (column == profile_column::kText) {
            return role == Qt::AccessibleDescriptionRole ? Words(*tree) : QTreeWidgetItem::data(column, role);
        }
        if (role == Qt::DisplayRole) {
            return column == profile_column::kNumber
                       ? Number(*tree)
                       : tree->Cells().Text(ProfileTree::PlaceOf(*this), column);
        }
        return role == Qt::ToolTipRole ? tree->Cells().Why(ProfileTree::PlaceOf(*this), column)
                                       : QTreeWidgetItem::data(column, role);
    }

  private:
    [[nodiscard]] QString Words(const ProfileTree& tree) const {
        const QString words = tree.Cells().Words(ProfileTree::PlaceOf(*this));
        return ProfileTree::IsStep(*this)
                   ? ProfileTree::tr("step %1, %2").arg(tree.StepPosition(*this)).arg(words)
                   : words;
    }
    [[nodiscard]] QVariant Number(const ProfileTree& tree) const {
        return ProfileTree::IsStep(*this) ? tree.StepPosition(*this) : QVariant();
    }
};

}  // namespace

ProfileTree::ProfileTree(const QString& name, const CLoadProfile& profile, QWidget* parent)
    : QTreeWidget(parent), m_cells(profile) {
    setObjectName(name);
    setAccessibleName(tr("Load steps and loads"));
    BuildColumns();
    setIconSize({kPictureSize, kPictureSize});
    setIndentation(kIndentation);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setDragDropMode(QAbstractItemView::DragDrop);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ProfileTree::BuildColumns() {
    setColumnCount(profile_column::kCount);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(1);
    for (int column = 0; column < columnCount(); ++column) {
        headerItem()->setText(column, profile_column::HeaderText(column));
        headerItem()->setData(column, Qt::AccessibleTextRole, profile_column::Name(column));
        if (column != profile_column::kText) {
            headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        }
    }
    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setSectionResizeMode(profile_column::kText, QHeaderView::Stretch);
    header()->resizeSection(profile_column::kNumber,
                            header()->fontMetrics().horizontalAdvance("Step") + kNumberMargin);
    header()->moveSection(profile_column::kNumber, 0);
}

void ProfileTree::FitColumns() {
    ChooseColumns(*header(), viewport()->width(), m_widest);
}

void ProfileTree::ShowFigures(const QString& widest) {
    if (m_widest.size() != widest.size()) {
        m_widest = widest;
        FitColumns();
    }
    viewport()->update();
}

void ProfileTree::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    FitColumns();
}

void ProfileTree::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        FitColumns();
    }
}

QTreeWidgetItem* ProfileTree::InsertStep(std::int32_t position, const QString& text, std::int32_t stepId) {
    static const QIcon picture = Picture("step");
    auto* step = new ProfileNode(text);
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
    auto* load = new ProfileNode(text);
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

ProfilePlace ProfileTree::PlaceOf(const QTreeWidgetItem& node) {
    return IsStep(node) ? ProfilePlace{.stepId = StepID(node)}
                        : ProfilePlace{.stepId = StepID(*node.parent()), .loadId = LoadID(node)};
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
    PaintDropMark();
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

/// A name for which its column has no room is told in full.
bool ProfileTree::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex index = indexAt(help->pos());
        const QRect place = visualRect(index);
        if (index.column() == profile_column::kText && sizeHintForIndex(index).width() > place.width()) {
            QToolTip::showText(help->globalPos(), index.data().toString().toHtmlEscaped(), this, place);
            return true;
        }
    }
    return QTreeWidget::viewportEvent(event);
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
