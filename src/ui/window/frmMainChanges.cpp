// The one way in which commands of the main window change the project at hand.

#include <QStackedWidget>

#include "FailureRegion.h"
#include "Globals.h"
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

void frmMain::ChangeProject(const QString& name, const std::function<void()>& change) {
    FailureRegion region;
    region.Run([this] { m_panProject->Store(m_application->Project()); });
    region.Run([this] { m_panPwrSys->Store(m_application->PowerSystem()); });
    m_application->Document().Change(FromQt(name), change);
    g_ProjectDirty = true;
    ShowRecords();
    Touch();
}

void frmMain::ShowRecords() {
    const CLoadProfile& profile = m_application->LoadProfile();
    m_application->PowerSystem().Display(*m_panPwrSys, m_application->IsMetric());
    m_panLoadProfile->HoldDrawing(true);
    m_panLoadProfile->ClearAllLoads();
    std::int32_t number = 0;
    for (const CLoadStep& step : profile) {
        m_panLoadProfile->DisplayNewStep(++number, step.StepID());
        for (const genvara::Load& load : step) {
            m_panLoadProfile->DisplayNewLoad(number, load.ID());
        }
    }
    m_panLoadProfile->HoldDrawing(false);
    m_panLoadProfile->ShowBeginning();
    if (m_panels->currentWidget() == m_panRecommend) {
        FailureRegion region;
        if (!region.Run([this] { Recommend(); })) {
            TellWhyNotSized(*region.Pending());
        }
    }
}

}  // namespace genvara
