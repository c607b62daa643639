#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "Candidate.h"
#include "LanguageErrors.h"
#include "ProfileFigures.h"
#include "RejectionReasons.h"
#include "SiteRequirements.h"

/// The tests of a step. All of them stand in the header: they are asked for every candidate at every step.
namespace genvara {

/// The two figures that decide a test, in its unit. Equal figures pass: there is no tolerance.
struct Verdict {
    double needed = 0.0;     ///< what the step asks for, or the figure that has a limit
    double available = 0.0;  ///< what the set offers, or the limit
    bool applies = true;     ///< false where the site sets no limit or the set has no data

    [[nodiscard]] constexpr bool Fails() const noexcept { return applies && available < needed; }

    /// What is left, in percent of what is there; nothing where the test does not apply or nothing is there.
    [[nodiscard]] std::optional<double> Margin() const noexcept {
        const double margin = 100.0 * (available - needed) / available;
        return applies && std::isfinite(margin) ? std::optional(margin) : std::nullopt;
    }
};

/// What a test is given: the step, the set, what the one does to the other, and the site's limits.
struct StepTrial {
    const StepFigures& step;
    const Candidate& set;
    const StepOutcome& outcome;
    const SiteRequirements& site;
};

/// Whether a set has data of its frequency dip.
[[nodiscard]] inline bool HasFrequencyDip(const Candidate& set) noexcept {
    return set.baseFreqDipKW > 0.0;
}

/// Starting power of the engines [kW].
[[nodiscard]] inline Verdict EngineStart(const StepTrial& trial) noexcept {
    return {.needed = trial.step.startKW, .available = trial.set.siteStartingPower};
}

/// Rating of the sets [kW].
[[nodiscard]] inline Verdict Rating(const StepTrial& trial) noexcept {
    return {.needed = trial.step.runKW[0], .available = trial.set.siteRating};
}

/// Share of the rating that the user allows to be used [kW].
[[nodiscard]] inline Verdict MaximumLoading(const StepTrial& trial) noexcept {
    return {.needed = trial.step.runKW[0], .available = trial.set.maxLoadKW};
}

/// Rating of one phase against the heaviest one [kW].
[[nodiscard]] inline Verdict PhaseLoading(const StepTrial& trial) noexcept {
    return {.needed = trial.step.heaviestPhaseKW, .available = trial.set.phaseRating};
}

/// Load that one set takes at once [kW].
[[nodiscard]] inline Verdict OneStepCapability(const StepTrial& trial) noexcept {
    return {.needed = trial.step.stepStartKW,
            .available = trial.set.baseFreqDipKW,
            .applies = HasFrequencyDip(trial.set)};
}

/// Frequency dip [percent].
[[nodiscard]] inline Verdict AllowedFrequencyDip(const StepTrial& trial) noexcept {
    return {.needed = trial.outcome.freqDip,
            .available = trial.site.maxFreqDip,
            .applies = trial.site.maxFreqDipEnabled && HasFrequencyDip(trial.set)};
}

/// kVA that the alternators start within the allowed dip [kVA].
[[nodiscard]] inline Verdict AlternatorStart(const StepTrial& trial) noexcept {
    return {.needed = trial.step.startKVA, .available = trial.step.startShare * trial.set.siteStartKVA35};
}

/// Voltage dip [percent]: that of the start and 0.4 points for each percent of frequency dip, so that a set
/// may pass `AlternatorStart` and fail here.
[[nodiscard]] inline Verdict AllowedVoltageDip(const StepTrial& trial) noexcept {
    return {.needed = trial.outcome.voltDip, .available = trial.step.maxVoltageDip};
}

/// Distortion of the worst phase [percent].
[[nodiscard]] inline Verdict AllowedDistortion(const StepTrial& trial) noexcept {
    const auto& vthd = trial.outcome.distortion;
    return {.needed = std::max({vthd[0], vthd[1], vthd[2]}),
            .available = trial.site.maxHarmonics,
            .applies = trial.site.maxHarmonicsEnabled && trial.set.hasDistortion};
}

/// Which figure of the outcome a test looks at. They build on each other in this order.
enum class Figure : std::uint8_t { None, FrequencyDip, VoltageDip, Distortion };

/// A test with the bit that its failure sets, and the unit of its figures.
struct StepTest {
    std::string_view name;
    std::int32_t bit;
    std::string_view unit;
    Figure figure;
    Verdict (*judge)(const StepTrial&) noexcept;
};

/// All tests of a step. None of them stops another.
inline constexpr std::array<StepTest, 9> kStepTests{{
    {"EngineStart", rejection::kEngineStart, "kW", Figure::None, EngineStart},
    {"Rating", rejection::kRating, "kW", Figure::None, Rating},
    {"MaxLoading", rejection::kMaxLoading, "kW", Figure::None, MaximumLoading},
    {"PhaseLoading", rejection::kPhaseLoading, "kW", Figure::None, PhaseLoading},
    {"OneStepCapability", rejection::kOneStepCapability, "kW", Figure::None, OneStepCapability},
    {"FrequencyDip", rejection::kFrequencyDip, "%", Figure::FrequencyDip, AllowedFrequencyDip},
    {"AlternatorStart", rejection::kAlternatorStart, "kVA", Figure::None, AlternatorStart},
    {"VoltageDip", rejection::kVoltageDip, "%", Figure::VoltageDip, AllowedVoltageDip},
    {"Distortion", rejection::kDistortion, "%", Figure::Distortion, AllowedDistortion},
}};

/// Whether a set fails one of the tests that look at a figure.
template <Figure figure>
[[nodiscard]] bool FailsTestOf(const StepTrial& trial) noexcept {
    return [&]<std::size_t... Test>(std::index_sequence<Test...>) {
        return ((kStepTests[Test].figure == figure && kStepTests[Test].judge(trial).Fails()) || ...);
    }
    (std::make_index_sequence<kStepTests.size()>{});
}

/// What all tests of a step find, in the order of `kStepTests`.
using StepVerdicts = std::array<Verdict, kStepTests.size()>;

[[nodiscard]] inline StepVerdicts VerdictsOf(const StepTrial& trial) noexcept {
    StepVerdicts verdicts;
    std::ranges::transform(kStepTests, verdicts.begin(),
                           [&](const StepTest& test) { return test.judge(trial); });
    return verdicts;
}

/// Bits of the tests that a set fails at a step. The table is walked while compiling, so that no test costs
/// a call.
[[nodiscard]] inline std::int32_t FailedTests(const StepTrial& trial) noexcept {
    return [&]<std::size_t... Test>(std::index_sequence<Test...>) {
        return ((kStepTests[Test].judge(trial).Fails() ? kStepTests[Test].bit : 0) | ...);
    }
    (std::make_index_sequence<kStepTests.size()>{});
}

/// Frequency dip [percent] of one set when the step starts; 0 without data.
/// @throws RaisedError 5, 6 or 11 from "CDesigner::ChooseSets" where the curve has no value.
[[nodiscard]] inline double FrequencyDip(const StepFigures& step, const Candidate& set) {
    if (!HasFrequencyDip(set)) {
        return 0.0;
    }
    constexpr std::string_view kMember = "CDesigner::ChooseSets";
    return Finite(set.baseFreqDip * Power(step.stepStartKW / set.baseFreqDipKW, set.expC, kMember), kMember);
}

/// Voltage dip [percent]; 100 for sets that start no kVA at all.
/// @throws RaisedError 6 from "CDesigner::ChooseSets".
[[nodiscard]] inline double VoltageDip(const StepFigures& step, const Candidate& set, double freqDip) {
    constexpr double kPointsPerFrequencyPercent = 0.4;
    constexpr double kTotalDip = 100.0;
    if (!(set.siteStartKVA35 > 0.0)) {
        return kTotalDip;
    }
    return Finite((step.startKVA / set.siteStartKVA35) * kRatedDip + freqDip * kPointsPerFrequencyPercent,
                  "CDesigner::ChooseSets");
}

}  // namespace genvara
