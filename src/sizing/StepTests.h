#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "Candidate.h"
#include "ProfileFigures.h"
#include "RejectionReasons.h"

namespace genvara {

/// The two figures that decide a test, in its unit. Equal figures pass: there is no tolerance.
struct Verdict {
    double needed = 0.0;     ///< what the step asks for, or the figure that has a limit
    double available = 0.0;  ///< what the set offers, or the limit
    bool applies = true;     ///< false where the site sets no limit or the set has no data

    [[nodiscard]] bool Fails() const noexcept { return applies && available < needed; }
};

/// What a test is given: the step, the set, what the one does to the other, and the site's limits.
struct StepTrial {
    const StepFigures& step;
    const Candidate& set;
    const StepOutcome& outcome;
    const SiteRequirements& site;
};

/// Starting power of the engines [kW].
[[nodiscard]] Verdict EngineStart(const StepTrial& trial) noexcept;
/// Rating of the sets [kW].
[[nodiscard]] Verdict Rating(const StepTrial& trial) noexcept;
/// Share of the rating that the user allows to be used [kW].
[[nodiscard]] Verdict MaximumLoading(const StepTrial& trial) noexcept;
/// Rating of one phase against the heaviest one [kW].
[[nodiscard]] Verdict PhaseLoading(const StepTrial& trial) noexcept;
/// Load that one set takes at once [kW].
[[nodiscard]] Verdict OneStepCapability(const StepTrial& trial) noexcept;
/// Frequency dip [percent].
[[nodiscard]] Verdict AllowedFrequencyDip(const StepTrial& trial) noexcept;
/// kVA that the alternators start within the allowed dip [kVA].
[[nodiscard]] Verdict AlternatorStart(const StepTrial& trial) noexcept;
/// Voltage dip [percent]: that of the start and 0.4 points for each percent of frequency dip, so that a set
/// may pass `AlternatorStart` and fail here.
[[nodiscard]] Verdict AllowedVoltageDip(const StepTrial& trial) noexcept;
/// Distortion of the worst phase [percent].
[[nodiscard]] Verdict AllowedDistortion(const StepTrial& trial) noexcept;

/// A test with the bit that its failure sets, and the unit of its figures.
struct StepTest {
    std::int32_t bit;
    std::string_view unit;
    Verdict (*judge)(const StepTrial&) noexcept;
};

/// All tests of a step. None of them stops another.
inline constexpr std::array<StepTest, 9> kStepTests{{
    {rejection::kEngineStart, "kW", EngineStart},
    {rejection::kRating, "kW", Rating},
    {rejection::kMaxLoading, "kW", MaximumLoading},
    {rejection::kPhaseLoading, "kW", PhaseLoading},
    {rejection::kOneStepCapability, "kW", OneStepCapability},
    {rejection::kFrequencyDip, "%", AllowedFrequencyDip},
    {rejection::kAlternatorStart, "kVA", AlternatorStart},
    {rejection::kVoltageDip, "%", AllowedVoltageDip},
    {rejection::kDistortion, "%", AllowedDistortion},
}};

/// Whether a set has data of its frequency dip.
[[nodiscard]] inline bool HasFrequencyDip(const Candidate& set) noexcept {
    return set.baseFreqDipKW > 0.0;
}

/// Frequency dip [percent] of one set when the step starts; 0 without data.
/// @throws RaisedError 5, 6 or 11 from "CDesigner::ChooseSets" where the curve has no value.
[[nodiscard]] double FrequencyDip(const StepFigures& step, const Candidate& set);

/// Voltage dip [percent]; 100 for sets that start no kVA at all.
[[nodiscard]] double VoltageDip(const StepFigures& step, const Candidate& set, double freqDip);

}  // namespace genvara
