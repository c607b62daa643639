#include "CUPSLoad.h"

#include "LinearPower.h"
#include "RangeCheck.h"

namespace genvara {
namespace {

// Allowance of the families that follow the rating: efficiency, and battery charging on top.
constexpr double kRatingEfficiency = 0.9;
constexpr double kRatingCharging = 1.1;

// The on-line family: efficiency of the two stages, and input power factor of a single-phase one.
constexpr double kThreePhaseEfficiency = 0.95;
constexpr double kSinglePhaseEfficiency = 0.9;
constexpr double kPowerFactor = 0.95;
constexpr double kSinglePhaseOnLinePowerFactor = 0.85;

}  // namespace

std::string CUPSLoad::Summary() const {
    return std::string("UPS") + std::string(PluralEnding(Quantity()));
}

void CUPSLoad::OutputRating(double voltAmperes) {
    RequireRange(voltAmperes, ups_limits::kOutputRating,
                 {22, "Output rating out of range.", "CUPSLoad::OutputRating"});
    m_outputRating = voltAmperes;
}

void CUPSLoad::Loading(std::int32_t percent) {
    RequireRange(percent, ups_limits::kLoading, {23, "Percent loading out of range.", "CUPSLoad::Loading"});
    m_loading = percent;
}

void CUPSLoad::Charging(std::int32_t percent) {
    RequireRange(percent, ups_limits::kCharging,
                 {24, "Percent battery charging out of range.", "CUPSLoad::Charging"});
    m_charging = percent;
}

double CUPSLoad::RunningRealPower() const {
    const bool singlePhaseOnLine = m_family == ups_family::kOnLine && Phases() != 0;
    return RunningAppPower() * (singlePhaseOnLine ? kSinglePhaseOnLinePowerFactor : kPowerFactor);
}

double CUPSLoad::RunningAppPower() const {
    if (m_family == ups_family::kFastTransfer || m_family == ups_family::kOffLine) {
        return (m_outputRating / kRatingEfficiency) * kRatingCharging;
    }
    const double output = (m_loading / 100.0) * m_outputRating;
    const double input = output / (Phases() == 0 ? kThreePhaseEfficiency : kSinglePhaseEfficiency);
    return (m_charging / 100.0 + 1.0) * input;
}

double CUPSLoad::RunningImgPower() const {
    return ImaginaryRest(RunningAppPower(), RunningRealPower(), "CUPSLoad::RunningImgPower");
}

double CUPSLoad::ThreePhaseSixPulseRectPower() const {
    return m_family == ups_family::kOnLine && IsThreePhase(input_type::kSixPulse) ? RunningRealPower() : 0.0;
}

double CUPSLoad::ThreePhaseTwelvePulseRectPower() const {
    return m_family == ups_family::kOnLine && IsThreePhase(input_type::kTwelvePulse) ? RunningRealPower()
                                                                                     : 0.0;
}

double CUPSLoad::ThreePhaseSixPulseRectFilteredPower() const {
    return m_inputFilterInstalled && IsThreePhase(input_type::kSixPulse) ? RunningRealPower() : 0.0;
}

double CUPSLoad::ThreePhaseTwelvePulseRectFilteredPower() const {
    return m_inputFilterInstalled && IsThreePhase(input_type::kTwelvePulse) ? RunningRealPower() : 0.0;
}

double CUPSLoad::SinglePhaseRectPower(std::int32_t phase) const {
    const bool counts =
        Phases() == phase && m_inputType == input_type::kSinglePhase && m_family == ups_family::kOnLine;
    return counts ? RunningRealPower() : 0.0;
}

std::vector<std::string> CUPSLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps();
    rows.push_back(PropertyRow("Output Rating (kVA)", KiloText(m_outputRating)));
    rows.push_back(PropertyRow("Loading", PercentText(m_loading)));
    rows.push_back(PropertyRow("Charging", PercentText(m_charging)));
    rows.push_back(PropertyRow("Input Filter", YesNo(m_inputFilterInstalled)));
    return rows;
}

bool CUPSLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
