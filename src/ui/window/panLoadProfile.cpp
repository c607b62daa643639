#include "panLoadProfile.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ErrorNumbers.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "ProfileFinder.h"
#include "ProfileFollower.h"
#include "ProfileTotals.h"
#include "ProfileTree.h"
#include "PropertyRows.h"
#include "Texts.h"

namespace genvara {
namespace {

/// A label of a property as most loads have them, for a column that seldom jumps from load to load.
constexpr const char* kUsualLabel = "Starting Method";
// At the window's first size [pixels].
constexpr int kListWidth = 432;
constexpr int kPropertiesWidth = 210;
constexpr int kPropertyHeight = 22;  // pixels, as the tree's rows with their pictures

int LabelWidth(const QWidget& list, const QString& label) {
    return list.fontMetrics().horizontalAdvance(label) + 2 * metrics::kGap;
}

}  // namespace

panLoadProfile::panLoadProfile(PlatformServices& platform, const LoadFormProject& project, LoadFormHost& host,
                               QWidget* parent)
    : Panel("panLoadProfile", Caption(127), "lblProjName", parent),
      m_platform(&platform),
      m_project(project),
      m_host(&host),
      m_tree(new ProfileTree("tlsProfileDisplay", project.profile)),
      m_totals(new ProfileTotals(*m_tree->header())),
      m_finder(new ProfileFinder(*m_tree, project.profile)),
      m_properties(new QTreeWidget),
      m_cmdAddStep(AddButton("cmdAddStep", tr("Add &Step..."), &panLoadProfile::AddStep)),
      m_cmdDeleteStep(AddButton("cmdDeleteStep", tr("Delete Ste&p"), &panLoadProfile::DeleteStep)),
      m_cmdAddLoad(AddButton("cmdAddLoad", tr("Add &Load..."), &panLoadProfile::AddLoad)),
      m_cmdDeleteLoad(AddButton("cmdDeleteLoad", tr("Delete L&oad"), &panLoadProfile::DeleteLoad)),
      m_cmdEdit(AddButton("cmdEdit", tr("Ed&it..."), &panLoadProfile::Edit)),
      m_cmdMoveUp(AddButton("cmdMoveUp", tr("Move &Up"), &panLoadProfile::MoveUp)),
      m_cmdMoveDown(AddButton("cmdMoveDown", tr("Move Do&wn"), &panLoadProfile::MoveDown)) {
    Build();
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, Event([this] { SelectionChanged(); }));
    connect(m_tree, &ProfileTree::EditAsked, this, Event([this] { Edit(); }));
    connect(m_tree, &ProfileTree::DeleteAsked, this, Event([this] { DeleteSelected(); }));
    connect(m_tree, &ProfileTree::Dropped, this,
            Event([this](ProfilePlace what, std::int32_t position) { TakeDrop(what, position); }));
    ClearAllLoads();
}

QPushButton* panLoadProfile::AddButton(const char* name, const QString& caption,
                                       void (panLoadProfile::*command)()) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, Event([this, command] { (this->*command)(); }));
    return button;
}

void panLoadProfile::Build() {
    m_properties->setObjectName("tlsPropertyDisplay");
    m_properties->setAccessibleName(tr("Properties"));
    m_properties->setColumnCount(2);
    m_properties->setHeaderLabels({tr("Property"), tr("Value")});
    m_properties->setRootIsDecorated(false);
    m_properties->setUniformRowHeights(true);
    m_properties->setAllColumnsShowFocus(true);
    m_properties->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_properties->header()->resizeSection(0, LabelWidth(*m_properties, kUsualLabel));

    auto* split = new QSplitter(Qt::Horizontal);
    split->addWidget(BuildList());
    split->addWidget(m_properties);
    split->setChildrenCollapsible(false);
    // What a wide window has to spare goes to the columns.
    split->setStretchFactor(0, 6);
    split->setStretchFactor(1, 1);
    split->setSizes({kListWidth, kPropertiesWidth});
    Content()->addWidget(split, 1);
    Content()->addWidget(m_finder);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(metrics::kGap);
    for (QPushButton* button : {m_cmdAddStep, m_cmdAddLoad, m_cmdEdit, m_cmdMoveUp, m_cmdMoveDown}) {
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    buttons->addWidget(m_cmdDeleteLoad);
    buttons->addWidget(m_cmdDeleteStep);
    Content()->addLayout(buttons);
}

QWidget* panLoadProfile::BuildList() {
    auto* list = new QWidget;
    auto* column = new QVBoxLayout(list);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_tree, 1);
    column->addWidget(m_totals);
    return list;
}

void panLoadProfile::RefreshFigures() {
    if (m_held) {
        return;
    }
    m_totals->Show(m_project.profile);
    m_tree->ShowFigures(m_totals->Widest());
    emit FiguresChanged();
}

void panLoadProfile::ProjectName(const std::string& text) {
    Heading(ToQt(text));
}

std::string panLoadProfile::ProjectName() const {
    return FromQt(Heading());
}

void panLoadProfile::HoldDrawing(bool hold) {
    m_tree->setUpdatesEnabled(!hold);
    m_properties->setUpdatesEnabled(!hold);
    m_held = hold;
    if (!hold) {
        RefreshProperties();
        RefreshFigures();
    }
}

void panLoadProfile::DisplayNewStep(std::int32_t stepNumber, std::int32_t stepId) {
    const std::int32_t position = stepNumber < 1 ? m_project.profile.NumLoadSteps() : stepNumber;
    const CLoadStep& step = m_project.profile.LoadStep(position);
    m_tree->setCurrentItem(m_tree->InsertStep(position, ToQt(step.Description()), stepId));
    LimitSteps();
    RefreshFigures();
}

