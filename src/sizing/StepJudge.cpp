#include "StepJudge.h"

#include <algorithm>
#include <limits>

namespace genvara {
namespace {

/// Stands where a figure has not been worked out: neither dips nor distortion are ever less than nothing.
constexpr double kUnknown = -std::numeric_limits<double>::infinity();
constexpr std::array<double, 3> kUnknownDistortion{kUnknown, kUnknown, kUnknown};

bool SameCurve(const Candidate& one, const Candidate& other) noexcept {
    return one.baseFreqDipKW == other.baseFreqDipKW && one.baseFreqDip == other.baseFreqDip &&
           one.expC == other.expC;
}

}  // namespace

void StepJudge::Begin(const SiteRequirements& site, const ProfileFigures& profile) {
    m_site = &site;
    m_profile = &profile;
    m_steps.clear();
    m_distortions.clear();
    m_curve = Candidate{};
    m_freqDips.assign(profile.steps.size(), kUnknown);
    m_largestFreqDip = kUnknown;
    const auto largest = std::ranges::max_element(profile.steps, {}, &StepFigures::stepStartKW);
    m_largestStart = static_cast<std::size_t>(largest - profile.steps.begin());
    m_failedStep = 0;
    m_outcomes.assign(profile.steps.size(), StepOutcome{});
    m_worst = Worst{};
}

std::int32_t StepJudge::Judge(const Candidate& set) {
    TakeCurve(set);
    m_worst = Worst{};
    std::int32_t reason = 0;
    for (std::size_t s = 0; s < m_outcomes.size(); ++s) {
        StepOutcome& outcome = m_outcomes[s];
        outcome.freqDip = FrequencyDipAt(s, set);
        outcome.voltDip = VoltageDip(m_profile->steps[s], set, outcome.freqDip);
        outcome.distortion = set.hasDistortion ? DistortionAt(s, set) : std::array<double, 3>{};
        KeepWorst(outcome, set);
        reason |= FailedTests(TrialOf(s, set, outcome));
    }
    return reason;
}

bool StepJudge::Passes(const Candidate& set) {
    TakeCurve(set);
    // The step at which the last set failed is likely to stop its neighbour too.
    const std::size_t first = m_failedStep;
    for (std::size_t i = 0; i < m_outcomes.size(); ++i) {
        const std::size_t s = first + i < m_outcomes.size() ? first + i : first + i - m_outcomes.size();
        if (FailsAt(s, set)) {
            m_failedStep = s;
            return false;
        }
    }
    return true;
}

std::optional<Tightest> StepJudge::TightestOf(const Candidate& set) const {
    std::optional<Tightest> tightest;
    for (std::size_t s = 0; s < m_outcomes.size(); ++s) {
        KeepTighter(tightest, static_cast<std::int32_t>(s) + 1, VerdictsAt(s, set));
    }
    return tightest;
}

bool StepJudge::FailsAt(std::size_t s, const Candidate& set) {
    StepOutcome outcome;
    const StepTrial trial = TrialOf(s, set, outcome);
    if (FailsTestOf<Figure::None>(trial)) {
        return true;
    }
    // What passes with the largest frequency dip of all steps passes with its own, which costs a power.
    for (const bool bound : {true, false}) {
        outcome.freqDip = bound ? LargestFrequencyDip(set) : FrequencyDipAt(s, set);
        outcome.voltDip = VoltageDip(trial.step, set, outcome.freqDip);
        if (!FailsTestOf<Figure::FrequencyDip>(trial) && !FailsTestOf<Figure::VoltageDip>(trial)) {
            break;
        }
        if (!bound) {
            return true;
        }
    }
    if (!AllowedDistortion(trial).applies) {
        return false;
    }
    outcome.distortion = DistortionAt(s, set);
    return FailsTestOf<Figure::Distortion>(trial);
}

/// A set is offered with several alternators, one row after the other, and its curve is the engine's.
void StepJudge::TakeCurve(const Candidate& set) {
    if (!SameCurve(m_curve, set)) {
        m_curve = set;
        std::ranges::fill(m_freqDips, kUnknown);
        m_largestFreqDip = kUnknown;
    }
}

double StepJudge::FrequencyDipAt(std::size_t s, const Candidate& set) {
    double& dip = m_freqDips[s];
    if (dip == kUnknown) {
        dip = FrequencyDip(m_profile->steps[s], set);
    }
    return dip;
}

/// A figure that no step's frequency dip exceeds: that of the largest start, and more than the last bits in
/// which a power may be off.
double StepJudge::LargestFrequencyDip(const Candidate& set) {
    constexpr double kSlack = 1.0 + 1e-12;
    if (m_largestFreqDip == kUnknown) {
        m_largestFreqDip = std::max(0.0, FrequencyDipAt(m_largestStart, set) * kSlack);
    }
    return m_largestFreqDip;
}

const std::array<double, 3>& StepJudge::DistortionAt(std::size_t s, const Candidate& set) {
    if (m_steps.empty()) {
        m_steps.reserve(m_profile->steps.size());
        for (const StepFigures& step : m_profile->steps) {
            m_steps.emplace_back(step);
        }
    }
    const std::size_t index = set.alternator * m_steps.size() + s;
    if (index >= m_distortions.size()) {
        m_distortions.resize((set.alternator + 1) * m_steps.size(), kUnknownDistortion);
    }
    std::array<double, 3>& distortion = m_distortions[index];
    if (distortion[0] == kUnknown) {
        distortion = m_steps[s].On(set.generatorPower, set.generatorImpedance);
    }
    return distortion;
}

void StepJudge::KeepWorst(const StepOutcome& outcome, const Candidate& set) {
    m_worst.freqDip = std::max(m_worst.freqDip, outcome.freqDip);
    if (set.siteStartKVA35 > 0.0) {
        m_worst.voltDip = std::max(m_worst.voltDip, outcome.voltDip);
    }
    for (const double vthd : outcome.distortion) {
        m_worst.vthd = std::max(m_worst.vthd, vthd);
    }
}

}  // namespace genvara
