#include "ProfileFigures.h"

#include <algorithm>
#include <cstddef>

#include "LanguageErrors.h"

namespace genvara {
namespace {

constexpr double kWattsPerKilowatt = 1000.0;

// Allowed dips of delicate starts [percent].
constexpr std::int32_t kFirePumpDip = 15;
constexpr std::int32_t kTap65Dip = 15;
constexpr std::int32_t kLoadedMotorDip = 25;
constexpr std::int32_t kAnyDip = 100;

std::int32_t BaseDip(const CLoadStep& step) {
    if (step.HasFirePump()) {
        return kFirePumpDip;
    }
    if (step.HasLoadedMotorWithTap65()) {
        return kTap65Dip;
    }
    return step.HasLoadedMotor() ? kLoadedMotorDip : kAnyDip;
}

double Kilo(double figure) {
    return figure / kWattsPerKilowatt;
}

/// The step's own running and non-linear figures on top of those that stood before.
StepFigures Standing(const CLoadStep& step, const StepFigures& before) {
    StepFigures now;
    for (std::size_t p = 0; p < now.runKW.size(); ++p) {
        const auto phase = static_cast<std::int32_t>(p);
        now.runKW[p] = Kilo(step.TotalRunningRealPower(phase)) + before.runKW[p];
        now.runKVAR[p] = Kilo(step.TotalRunningImgPower(phase)) + before.runKVAR[p];
    }
    now.rect6P = Kilo(step.TotalSixPulseRectPower()) + before.rect6P;
    now.rect12P = Kilo(step.TotalTwelvePulseRectPower()) + before.rect12P;
    now.rect6PFiltered = Kilo(step.TotalSixPulseRectFilteredPower()) + before.rect6PFiltered;
    now.rect12PFiltered = Kilo(step.TotalTwelvePulseRectFilteredPower()) + before.rect12PFiltered;
    now.phaseCtrl6P = Kilo(step.TotalSixPulsePPCPower()) + before.phaseCtrl6P;
    for (std::size_t p = 0; p < now.rect1P.size(); ++p) {
        const auto phase = static_cast<std::int32_t>(p) + 1;
        now.rect1P[p] = Kilo(step.TotalSinglePhaseRectPower(phase)) + before.rect1P[p];
        now.ballastElec[p] = Kilo(step.TotalElectBallastRealPower(phase)) + before.ballastElec[p];
        now.ballastMag[p] = Kilo(step.TotalMagBallastRealPower(phase)) + before.ballastMag[p];
    }
    return now;
}

void AddNonLinearSums(StepFigures& figures) {
    for (std::size_t p = 0; p < figures.nonLinear.size(); ++p) {
        figures.ballast[p] = figures.ballastMag[p] + figures.ballastElec[p];
        figures.nonLinear[p] = figures.rect1P[p] + figures.ballastElec[p] + figures.ballastMag[p] +
                               figures.phaseCtrl6P / 3.0 + figures.rect6P / 3.0 + figures.rect12P / 3.0;
    }
}

/// The start of a step on top of what runs already.
void AddStart(StepFigures& figures, const CLoadStep& step, const StepFigures& before) {
    figures.stepStartKW = Kilo(step.TotalStartingRealPower(0));
    figures.startKW = figures.stepStartKW + before.runKW[0];
    figures.startKVAR = Kilo(step.TotalStartingImgPower(0)) + before.runKVAR[0];
    figures.startKVA = SquareRoot(figures.startKVAR * figures.startKVAR + figures.startKW * figures.startKW,
                                  "CDesigner::ChooseSets");
}

}  // namespace

std::int32_t StepMaxVoltageDip(const CLoadStep& step, const CPwrSys& site) {
    std::int32_t dip = std::min(BaseDip(step), site.MaxVoltageDip());
    dip = std::min(dip, step.MaxVoltageDipOverride());
    if (step.HasMedicalImageLoad()) {
        dip = std::min(dip, step.GetSmallestMedicalDip());
    }
    return dip;
}

StepFigures FiguresOfStep(const CLoadStep& step, const StepFigures& before, const CPwrSys& site) {
    StepFigures now = Standing(step, before);
    AddNonLinearSums(now);
    AddStart(now, step, before);
    now.maxVoltageDip = StepMaxVoltageDip(step, site);
    now.startShare = now.maxVoltageDip / kRatedDip;
    now.heaviestPhaseKW = std::max({now.runKW[1], now.runKW[2], now.runKW[3]});
    return now;
}

ProfileFigures FiguresOf(const CLoadProfile& profile, const CPwrSys& site) {
    ProfileFigures figures;
    const std::int32_t count = profile.NumLoadSteps();
    StepFigures before;
    // The first step is asked for even in an empty profile, which has none to give.
    for (std::int32_t number = 1; number <= std::max(count, 1); ++number) {
        const CLoadStep& step = profile.LoadStep(number);
        const StepFigures now = FiguresOfStep(step, before, site);
        // The first step's peak is the step's own root, which is taken before the division by 1000.
        const double peak = number == 1 ? Kilo(step.TotalStartingApparentPower(0)) : now.startKVA;
        figures.peakStartingKVA = std::max(figures.peakStartingKVA, peak);
        figures.steps.push_back(now);
        before = now;
    }
    figures.totalRunningKW = before.runKW[0];
    figures.totalRunningKVAR = before.runKVAR[0];
    return figures;
}

}  // namespace genvara
