#include "StepTests.h"

#include <algorithm>

#include "LanguageErrors.h"

namespace genvara {
namespace {

/// Dip at which a set's locked-rotor kVA is stated [percent].
constexpr double kRatedDip = 35.0;
/// Points of voltage dip that come with each percent of frequency dip.
constexpr double kVoltageDipOfFrequencyDip = 0.4;
/// Voltage dip of a set that starts nothing [percent].
constexpr double kTotalDip = 100.0;

}  // namespace

Verdict EngineStart(const StepTrial& trial) noexcept {
    return {.needed = trial.step.startKW, .available = trial.set.siteStartingPower};
}

Verdict Rating(const StepTrial& trial) noexcept {
    return {.needed = trial.step.runKW[0], .available = trial.set.siteRating};
}

Verdict MaximumLoading(const StepTrial& trial) noexcept {
    return {.needed = trial.step.runKW[0], .available = trial.site.maxLoading * trial.set.siteRating / 100.0};
}

Verdict PhaseLoading(const StepTrial& trial) noexcept {
    const auto& run = trial.step.runKW;
    return {.needed = std::max({run[1], run[2], run[3]}),
            .available = trial.set.siteRating / trial.site.phases};
}

Verdict OneStepCapability(const StepTrial& trial) noexcept {
    return {.needed = trial.step.stepStartKW,
            .available = trial.set.baseFreqDipKW,
            .applies = HasFrequencyDip(trial.set)};
}

Verdict AllowedFrequencyDip(const StepTrial& trial) noexcept {
    return {.needed = trial.outcome.freqDip,
            .available = trial.site.maxFreqDip,
            .applies = trial.site.maxFreqDipEnabled && HasFrequencyDip(trial.set)};
}

Verdict AlternatorStart(const StepTrial& trial) noexcept {
    return {.needed = trial.step.startKVA,
            .available = (trial.step.maxVoltageDip / kRatedDip) * trial.set.siteStartKVA35};
}

Verdict AllowedVoltageDip(const StepTrial& trial) noexcept {
    return {.needed = trial.outcome.voltDip, .available = static_cast<double>(trial.step.maxVoltageDip)};
}

Verdict AllowedDistortion(const StepTrial& trial) noexcept {
    const auto& vthd = trial.outcome.distortion;
    return {.needed = std::max({vthd[0], vthd[1], vthd[2]}),
            .available = trial.site.maxHarmonics,
            .applies = trial.site.maxHarmonicsEnabled && trial.set.hasDistortion};
}

double FrequencyDip(const StepFigures& step, const Candidate& set) {
    if (!HasFrequencyDip(set)) {
        return 0.0;
    }
    constexpr std::string_view kMember = "CDesigner::ChooseSets";
    const double share = step.stepStartKW / set.baseFreqDipKW;
    return Finite(set.baseFreqDip * Power(share, set.expC, kMember), kMember);
}

double VoltageDip(const StepFigures& step, const Candidate& set, double freqDip) {
    if (!(set.siteStartKVA35 > 0.0)) {
        return kTotalDip;
    }
    return Finite((step.startKVA / set.siteStartKVA35) * kRatedDip + freqDip * kVoltageDipOfFrequencyDip,
                  "CDesigner::ChooseSets");
}

}  // namespace genvara
