#include "panLoadProfile.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ErrorNumbers.h"
#include "FailureRegion.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "ProfileFinder.h"
#include "ProfileFollower.h"
#include "ProfileTotals.h"
#include "ProfileTree.h"
#include "PropertyRows.h"
#include "Texts.h"
#include "frmAddLoad.h"
#include "frmAddStep.h"
#include "frmEditStep.h"

namespace genvara {
namespace {

/// The widest label of a property, for a column that does not jump from load to load.
constexpr const char* kLongestLabel = "Max. Peak Demand Vdip";
// At the window's first size [pixels].
constexpr int kListWidth = 362;
constexpr int kPropertiesWidth = 280;
constexpr int kPropertyHeight = 22;  // pixels, as the tree's rows with their pictures

constexpr std::int32_t kMostLoads = 257;  // of a step

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
    m_properties->header()->resizeSection(0, LabelWidth(*m_properties, kLongestLabel));

    auto* split = new QSplitter(Qt::Horizontal);
    split->addWidget(BuildList());
    split->addWidget(m_properties);
    split->setChildrenCollapsible(false);
    // What a wide window has to spare goes to the columns.
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 0);
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
    if (m_project.profile.NumLoadSteps() >= kMostSteps) {
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
    for (const std::string& row : PropertiesOf(*node)) {
        const ShownProperty shown = ShowProperty(row, numbers);
        const QString label = ToQt(shown.label);
        rows.append(new QTreeWidgetItem({label, ToQt(shown.value)}));
        rows.last()->setSizeHint(0, QSize(LabelWidth(*m_properties, label), kPropertyHeight));
    }
    m_properties->addTopLevelItems(rows);
}

void panLoadProfile::AddStep() {
    frmAddStep dialog(*m_platform, m_project.profile, m_project.site, window());
    dialog.ChangesThrough(Changer());
    dialog.Show([this](std::int32_t number, std::int32_t id) {
        DisplayNewStep(number, id);
        emit Edited();
    });
    LimitSteps();
}

LoadFormServices panLoadProfile::FormServices(QWidget* owner) const {
    return {.owner = owner, .platform = *m_platform, .host = *m_host, .project = m_project};
}

void panLoadProfile::AddLoad() {
    frmAddLoad dialog(
        *m_platform,
        [this](std::int32_t loadType, QWidget* owner) {
            DisplayNewLoadInputForm(loadType, FormServices(owner));
        },
        window());
    dialog.exec();
    // The form and this dialog go at once, and some window managers then lose sight of who comes next.
    window()->activateWindow();
    SelectionChanged();
}

void panLoadProfile::DeleteStep() {
    TakeStepAway(tr("Deleted"), "Delete");
}

void panLoadProfile::TakeStepAway(const QString& past, const std::string& deed) {
    FailureRegion region;
    QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr) {
        return;
    }
    const std::int32_t position = m_tree->StepPosition(*node);
    const QString what = InWords(*node);
    region.Run([&] {
        m_host->Change(deed + " Step " + std::to_string(position),
                       [&] { m_project.profile.DeleteLoadStep(ProfileTree::StepID(*node)); });
    });
    m_tree->Remove(*node);
    SelectionChanged();
    RefreshFigures();
    if (m_project.profile.NumLoadSteps() < kMostSteps) {
        m_cmdAddStep->setEnabled(true);
    }
    m_host->ProjectChanged();
    emit Told(tr("%1 %2. Ctrl+Z brings it back.").arg(past, what));
}

void panLoadProfile::DeleteLoad() {
    TakeLoadAway(tr("Deleted"), "Delete");
}

void panLoadProfile::TakeLoadAway(const QString& past, const std::string& deed) {
    QTreeWidgetItem* node = m_tree->Selected();
    const QString what = InWords(*node);
    const QString name = node->text(profile_column::kText);
    FailureRegion region;
    region.Run([&] {
        CLoadStep& step = m_project.profile.LoadStep(m_tree->StepPosition(*node));
        m_host->Change(deed + " Load " + FromQt(name), [&] { step.DeleteLoad(ProfileTree::LoadID(*node)); });
    });
    if (!region.Pending()) {
        m_tree->Remove(*node);
        SelectionChanged();
        RefreshFigures();
        m_host->ProjectChanged();
        emit Told(tr("%1 %2. Ctrl+Z brings it back.").arg(past, what));
    }
}

