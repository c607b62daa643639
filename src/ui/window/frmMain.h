#pragma once

#include <QMainWindow>
#include <QPointer>
#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "AnalysisHost.h"
#include "CApplication.h"
#include "CEditMenu.h"
#include "EditWatch.h"
#include "ErrorLog.h"
#include "LoadForms.h"
#include "PlatformServices.h"
#include "RecentFiles.h"
#include "Recovery.h"
#include "SiteNotice.h"
#include "WindowPlace.h"

class QAction;
class QDialog;
class QMenu;
class QStackedWidget;
class QTimer;
class QToolBar;

namespace genvara {

class FileStatus;
class Panel;
class ProfileStatus;
class ctlSideBar;
class frmAnalysis;
class frmErrLog;
class frmSplash;
class panLoadProfile;
class panProject;
class panPwrSys;
class panRecommend;
struct ImportedTable;
struct MenuCommand;

/// The main window: menus, toolbar, side bar and four panels, and the commands on the project file.
///
/// Event routines without a handler of their own let failures pass to the last-chance handler; the toolbar
/// swallows them.
class frmMain final : public QMainWindow, public LoadFormHost, public AnalysisHost {
    Q_OBJECT

  public:
    /// @param application started, and outlives the window, as the desktop does.
    frmMain(CApplication& application, PlatformServices& platform);
    ~frmMain() override;

    /// The load sequence.
    /// @return false if it failed: the failure has been shown, and the program ends.
    bool Load();

    /// Shows the window once the splash has been seen for a moment, or a click on it says so. The splash goes
    /// as the window comes.
    /// @param appeared called when the window is there.
    void Appear(std::function<void()> appeared);

    /// Runs a change of the project that can be taken back under its name ("Apply Advice"), and shows what it
    /// has made of it. Does nothing but show the bad field where the panels cannot be stored.
    /// @throws whatever the change throws, behind showing what it has done.
    void ChangeProject(const QString& name, const std::function<void()>& change);

    /// Shows the other unit system on the power system panel.
    void PwrSysUnitsChanged(bool metric);

    /// Shows what the rows of a table become that was copied from a spreadsheet, and imports them if the user
    /// wants to.
    void PasteTable(const QString& text);

    /// Full name of the project's file; empty for one that was never saved or opened.
    [[nodiscard]] const std::string& ProjectFile() const noexcept {
        return m_application->Document().ProjectFile();
    }

    /// Opens a project file that the desktop hands over; tells why it cannot be read.
    void OpenFile(const std::string& file);

    /// Keeps what is on screen for the next start, which offers it.
    /// @return its file.
    /// @throws RaisedError with the system's number.
    std::filesystem::path Rescue();

    // What the entry forms ask.
    [[nodiscard]] std::int32_t SelectedStep() const override;
    [[nodiscard]] std::int32_t Phases() const override;
    void DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId) override;
    void Change(const std::string& name, const std::function<void()>& change) override;
    void ProjectChanged() override;

    // What the analysis asks.
    [[nodiscard]] std::optional<StudyProject> ProjectAsItStands() override;
    void TakeVariation(const QString& name, const StudyProject& varied) override;
    void ShowAnalysisHelp(QWidget& owner) override;

    /// The side bar's item click: stores the panels and shows one of them.
    /// @throws RaisedError of a panel that does not store, and of the sizing run.
    void SideBarClicked(std::int32_t index);

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    /// F1 in a dialog, which the commands' keys do not reach.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // Building.
    void BuildMenus();
    void AddCommand(const MenuCommand& command);
    void BuildToolbar();
    void BuildPanels();
    void BuildShortcuts();
    void SetCaptions();
    void SetWebItems();
    void ShowSplash();
    void LoadFirstHalf();
    void LoadSecondHalf();
    void InitializeOutlookBar();
    void InitializePanels();
    void InitializeProjPanel();
    void InitializePwrSysPanel();
    void ShowCaption();
    void TellWhatIsMissing();

