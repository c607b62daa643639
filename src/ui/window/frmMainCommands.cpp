// The main window's dispatch of commands, and those that are no file's.

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <algorithm>

#include "FailureRegion.h"
#include "FieldCheck.h"
#include "HelpPages.h"
#include "LastChance.h"
#include "Panel.h"
#include "ReportView.h"
#include "Texts.h"
#include "frmAbout.h"
#include "frmAnalysis.h"
#include "frmDefaults.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmOptions.h"
#include "frmSplash.h"
#include "panRecommend.h"

namespace genvara {
namespace {

constexpr const char* kErrorTitle = "ERROR";
constexpr const char* kNoHelp = "Help not available.";

/// Toolbar keys and the commands that they stand for.
struct ToolCommand {
    const char* key;
    const char* command;
};
constexpr std::array<ToolCommand, 9> kToolCommands{{{"butNew", "mnuFileNew"},
                                                    {"butOpen", "mnuFileOpen"},
                                                    {"butSave", "mnuFileSave"},
                                                    {"butPrint", "mnuFilePrint"},
                                                    {"butExport", "mnuFileExport"},
                                                    {"butCut", "mnuEditCut"},
                                                    {"butCopy", "mnuEditCopy"},
                                                    {"butPaste", "mnuEditPaste"},
                                                    {"butHelp", "mnuHelpTopics"}}};

/// Whether a command takes the user away from the field that he is in; editing it and reading about it do
/// not.
bool LeadsElsewhere(const std::string& command) {
    return !command.starts_with("mnuEdit") && !command.starts_with("mnuHelp") && !command.starts_with("help");
}

}  // namespace

void frmMain::Run(const std::string& name) {
    if (LeadsElsewhere(name) && FocusIsHeld(*this)) {
        return;
    }
    static const std::map<std::string, void (frmMain::*)()> commands{
        {"mnuFileNew", &frmMain::FileNew},
        {"mnuFileOpen", &frmMain::FileOpen},
        {"mnuFileSave", &frmMain::FileSave},
        {"mnuFileSaveAs", &frmMain::FileSaveAs},
        {"mnuFileExport", &frmMain::ExportSpec},
        {"mnuFileSaveReport", &frmMain::SaveReport},
        {"mnuFilePrint", &frmMain::PrintReport},
        {"mnuFilePrintSetup", &frmMain::PrintSetup},
        {"mnuFileSendMail", &frmMain::SendMail},
        {"mnuToolsDefaults", &frmMain::ShowDefaults},
        {"mnuToolsOptions", &frmMain::ShowOptions},
        {"mnuToolsAnalysis", &frmMain::ShowAnalysis},
        {"mnuHelpTopics", &frmMain::HelpTopics},
        {"mnuFileSaveReportPdf", &frmMain::SaveReportAsPdf},
        {"mnuHelpAbout", &frmMain::ShowAbout},
        {"helpContents", &frmMain::HelpContents},
        {"mnuFileRecover", &frmMain::RecoverProject},
        {"mnuFileImport", &frmMain::ImportLoads},
        {"mnuEditUndo", &frmMain::Undo},
        {"mnuEditRedo", &frmMain::Redo},
        {"mnuEditCutLoads", &frmMain::CutLoads},
        {"mnuEditCopyLoads", &frmMain::CopyLoads},
        {"mnuEditPasteLoads", &frmMain::PasteLoads},
        {"mnuEditDuplicate", &frmMain::DuplicateLoads},
        {"mnuEditFind", &frmMain::FindLoads},
        {"mnuEditFindNext", &frmMain::FindNext},
        {"mnuEditFindPrevious", &frmMain::FindPrevious},
    };
    if (const auto found = commands.find(name); found != commands.end()) {
        (this->*found->second)();
    } else if (name.starts_with("mnuEdit")) {
        RunEdit(name);
    } else if (name.starts_with("mnuFileMRU")) {
        OpenRecent(static_cast<std::size_t>(name.back() - '0'));
    } else if (name.starts_with("mnuHelpWebSite")) {
        ShowWebSite(*Command(name));
    } else if (name == "mnuFileExit") {
        close();
    }
}

void frmMain::ToolClicked(const std::string& key) {
    FailureRegion region;  // whatever fails here is passed over
    const auto* entry = std::find_if(kToolCommands.begin(), kToolCommands.end(),
                                     [&](const ToolCommand& tool) { return key == tool.key; });
    region.Run([&] { Run(entry->command); });
}

void frmMain::RefreshEditMenu() {
    const auto* panel = dynamic_cast<Panel*>(m_panels->currentWidget());
    QWidget* control = panel == nullptr ? nullptr : panel->ActiveCtrl();
    const bool text = qobject_cast<QLineEdit*>(control) != nullptr ||
                      qobject_cast<QPlainTextEdit*>(control) != nullptr ||
                      qobject_cast<QComboBox*>(control) != nullptr;
    const bool rich = qobject_cast<ReportView*>(control) != nullptr;
    if (rich) {
        m_editMenu->ActiveRTFBox(control);
    } else if (text) {
        m_editMenu->ActiveTextBox(control);
    }
    const bool any = text || rich;
    const auto enable = [this](const char* command, const char* button, bool enabled) {
        Command(command)->setEnabled(enabled);
        m_toolButtons.at(button)->setEnabled(enabled);
    };
    enable("mnuEditCut", "butCut", any && m_editMenu->CanCut());
    enable("mnuEditCopy", "butCopy", any && m_editMenu->CanCopy());
    enable("mnuEditPaste", "butPaste", any && m_editMenu->CanPaste());
    RefreshProfileCommands();
    ShowUndo();
}

void frmMain::RunEdit(const std::string& name) {
    RefreshEditMenu();
    if (!Command(name)->isEnabled()) {
        return;
    }
    if (name == "mnuEditCut") {
        m_editMenu->Cut();
    } else if (name == "mnuEditCopy") {
        m_editMenu->Copy();
    } else {
        m_editMenu->Paste();
    }
}

void frmMain::HelpTopics() {
    RunOrTell(kNoHelp, [this] {
        m_application->HelpFile().RequestingWindow(static_cast<std::int32_t>(winId()));
        m_application->HelpFile().CloseFile();
        m_application->HelpFile().ShowHelp();
    });
}

void frmMain::HelpContents() {
    RunOrTell(kNoHelp, [this] {
        m_application->HelpFile().RequestingWindow(static_cast<std::int32_t>(winId()));
        m_application->HelpFile().ShowHelp();
    });
}

void frmMain::HelpOn(QDialog& dialog) {
    const std::string place(HelpPlaceOf(FromQt(dialog.objectName())));
    if (!m_platform->ShowHelp(&dialog, m_application->HelpFile().Filename(), place)) {
        m_platform->ShowMessage(&dialog, {.text = kNoHelp, .icon = MessageIcon::Stop, .title = kErrorTitle});
    }
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (GoesBeforeOwnUndo(watched, *event)) {
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && key->matches(QKeySequence::HelpContents)) {
            RunEvent([&] { HelpOn(*dialog); });
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::ShowWebSite(const QAction& item) {
    if (!m_platform->ShowWebPage(FromQt(item.text()))) {
        Tell("Unable to run Internet Explorer.", MessageIcon::Stop, kErrorTitle);
    }
}

void frmMain::ShowAbout() {
    frmAbout(*m_platform, *m_application, this).exec();
}

void frmMain::ShowDefaults() {
    frmDefaults(*m_platform, *m_application, this).exec();
}

void frmMain::ShowOptions() {
    frmOptions(
        *m_platform, *m_application, [this](bool metric) { PwrSysUnitsChanged(metric); }, this)
        .exec();
    RefreshAnalysis();
}

}  // namespace genvara
