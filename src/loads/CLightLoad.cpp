#include "CLightLoad.h"

#include <array>
#include <cstddef>

#include "LinearPower.h"
#include "RangeCheck.h"

namespace genvara {
namespace {

struct CodeTexts {
    std::string_view property;
    std::string_view summary;
};

/// By code of the lamp.
constexpr std::array<CodeTexts, 3> kLights{{{"Incandesent", "Incandesent lighting"},
                                            {"Fluorescent", "Floresent lighting"},
                                            {"HID", "High Intensity Discharge lighting"}}};
/// By code of the ballast.
constexpr std::array<CodeTexts, 4> kBallasts{
    {{"N/A", ""},
     {"High Eff. Magnetic", " with high eff. magnetic ballast"},
     {"Electronic", " with electronic ballast"},
     {"Low Distortion Electronic", " with low distortion electronic ballast"}}};

template <std::size_t Count>
CodeTexts TextsOf(const std::array<CodeTexts, Count>& table, std::int32_t code) {
    const bool known = code >= 0 && code < static_cast<std::int32_t>(Count);
    return known ? table[static_cast<std::size_t>(code)] : CodeTexts{"Unknown", ""};
}

}  // namespace

std::string CLightLoad::Summary() const {
    if (m_lightType == light_type::kIncandescent) {
        return std::string(kLights[light_type::kIncandescent].summary);
    }
    // A lamp of no known kind reads as fluorescent.
    const std::int32_t lamp = m_lightType == light_type::kHID ? light_type::kHID : light_type::kFluorescent;
    return std::string(TextsOf(kLights, lamp).summary) + std::string(TextsOf(kBallasts, m_ballast).summary);
}

void CLightLoad::RunningRealPower(double watts) {
    RequireRange(watts, linear_limits::kRealPower,
                 {17, "Running real power out of range", "CLightLoad::RunningRealPower"});
    m_runningRealPower = watts;
}

void CLightLoad::RunningPowerFactor(double perUnit) {
    RequireRange(perUnit, linear_limits::kPowerFactor,
                 {16, "Running power factor out of range", "CLightLoad::RunningPowerFactor"});
    m_runningPowerFactor = perUnit;
}

// The starting pair raises under crossed texts: users of the messages know them so.
void CLightLoad::StartingRealPower(double watts) {
    RequireRange(watts, linear_limits::kRealPower,
                 {17, "Starting real power out of range", "CLightLoad::RunningRealPower"});
    m_startingRealPower = watts;
}

void CLightLoad::StartingPowerFactor(double perUnit) {
    RequireRange(perUnit, linear_limits::kPowerFactor,
                 {16, "Running power factor out of range", "CLightLoad::StartingPowerFactor"});
    m_startingPowerFactor = perUnit;
}

double CLightLoad::RunningAppPower() const {
    return ApparentPower(m_runningRealPower, m_runningPowerFactor, "CLightLoad::RunningAppPower");
}

double CLightLoad::StartingAppPower() const {
    return ApparentPower(m_startingRealPower, m_startingPowerFactor, "CLightLoad::StartingAppPower");
}

double CLightLoad::RunningImgPower() const {
    return ImaginaryOfReal(m_runningRealPower, m_runningPowerFactor, "CLightLoad::RunningImgPower");
}

double CLightLoad::StartingImgPower() const {
    return ImaginaryOfReal(m_startingRealPower, m_startingPowerFactor, "CLightLoad::StartingImgPower");
}

double CLightLoad::SinglePhaseElectBallastPower(std::int32_t phase) const {
    return BallastPower(phase, ballast::kElectronic);
}

double CLightLoad::SinglePhaseMagBallastPower(std::int32_t phase) const {
    return BallastPower(phase, ballast::kHighEffMagnetic);
}

std::vector<std::string> CLightLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps("Even");
    rows.push_back(PropertyRow("Type", TextsOf(kLights, m_lightType).property));
    rows.push_back(PropertyRow("Ballast", TextsOf(kBallasts, m_ballast).property));
    rows.push_back(PropertyRow("Running kW", KiloText(m_runningRealPower)));
    rows.push_back(PropertyRow("Running PF", RenderFixed(m_runningPowerFactor, 2)));
    rows.push_back(PropertyRow("Starting kW", KiloText(m_startingRealPower)));
    rows.push_back(PropertyRow("Starting PF", RenderFixed(m_startingPowerFactor, 2)));
    return rows;
}

double CLightLoad::BallastPower(std::int32_t phase, std::int32_t kind) const noexcept {
    if (phase == 0 || m_ballast != kind) {
        return 0.0;
    }
    if (Phases() == 0) {
        return m_runningRealPower / 3.0;
    }
    return Phases() == phase ? m_runningRealPower : 0.0;
}

bool CLightLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
