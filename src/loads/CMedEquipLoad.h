#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// What the entry form of medical imaging takes; the class takes anything.
namespace medical_limits {
inline constexpr PositiveRange kEnteredContVA{500000.0};      // VA
inline constexpr PositiveRange kEnteredPeakVA{5000000.0};     // VA
inline constexpr PositiveRange kEnteredPowerFactor{1.0};      // per unit
inline constexpr Range<std::int32_t> kEnteredVoltDip{1, 99};  // percent, two digits
}  // namespace medical_limits

/// Medical imaging equipment: a continuous demand and, during an exposure, a short peak that takes the place
/// of the starting figures. No setter checks its value: the ranges are the entry form's.
class CMedEquipLoad final : public Load {
  public:
    CMedEquipLoad() : Load({"CMedEquipLoad::Quantity", "CMedEquipLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override {
        return std::make_unique<CMedEquipLoad>(*this);
    }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kMedicalImaging; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override { return "Medical Imaging Equipment"; }

    /// Voltage dip that the equipment tolerates during the peak [percent]; default 6.
    void MaxPeakDemandVoltDip(std::int32_t percent) noexcept { m_maxPeakDemandVoltDip = percent; }
    [[nodiscard]] std::int32_t MaxPeakDemandVoltDip() const noexcept { return m_maxPeakDemandVoltDip; }

    /// Power factor of the peak, per unit; default 0.9.
    void PeakPowerFactor(double perUnit) noexcept { m_peakPowerFactor = perUnit; }
    [[nodiscard]] double PeakPowerFactor() const noexcept { return m_peakPowerFactor; }

    /// Power factor of the continuous demand, per unit; default 0.9.
    void ContPowerFactor(double perUnit) noexcept { m_contPowerFactor = perUnit; }
    [[nodiscard]] double ContPowerFactor() const noexcept { return m_contPowerFactor; }

    /// Peak demand [VA]; default 0.
    void PeakVA(double voltAmperes) noexcept { m_peakVA = voltAmperes; }
    [[nodiscard]] double PeakVA() const noexcept { return m_peakVA; }

    /// Continuous demand [VA]; default 0.
    void ContVA(double voltAmperes) noexcept { m_contVA = voltAmperes; }
    [[nodiscard]] double ContVA() const noexcept { return m_contVA; }

    /// Input stage; default 1. Kept, and used by nothing.
    void InputType(std::int32_t code) noexcept { m_inputType = code; }
    [[nodiscard]] std::int32_t InputType() const noexcept { return m_inputType; }

    [[nodiscard]] double RunningRealPower() const override;
    [[nodiscard]] double StartingRealPower() const override;
    [[nodiscard]] double RunningAppPower() const override { return m_contVA; }
    [[nodiscard]] double StartingAppPower() const override { return m_peakVA; }
    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingImgPower() const override;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_maxPeakDemandVoltDip, m_peakPowerFactor, m_contPowerFactor, m_peakVA, m_contVA,
                        m_inputType);
    }

    std::int32_t m_maxPeakDemandVoltDip = 6;
    double m_peakPowerFactor = 0.9;
    double m_contPowerFactor = 0.9;
    double m_peakVA = 0.0;
    double m_contVA = 0.0;
    std::int32_t m_inputType = 1;
};

}  // namespace genvara
