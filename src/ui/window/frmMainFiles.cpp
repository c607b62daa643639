// The main window's commands on files: projects, reports and spec exports.

#include <QAction>
#include <QStatusBar>
#include <system_error>

#include "AtomicFile.h"
#include "ErrorNumbers.h"
#include "FailureRegion.h"
#include "Globals.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"
#include "StringTable.h"
#include "Texts.h"
#include "WaitCursor.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {
namespace {

constexpr const char* kErrorTitle = "ERROR";
constexpr const char* kProjectFilter = "Project Files (*.prj)|*.prj|All Files (*.*)|*.*";
constexpr const char* kReportFilter = "Rich Text Files (*.rtf)|*.rtf|All Files (*.*)|*.*";
constexpr const char* kSpecFilter = "Spec. Export Files (*.gvx)|*.gvx|All Files (*.*)|*.*";

constexpr int kPassingMessage = 5000;  // milliseconds in the status bar

constexpr std::int32_t kSaveChangesString = 110;
constexpr std::int32_t kCannotSaveString = 111;
constexpr std::int32_t kSaveProjectString = 121;
constexpr std::int32_t kOpenProjectString = 122;

std::string Text(std::int32_t id) {
    return std::string(StringTable::Text(id));
}

/// Shows each part of a project on its panel as soon as it has been read or begun.
class Shown final : public ProjectReadObserver {
  public:
    Shown(CApplication& application, panProject& project, panPwrSys& site, panLoadProfile& profile)
        : m_application(&application), m_project(&project), m_site(&site), m_profile(&profile) {
        m_profile->HoldDrawing(true);
    }
    ~Shown() override { m_profile->HoldDrawing(false); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    Shown(Shown&&) = delete;
    Shown& operator=(Shown&&) = delete;

    void ProjectRead() override { m_application->Project().Display(*m_project); }
    void PowerSystemRead() override {
        m_site->ProjectName(m_application->Project().ProjName());
        m_application->PowerSystem().Display(*m_site, m_application->IsMetric());
    }
    void StepsCleared() override { m_profile->ClearAllLoads(); }
    void StepAdded(std::int32_t stepId) override {
        m_profile->DisplayNewStep(m_application->LoadProfile().NumLoadSteps(), stepId);
    }
    void LoadAdded(std::int32_t stepNumber, std::int32_t loadId) override {
        m_profile->DisplayNewLoad(stepNumber, loadId);
    }
    void Skipped(const SkippedItem& /*item*/) override { ++m_skipped; }

    [[nodiscard]] int CountSkipped() const noexcept { return m_skipped; }

  private:
    CApplication* m_application;
    panProject* m_project;
    panPwrSys* m_site;
    panLoadProfile* m_profile;
    int m_skipped = 0;
};

}  // namespace

void frmMain::RunOrTell(const char* complaint, const std::function<void()>& command) {
    try {
        command();
    } catch (const RaisedError& failure) {
        if (failure.Number() != errors::kDialogCancelled) {
            Tell(complaint, MessageIcon::Stop, kErrorTitle);
        }
    }
}

bool frmMain::SaveBeforeLeaving() {
    try {
        SaveProject();
        return true;
    } catch (const RaisedError& failure) {
        if (failure.Number() == 0) {
            return true;
        }
        if (failure.Number() == errors::kDialogCancelled) {
            return false;
        }
    }
    return m_platform->ShowMessage(this, {.text = Text(kCannotSaveString) + "\r\nOpen a new project anyway?",
                                          .icon = MessageIcon::Exclamation,
                                          .title = ProductName(),
                                          .buttons = MessageButtons::YesNo}) == MessageAnswer::Yes;
}

MessageAnswer frmMain::AskForChanges() {
    return m_platform->ShowMessage(this, {.text = Text(kSaveChangesString),
                                          .icon = MessageIcon::Question,
                                          .title = ProductName(),
                                          .buttons = MessageButtons::YesNoCancel});
}

void frmMain::FileNew() {
    const MessageAnswer answer = g_ProjectDirty ? AskForChanges() : MessageAnswer::No;
    // A save dialog that the user cancels is no failure: the project is dropped all the same.
    if (answer == MessageAnswer::No || (answer == MessageAnswer::Yes && SaveBeforeLeaving())) {
        NewProject();
    }
}

void frmMain::NewProject() {
    g_ProjectDirty = false;
    {
        Shown shown(*m_application, *m_panProject, *m_panPwrSys, *m_panLoadProfile);
        m_application->Document().New(shown);
    }
    ShowHeadings();
    m_panRecommend->ClearReport();
    SideBarClicked(0);
    statusBar()->clearMessage();
}

void frmMain::FileOpen() {
    try {
        const MessageAnswer answer = g_ProjectDirty ? AskForChanges() : MessageAnswer::No;
        if (answer == MessageAnswer::No) {
            SideBarClicked(0);
            OpenProject();
        } else if (answer == MessageAnswer::Yes && SaveBeforeLeaving()) {
            OpenProject();
        }
    } catch (const RaisedError& failure) {
        TellWhyNotOpened(failure);
    }
}

void frmMain::TellWhyNotOpened(const RaisedError& failure) {
    if (failure.Number() != errors::kDialogCancelled) {
        Tell("Unable to open project file.\r\n" + failure.Description(), MessageIcon::Exclamation,
             ProductName());
    }
}

void frmMain::OpenFile(const std::string& file) {
    try {
        m_application->Document().ProjectFile(file);
        ReadProjectFile(file);
        g_ProjectDirty = false;
    } catch (const RaisedError& failure) {
        m_application->Document().ProjectFile({});
        TellWhyNotOpened(failure);
    }
}

void frmMain::OpenProject() {
    const std::string& folder = m_application->ProjectPath();
    try {
        m_application->Document().ProjectFile(m_platform->OpenFileName(
            this, {.title = Text(kOpenProjectString),
                   .initialFolder = folder.empty() ? m_application->Folder().string() : folder,
                   .defaultExtension = ".prj",
                   .filter = kProjectFilter}));
        ReadProjectFile(ProjectFile());
        g_ProjectDirty = false;
    } catch (const RaisedError& failure) {
        if (failure.Number() == errors::kDialogCancelled) {
            throw;
        }
        throw failure.WithSource("frmMain::OpenProject");
    }
}

void frmMain::ReadProjectFile(const std::string& file) {
    ReadResult result = ReadResult::Done;
    int skipped = 0;
    {
        const WaitCursor busy;
        Shown shown(*m_application, *m_panProject, *m_panPwrSys, *m_panLoadProfile);
        result = m_application->Document().Read(file, shown);
        skipped = shown.CountSkipped();
    }
    if (result == ReadResult::Incompatible) {
        const std::string label = ProductName() + " " + std::string(kProgramVersionText);
        Tell("This project file is not compatible with " + label, MessageIcon::Exclamation, label);
        return;
    }
    ShowProjectPanel();
    if (skipped > 0) {
        statusBar()->showMessage(
            tr("%1 entries of the file could not be read and were left out.").arg(skipped));
    } else {
        statusBar()->clearMessage();
    }
}

void frmMain::OpenRecent(std::size_t index) {
    m_application->Document().ProjectFile(RecentName(index));
    try {
        ReadProjectFile(ProjectFile());
    } catch (const RaisedError& failure) {
        if (failure.Number() == errors::kFileNotFound) {
            const MessageAnswer answer =
                m_platform->ShowMessage(this, {.text = "Project file not found.\r\nTry Again?",
                                               .icon = MessageIcon::Stop,
                                               .buttons = MessageButtons::YesNo});
            if (answer == MessageAnswer::Yes) {
                FileOpen();
            }
        } else if (failure.Number() != 0) {
            Tell("ERROR: " + std::to_string(failure.Number()) + "\r\n" + failure.Description(),
                 MessageIcon::Stop, kErrorTitle);
        }
    }
}

void frmMain::SaveProject() {
    if (ProjectFile().empty()) {
        SaveProjectAs();
        return;
    }
    WriteProjectFile();
    AddRecent();
}

void frmMain::SaveProjectAs() {
    try {
        m_application->Document().ProjectFile(
            m_platform->SaveFileName(this, {.title = Text(kSaveProjectString),
                                            .initialFolder = m_application->ProjectPath(),
                                            .defaultExtension = ".prj",
                                            .filter = kProjectFilter}));
        WriteProjectFile();
    } catch (const RaisedError& failure) {
        if (failure.Number() == errors::kDialogCancelled) {
            return;
        }
        throw;
    }
    AddRecent();
    g_ProjectDirty = false;
}

void frmMain::WriteProjectFile() {
    const WaitCursor busy;
    FailureRegion region;  // a panel that does not store leaves its record as it was
    const auto store = [&] {
        region.Run([this] { m_panProject->Store(m_application->Project()); });
        region.Run([this] { m_panPwrSys->Store(m_application->PowerSystem()); });
    };
    const std::size_t lost = m_application->Document().Write(store);
    m_panProject->ModifiedDateTime(m_application->Now()());
    g_ProjectDirty = false;
    if (lost > 0) {
        statusBar()->showMessage(
            tr("Saved; %1 characters that a project file cannot hold were written as \"?\".").arg(lost));
    } else if (region.Pending()) {
        statusBar()->showMessage(tr("Saved with the last valid values of the power system panel."));
    } else {
        statusBar()->showMessage(tr("Saved."), kPassingMessage);
    }
}

std::filesystem::path frmMain::Rescue(const std::filesystem::path& folder) {
    FailureRegion region;
    region.Run([this] { m_panProject->Store(m_application->Project()); });
    region.Run([this] { m_panPwrSys->Store(m_application->PowerSystem()); });
    return m_application->Document().Rescue(folder);
}

std::string frmMain::RecentName(std::size_t index) const {
    return FromQt(Command("mnuFileMRU" + std::to_string(index))->data().toString());
}

void frmMain::AddRecent() {
    FailureRegion region;
    bool listed = false;
    for (std::size_t index = 0; index < RecentFiles::kMost; ++index) {
        listed = listed || RecentName(index) == ProjectFile();
    }
    if (!listed) {
        region.Run([this] { m_recent.Add(ProjectFile()); });
    }
    region.Run([this] { RebuildRecentMenu(); });
}

void frmMain::RebuildRecentMenu() {
    std::size_t index = 0;
    for (const std::string& name : m_recent.Read()) {
        Command("mnuFileSep4")->setVisible(true);
        QAction* item = Command("mnuFileMRU" + std::to_string(index++));
        item->setData(ToQt(name));
        // A menu takes a single ampersand for the mark of a key.
        item->setText(ToQt(name).replace('&', "&&"));
        item->setVisible(true);
    }
}

void frmMain::SendMail() {
    FailureRegion region;
    region.Run([this] { SaveProject(); });
    if (region.Pending()) {
        Tell("Can not save project file for attachment.", MessageIcon::Stop);
        return;
    }
    if (ProjectFile().empty()) {
        return;
    }
    region.Run([this] { m_platform->NewMail(ProjectFile()); });
    if (region.Pending()) {
        Tell("Unable to open Microsoft Outlook(tm).", MessageIcon::Stop);
    }
}

void frmMain::SaveReport() {
    RunOrTell("An error occured while attempting to save the report.", [this] {
        m_panRecommend->SaveReport(
            m_platform->SaveFileName(this, {.title = "Save Report",
                                            .initialFolder = m_application->ProjectPath(),
                                            .defaultExtension = ".rtf",
                                            .filter = kReportFilter}));
    });
}

void frmMain::ExportSpec() {
    RunOrTell("An error occured while attempting to export the spec.", [this] {
        const std::string& folder = m_application->ProjectPath();
        const std::size_t lost = m_panRecommend->ExportSpec(m_platform->SaveFileName(
            this, {.title = "Export Spec. Data",
                   .initialFolder = folder.empty() ? m_application->Folder().string() : folder,
                   .defaultExtension = ".gvx",
                   .filter = kSpecFilter}));
        if (lost > 0) {
            statusBar()->showMessage(
                tr("Exported; %1 characters that the file cannot hold were written as \"?\".").arg(lost));
        } else {
            statusBar()->showMessage(tr("Exported."), kPassingMessage);
        }
    });
}

void frmMain::PrintReport() {
    RunOrTell("An error occured while attempting to print the report.",
              [this] { m_panRecommend->PrintReport(); });
}

void frmMain::PrintSetup() {
    RunOrTell("An error occured while attempting to setup the printer.",
              [this] { m_platform->SetUpPrinter(this); });
}

}  // namespace genvara
