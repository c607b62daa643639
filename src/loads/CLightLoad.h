#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// Codes of the lamps.
namespace light_type {
inline constexpr std::int32_t kIncandescent = 0;
inline constexpr std::int32_t kFluorescent = 1;
inline constexpr std::int32_t kHID = 2;
}  // namespace light_type

/// Codes of the ballasts.
namespace ballast {
inline constexpr std::int32_t kNone = 0;
inline constexpr std::int32_t kHighEffMagnetic = 1;
inline constexpr std::int32_t kElectronic = 2;
inline constexpr std::int32_t kLowDistElectronic = 3;
}  // namespace ballast

/// Lighting: a linear load whose ballast decides how much of it distorts. Phases code 0 means evenly
/// distributed over the three phases.
class CLightLoad final : public Load {
  public:
    CLightLoad() : Load({"CLightLoad::Quantity", "CLightLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override { return std::make_unique<CLightLoad>(*this); }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kLighting; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Code of `light_type`; any value, default 0.
    void LightType(std::int32_t code) noexcept { m_lightType = code; }
    [[nodiscard]] std::int32_t LightType() const noexcept { return m_lightType; }

    /// Code of `ballast`; any value, default 0.
    void Ballast(std::int32_t code) noexcept { m_ballast = code; }
    [[nodiscard]] std::int32_t Ballast() const noexcept { return m_ballast; }

    /// Running real power [W]; 0 to 2,000,000, default 0.
    /// @throws RaisedError 17 "Running real power out of range" from "CLightLoad::RunningRealPower".
    void RunningRealPower(double watts);
    [[nodiscard]] double RunningRealPower() const override { return m_runningRealPower; }

    /// Running power factor, per unit; 0.6 to 1.0, default 1.0.
    /// @throws RaisedError 16 "Running power factor out of range" from "CLightLoad::RunningPowerFactor".
    void RunningPowerFactor(double perUnit);
    [[nodiscard]] double RunningPowerFactor() const noexcept { return m_runningPowerFactor; }

    /// Starting real power [W]; 0 to 2,000,000, default 0.
    /// @throws RaisedError 17 "Starting real power out of range" from "CLightLoad::RunningRealPower".
    void StartingRealPower(double watts);
    [[nodiscard]] double StartingRealPower() const override { return m_startingRealPower; }

    /// Starting power factor, per unit; 0.6 to 1.0, default 1.0.
    /// @throws RaisedError 16 "Running power factor out of range" from "CLightLoad::StartingPowerFactor".
    void StartingPowerFactor(double perUnit);
    [[nodiscard]] double StartingPowerFactor() const noexcept { return m_startingPowerFactor; }

    [[nodiscard]] double RunningAppPower() const override;
    [[nodiscard]] double StartingAppPower() const override;
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingImgPower() const override;

    [[nodiscard]] double SinglePhaseElectBallastPower(std::int32_t phase) const override;
    [[nodiscard]] double SinglePhaseMagBallastPower(std::int32_t phase) const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_lightType, m_ballast, m_runningRealPower, m_runningPowerFactor, m_startingRealPower,
                        m_startingPowerFactor);
    }

    [[nodiscard]] double BallastPower(std::int32_t phase, std::int32_t kind) const noexcept;

    std::int32_t m_lightType = light_type::kIncandescent;
    std::int32_t m_ballast = ballast::kNone;
    double m_runningRealPower = 0.0;
    double m_runningPowerFactor = 1.0;
    double m_startingRealPower = 0.0;
    double m_startingPowerFactor = 1.0;
};

}  // namespace genvara
