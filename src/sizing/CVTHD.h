#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace genvara {

/// Voltage total harmonic distortion of a load mix on a source, on three phases.
///
/// No harmonic analysis: a regression fitted over the shares of the non-linear load on a phase, evaluated
/// at four fixed harmonic impedances and interpolated between them. Powers in kW, impedances per unit,
/// phases 0 to 2 for A to C. The regression depends on the load alone and is kept between calls as long as
/// no power changes, so that one load mix is judged on many sources at little cost.
class CVTHD {
  public:
    static constexpr std::size_t kPhases = 3;
    static constexpr std::size_t kImpedances = 4;
    using PerPhase = std::array<double, kPhases>;

    /// Generator power [kW]; above 0.
    /// @throws RaisedError 0x80040001 "Invalid generator power input." from "CVTHD::GenPower".
    void GenPower(double kilowatts);
    [[nodiscard]] double GenPower() const noexcept { return m_genPower; }

    /// Generator impedance, per unit on `GenPower`; above 0.
    /// @throws RaisedError 0x80040001 "Invalid generator impedance input." from "CVTHD::GenImpedance".
    void GenImpedance(double perUnit);
    [[nodiscard]] double GenImpedance() const noexcept { return m_genImpedance; }

    // Load powers [kW], 0 or more. A refused value raises 0x80040001 from the member; a phase outside 0 to 2
    // raises 9 "Subscript out of range".
    void RectifierPwr12P(double kilowatts);
    [[nodiscard]] double RectifierPwr12P() const noexcept { return m_rectifier12P; }
    void RectifierPwr6P(double kilowatts);
    [[nodiscard]] double RectifierPwr6P() const noexcept { return m_rectifier6P; }
    void PhaseCtrlPwr6P(double kilowatts);
    [[nodiscard]] double PhaseCtrlPwr6P() const noexcept { return m_phaseCtrl6P; }
    void SinglePhaseRectPwr(std::int32_t phase, double kilowatts);
    [[nodiscard]] double SinglePhaseRectPwr(std::int32_t phase) const;
    void SinglePhaseElecBallastPwr(std::int32_t phase, double kilowatts);
    [[nodiscard]] double SinglePhaseElecBallastPwr(std::int32_t phase) const;
    void SinglePhaseMagBallastPwr(std::int32_t phase, double kilowatts);
    [[nodiscard]] double SinglePhaseMagBallastPwr(std::int32_t phase) const;

    /// Harmonic impedance of a phase, per unit, as the last `VTHD` found it.
    [[nodiscard]] double HarmonicImpedance(std::int32_t phase) const;

    /// Distortion of each phase [percent], not yet bounded below by 0.
    /// @throws RaisedError 0x80040002 "Negative harmonic impedance calculated." from "CVTHD::VTHD"; 11 while
    ///         no generator power is set.
    void VTHD(PerPhase& results);

  private:
    /// What the load alone decides on one phase.
    struct PhaseRegression {
        double total = 0.0;                         ///< non-linear load [kW]
        std::array<double, kImpedances> columns{};  ///< distortion at the four impedances [percent]
    };

    void SetPower(double& target, double kilowatts, const char* description, const char* source);
    void SetPhasePower(PerPhase& target, std::int32_t phase, double kilowatts, const char* description,
                       const char* source);
    void UpdateRegression();

    double m_genPower = 0.0;
    double m_genImpedance = 0.0;
    double m_rectifier12P = 0.0;
    double m_rectifier6P = 0.0;
    double m_phaseCtrl6P = 0.0;
    PerPhase m_singlePhaseRect{};
    PerPhase m_elecBallast{};
    PerPhase m_magBallast{};
    PerPhase m_harmonicImpedance{};
    std::array<PhaseRegression, kPhases> m_regression{};
    bool m_regressionValid = false;
};

}  // namespace genvara
