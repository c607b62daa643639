#include "CVFDLoad.h"

#include "CMtrLoad.h"
#include "Kilo.h"
#include "LinearPower.h"
#include "RangeCheck.h"

namespace genvara {
namespace {

/// Power factor of a drive's input, running and starting.
constexpr double kPowerFactor = 0.9;

}  // namespace

std::string CVFDLoad::Summary() const {
    return std::string("VFD") + std::string(PluralEnding(Quantity()));
}

void CVFDLoad::MtrRating(double horsepower) {
    RequireRange(horsepower, motor_limits::kHP, {25, "Motor rating out of range.", "CVFDLoad::MtrRating"});
    m_mtrRating = horsepower;
}

void CVFDLoad::Efficiency(std::int32_t percent) {
    RequireRange(percent, drive_limits::kEfficiency,
                 {26, "Drive efficiency out of range.", "CVFDLoad::Efficiency"});
    m_efficiency = percent;
}

void CVFDLoad::KVALimit(std::int32_t percent) {
    RequireRange(percent, drive_limits::kKVALimit,
                 {27, "Run/Start KVA limit out of range.", "CVFDLoad::KVALimit"});
    m_kvaLimit = percent;
}

double CVFDLoad::RunningRealPower() const {
    constexpr std::string_view kMember = "CVFDLoad::RunningRealPower";
    const double motorKW = InterpolateXY(m_mtrRating, m_motors->MotorHP, m_motors->MotorRunningKW, kMember);
    return Finite(motorKW / (m_efficiency / 100.0) * kPerKilo, kMember);
}

double CVFDLoad::RunningAppPower() const {
    return Finite(RunningRealPower() / kPowerFactor, "CVFDLoad::RunningAppPower");
}

double CVFDLoad::RunningImgPower() const {
    return ImaginaryRest(RunningAppPower(), RunningRealPower(), "CVFDLoad::RunningImgPower");
}

double CVFDLoad::StartingRealPower() const {
    return StartingAppPower() * kPowerFactor;
}

double CVFDLoad::StartingAppPower() const {
    return Finite((m_kvaLimit / 100.0) * RunningAppPower(), "CVFDLoad::StartingAppPower");
}

double CVFDLoad::StartingImgPower() const {
    return ImaginaryRest(StartingAppPower(), StartingRealPower(), "CVFDLoad::StartingImgPower");
}

double CVFDLoad::ThreePhaseSixPulseRectPower() const {
    return IsThreePhase(input_type::kSixPulse) ? RunningRealPower() : 0.0;
}

double CVFDLoad::ThreePhaseTwelvePulseRectPower() const {
    return IsThreePhase(input_type::kTwelvePulse) ? RunningRealPower() : 0.0;
}

double CVFDLoad::ThreePhaseSixPulseRectFilteredPower() const {
    return m_inputFilterInstalled && IsThreePhase(input_type::kSixPulse) ? RunningRealPower() : 0.0;
}

double CVFDLoad::ThreePhaseTwelvePulseRectFilteredPower() const {
    return m_inputFilterInstalled && IsThreePhase(input_type::kTwelvePulse) ? RunningRealPower() : 0.0;
}

double CVFDLoad::SinglePhaseRectPower(std::int32_t phase) const {
    return Phases() == phase && m_inputType == input_type::kSinglePhase ? RunningRealPower() : 0.0;
}

std::vector<std::string> CVFDLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps();
    rows.push_back(PropertyRow("Motor HP", RenderPlain(m_mtrRating)));
    rows.push_back(PropertyRow("Drive Eff", PercentText(m_efficiency)));
    rows.push_back(PropertyRow("Start/Run kVA Limit", PercentText(m_kvaLimit)));
    rows.push_back(PropertyRow("Input Filter", YesNo(m_inputFilterInstalled)));
    return rows;
}

bool CVFDLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