    // Panels.
    /// The click as the user makes it: a bad field keeps him where he is.
    void SwitchTo(std::int32_t index);
    void TellWhyNotSized(const RaisedError& failure);
    /// Whether the panels can be stored; what is bad is shown.
    bool PanelsAreReady();
    void ShowPanel(QWidget& panel, std::int32_t index);
    /// Shows the project panel as the first one of a project: nothing of the project before is on any panel.
    void ShowProjectPanel();
    void ShowHeadings();
    void Recommend();
    void EnableReportCommands(bool enabled);
    void EnableExport(bool enabled);
    void EnableReport(bool enabled);

    // Commands.
    void Run(const std::string& name);
    void ToolClicked(const std::string& key);
    MessageAnswer AskForChanges();
    void FileNew();
    void FileOpen();
    void NewProject();
    void OpenProject();
    void TellWhyNotOpened(const RaisedError& failure);
    void FileSave();
    void FileSaveAs();
    /// Runs a save; a failure is told in one sentence, and the program goes on.
    void SaveOrTell(const std::function<void()>& command);
    void SaveProject();
    void SaveProjectAs();
    /// Saves under a name that the document takes, unless something stands in the way.
    /// @throws RaisedError 75 for what is found before, 32755 where the user would rather not, else of
    ///         `WriteProjectFile`.
    void SaveTo(const std::string& file);
    void RequireSaveable(const std::string& file);
    /// @return false if the command that wants the project saved has to end.
    bool SaveBeforeLeaving();
    void WriteProjectFile();
    std::size_t MakeQuotesTypographic();
    ReadResult ReadProjectFile(const std::string& file);
    void ShowFileStatus();
    /// Notes which choices of the site no list offers, before a store takes others in their place.
    void NoteUnoffered(ChoicesFrom from);
    void ShowNotices();
    // What must not get lost: `frmMainRecovery.cpp`.
    /// The project as the panels show it, whether it was stored or not.
    [[nodiscard]] ProjectMoment MomentOnScreen() const;
    [[nodiscard]] KeptOrigin Origin() const;
    /// Has what is on screen kept, unless the project's file holds it all.
    void FeedRecovery();
    /// What a command is about to drop without having asked.
    struct Dropped {
        ProjectMoment moment;
        KeptOrigin origin;
    };
    [[nodiscard]] std::optional<Dropped> WhatIsDropped() const;
    void KeepDropped(const std::optional<Dropped>& dropped);
    /// The user said that what is entered may go, for as long as the command runs.
    class LetGo;
    /// Offers what was kept of programs that did not end.
    /// @return whether a project was restored.
    bool OfferLost();
    void RecoverProject();
    bool ChooseKept(std::vector<KeptProject> kept, bool lost);
    /// @return false if it cannot be read; that has been told.
    bool RestoreKept(const KeptProject& kept);

