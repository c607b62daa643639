// The main window's commands on project files.

#include <QAction>
#include <QStatusBar>
#include <filesystem>
#include <string_view>

#include "ErrorNumbers.h"
#include "FailureRegion.h"
#include "FileStatus.h"
#include "Globals.h"
#include "PrjTexts.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"
#include "ProjectFormat.h"
#include "ShownProject.h"
#include "StringTable.h"
#include "Texts.h"
#include "WaitCursor.h"
#include "WriteObstacle.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmMainLetGo.h"
#include "frmSplash.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {
namespace {

constexpr const char* kErrorTitle = "ERROR";
constexpr const char* kProjectFilter = "Project Files (*.prj)|*.prj|All Files (*.*)|*.*";

constexpr int kPassingMessage = 5000;  // milliseconds in the status bar
constexpr std::string_view kBreak = "\r\n";
/// Number of a file that cannot be used as it is meant to.
constexpr std::int32_t kFileAccessError = 75;

constexpr std::int32_t kSaveChangesString = 110;
constexpr std::int32_t kCannotSaveString = 111;
constexpr std::int32_t kSaveProjectString = 121;
constexpr std::int32_t kOpenProjectString = 122;

std::string Text(std::int32_t id) {
    return std::string(StringTable::Text(id));
}

/// The end of a sentence on a save that failed: what stands behind the file's name in the failure's words.
std::string ReasonOf(const RaisedError& failure, const std::string& file) {
    const std::string& words = failure.Description();
    const std::size_t end = words.find(kBreak);
    return WriteObstacle(file, failure.Number(),
                         end == std::string::npos ? words : words.substr(end + kBreak.size()));
}

}  // namespace

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
        const LetGo wish(*this, g_ProjectDirty && answer == MessageAnswer::No);
        NewProject();
    }
}

void frmMain::NewProject() {
    const auto dropped = WhatIsDropped();
    g_ProjectDirty = false;
    {
        ShownProject shown(*m_application, *m_panProject, *m_panPwrSys, *m_panLoadProfile);
        m_application->Document().New(shown);
    }
    m_edited = nullptr;
    NoteUnoffered(ChoicesFrom::Defaults);
    ShowHeadings();
    m_panRecommend->ClearReport();
    SideBarClicked(0);
    m_notSaved.clear();
    ShowFileStatus();
    statusBar()->clearMessage();
    KeepDropped(dropped);
}

void frmMain::FileOpen() {
    if (!PanelsAreReady()) {
        return;
    }
    try {
        const MessageAnswer answer = g_ProjectDirty ? AskForChanges() : MessageAnswer::No;
        if (answer == MessageAnswer::No) {
            const LetGo wish(*this, g_ProjectDirty);
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
        if (ReadProjectFile(file) == ReadResult::Incompatible) {
            m_application->Document().ProjectFile({});
        }
        g_ProjectDirty = false;
    } catch (const RaisedError& failure) {
        m_application->Document().ProjectFile({});
        TellWhyNotOpened(failure);
    }
    ShowFileStatus();
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

ReadResult frmMain::ReadProjectFile(const std::string& file) {
    const auto dropped = WhatIsDropped();
    ReadResult result = ReadResult::Done;
    int skipped = 0;
    try {
        const WaitCursor busy;
        ShownProject shown(*m_application, *m_panProject, *m_panPwrSys, *m_panLoadProfile);
        result = m_application->Document().Read(file, shown);
        skipped = shown.CountSkipped();
    } catch (const RaisedError&) {
        ShowFileStatus();  // the next save goes to the name that was refused
        throw;
    }
    if (result == ReadResult::Incompatible) {
        ShowFileStatus();
        const std::string label = ProductName() + " " + std::string(kProgramVersionText);
        Tell("This project file is not compatible with " + label, MessageIcon::Exclamation, label);
        return result;
    }
    KeepDropped(dropped);
    m_edited = nullptr;
    NoteUnoffered(ChoicesFrom::File);
    ShowProjectPanel();
    m_notSaved.clear();
    ShowFileStatus();
    if (!m_unoffered.empty()) {
        Tell(FromQt(SiteNotice(m_unoffered, m_choicesFrom, *m_panPwrSys)), MessageIcon::Exclamation,
             ProductName());
    }
    if (skipped > 0) {
        statusBar()->showMessage(
            tr("%1 entries of the file could not be read and were left out.").arg(skipped));
    } else {
        statusBar()->clearMessage();
    }
    return result;
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
        } else if (failure.Number() == 0 && !failure.Description().empty()) {
            TellWhyNotOpened(failure);  // a JSON project with faults
        } else if (failure.Number() != 0) {
            Tell("ERROR: " + std::to_string(failure.Number()) + "\r\n" + failure.Description(),
                 MessageIcon::Stop, kErrorTitle);
        }
    }
}

void frmMain::FileSave() {
    SaveOrTell([this] { SaveProject(); });
}

void frmMain::FileSaveAs() {
    SaveOrTell([this] { SaveProjectAs(); });
}

void frmMain::SaveOrTell(const std::function<void()>& command) {
    try {
        command();
    } catch (const RaisedError& failure) {
        if (failure.Number() != errors::kDialogCancelled) {
            Tell(m_notSaved, MessageIcon::Exclamation, ProductName());
        }
    }
}

