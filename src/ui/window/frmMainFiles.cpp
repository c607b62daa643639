// The main window's commands on what leaves the program: mail, reports and spec exports.

#include <QStatusBar>
#include <filesystem>

#include "ErrorNumbers.h"
#include "FailureRegion.h"
#include "FileNames.h"
#include "Texts.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panProject.h"
#include "panRecommend.h"

namespace genvara {
namespace {

constexpr const char* kErrorTitle = "ERROR";
constexpr const char* kReportFilter = "Rich Text Files (*.rtf)|*.rtf|All Files (*.*)|*.*";
constexpr const char* kPdfFilter = "PDF Files (*.pdf)|*.pdf|All Files (*.*)|*.*";
constexpr const char* kSpecFilter = "Spec. Export Files (*.gvx)|*.gvx|All Files (*.*)|*.*";

constexpr int kPassingMessage = 5000;  // milliseconds in the status bar

QString NameOf(const std::string& file) {
    return ToQt(std::filesystem::path(file).filename().string());
}

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

void frmMain::SendMail() {
    FailureRegion region;
    region.Run([this] { SaveProject(); });
    const bool cancelled = region.Pending() && region.Pending()->Number() == errors::kDialogCancelled;
    if (region.Pending() && !cancelled) {
        Tell("Can not save project file for attachment.", MessageIcon::Stop);
        return;
    }
    if (cancelled || ProjectFile().empty()) {
        return;
    }
    region.Run([this] { m_platform->NewMail(ProjectFile()); });
    if (region.Pending()) {
        Tell("Unable to open Microsoft Outlook(tm).", MessageIcon::Stop);
    }
}

std::string frmMain::SuggestedName(const char* extension) const {
    const std::string name = FileNameFor(m_panProject->ProjectName(), extension);
    const std::filesystem::path file = ProjectFile();
    return name.empty() && !file.empty() ? file.stem().string() + extension : name;
}

bool frmMain::RefusesOutput(const std::string& file) {
    const auto obstacle = m_application->Document().OutputObstacle(file);
    if (obstacle) {
        Tell("Nothing was written to " + file + ": " + *obstacle + ".", MessageIcon::Exclamation,
             ProductName());
    }
    return obstacle.has_value();
}

bool frmMain::LacksReport(const char* deed) {
    if (m_panRecommend->HasReport()) {
        return false;
    }
    Tell(std::string("There is no report to ") + deed + ".", MessageIcon::Exclamation);
    return true;
}

void frmMain::SaveReport() {
    if (LacksReport("save")) {
        return;
    }
    RunOrTell("An error occured while attempting to save the report.", [this] {
        const std::string file =
            m_platform->SaveFileName(this, {.title = "Save Report",
                                            .initialName = SuggestedName(".rtf"),
                                            .initialFolder = m_application->ProjectPath(),
                                            .defaultExtension = ".rtf",
                                            .filter = kReportFilter});
        if (!RefusesOutput(file)) {
            m_panRecommend->SaveReport(file);
            statusBar()->showMessage(tr("Saved the report as %1.").arg(NameOf(file)), kPassingMessage);
        }
    });
}

void frmMain::SaveReportAsPdf() {
    if (LacksReport("save")) {
        return;
    }
    try {
        const std::string file =
            m_platform->SaveFileName(this, {.title = "Save Report as PDF",
                                            .initialName = SuggestedName(".pdf"),
                                            .initialFolder = m_application->ProjectPath(),
                                            .defaultExtension = ".pdf",
                                            .filter = kPdfFilter,
                                            .asksBeforeReplacing = true});
        if (!RefusesOutput(file)) {
            m_panRecommend->SaveReportAsPdf(file);
            statusBar()->showMessage(tr("Saved the report as %1.").arg(NameOf(file)), kPassingMessage);
        }
    } catch (const RaisedError& failure) {
        if (failure.Number() != errors::kDialogCancelled) {
            Tell("The report cannot be saved: " + failure.Description(), MessageIcon::Stop, kErrorTitle);
        }
    }
}

void frmMain::ExportSpec() {
    RunOrTell("An error occured while attempting to export the spec.", [this] {
        const std::string& folder = m_application->ProjectPath();
        const std::string file = m_platform->SaveFileName(
            this, {.title = "Export Spec. Data",
                   .initialName = SuggestedName(".gvx"),
                   .initialFolder = folder.empty() ? m_application->Folder().string() : folder,
                   .defaultExtension = ".gvx",
                   .filter = kSpecFilter});
        if (!RefusesOutput(file)) {
            TellOfExport(file, m_panRecommend->ExportSpec(file));
        }
    });
}

void frmMain::TellOfExport(const std::string& file, std::size_t lost) {
    if (lost > 0) {
        statusBar()->showMessage(
            tr("Exported %1; %2 characters that the file cannot hold were written as \"?\".")
                .arg(NameOf(file))
                .arg(lost));
    } else {
        statusBar()->showMessage(tr("Exported %1.").arg(NameOf(file)), kPassingMessage);
    }
}

void frmMain::PrintReport() {
    if (LacksReport("print")) {
        return;
    }
    RunOrTell("An error occured while attempting to print the report.",
              [this] { m_panRecommend->PrintReport(); });
}

void frmMain::PrintSetup() {
    RunOrTell("An error occured while attempting to setup the printer.",
              [this] { m_panRecommend->SetUpPrinter(); });
}

}  // namespace genvara