    // Taking changes back: `frmMainChanges.cpp`.
    /// Notes that something was entered on a panel: a choice is a change at once, a text when it is left.
    void NoteEdit(const Panel& panel);
    /// Keeps what is being entered as a change.
    void KeepEdits();
    void KeepEditsBehind(const QWidget* next);
    /// Keeps what the panels have just stored: what was being entered as a change, all else as no change.
    void KeepStored();
    void Undo();
    void Redo();
    /// Whether a text that no record has taken was given up for what the record holds.
    bool GaveUpEdit();
    void ShowUndone(const char* done, const Document::Undone& undone);
    /// Shows records on their panels anew.
    void ShowRecords(const Document::Undone& changed);
    void ShowPanelOf(const Document::Undone& changed);
    void RefreshRecommendation();
    /// Shows what can be taken back and made again in the Edit menu.
    void ShowUndo();
    /// Whether the key of Undo or Redo goes to the project, since the text field at hand has nothing of its
    /// own.
    bool GoesBeforeOwnUndo(QObject* watched, QEvent& event);
    void OpenRecent(std::size_t index);
    void AddRecent();
    void RebuildRecentMenu();
    /// File of an item of the recent list; empty for one that shows none.
    [[nodiscard]] std::string RecentName(std::size_t index) const;
    // Loads from tables: `frmMainImport.cpp`.
    void ImportLoads();
    /// @param origin of the table, for its title.
    void PreviewTable(const std::string& bytes, const QString& origin, bool isPasted);
    void TakeTable(const ImportedTable& table);
    void SendMail();
    /// Ending of the format that the project's file has.
    [[nodiscard]] const char* ProjectEnding() const;
    /// A name for a file of the project, from its name; empty if it has none.
    [[nodiscard]] std::string SuggestedName(const char* extension) const;
    /// Whether nothing may be written to a file, since it is an input; the user is told.
    bool RefusesOutput(const std::string& file);
    /// Whether no report is shown, as after one that failed; tells the user.
    [[nodiscard]] bool LacksReport(const char* deed);
    void SaveReport();
    void SaveReportAsPdf();
    void ExportSpec();
    void TellOfExport(const std::string& file, std::size_t lost);
    void PrintReport();
    void PrintSetup();
    void HelpTopics();
    void HelpContents();
    void HelpOn(QDialog& dialog);
    void ShowWebSite(const QAction& item);
    void ShowAbout();
    void ShowDefaults();
    void ShowOptions();
    void ShowAnalysis();
    /// Tells the analysis that the project, or what it is sized with, has changed.
    void RefreshAnalysis();
    void EndAnalysis();
    void RefreshEditMenu();
    // Steps and loads in the Edit menu: `frmMainProfile.cpp`.
    void BindProfileCommands();
    void RefreshProfileCommands();
    void CutLoads();
    void CopyLoads();
    void PasteLoads();
    void DuplicateLoads();
    void FindLoads();
    void FindNext();
    void FindPrevious();
    void RunEdit(const std::string& name);
    /// Runs a command on a file; a failure other than the user's cancel is told in one sentence.
    void RunOrTell(const char* complaint, const std::function<void()>& command);
    [[nodiscard]] std::string ProductName() const;
    [[nodiscard]] QAction* Command(const std::string& name) const { return m_commands.at(name); }
    void Tell(const std::string& text, MessageIcon icon, const std::string& title = {});

    CApplication* m_application;
    PlatformServices* m_platform;
    ErrorLog m_log;
    RecentFiles m_recent;
    WindowPlace m_place;
    WindowPlace m_analysisPlace;
    std::function<void()> m_appeared;
    bool m_hasAppeared = false;
    std::map<std::string, QMenu*> m_menus;
    std::map<std::string, QAction*> m_commands;
    std::map<std::string, QAction*> m_toolButtons;
    std::vector<UnofferedChoice> m_unoffered;  ///< that the user has not made yet
    ChoicesFrom m_choicesFrom = ChoicesFrom::Defaults;
    std::string m_notSaved;  ///< sentence on the last save, if it failed
    QToolBar* m_toolbar = nullptr;
    FileStatus* m_fileStatus = nullptr;
    ProfileStatus* m_profileStatus = nullptr;
    ctlSideBar* m_barMain = nullptr;
    QStackedWidget* m_panels = nullptr;
    panProject* m_panProject = nullptr;
    panPwrSys* m_panPwrSys = nullptr;
    panLoadProfile* m_panLoadProfile = nullptr;
    panRecommend* m_panRecommend = nullptr;
    Recovery m_recovery;
    QTimer* m_recoveryTimer = nullptr;  ///< runs while something is typed that was not kept yet
    bool m_letGo = false;
    QPointer<QWidget> m_edited;  ///< text field whose entry no change holds yet
    std::unique_ptr<CEditMenu> m_editMenu;
    std::unique_ptr<EditWatch> m_editWatch;  ///< goes before what it tells
    std::unique_ptr<frmSplash> m_splash;
    std::unique_ptr<frmErrLog> m_errLog;
    std::unique_ptr<frmAnalysis> m_analysis;  ///< goes before what it asks
};

}  // namespace genvara
