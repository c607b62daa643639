#include "WorkOutLoads.h"

#include <array>
#include <cstdint>

namespace genvara {
namespace {

constexpr std::array<std::int32_t, 3> kPhases{1, 2, 3};
/// The phases of a total: all of them, then A to C.
constexpr std::array<std::int32_t, 4> kTotalAndPhases{0, 1, 2, 3};

using StepTotal = double (CLoadStep::*)(std::int32_t) const;

constexpr std::array<StepTotal, 6> kPowers{
    &CLoadStep::TotalRunningRealPower,     &CLoadStep::TotalRunningImgPower,
    &CLoadStep::TotalRunningApparentPower, &CLoadStep::TotalStartingRealPower,
    &CLoadStep::TotalStartingImgPower,     &CLoadStep::TotalStartingApparentPower};
constexpr std::array<double (CLoadStep::*)() const, 5> kHarmonics{
    &CLoadStep::TotalSixPulseRectPower, &CLoadStep::TotalTwelvePulseRectPower,
    &CLoadStep::TotalSixPulseRectFilteredPower, &CLoadStep::TotalTwelvePulseRectFilteredPower,
    &CLoadStep::TotalSixPulsePPCPower};
constexpr std::array<StepTotal, 3> kPhaseHarmonics{&CLoadStep::TotalSinglePhaseRectPower,
                                                   &CLoadStep::TotalElectBallastRealPower,
                                                   &CLoadStep::TotalMagBallastRealPower};

constexpr std::array<double (Load::*)() const, 11> kLoadFigures{&Load::RunningRealPower,
                                                                &Load::RunningAppPower,
                                                                &Load::RunningImgPower,
                                                                &Load::StartingRealPower,
                                                                &Load::StartingAppPower,
                                                                &Load::StartingImgPower,
                                                                &Load::ThreePhaseSixPulseRectPower,
                                                                &Load::ThreePhaseTwelvePulseRectPower,
                                                                &Load::ThreePhaseSixPulseRectFilteredPower,
                                                                &Load::ThreePhaseTwelvePulseRectFilteredPower,
                                                                &Load::ThreePhaseSixPulsePPCRectPower};
constexpr std::array<double (Load::*)(std::int32_t) const, 3> kLoadPhaseFigures{
    &Load::SinglePhaseRectPower, &Load::SinglePhaseElectBallastPower, &Load::SinglePhaseMagBallastPower};

/// Asks each member of a table for each phase.
template <typename Holder, typename Members, typename Phases>
void AskEach(const Holder& holder, const Members& members, const Phases& phases) {
    for (const auto member : members) {
        for (const std::int32_t phase : phases) {
            (void)(holder.*member)(phase);
        }
    }
}

template <typename Holder, typename Members>
void AskEach(const Holder& holder, const Members& members) {
    for (const auto member : members) {
        (void)(holder.*member)();
    }
}

}  // namespace

void WorkOutLoads(const CLoadProfile& profile) {
    for (const CLoadStep& step : profile) {
        AskEach(step, kPowers, kTotalAndPhases);
        AskEach(step, kHarmonics);
        AskEach(step, kPhaseHarmonics, kPhases);
        for (const Load& load : step) {
            AskEach(load, kLoadFigures);
            AskEach(load, kLoadPhaseFigures, kPhases);
        }
    }
}

}  // namespace genvara
