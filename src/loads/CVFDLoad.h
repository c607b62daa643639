#pragma once

#include <tuple>

#include "CUPSLoad.h"
#include "Load.h"
#include "MotorConversions.h"

namespace genvara {

/// What the setters of a drive take; the entry form shows and keeps the same.
namespace drive_limits {
inline constexpr Range<std::int32_t> kEfficiency{70, 99};  // percent
inline constexpr Range<std::int32_t> kKVALimit{100, 150};  // percent of running kVA
}  // namespace drive_limits

/// A variable frequency drive with its motor.
class CVFDLoad final : public Load {
  public:
    /// The motor tables outlive the load.
    explicit CVFDLoad(const MotorConversions& motors)
        : Load({"CVFDLoad::Quantity", "CVFDLoad::Phases"}), m_motors(&motors) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override { return std::make_unique<CVFDLoad>(*this); }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kVFD; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Code of `input_type`; any value, default 0.
    void InputType(std::int32_t code) noexcept { m_inputType = code; }
    [[nodiscard]] std::int32_t InputType() const noexcept { return m_inputType; }

    /// Motor rating [hp]; above 0 up to 1000, default 0.
    /// @throws RaisedError 25 "Motor rating out of range." from "CVFDLoad::MtrRating".
    void MtrRating(double horsepower);
    [[nodiscard]] double MtrRating() const noexcept { return m_mtrRating; }

    /// Efficiency of the drive [percent]; 70 to 99, default 90.
    /// @throws RaisedError 26 "Drive efficiency out of range." from "CVFDLoad::Efficiency".
    void Efficiency(std::int32_t percent);
    [[nodiscard]] std::int32_t Efficiency() const noexcept { return m_efficiency; }

    /// Starting kVA that the drive allows [percent of running kVA]; 100 to 150, default 125.
    /// @throws RaisedError 27 "Run/Start KVA limit out of range." from "CVFDLoad::KVALimit".
    void KVALimit(std::int32_t percent);
    [[nodiscard]] std::int32_t KVALimit() const noexcept { return m_kvaLimit; }

    /// Whether an input filter is installed; default false.
    void InputFilterInstalled(bool installed) noexcept { m_inputFilterInstalled = installed; }
    [[nodiscard]] bool InputFilterInstalled() const noexcept { return m_inputFilterInstalled; }

    /// The motor's running power through the drive [W].
    /// @throws RaisedError of `InterpolateXY` if the motor tables do not serve.
    [[nodiscard]] double RunningRealPower() const override;
    [[nodiscard]] double RunningAppPower() const override;
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingRealPower() const override;
    [[nodiscard]] double StartingAppPower() const override;
    [[nodiscard]] double StartingImgPower() const override;

    // A filter adds the filtered figure to the unfiltered one and does not take its place.
    [[nodiscard]] double ThreePhaseSixPulseRectPower() const override;
    [[nodiscard]] double ThreePhaseTwelvePulseRectPower() const override;
    [[nodiscard]] double ThreePhaseSixPulseRectFilteredPower() const override;
    [[nodiscard]] double ThreePhaseTwelvePulseRectFilteredPower() const override;
    [[nodiscard]] double SinglePhaseRectPower(std::int32_t phase) const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_motors, m_inputType, m_mtrRating, m_efficiency, m_kvaLimit, m_inputFilterInstalled);
    }

    [[nodiscard]] bool IsThreePhase(std::int32_t inputType) const noexcept {
        return Phases() == 0 && m_inputType == inputType;
    }

    const MotorConversions* m_motors;
    std::int32_t m_inputType = 0;
    double m_mtrRating = 0.0;
    std::int32_t m_efficiency = 90;
    std::int32_t m_kvaLimit = 125;
    bool m_inputFilterInstalled = false;
};

}  // namespace genvara
