#include "frmEditStep.h"

namespace genvara {

frmEditStep::frmEditStep(PlatformServices& platform, const CPwrSys& site, QWidget* owner)
    : StepDialog(platform, site, "Edit Load Step", "txtDescription", owner) {
    setObjectName("frmEditStep");
    Build(nullptr, {}, nullptr);
}

void frmEditStep::Apply() {
    Change("Edit Step " + std::to_string(m_stepNum), [this] {
        m_step->MaxVoltageDipOverride(MaxVoltDip());  // first, since it may be refused
        m_step->Description(Description());
    });
}

}  // namespace genvara
