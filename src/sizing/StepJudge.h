#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Candidate.h"
#include "DesignResults.h"
#include "Margins.h"
#include "ProfileFigures.h"
#include "SiteRequirements.h"
#include "StepDistortion.h"
#include "StepTests.h"

namespace genvara {

/// What becomes of a candidate.
enum class Fate : std::uint8_t {
    Recommended,
    Undersized,       ///< failed at least one test at one step
    BelowMinLoading,  ///< passed all, and the finished load stays below its least loading
};

/// The fate of a set that failed the tests of some bits.
[[nodiscard]] inline Fate FateOf(std::int32_t reason, const Candidate& set, const SiteRequirements& site,
                                 const ProfileFigures& profile) noexcept {
    if (reason != 0) {
        return Fate::Undersized;
    }
    return site.minLoading * set.siteRating / 100.0 > profile.totalRunningKW ? Fate::BelowMinLoading
                                                                             : Fate::Recommended;
}

/// Counts a fate.
inline void Count(RunCounts& counts, Fate fate) noexcept {
    switch (fate) {
        case Fate::Recommended:
            ++counts.recommended;
            break;
        case Fate::Undersized:
            ++counts.undersized;
            break;
        case Fate::BelowMinLoading:
            ++counts.underloaded;
            break;
    }
}

/// Takes candidates through the steps of a profile, one after the other.
///
/// What depends on the step and the alternator alone (distortion is of that kind) is worked out once for each
/// pair, what depends on the engine alone (frequency dips) once for neighbouring candidates of one engine.
class StepJudge {
  public:
    /// The largest figures of a candidate over all steps [percent].
    struct Worst {
        double voltDip = 0.0;  ///< stays 0 for sets that start no kVA at all
        double freqDip = 0.0;
        double vthd = 0.0;
    };

    /// Begins with a profile; the room of the one before is used again. Both outlive the judging.
    void Begin(const SiteRequirements& site, const ProfileFigures& profile);

    /// Bits of the tests that a set fails, of all steps: none of them stops another.
    /// @throws RaisedError of the arithmetic, or of `CVTHD` for figures that it refuses.
    std::int32_t Judge(const Candidate& set);

    /// Whether a set passes all tests at all steps. Ends at the first that fails, whichever that is, and
    /// works out nothing beyond; for sets and profiles that cannot raise.
    [[nodiscard]] bool Passes(const Candidate& set);

    // Of the set that was judged last; an outcome a step.
    [[nodiscard]] const std::vector<StepOutcome>& Outcomes() const noexcept { return m_outcomes; }
    [[nodiscard]] const Worst& WorstFigures() const noexcept { return m_worst; }
    /// The tests of a step, counted from 0, for that set.
    [[nodiscard]] StepVerdicts VerdictsAt(std::size_t s, const Candidate& set) const {
        return VerdictsOf(TrialOf(s, set, m_outcomes[s]));
    }
    /// The tightest of all its tests.
    [[nodiscard]] std::optional<Tightest> TightestOf(const Candidate& set) const;

  private:
    [[nodiscard]] StepTrial TrialOf(std::size_t s, const Candidate& set, const StepOutcome& outcome) const {
        return {.step = m_profile->steps[s], .set = set, .outcome = outcome, .site = *m_site};
    }
    [[nodiscard]] bool FailsAt(std::size_t s, const Candidate& set);
    void TakeCurve(const Candidate& set);
    [[nodiscard]] double FrequencyDipAt(std::size_t s, const Candidate& set);
    [[nodiscard]] double LargestFrequencyDip(const Candidate& set);
    [[nodiscard]] const std::array<double, 3>& DistortionAt(std::size_t s, const Candidate& set);
    void KeepWorst(const StepOutcome& outcome, const Candidate& set);

    const SiteRequirements* m_site = nullptr;
    const ProfileFigures* m_profile = nullptr;
    std::vector<StepDistortion> m_steps;
    std::vector<std::array<double, 3>> m_distortions;  ///< by alternator, then step
    Candidate m_curve;                                 ///< the set whose frequency dips are kept
    std::vector<double> m_freqDips;                    ///< by step
    double m_largestFreqDip = 0.0;                     ///< bound of them all
    std::size_t m_largestStart = 0;                    ///< step that starts most at once
    std::size_t m_failedStep = 0;                      ///< at which the last set failed
    std::vector<StepOutcome> m_outcomes;
    Worst m_worst;
};

}  // namespace genvara
