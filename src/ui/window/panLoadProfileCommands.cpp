// What the buttons of the load profile do: adding, deleting, editing and moving steps and loads.

#include <QPushButton>
#include <QSignalBlocker>

#include "FailureRegion.h"
#include "ProfileTree.h"
#include "Texts.h"
#include "frmAddLoad.h"
#include "frmAddStep.h"
#include "frmEditStep.h"
#include "panLoadProfile.h"

namespace genvara {

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
    if (m_project.profile.NumLoadSteps() < kMostLoadSteps) {
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
    if (step.NumLoads() < kMostLoadsOfStep) {
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
