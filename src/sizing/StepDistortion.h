#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "CVTHD.h"
#include "ProfileFigures.h"
#include "RaisedError.h"

namespace genvara {

/// Winding connection that takes a fixed scaling of the reactance: delta with 120/240 V.
inline constexpr std::int32_t kFixedScalingConnection = 2;

/// Whether distortion is worked out for a connection: the two three-phase ones.
[[nodiscard]] bool HasDistortionModel(std::int32_t connectCode) noexcept;

/// 1 above 240 V, where an alternator's windings are in series, otherwise 2.
[[nodiscard]] std::int32_t VoltageConnectionFactor(double volts) noexcept;

/// Subtransient reactance, per unit, at another voltage and winding connection.
/// @param fixed scales by 240/208 squared whatever the voltages are.
/// @throws RaisedError 11 from "CDesigner::ScaleReactance" for 0 V to scale to.
[[nodiscard]] double ScaleReactance(double reactance, double fromVolts, double toVolts, bool fixed);

/// Corrects the distortion [percent] of a phase for twelve-pulse rectifiers with input filters.
/// @param ballastShare ballasts' share of the phase's non-linear load.
/// @param filteredShare filtered rectifiers' share of it.
/// @param impedance harmonic impedance of the phase, per unit.
void AdjustFilteredVTHD(double& vthd, double ballastShare, double filteredShare, double impedance) noexcept;

/// The distortion of the load that stands after one step, on any set: what depends on the load alone is
/// worked out at construction.
class StepDistortion {
  public:
    explicit StepDistortion(const StepFigures& figures);

    /// Distortion [percent] on A to C, 0 or more.
    /// @throws RaisedError of `CVTHD` for a power or an impedance that it refuses.
    [[nodiscard]] std::array<double, 3> On(double generatorPower, double generatorImpedance);

  private:
    /// Which of the filter corrections the step's rectifiers call for.
    enum class Filters : std::uint8_t { None, SixPulse, TwelvePulse, Both };

    /// What the corrections need of one phase: parts of its non-linear load, which is above 0.
    struct PhaseShares {
        double ballast = 0.0;         ///< share of the ballasts
        double twelvePulse = 0.0;     ///< share of the twelve-pulse rectifiers
        double sixFiltered = 0.0;     ///< twice the share of the filtered six-pulse rectifiers
        double twelveFiltered = 0.0;  ///< share of the filtered twelve-pulse rectifiers
    };

    void LoadPowers(const StepFigures& figures);
    void FindShares(const StepFigures& figures);
    void Correct(double& vthd, const PhaseShares& phase, double impedance) const;
    void CorrectForFilters(double& vthd, const PhaseShares& phase, double impedance) const;
    static void CorrectForBallasts(double& vthd, const PhaseShares& phase, double impedance) noexcept;

    CVTHD m_calculator;
    std::optional<RaisedError> m_refusedPower;
    Filters m_filters = Filters::None;
    /// Absent where a phase has no non-linear load, of which filtered rectifiers could be a part: a filter
    /// alone distorts nothing, and the phase keeps its figure.
    std::array<std::optional<PhaseShares>, 3> m_shares;
};

}  // namespace genvara
