#include "frmLightLoad.h"

#include <QHBoxLayout>
#include <QLabel>

#include "LastChance.h"
#include "LightEntry.h"
#include "LinearPower.h"
#include "MemberBounds.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;

namespace strings {
constexpr std::int32_t kType = 631;
constexpr std::int32_t kIncandescent = 632;
constexpr std::int32_t kFluorescent = 633;
constexpr std::int32_t kHID = 634;
constexpr std::int32_t kBallast = 635;
constexpr std::int32_t kHighEffMagnetic = 636;
constexpr std::int32_t kElectronic = 637;
constexpr std::int32_t kLowDistElectronic = 638;
constexpr std::int32_t kRunningKW = 640;
constexpr std::int32_t kRunningPF = 641;
}  // namespace strings

}  // namespace

frmLightLoad::frmLightLoad(const LoadFormServices& services) : LoadFormOf(load_type::kLighting, services) {
    m_runKW = AddField({.labelName = "lblRunKW",
                        .name = "txtRunKW",
                        .caption = Caption(strings::kRunningKW),
                        .digits = kDigits,
                        .bounds = LoadBounds(load_type::kLighting, "RunningRealPower")},
                       key_filters::Numeric(), true);
    m_runPF = AddField({.labelName = "lblRunPF",
                        .name = "txtRunPF",
                        .caption = Caption(strings::kRunningPF),
                        .digits = kDigits,
                        .bounds = LoadBounds(load_type::kLighting, "RunningPowerFactor")},
                       key_filters::Numeric(), true);
    m_runPFLabel = findChild<QLabel*>("lblRunPF");
    AddOptions();
    OpenForNewLoad();
}

void frmLightLoad::AddOptions() {
    m_lamp = new OptionFrame("fraType", Caption(strings::kType),
                             {{"optIncadescent", Caption(strings::kIncandescent), light_type::kIncandescent},
                              {"optFluoro", Caption(strings::kFluorescent), light_type::kFluorescent},
                              {"optHID", Caption(strings::kHID), light_type::kHID}});
    m_ballast = new OptionFrame(
        "fraBallast", Caption(strings::kBallast),
        {{"optHighEffMagnetic", Caption(strings::kHighEffMagnetic), ballast::kHighEffMagnetic},
         {"optElectronic", Caption(strings::kElectronic), ballast::kElectronic},
         {"optLowDistElectronic", Caption(strings::kLowDistElectronic), ballast::kLowDistElectronic}});
    Below().addWidget(m_lamp);
    Below().addWidget(m_ballast);
    connect(m_lamp, &OptionFrame::Clicked, this, Event([this](std::int32_t type) { LampClicked(type); }));
}

void frmLightLoad::LampClicked(std::int32_t lightType) {
    const bool hasBallast = LampHasBallast(lightType);
    SetBallastEnabled(hasBallast);
    m_runPFLabel->setEnabled(hasBallast);
    m_runPF->setEnabled(hasBallast);
    if (!hasBallast) {
        m_runPF->Content(Numbers().Fixed(linear_limits::kPowerFactor.greatest, 2));
    }
}

void frmLightLoad::SetBallastEnabled(bool enabled) {
    m_ballast->setEnabled(enabled);
}

void frmLightLoad::SetDefaults() {
    m_lamp->Select(light_type::kIncandescent);
    m_ballast->Select(ballast::kHighEffMagnetic);
}

void frmLightLoad::ShowKind(const CLightLoad& load) {
    m_lamp->Select(load.LightType());
    m_ballast->Select(ShownBallast(load.Ballast()));
    m_runKW->Content(Numbers().Kilo(load.RunningRealPower()));
    m_runPF->Content(Numbers().Fixed(load.RunningPowerFactor(), 2));
}

bool frmLightLoad::StoreKind(CLightLoad& load) {
    StoreQuantity(load);
    const std::int32_t lightType = m_lamp->Code().value_or(light_type::kIncandescent);
    load.LightType(lightType);
    load.RunningRealPower(FromKilo(*m_runKW));
    load.RunningPowerFactor(Number(*m_runPF));
    load.StartingRealPower(load.RunningRealPower());
    load.StartingPowerFactor(load.RunningPowerFactor());
    load.Ballast(StoredBallast(lightType, m_ballast->Code().value_or(ballast::kHighEffMagnetic)));
    return true;
}

EntryField* frmLightLoad::FieldOf(LoadFigure /*figure*/) {
    return m_runKW;
}

}  // namespace genvara
