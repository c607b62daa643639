#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// A linear load given by its real power and power factor, the same running and starting.
class CMiscLoad final : public Load {
  public:
    CMiscLoad() : Load({"CMiscLoad::Quantity", "CMiscLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override { return std::make_unique<CMiscLoad>(*this); }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kMiscellaneous; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Real power [W]; 0 to 2,000,000, default 0.
    /// @throws RaisedError 17 "Running real power out of range" from "CMiscLoad::RunningRealPower".
    void RunningRealPower(double watts);
    [[nodiscard]] double RunningRealPower() const override { return m_runningRealPower; }

    /// Power factor, per unit; 0.6 to 1.0, default 1.0.
    /// @throws RaisedError 16 "Running power factor out of range" from "CMiscLoad::RunningPowerFactor".
    void RunningPowerFactor(double perUnit);
    [[nodiscard]] double RunningPowerFactor() const noexcept { return m_runningPowerFactor; }

    [[nodiscard]] double StartingRealPower() const override { return m_runningRealPower; }
    [[nodiscard]] double RunningAppPower() const override;
    [[nodiscard]] double StartingAppPower() const override { return RunningAppPower(); }
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingImgPower() const override { return RunningImgPower(); }

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept { return std::tie(m_runningRealPower, m_runningPowerFactor); }

    double m_runningRealPower = 0.0;
    double m_runningPowerFactor = 1.0;
};

}  // namespace genvara
