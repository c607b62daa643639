#include "frmAddStep.h"

#include "FormGrid.h"
#include "Texts.h"
#include "UpDown.h"

namespace genvara {
namespace {

constexpr int kStepDigits = 4;

}  // namespace

frmAddStep::frmAddStep(PlatformServices& platform, CLoadProfile& profile, const CPwrSys& site, QWidget* owner)
    : StepDialog(platform, site, Caption(170), "txtDecription", owner),
      m_profile(&profile),
      m_txtStepNum(new EntryField(platform, "txtStepNum")) {
    setObjectName("frmAddStep");
    const std::int32_t next = profile.NumLoadSteps() + 1;
    m_txtStepNum->Filter(key_filters::Digits());
    m_txtStepNum->Bounds(
        {.name = FromQt(Caption(171)), .least = 1, .most = static_cast<double>(next), .whole = true});
    m_txtStepNum->setText(QString::number(next));
    m_txtStepNum->setAccessibleName(Caption(171));
    SetDigits(*m_txtStepNum, kStepDigits);
    auto* arrows = new UpDown("updStepNum", *m_txtStepNum, {1, next, 1});
    Build(Beside(m_txtStepNum, arrows), Caption(171), "lblStepNumber");
    Description("Load Step #" + std::to_string(next));
    m_txtStepNum->SelectAllText();
}

void frmAddStep::Show(std::function<void(std::int32_t number, std::int32_t id)> display) {
    m_display = std::move(display);
    exec();
}

bool frmAddStep::HoldsOk() {
    // 0 stands for the end; the profile has no words for a position beyond it.
    return EntryNumbers().Read(m_txtStepNum->Content()) != 0.0 && m_txtStepNum->RefuseOutOfBounds();
}

void frmAddStep::Apply() {
    const std::int32_t number = EntryNumbers().Integer(m_txtStepNum->Content());
    const std::int32_t position = number == 0 ? m_profile->NumLoadSteps() + 1 : number;
    std::int32_t id = 0;
    Change("Add Step " + std::to_string(position),
           [&] { id = m_profile->AddLoadStep(Description(), MaxVoltDip(), number); });
    m_display(number, id);
}

}  // namespace genvara
