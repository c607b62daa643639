// The main window's analysis: what it is of, and what it changes.

#include <QStackedWidget>

#include "FailureRegion.h"
#include "Globals.h"
#include "ProjectFormat.h"
#include "Texts.h"
#include "frmAnalysis.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {

void frmMain::ShowAnalysis() {
    if (m_analysis == nullptr) {
        m_analysis =
            std::make_unique<frmAnalysis>(*this, m_application->Catalogue(), m_panRecommend->Exhibits());
        m_analysis->setWindowIcon(windowIcon());
        m_analysisPlace.Restore(*m_analysis, m_analysis->size());
    }
    m_analysis->ProjectName(ToQt(m_panProject->ProjectName()));
    if (m_panels->currentWidget() == m_panRecommend) {
        if (const ChosenSet* set = m_panRecommend->ShownSet()) {
            m_analysis->ChooseSet(
                {.model = set->ModelNum, .alternator = set->AltNum, .engine = set->EngineNum});
        }
    }
    m_analysis->show();
    m_analysis->raise();
    m_analysis->activateWindow();
}

void frmMain::EndAnalysis() {
    if (m_analysis != nullptr) {
        m_analysisPlace.Keep(*m_analysis);
        m_analysis.reset();
    }
}

void frmMain::RefreshAnalysis() {
    if (m_analysis != nullptr) {
        m_analysis->ProjectName(ToQt(m_panProject->ProjectName()));
        m_analysis->ProjectChanged();
    }
}

std::optional<StudyProject> frmMain::ProjectAsItStands() {
    const Document& document = m_application->Document();
    StudyProject project{.project = document.Project(),
                         .powerSystem = document.PowerSystem(),
                         .loadProfile = document.LoadProfile(),
                         .limits = document.Designer(),
                         .format = FormatOfName(ProjectFile()).value_or(ProjectFormat::Records)};
    FailureRegion region;
    region.Run([&] { m_panProject->Store(project.project); });
    if (!region.Run([&] { m_panPwrSys->Store(project.powerSystem); })) {
        return std::nullopt;
    }
    return project;
}

void frmMain::TakeVariation(const QString& name, const StudyProject& varied) {
    ChangeProject(name, [&] {
        m_application->PowerSystem() = varied.powerSystem;
        m_application->LoadProfile() = varied.loadProfile;
    });
}

void frmMain::ShowAnalysisHelp(QWidget& owner) {
    if (!m_platform->ShowHelp(&owner, m_application->HelpFile().Filename(), "analysis.html")) {
        Tell("Help not available.", MessageIcon::Stop, "ERROR");
    }
}

}  // namespace genvara