void frmMain::SaveProject() {
    if (ProjectFile().empty()) {
        SaveProjectAs();
        return;
    }
    SaveTo(ProjectFile());
    AddRecent();
}

const char* frmMain::ProjectEnding() const {
    return FormatOfName(ProjectFile()) == ProjectFormat::Json ? ".json" : ".prj";
}

void frmMain::SaveProjectAs() {
    std::string file;
    try {
        file = m_platform->SaveFileName(this, {.title = Text(kSaveProjectString),
                                               .initialName = SuggestedName(ProjectEnding()),
                                               .initialFolder = m_application->ProjectPath(),
                                               .defaultExtension = ".prj",
                                               .filter = kProjectFilter});
    } catch (const RaisedError& failure) {
        if (failure.Number() == errors::kDialogCancelled) {
            return;
        }
        throw;
    }
    SaveTo(file);
    AddRecent();
    g_ProjectDirty = false;
}

void frmMain::SaveTo(const std::string& file) {
    try {
        RequireSaveable(file);
        m_application->Document().ProjectFile(file);
        WriteProjectFile();
        m_notSaved.clear();
    } catch (const RaisedError& failure) {
        if (failure.Number() != errors::kDialogCancelled) {
            m_notSaved = "The project was not saved as " + file + ": " + ReasonOf(failure, file) + ".";
            statusBar()->clearMessage();  // of the save before
        }
        ShowFileStatus();
        throw;
    }
    ShowFileStatus();
}

void frmMain::RequireSaveable(const std::string& file) {
    const Document& document = m_application->Document();
    if (const auto obstacle = document.SaveObstacle(file)) {
        throw RaisedError(kFileAccessError, "frmMain::WriteProjectFile",
                          "Error opening " + file + std::string(kBreak) + *obstacle);
    }
    const char* reason = nullptr;
    if (document.ReplacesUnread(file)) {
        reason = " could not be read as a project.";
    } else if (document.ReplacesAnothers(file)) {
        reason = " was changed by another program since it was read.";
    }
    if (reason != nullptr &&
        m_platform->ShowMessage(this, {.text = file + reason + " Replace it with the project on screen?",
                                       .icon = MessageIcon::Question,
                                       .title = ProductName(),
                                       .buttons = MessageButtons::YesNo}) != MessageAnswer::Yes) {
        throw RaisedError(errors::kDialogCancelled, "frmMain::WriteProjectFile", "Cancel was selected.");
    }
}

void frmMain::WriteProjectFile() {
    const WaitCursor busy;
    FailureRegion region;  // a panel that does not store leaves its record as it was
    std::size_t quotes = 0;
    const auto store = [&] {
        m_panPwrSys->FillEmptied();
        region.Run([this] { m_panProject->Store(m_application->Project()); });
        region.Run([this] { m_panPwrSys->Store(m_application->PowerSystem()); });
        KeepStored();
        if (FormatOfName(ProjectFile()) != ProjectFormat::Json) {
            quotes = MakeQuotesTypographic();
        }
    };
    const std::size_t lost = m_application->Document().Write(store);
    m_panProject->ModifiedDateTime(m_application->Now()());
    g_ProjectDirty = false;
    const QString name = ToQt(std::filesystem::path(ProjectFile()).filename().string());
    if (lost > 0) {
        statusBar()->showMessage(
            tr("Saved %1; %2 characters that a project file cannot hold were written as \"?\".")
                .arg(name)
                .arg(lost));
    } else if (quotes > 0) {
        statusBar()->showMessage(tr("Saved %1; a project file cannot hold the double quotes of %2 texts, "
                                    "which are typographic now.")
                                     .arg(name)
                                     .arg(quotes));
    } else if (region.Pending()) {
        statusBar()->showMessage(
            tr("Saved %1 with the last valid values of the power system panel.").arg(name));
    } else {
        statusBar()->showMessage(tr("Saved %1.").arg(name), kPassingMessage);
    }
}

/// Rids the project, and what shows it, of double quotes, which nobody can enter and a JSON project may hold.
std::size_t frmMain::MakeQuotesTypographic() {
    std::size_t changed = 0;
    m_application->Document().Change("Replace Double Quotes", [&] {
        changed = ReplaceDoubleQuotes(m_application->Project(), m_application->LoadProfile());
    });
    if (changed > 0) {
        ShowRecords({.name = {}, .project = true, .powerSystem = false, .loadProfile = true, .place = {}});
    }
    return changed;
}

void frmMain::ShowFileStatus() {
    m_fileStatus->Show(ProjectFile(), m_application->Document().IsChanged());
    m_fileStatus->NotSaved(m_notSaved);
    ShowUndo();
    RefreshAnalysis();
}

void frmMain::NoteUnoffered(ChoicesFrom from) {
    m_unoffered = m_application->Document().UnofferedChoices();
    m_choicesFrom = from;
    ShowNotices();
}

void frmMain::ShowNotices() {
    const QString text = SiteNotice(m_unoffered, m_choicesFrom, *m_panPwrSys);
    m_panPwrSys->Notice(text);
    m_panRecommend->Notice(text);
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

}  // namespace genvara
