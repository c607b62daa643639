#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "LoadForms.h"
#include "Panel.h"
#include "PlatformServices.h"
#include "ProfileClip.h"
#include "ProjectMoment.h"
#include "StepDialog.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace genvara {

class ProfileFinder;
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

    // Commands on what is selected, each a change that can be taken back. What stands in the way is told.
    void Cut();
    void Copy();
    /// Puts loads of the clipboard behind those of the selected step, and steps behind it.
    void Paste();
    /// A copy of the load behind the last one of its step, of a step behind it.
    void Duplicate();
    /// Gives the tree a command, with its key, and shows it in its context menu.
    void AddCommand(QAction& command);
    /// Finds steps and loads by what is said of them.
    [[nodiscard]] ProfileFinder& Finder() { return *m_finder; }
    /// Whether the tree is where the user is.
    [[nodiscard]] bool TreeIsActive() const;

    /// Keeps the lists from being drawn, and the properties from being worked out, while many nodes are
    /// added.
    void HoldDrawing(bool hold);

  signals:
    /// What the loads draw may have changed.
    void FiguresChanged();
    /// What a command has done, or why not, in a sentence.
    void Told(const QString& sentence);
    /// Something else than steps and loads of this program was pasted.
    void TablePasted(const QString& text);
    /// What is selected may have changed.
    void PlaceChanged();

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
    [[nodiscard]] std::string WhyStepIsFull(std::int32_t position) const;

    // What is cut, copied and pasted.
    /// A node in a sentence: "step 2, \"Pumps\"".
    [[nodiscard]] QString InWords(const QTreeWidgetItem& node) const;
    [[nodiscard]] ProfileClip ClipOfNode(const QTreeWidgetItem& node) const;
    /// @return false if the clipboard cannot hold it; that has been told.
    bool PutOnClipboard(const QTreeWidgetItem& node);
    void PasteLoads(const ProfileClip& clip);
    void PasteSteps(const ProfileClip& clip);
    /// @return false if there is none; that has been told.
    bool HasRoomForSteps(std::int32_t count);
    /// What was dropped goes where the commands would move it, in one change.
    void TakeDrop(ProfilePlace what, std::int32_t position);
    void MoveStepTo(std::int32_t from, std::int32_t position);
    void MoveLoadTo(ProfilePlace load, std::int32_t position);
    /// Takes the selection out of the profile.
    /// @param deed "Delete", which names the change; @param past "Deleted", which tells of it.
    void TakeStepAway(const QString& past, const std::string& deed);
    void TakeLoadAway(const QString& past, const std::string& deed);
    /// Runs a change of loads, and shows it.
    /// @param place what to select once it has been run.
    void ChangeProfile(const std::string& name, const ProfilePlace& place,
                       const std::function<void()>& change);

    PlatformServices* m_platform;
    LoadFormProject m_project;
    LoadFormHost* m_host;
    std::int32_t m_selectedStep = 0;
    bool m_held = false;  ///< many nodes are being added; the properties are shown when that is done
    ProfileTree* m_tree;
    ProfileTotals* m_totals;
    ProfileFinder* m_finder;
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
