#pragma once

#include <tuple>

#include "CMtrLoad.h"
#include "Load.h"

namespace genvara {

/// How an air conditioner's size was entered.
namespace aircond_entry {
inline constexpr std::int32_t kBTU = 0;
inline constexpr std::int32_t kTonnage = 1;
inline constexpr std::int32_t kHorsepower = 2;
}  // namespace aircond_entry

/// What the setters of an air conditioner take: what the largest motor comes to.
namespace aircond_limits {
inline constexpr PositiveRange kBTU{6250000.0};               // BTU/hr
inline constexpr PositiveRange kTonnage{500.0};               // tons
inline constexpr PositiveRange kHP = motor_limits::kHP;       // hp
inline constexpr PositiveRange kStartingAppPower{5300000.0};  // VA, 1000 hp at 5.3 kVA per horsepower
}  // namespace aircond_limits

/// An air conditioner, treated as its compressor's motor. The class stores what the entry form or the
/// project reader worked out.
class CAirCondLoad final : public Load {
  public:
    // Range errors of quantity and phases name the motor, as they always did.
    CAirCondLoad() : Load({"CMtrLoad::Quantity", "CMtrLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override {
        return std::make_unique<CAirCondLoad>(*this);
    }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kAirConditioning; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Compressor horsepower [hp]; above 0 up to 1000, default not given.
    /// @throws RaisedError 15 "Horsepower must be greater than 0." or "Horsepower must be less than 1000.0."
    ///         from "CAirCondLoad::HP".
    void HP(double horsepower);
    [[nodiscard]] double HP() const noexcept { return m_hp; }

    /// Cooling [BTU/hr]; above 0 up to 6,250,000, default not given.
    /// @throws RaisedError 20 "BTU/hr must be greater than 0." or "BTU/hr must be less than 6250000." from
    ///         "CAirCondLoad::BTU".
    void BTU(double btuPerHour);
    [[nodiscard]] double BTU() const noexcept { return m_btu; }

    /// Cooling [tons]; above 0 up to 500, default not given.
    /// @throws RaisedError 21 "A/C tonnage must be greater than 0." or "A/C tonnage must be less than
    ///         500.00." from "CAirConLoad::Tonnage".
    void Tonnage(double tons);
    [[nodiscard]] double Tonnage() const noexcept { return m_tonnage; }

    /// Code of `aircond_entry`; any value, default 0. Setting it clears the inputs of the other methods.
    void DataEntryMethod(std::int32_t code) noexcept;
    [[nodiscard]] std::int32_t DataEntryMethod() const noexcept { return m_dataEntryMethod; }

    /// Running real power [W]; above 0 up to 798,000, default 0.
    /// @throws RaisedError 17 "Running real power out of range." from "CAirCondLoad::RunningRealPower".
    void RunningRealPower(double watts);
    [[nodiscard]] double RunningRealPower() const override { return m_runningRealPower; }

    /// Running apparent power [VA]; above 0 up to 887,000, default 0.
    /// @throws RaisedError 18 "Running apparent power (VA) out of range." from
    ///         "CAirCondLoad::RunningAppPower".
    void RunningAppPower(double voltAmperes);
    [[nodiscard]] double RunningAppPower() const override { return m_runningAppPower; }

    /// Starting apparent power [VA]; above 0 up to 5,300,000, default 0.
    /// @throws RaisedError 18 "Starting apparent power (VA) out of range." from
    ///         "CAirCondLoad::StartingAppPower".
    void StartingAppPower(double voltAmperes);
    [[nodiscard]] double StartingAppPower() const override { return m_startingAppPower; }

    /// Starting power factor, per unit; any value, default 0.
    void StartingPF(double perUnit) noexcept { m_startingPF = perUnit; }
    [[nodiscard]] double StartingPF() const noexcept { return m_startingPF; }

    /// Starting power factor times starting apparent power [W]; not given if either of them is.
    [[nodiscard]] double StartingRealPower() const override;
    [[nodiscard]] double RunningImgPower() const override;
    /// @throws RaisedError 11 from "CAirCondLoad::StartingImgPower" for a starting power factor of 0.
    [[nodiscard]] double StartingImgPower() const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_hp, m_btu, m_tonnage, m_dataEntryMethod, m_runningRealPower, m_runningAppPower,
                        m_startingAppPower, m_startingPF);
    }

    double m_hp = kNotGiven;
    double m_btu = kNotGiven;
    double m_tonnage = kNotGiven;
    std::int32_t m_dataEntryMethod = aircond_entry::kBTU;
    double m_runningRealPower = 0.0;
    double m_runningAppPower = 0.0;
    double m_startingAppPower = 0.0;
    double m_startingPF = 0.0;
};

}  // namespace genvara
