#include "frmEditStep.h"

namespace genvara {

frmEditStep::frmEditStep(PlatformServices& platform, const CPwrSys& site, QWidget* owner)
    : StepDialog(platform, site, "Edit Load Step", "txtDescription", owner) {
    setObjectName("frmEditStep");
    Build(nullptr, {}, nullptr);
}

void frmEditStep::Apply() {
    m_step->Description(Description());
    m_step->MaxVoltageDipOverride(MaxVoltDip());
}

}  // namespace genvara
