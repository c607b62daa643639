#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "EntryNumbers.h"

/// What a load profile draws, row by row, for those who look at it: a figure that cannot be worked out is a
/// sentence and never a failure.
namespace genvara {

enum class PowerKind : std::uint8_t { RunningReal, RunningApparent, StartingReal, StartingApparent };
inline constexpr std::array<PowerKind, 4> kPowerKinds{PowerKind::RunningReal, PowerKind::RunningApparent,
                                                      PowerKind::StartingReal, PowerKind::StartingApparent};

/// A power in W or VA, or why there is none.
struct PowerFigure {
    std::optional<double> power;
    std::string why{};
};

/// Of all units of a load together.
[[nodiscard]] PowerFigure FigureOf(const Load& load, PowerKind kind);
/// The step's own total.
[[nodiscard]] PowerFigure FigureOf(const CLoadStep& step, PowerKind kind);
/// Of all steps together. An apparent power is the root of the squares of what the steps' real and imaginary
/// powers add up to, as the run has it.
[[nodiscard]] PowerFigure FigureOf(const CLoadProfile& profile, PowerKind kind);

/// A figure in kW or kVA with so many decimals; "?" for one that cannot be worked out.
[[nodiscard]] std::string PowerText(const PowerFigure& figure, int decimals, const EntryNumbers& numbers);

/// What a load is connected to: "3" for all three phases, or "A", "B", "C".
[[nodiscard]] std::string PhasesText(const Load& load);

/// The load whose units draw most when they start together.
struct LargestStart {
    std::string name;
    double voltAmperes = 0.0;
    double amperes = 0.0;  ///< in each conductor, as motors given in amperes count it
};

/// @return nothing without a load that draws anything; loads whose start cannot be worked out do not count.
[[nodiscard]] std::optional<LargestStart> LargestStartOf(const CLoadProfile& profile, const CPwrSys& site);

}  // namespace genvara
