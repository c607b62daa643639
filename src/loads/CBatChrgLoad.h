#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// Applications of battery chargers.
namespace charger_type {
inline constexpr std::int32_t kResidential = 0;
inline constexpr std::int32_t kIndustrial = 1;
inline constexpr std::int32_t kTelecom = 2;
}  // namespace charger_type

/// Input stages of battery chargers.
namespace charger_input {
inline constexpr std::int32_t kSCR = 0;
inline constexpr std::int32_t kFerroResonant = 1;
}  // namespace charger_input

/// A battery charger. No setter checks its value: any figure is computed as it stands.
class CBatChrgLoad final : public Load {
  public:
    CBatChrgLoad() : Load({"CBatChrgLoad::Quantity", "CBatChrgLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override {
        return std::make_unique<CBatChrgLoad>(*this);
    }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kBatteryCharger; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Code of `charger_type`; default 1, industrial.
    void ChargerType(std::int32_t code) noexcept { m_chargerType = code; }
    [[nodiscard]] std::int32_t ChargerType() const noexcept { return m_chargerType; }

    /// Code of `charger_input`; default 1, ferro-resonant.
    void ChargerInput(std::int32_t code) noexcept { m_chargerInput = code; }
    [[nodiscard]] std::int32_t ChargerInput() const noexcept { return m_chargerInput; }

    /// Battery voltage [V DC]; default 0.
    void BatteryVoltage(double volts) noexcept { m_batteryVoltage = volts; }
    [[nodiscard]] double BatteryVoltage() const noexcept { return m_batteryVoltage; }

    /// Charge current [A DC]; default 0.
    void ChargeCurrent(double amperes) noexcept { m_chargeCurrent = amperes; }
    [[nodiscard]] double ChargeCurrent() const noexcept { return m_chargeCurrent; }

    [[nodiscard]] double RunningRealPower() const override;
    [[nodiscard]] double RunningAppPower() const override;
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingRealPower() const override { return RunningRealPower(); }
    [[nodiscard]] double StartingAppPower() const override { return RunningAppPower(); }
    [[nodiscard]] double StartingImgPower() const override { return RunningImgPower(); }

    [[nodiscard]] double ThreePhaseSixPulseRectPower() const override;
    /// A single-phase SCR charger answers with its whole power whatever phase is asked for.
    [[nodiscard]] double SinglePhaseRectPower(std::int32_t phase) const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_chargerType, m_chargerInput, m_batteryVoltage, m_chargeCurrent);
    }

    [[nodiscard]] double Efficiency() const;
    [[nodiscard]] double PowerFactor() const noexcept;
    [[nodiscard]] double SmallChargerEfficiency() const;

    std::int32_t m_chargerType = charger_type::kIndustrial;
    std::int32_t m_chargerInput = charger_input::kFerroResonant;
    double m_batteryVoltage = 0.0;
    double m_chargeCurrent = 0.0;
};

}  // namespace genvara
