#include "LoadTrial.h"

#include <array>
#include <cmath>
#include <utility>

#include "LanguageErrors.h"

namespace genvara {
namespace {

constexpr std::string_view kSource = "LoadTrial";

/// A figure of all units together.
double OfAll(const Load& load, double figure) {
    return Finite(load.Quantity() * figure, kSource);
}

/// The two powers of a step with this load alone, and the apparent power that it works out from them.
void TryTriangle(const Load& load, double real, double imaginary) {
    const double reals = OfAll(load, real);
    const double imaginaries = OfAll(load, imaginary);
    (void)SquareRoot(imaginaries * imaginaries + reals * reals, kSource);
}

void TryRunning(const Load& load) {
    (void)OfAll(load, load.RunningAppPower());
    TryTriangle(load, load.RunningRealPower(), load.RunningImgPower());
}

void TryStarting(const Load& load) {
    (void)OfAll(load, load.StartingAppPower());
    TryTriangle(load, load.StartingRealPower(), load.StartingImgPower());
}

void TryHarmonics(const Load& load) {
    double sum = load.ThreePhaseSixPulseRectPower() + load.ThreePhaseTwelvePulseRectPower() +
                 load.ThreePhaseSixPulseRectFilteredPower() + load.ThreePhaseTwelvePulseRectFilteredPower() +
                 load.ThreePhaseSixPulsePPCRectPower();
    for (const std::int32_t phase : {1, 2, 3}) {
        sum += load.SinglePhaseRectPower(phase) + load.SinglePhaseElectBallastPower(phase) +
               load.SinglePhaseMagBallastPower(phase);
    }
    (void)Finite(sum, kSource);
}

void TryTexts(const Load& load) {
    (void)load.Summary();
    (void)load.GetProps();
}

}  // namespace

std::optional<FailedFigure> TryFigures(const Load& load) {
    constexpr std::array kTrials{
        std::pair{LoadFigure::Running, &TryRunning}, std::pair{LoadFigure::Starting, &TryStarting},
        std::pair{LoadFigure::Harmonics, &TryHarmonics}, std::pair{LoadFigure::Texts, &TryTexts}};
    for (const auto& [figure, attempt] : kTrials) {
        try {
            attempt(load);
        } catch (const RaisedError& failure) {
            return FailedFigure{.figure = figure, .failure = failure};
        }
    }
    return std::nullopt;
}

}  // namespace genvara
