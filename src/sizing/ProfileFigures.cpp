#include "ProfileFigures.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "Kilo.h"
#include "LanguageErrors.h"

namespace genvara {
namespace {

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
    return figure / kPerKilo;
}

/// The two sums of a figure that stands.
template <typename Figures>
Figures Sum(const Figures& own, const Figures& before) {
    Figures sum;
    std::ranges::transform(own, before, sum.begin(), std::plus<>{});
    return sum;
}

void AddNonLinearSums(StepFigures& figures) {
    for (std::size_t p = 0; p < figures.nonLinear.size(); ++p) {
        figures.ballast[p] = figures.ballastMag[p] + figures.ballastElec[p];
        figures.nonLinear[p] = figures.rect1P[p] + figures.ballastElec[p] + figures.ballastMag[p] +
                               figures.phaseCtrl6P / 3.0 + figures.rect6P / 3.0 + figures.rect12P / 3.0;
    }
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

StepFigures OwnFigures(const CLoadStep& step, const CPwrSys& site) {
    StepFigures own;
    for (std::size_t p = 0; p < own.runKW.size(); ++p) {
        const auto phase = static_cast<std::int32_t>(p);
        own.runKW[p] = Kilo(step.TotalRunningRealPower(phase));
        own.runKVAR[p] = Kilo(step.TotalRunningImgPower(phase));
    }
    own.rect6P = Kilo(step.TotalSixPulseRectPower());
    own.rect12P = Kilo(step.TotalTwelvePulseRectPower());
    own.rect6PFiltered = Kilo(step.TotalSixPulseRectFilteredPower());
    own.rect12PFiltered = Kilo(step.TotalTwelvePulseRectFilteredPower());
    own.phaseCtrl6P = Kilo(step.TotalSixPulsePPCPower());
    for (std::size_t p = 0; p < own.rect1P.size(); ++p) {
        const auto phase = static_cast<std::int32_t>(p) + 1;
        own.rect1P[p] = Kilo(step.TotalSinglePhaseRectPower(phase));
        own.ballastElec[p] = Kilo(step.TotalElectBallastRealPower(phase));
        own.ballastMag[p] = Kilo(step.TotalMagBallastRealPower(phase));
    }
    own.stepStartKW = Kilo(step.TotalStartingRealPower(0));
    own.startKVAR = Kilo(step.TotalStartingImgPower(0));
    own.maxVoltageDip = StepMaxVoltageDip(step, site);
    own.startShare = own.maxVoltageDip / kRatedDip;
    return own;
}

StepFigures FiguresOn(const StepFigures& own, const StepFigures& before) {
    StepFigures now = own;
    now.runKW = Sum(own.runKW, before.runKW);
    now.runKVAR = Sum(own.runKVAR, before.runKVAR);
    now.rect6P += before.rect6P;
    now.rect12P += before.rect12P;
    now.rect6PFiltered += before.rect6PFiltered;
    now.rect12PFiltered += before.rect12PFiltered;
    now.phaseCtrl6P += before.phaseCtrl6P;
    now.rect1P = Sum(own.rect1P, before.rect1P);
    now.ballastElec = Sum(own.ballastElec, before.ballastElec);
    now.ballastMag = Sum(own.ballastMag, before.ballastMag);
    AddNonLinearSums(now);
    now.startKW = own.stepStartKW + before.runKW[0];
    now.startKVAR = own.startKVAR + before.runKVAR[0];
    now.startKVA =
        SquareRoot(now.startKVAR * now.startKVAR + now.startKW * now.startKW, "CDesigner::ChooseSets");
    now.heaviestPhaseKW = std::max({now.runKW[1], now.runKW[2], now.runKW[3]});
    return now;
}

StepFigures FiguresOfStep(const CLoadStep& step, const StepFigures& before, const CPwrSys& site) {
    return FiguresOn(OwnFigures(step, site), before);
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
