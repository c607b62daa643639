#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"

namespace genvara {

/// What a load step demands, whatever set is tried. Powers in kW, kVAR and kVA; phase 0 is the total.
///
/// "Standing" figures are those of all the load that stands after the step; per-phase non-linear figures
/// count A to C from 0.
struct StepFigures {
    std::array<double, 4> runKW{};    ///< standing, by phase 0 to 3
    std::array<double, 4> runKVAR{};  ///< standing, by phase 0 to 3
    double startKW = 0.0;             ///< this step's start on top of what stood before
    double startKVAR = 0.0;           ///< likewise
    double startKVA = 0.0;            ///< root of the squares of the two
    double stepStartKW = 0.0;         ///< this step's start alone
    double maxVoltageDip = 0.0;       ///< allowed voltage dip [percent]
    double startShare = 0.0;          ///< share of its kVA at 35 percent that a set starts within that dip
    double heaviestPhaseKW = 0.0;     ///< largest of the three phases of `runKW`

    // Non-linear load standing.
    double rect6P = 0.0;
    double rect12P = 0.0;
    double rect6PFiltered = 0.0;
    double rect12PFiltered = 0.0;
    double phaseCtrl6P = 0.0;
    std::array<double, 3> rect1P{};
    std::array<double, 3> ballastElec{};
    std::array<double, 3> ballastMag{};
    std::array<double, 3> ballast{};    ///< both ballasts
    std::array<double, 3> nonLinear{};  ///< everything but the filtered rectifiers
};

/// A load profile's figures, asked of the loads once a run.
struct ProfileFigures {
    std::vector<StepFigures> steps;
    double totalRunningKW = 0.0;
    double totalRunningKVAR = 0.0;
    double peakStartingKVA = 0.0;
};

/// Dip at which a set's locked-rotor kVA is stated [percent].
inline constexpr double kRatedDip = 35.0;

/// Allowed voltage dip of a step [percent]: fire pumps and loaded motors first, then the site's limit, the
/// step's own and the medical loads', each only lowering it.
[[nodiscard]] std::int32_t StepMaxVoltageDip(const CLoadStep& step, const CPwrSys& site);

/// What a step brings: its own running and non-linear figures, its start (`stepStartKW`, `startKVAR`) and its
/// dip, with no sums of them.
/// @throws RaisedError of a load whose figure cannot be worked out.
[[nodiscard]] StepFigures OwnFigures(const CLoadStep& step, const CPwrSys& site);

/// What a step demands on top of what stands before it, from what it brings.
/// @throws RaisedError 6 "Overflow" from "CDesigner::ChooseSets" for a start whose square is none.
[[nodiscard]] StepFigures FiguresOn(const StepFigures& own, const StepFigures& before);

/// The same of the step itself.
/// @param before of the step before; all zeros for the first one.
/// @throws RaisedError of a load whose figure cannot be worked out, of a sum that is no number any more, or 6
///         "Overflow" from "CDesigner::ChooseSets" for a start whose square is none.
[[nodiscard]] StepFigures FiguresOfStep(const CLoadStep& step, const StepFigures& before,
                                        const CPwrSys& site);

/// Walks the profile. A load whose figure cannot be worked out raises.
/// @throws RaisedError 0x80040064 of `CLoadProfile::LoadStep` for a profile without steps.
[[nodiscard]] ProfileFigures FiguresOf(const CLoadProfile& profile, const CPwrSys& site);

}  // namespace genvara
