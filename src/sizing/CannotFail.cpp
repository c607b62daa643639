#include "CannotFail.h"

#include <algorithm>
#include <array>

namespace genvara {
namespace {

// Bounds that no site comes near: a terawatt, and a thousandth of a watt.
constexpr double kMostPower = 1e12;   // kW, kVA
constexpr double kLeastPower = 1e-6;  // kW, kVA
constexpr double kMostDip = 1e6;      // percent
// (1e12 / 1e-6) raised to 8 is 1e144.
constexpr double kMostExponent = 8.0;
constexpr double kMostImpedance = 1e6;  // per unit

constexpr bool IsPower(double figure) noexcept {
    return figure >= 0.0 && figure <= kMostPower;
}

template <typename Figures>
constexpr bool ArePowers(const Figures& figures) noexcept {
    return std::ranges::all_of(figures, IsPower);
}

/// Filtered rectifiers are set against the non-linear load of each phase.
bool HasLoadToFilter(const StepFigures& step) noexcept {
    const bool filtered = step.rect6PFiltered > 0.0 || step.rect12PFiltered > 0.0;
    return !filtered || std::ranges::all_of(step.nonLinear, [](double load) { return load > 0.0; });
}

bool CannotFail(const StepFigures& step) noexcept {
    const std::array<double, 7> powers{step.stepStartKW, step.startKVA,       step.rect6P,
                                       step.rect12P,     step.rect6PFiltered, step.rect12PFiltered,
                                       step.phaseCtrl6P};
    return ArePowers(powers) && ArePowers(step.rect1P) && ArePowers(step.ballastElec) &&
           ArePowers(step.ballastMag) && HasLoadToFilter(step);
}

bool CurveCannotFail(const Candidate& set) noexcept {
    return !(set.baseFreqDipKW > 0.0) ||
           (set.baseFreqDipKW >= kLeastPower && set.baseFreqDipKW <= kMostPower && set.expC >= 0.0 &&
            set.expC <= kMostExponent && set.baseFreqDip >= -kMostDip && set.baseFreqDip <= kMostDip);
}

bool DistortionCannotFail(const Candidate& set) noexcept {
    return !set.hasDistortion || (set.generatorPower >= kLeastPower && set.generatorPower <= kMostPower &&
                                  set.generatorImpedance > 0.0 && set.generatorImpedance <= kMostImpedance);
}

}  // namespace

bool CannotFail(const ProfileFigures& profile) noexcept {
    return std::ranges::all_of(profile.steps, [](const StepFigures& step) { return CannotFail(step); });
}

bool CannotFail(const Candidate& set) noexcept {
    const bool starts = set.siteStartKVA35 > 0.0;
    return (!starts || set.siteStartKVA35 >= kLeastPower) && CurveCannotFail(set) &&
           DistortionCannotFail(set);
}

}  // namespace genvara
