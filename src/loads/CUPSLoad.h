#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// Families of uninterruptible power supplies.
namespace ups_family {
inline constexpr std::int32_t kFastTransfer = 0;
inline constexpr std::int32_t kOnLine = 1;
inline constexpr std::int32_t kOffLine = 2;
}  // namespace ups_family

/// Input stages of UPSs and drives.
namespace input_type {
inline constexpr std::int32_t kSixPulse = 1;
inline constexpr std::int32_t kTwelvePulse = 2;
inline constexpr std::int32_t kAboveTwelvePulse = 3;
inline constexpr std::int32_t kActive = 4;
inline constexpr std::int32_t kSinglePhase = 5;
}  // namespace input_type

/// What the setters of a UPS take; the entry form shows and keeps the same.
namespace ups_limits {
inline constexpr PositiveRange kOutputRating{2500000.0};  // VA
inline constexpr Range<std::int32_t> kLoading{50, 100};   // percent of the rating
inline constexpr Range<std::int32_t> kCharging{0, 25};    // percent of the loading
}  // namespace ups_limits

/// An uninterruptible power supply, given by its output rating. It has no inrush of its own.
class CUPSLoad final : public Load {
  public:
    // The quantity's source has its letters crossed; messages show it so.
    CUPSLoad() : Load({"CUSPLoad::Quantity", "CUPSLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override { return std::make_unique<CUPSLoad>(*this); }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kUPS; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Code of `ups_family`; any value, default 0.
    void Family(std::int32_t code) noexcept { m_family = code; }
    [[nodiscard]] std::int32_t Family() const noexcept { return m_family; }

    /// Code of `input_type`; any value, default 0.
    void InputType(std::int32_t code) noexcept { m_inputType = code; }
    [[nodiscard]] std::int32_t InputType() const noexcept { return m_inputType; }

    /// Output rating [VA]; above 0 up to 2,500,000, default 1.
    /// @throws RaisedError 22 "Output rating out of range." from "CUPSLoad::OutputRating".
    void OutputRating(double voltAmperes);
    [[nodiscard]] double OutputRating() const noexcept { return m_outputRating; }

    /// Loading [percent of the rating]; 50 to 100, default 100. Counts for the on-line family alone.
    /// @throws RaisedError 23 "Percent loading out of range." from "CUPSLoad::Loading".
    void Loading(std::int32_t percent);
    [[nodiscard]] std::int32_t Loading() const noexcept { return m_loading; }

    /// Battery charging [percent of the loading]; 0 to 25, default 10. Counts for the on-line family alone.
    /// @throws RaisedError 24 "Percent battery charging out of range." from "CUPSLoad::Charging".
    void Charging(std::int32_t percent);
    [[nodiscard]] std::int32_t Charging() const noexcept { return m_charging; }

    /// Whether an input filter is installed; default false.
    void InputFilterInstalled(bool installed) noexcept { m_inputFilterInstalled = installed; }
    [[nodiscard]] bool InputFilterInstalled() const noexcept { return m_inputFilterInstalled; }

    [[nodiscard]] double RunningRealPower() const override;
    [[nodiscard]] double RunningAppPower() const override;
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingRealPower() const override { return RunningRealPower(); }
    [[nodiscard]] double StartingAppPower() const override { return RunningAppPower(); }
    [[nodiscard]] double StartingImgPower() const override { return RunningImgPower(); }

    // A filter adds the filtered figure to the unfiltered one and does not take its place; the filtered
    // ones count for every family.
    [[nodiscard]] double ThreePhaseSixPulseRectPower() const override;
    [[nodiscard]] double ThreePhaseTwelvePulseRectPower() const override;
    [[nodiscard]] double ThreePhaseSixPulseRectFilteredPower() const override;
    [[nodiscard]] double ThreePhaseTwelvePulseRectFilteredPower() const override;
    [[nodiscard]] double SinglePhaseRectPower(std::int32_t phase) const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_family, m_inputType, m_outputRating, m_loading, m_charging, m_inputFilterInstalled);
    }

    [[nodiscard]] bool IsThreePhase(std::int32_t inputType) const noexcept {
        return Phases() == 0 && m_inputType == inputType;
    }

    std::int32_t m_family = ups_family::kFastTransfer;
    std::int32_t m_inputType = 0;
    double m_outputRating = 1.0;
    std::int32_t m_loading = 100;
    std::int32_t m_charging = 10;
    bool m_inputFilterInstalled = false;
};

}  // namespace genvara
