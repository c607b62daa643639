#include "CBatChrgLoad.h"

#include "LinearPower.h"

namespace genvara {
namespace {

/// Charging voltage over the battery's nominal one.
constexpr double kChargingVoltage = 1.1;

// Efficiency of small single-phase industrial chargers by their output [W]: a line between two constants,
// which it meets to six digits only.
constexpr double kSmallOutput = 120.0;
constexpr double kLargeOutput = 1200.0;
constexpr double kSmallEfficiency = 0.5;
constexpr double kLargeEfficiency = 0.8;
constexpr double kEfficiencySlope = 0.0002777778;
constexpr double kEfficiencyOffset = 0.466667;

}  // namespace

std::string CBatChrgLoad::Summary() const {
    return std::string("Battery charger") + std::string(PluralEnding(Quantity()));
}

double CBatChrgLoad::RunningRealPower() const {
    return RunningAppPower() * PowerFactor();
}

double CBatChrgLoad::RunningAppPower() const {
    return Finite(m_batteryVoltage * kChargingVoltage * m_chargeCurrent / Efficiency(),
                  "CBatChrgLoad::RunningAppPower");
}

double CBatChrgLoad::RunningImgPower() const {
    return ImaginaryRest(RunningAppPower(), RunningRealPower(), "CBatChrgLoad::RunningImgPower");
}

double CBatChrgLoad::ThreePhaseSixPulseRectPower() const {
    return Phases() == 0 && m_chargerInput == charger_input::kSCR ? RunningRealPower() : 0.0;
}

double CBatChrgLoad::SinglePhaseRectPower(std::int32_t /*phase*/) const {
    return Phases() != 0 && m_chargerInput == charger_input::kSCR ? RunningRealPower() : 0.0;
}

std::vector<std::string> CBatChrgLoad::GetProps() const {
    std::string_view type = "Unknown";
    switch (m_chargerType) {
        case charger_type::kResidential:
            type = "Residential";
            break;
        case charger_type::kIndustrial:
            type = "Industial";
            break;
        case charger_type::kTelecom:
            type = "Telecom";
            break;
        default:
            break;
    }
    std::string_view input = "Unknown";
    if (m_chargerInput == charger_input::kSCR) {
        input = "SCR";
    } else if (m_chargerInput == charger_input::kFerroResonant) {
        input = "Ferro Resonant";
    }
    std::vector<std::string> rows = CommonProps();
    rows.push_back(PropertyRow("Type", type));
    rows.push_back(PropertyRow("Input", input));
    rows.push_back(PropertyRow("Battery Volts", RenderPlain(m_batteryVoltage)));
    rows.push_back(PropertyRow("Charging Current", RenderPlain(m_chargeCurrent)));
    return rows;
}

double CBatChrgLoad::Efficiency() const {
    switch (m_chargerType) {
        case charger_type::kResidential:
            return 0.5;
        case charger_type::kIndustrial:
            return Phases() == 0 ? 0.85 : SmallChargerEfficiency();
        case charger_type::kTelecom:
            return 0.9;
        default:
            return 1.0;
    }
}

double CBatChrgLoad::PowerFactor() const noexcept {
    switch (m_chargerType) {
        case charger_type::kResidential:
            return 0.8;
        case charger_type::kIndustrial:
            return Phases() == 0 ? 0.9 : 0.8;
        case charger_type::kTelecom:
            return 0.95;
        default:
            return 1.0;
    }
}

double CBatChrgLoad::SmallChargerEfficiency() const {
    const double output = Finite(m_batteryVoltage * m_chargeCurrent, "CBatChrgLoad::SmallChargerEfficiency");
    if (output < kSmallOutput) {
        return kSmallEfficiency;
    }
    if (output > kLargeOutput) {
        return kLargeEfficiency;
    }
    return output * kEfficiencySlope + kEfficiencyOffset;
}

bool CBatChrgLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