void panLoadProfile::DeleteSelected() {
    QPushButton* button = m_cmdDeleteStep->isEnabled() ? m_cmdDeleteStep : m_cmdDeleteLoad;
    button->click();
}

void panLoadProfile::Edit() {
    QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr) {
        return;
    }
    if (ProfileTree::IsStep(*node)) {
        EditStepNode(*node);
    } else {
        EditLoadNode(*node);
    }
    RefreshButtons();
    RefreshProperties();
    RefreshFigures();
}

void panLoadProfile::EditLoadNode(QTreeWidgetItem& node) {
    const std::int32_t position = m_tree->StepPosition(node);
    Load* load = m_project.profile.LoadStep(position).LoadItem(ProfileTree::LoadID(node));
    if (load == nullptr) {
        return;
    }
    FailureRegion region;
    // A file may hold a load whose figures the form cannot even show.
    if (!region.Run([&] { EditLoad(*load, position, FormServices(window())); })) {
        m_platform->ShowMessage(this, {.text = "The load \"" + load->name() +
                                               "\" cannot be shown: " + region.Pending()->Description() +
                                               ".\r\nDelete it and add it anew.",
                                       .icon = MessageIcon::Exclamation});
    }
    node.setText(0, ToQt(load->name()));
}

void panLoadProfile::EditStepNode(QTreeWidgetItem& node) {
    CLoadStep& step = m_project.profile.LoadStep(m_tree->StepPosition(node));
    frmEditStep dialog(*m_platform, m_project.site, window());
    dialog.ChangesThrough(Changer());
    dialog.StepNum(m_tree->StepPosition(node));
    dialog.Description(step.Description());
    dialog.MaxVoltDip(step.MaxVoltageDipOverride());
    dialog.LoadStep(step);
    if (dialog.exec() == QDialog::Accepted) {
        emit Edited();
    }
    node.setText(0, ToQt(step.Description()));
}

void panLoadProfile::Move(int by) {
    QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr) {
        return;
    }
    const std::int32_t other = m_tree->StepPosition(*node) + by;
    if (other < 1 || other > m_tree->topLevelItemCount()) {
        return;
    }
    if (ProfileTree::IsStep(*node)) {
        MoveStep(*node, by);
    } else if (m_project.profile.LoadStep(other).HasRoom()) {
        MoveLoad(*node, by);
    } else {
        TellThatStepIsFull(other);
        return;
    }
    m_tree->setCurrentItem(node);
    SelectionChanged();
    RefreshFigures();
    emit Edited();
}

void panLoadProfile::MoveStep(QTreeWidgetItem& node, int by) {
    const std::int32_t position = m_tree->StepPosition(node);
    m_host->Change("Move Step " + std::to_string(position), [&] {
        if (by < 0) {
            m_project.profile.LowerLoadStep(position);
        } else {
            m_project.profile.RaiseLoadStep(position);
        }
    });
    const QSignalBlocker quiet(m_tree);
    const bool expanded = node.isExpanded();
    m_tree->takeTopLevelItem(position - 1);
    m_tree->insertTopLevelItem(position - 1 + by, &node);
    node.setExpanded(expanded);
}

std::string panLoadProfile::WhyStepIsFull(std::int32_t position) const {
    const CLoadStep& step = m_project.profile.LoadStep(position);
    std::string text =
        "Step " + std::to_string(position) + ", \"" + step.Description() + "\", takes no more loads.";
    if (step.NumLoads() < kMostLoads) {
        text += "\r\nLoads that were taken from it count too, until the project is saved and opened again.";
    }
    return text;
}

void panLoadProfile::TellThatStepIsFull(std::int32_t position) {
    m_platform->ShowMessage(this, {.text = WhyStepIsFull(position), .icon = MessageIcon::Exclamation});
}

void panLoadProfile::MoveLoad(QTreeWidgetItem& node, int by) {
    const std::int32_t position = m_tree->StepPosition(node);
    CLoadStep& from = m_project.profile.LoadStep(position);
    CLoadStep& to = m_project.profile.LoadStep(position + by);
    m_host->Change("Move Load " + FromQt(node.text(profile_column::kText)),
                   [&] { ProfileTree::LoadID(node, to.AddLoad(from.TakeLoad(ProfileTree::LoadID(node)))); });
    const QSignalBlocker quiet(m_tree);
    QTreeWidgetItem* other = m_tree->topLevelItem(position - 1 + by);
    node.parent()->removeChild(&node);
    other->addChild(&node);
    other->setExpanded(true);
}

}  // namespace genvara
