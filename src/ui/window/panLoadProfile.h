#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "LoadForms.h"
#include "Panel.h"
#include "PlatformServices.h"
#include "ProjectMoment.h"
#include "StepDialog.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace genvara {

class ProfileTotals;
class ProfileTree;

/// The load steps and their loads. The panel works on the profile itself; there is nothing to store.
class panLoadProfile final : public Panel {
    Q_OBJECT

  public:
    /// Everything outlives the panel.
    panLoadProfile(PlatformServices& platform, const LoadFormProject& project, LoadFormHost& host,
                   QWidget* parent = nullptr);

    void ProjectName(const std::string& text);
    [[nodiscard]] std::string ProjectName() const;

    /// Position of the selection's step; 0 without a selection.
    [[nodiscard]] std::int32_t SelectedStep() const noexcept { return m_selectedStep; }

    /// Shows a step of the profile at its position and selects it.
    /// @throws RaisedError of the profile if there is no such step.
    void DisplayNewStep(std::int32_t stepNumber, std::int32_t stepId);
    /// Shows a load as the last one of the step at a position.
    /// @throws RaisedError of the profile, or 0x80040002 "The load requested could not be found." from
    ///         "panLoadProfile::DisplayNewLoad".
    void DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId);
    void ClearAllLoads();
    /// Selects a load of the step at a position.
    void SelectLoad(std::int32_t stepNumber, std::int32_t loadId);
    /// What is selected; nothing without a selection.
    [[nodiscard]] ProfilePlace SelectedPlace() const;
    /// Shows the profile as it has become, with as few nodes anew as can be.
    /// @param place what to select, if it is there; otherwise the selection stays, or goes to a neighbour.
    void ShowProfile(ProfilePlace place);
    /// Selects the first step, as a project that has just been opened shows it.
    void ShowBeginning();

    /// Keeps the lists from being drawn, and the properties from being worked out, while many nodes are
    /// added.
    void HoldDrawing(bool hold);

  signals:
    /// What the loads draw may have changed.
    void FiguresChanged();
    /// A step or a load was deleted.
    /// @param what "step 2, \"Pumps\"".
    void Deleted(const QString& what);

  private:
    QPushButton* AddButton(const char* name, const QString& caption, void (panLoadProfile::*command)());
    void Build();
    [[nodiscard]] QWidget* BuildList();
    void SelectionChanged();
    /// Shows what the loads draw now.
    void RefreshFigures();
    void RefreshButtons();
    void SetEnabled(QPushButton& button, bool enabled);
    void LimitSteps();
    void RefreshProperties();
    [[nodiscard]] std::vector<std::string> PropertiesOf(const QTreeWidgetItem& node) const;

    /// Who runs what a dialog of a step changes.
    [[nodiscard]] StepDialog::Changer Changer() const;

    void AddStep();
    [[nodiscard]] LoadFormServices FormServices(QWidget* owner) const;
    void AddLoad();
    void DeleteStep();
    void DeleteLoad();
    void Edit();
    void MoveUp() { Move(-1); }
    void MoveDown() { Move(1); }
    void DeleteSelected();
    void EditLoadNode(QTreeWidgetItem& node);
    void EditStepNode(QTreeWidgetItem& node);
    /// @param by -1 towards the start, 1 towards the end.
    void Move(int by);
    void MoveStep(QTreeWidgetItem& node, int by);
    void MoveLoad(QTreeWidgetItem& node, int by);
    void TellThatStepIsFull(std::int32_t position);

    PlatformServices* m_platform;
    LoadFormProject m_project;
    LoadFormHost* m_host;
    std::int32_t m_selectedStep = 0;
    bool m_held = false;  ///< many nodes are being added; the properties are shown when that is done
    ProfileTree* m_tree;
    ProfileTotals* m_totals;
    QTreeWidget* m_properties;
    QPushButton* m_cmdAddStep;
    QPushButton* m_cmdDeleteStep;
    QPushButton* m_cmdAddLoad;
    QPushButton* m_cmdDeleteLoad;
    QPushButton* m_cmdEdit;
    QPushButton* m_cmdMoveUp;
    QPushButton* m_cmdMoveDown;
};

}  // namespace genvara