void panLoadProfile::LimitSteps() {
    if (m_project.profile.NumLoadSteps() >= kMostLoadSteps) {
        SetEnabled(*m_cmdAddStep, false);
    }
}

void panLoadProfile::DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId) {
    const Load* load = m_project.profile.LoadStep(stepNumber).LoadItem(loadId);
    QTreeWidgetItem* step = m_tree->topLevelItem(stepNumber - 1);
    if (load == nullptr || step == nullptr) {
        throw RaisedError(errors::FromBase(2), "panLoadProfile::DisplayNewLoad",
                          "The load requested could not be found.");
    }
    ProfileTree::AddLoad(*step, ToQt(load->name()), loadId, load->LoadType());
    if (!m_held && step->isSelected()) {
        RefreshProperties();  // the totals of the step count the load
    }
    RefreshFigures();
}

void panLoadProfile::SelectLoad(std::int32_t stepNumber, std::int32_t loadId) {
    if (QTreeWidgetItem* load = m_tree->FindLoad(stepNumber, loadId)) {
        m_tree->setCurrentItem(load);
        m_tree->scrollToItem(load);
    }
}

void panLoadProfile::ShowBeginning() {
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
    m_tree->scrollToTop();
}

void panLoadProfile::ClearAllLoads() {
    m_tree->clear();
    m_properties->clear();
    m_selectedStep = 0;
    RefreshButtons();
    RefreshFigures();
    m_cmdAddStep->setEnabled(true);
}

void panLoadProfile::AddCommand(QAction& command) {
    m_tree->addAction(&command);
}

bool panLoadProfile::TreeIsActive() const {
    return ActiveCtrl() == m_tree;
}

ProfilePlace panLoadProfile::SelectedPlace() const {
    const QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr) {
        return {};
    }
    return ProfileTree::IsStep(*node) ? ProfilePlace{.stepId = ProfileTree::StepID(*node)}
                                      : ProfilePlace{.stepId = ProfileTree::StepID(*node->parent()),
                                                     .loadId = ProfileTree::LoadID(*node)};
}

void panLoadProfile::ShowProfile(ProfilePlace place) {
    {
        const QSignalBlocker quiet(m_tree);
        const ProfilePlace selected = place ? place : SelectedPlace();
        FollowProfile(*m_tree, m_project.profile);
        if (QTreeWidgetItem* node = FindPlace(*m_tree, selected)) {
            m_tree->setCurrentItem(node);
            m_tree->scrollToItem(node);
        }
    }
    SelectionChanged();
    RefreshFigures();
    m_cmdAddStep->setEnabled(true);
    LimitSteps();
}

StepDialog::Changer panLoadProfile::Changer() const {
    return [host = m_host](const std::string& name, const std::function<void()>& change) {
        host->Change(name, change);
    };
}

void panLoadProfile::SelectionChanged() {
    const QTreeWidgetItem* node = m_tree->Selected();
    m_selectedStep = node == nullptr ? 0 : m_tree->StepPosition(*node);
    RefreshButtons();
    RefreshProperties();
    emit PlaceChanged();
}

void panLoadProfile::RefreshButtons() {
    const QTreeWidgetItem* node = m_tree->Selected();
    const bool any = node != nullptr;
    const bool step = any && ProfileTree::IsStep(*node);
    const std::int32_t steps = m_tree->topLevelItemCount();
    const std::int32_t position = any ? m_tree->StepPosition(*node) : 0;
    m_selectedStep = position;
    SetEnabled(*m_cmdEdit, any);
    SetEnabled(*m_cmdAddLoad, any);
    SetEnabled(*m_cmdDeleteStep, step);
    SetEnabled(*m_cmdDeleteLoad, any && !step);
    SetEnabled(*m_cmdMoveUp, any && steps >= 2 && position > 1);
    SetEnabled(*m_cmdMoveDown, any && steps >= 2 && position < steps);
}

void panLoadProfile::SetEnabled(QPushButton& button, bool enabled) {
    // The toolkit would hand the focus to the next button, which undoes a move, or deletes more than was
    // meant.
    if (!enabled && button.hasFocus()) {
        m_tree->setFocus(Qt::OtherFocusReason);
    }
    button.setEnabled(enabled);
}

std::vector<std::string> panLoadProfile::PropertiesOf(const QTreeWidgetItem& node) const {
    const CLoadStep& step = m_project.profile.LoadStep(m_tree->StepPosition(node));
    try {
        if (ProfileTree::IsStep(node)) {
            return step.GetProps();
        }
        const Load* load = step.LoadItem(ProfileTree::LoadID(node));
        return load == nullptr ? std::vector<std::string>() : load->GetProps();
    } catch (const RaisedError& failure) {
        // Figures that cannot be worked out must not keep the user from mending the load.
        return {PropertyRow("Error", failure.Description())};
    }
}

void panLoadProfile::RefreshProperties() {
    m_properties->clear();
    const QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr || m_held) {
        return;
    }
    const EntryNumbers numbers;
    QList<QTreeWidgetItem*> rows;
    int widest = LabelWidth(*m_properties, kUsualLabel);
    for (const std::string& row : PropertiesOf(*node)) {
        const ShownProperty shown = ShowProperty(row, numbers);
        const QString label = ToQt(shown.label);
        rows.append(new QTreeWidgetItem({label, ToQt(shown.value)}));
        rows.last()->setSizeHint(0, QSize(LabelWidth(*m_properties, label), kPropertyHeight));
        rows.last()->setToolTip(1, rows.last()->text(1));
        widest = std::max(widest, LabelWidth(*m_properties, label));
    }
    m_properties->header()->resizeSection(0, widest);
    m_properties->addTopLevelItems(rows);
}

}  // namespace genvara
