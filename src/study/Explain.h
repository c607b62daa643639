#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "DesignLimits.h"
#include "DesignResults.h"
#include "Margins.h"
#include "SiteCandidates.h"
#include "StepJudge.h"
#include "StepTests.h"
#include "Stopping.h"

/// Why each set is recommended or not: the figures of every test at every step, by the tests that decide.
namespace genvara {

/// Which sets are explained: with neither, those of a run's two lists in their order; else candidates in the
/// order of the catalogue.
struct ExplainChoice {
    bool all = false;                 ///< every candidate
    std::vector<std::string> models;  ///< the candidates of these models

    [[nodiscard]] bool IsOfLists() const noexcept { return !all && models.empty(); }
};

struct ExplainedSet {
    ChosenSet set;
    Fate fate = Fate::Recommended;
    std::int32_t reason = 0;                         ///< bits of the tests that it fails
    std::optional<std::string_view> transientClass;  ///< as `TransientClassOf`
    std::optional<double> loading;    ///< percent of the rating of all sets that the whole profile uses
    std::vector<StepVerdicts> steps;  ///< the tests of each step, in the order of `kStepTests`
    std::optional<Tightest> tightest;
};

struct Explanation {
    RunCounts counts;  ///< of all candidates
    std::vector<ExplainedSet> sets;
    std::vector<std::string> unknownModels;  ///< models asked for that no candidate has
    /// The first recommended set, and the next smaller one that falls short: of the undersized sets with a
    /// smaller nominal rating those with the largest, and of these the one that misses by least. Without a
    /// recommended set the largest undersized one.
    std::optional<ExplainedSet> first;
    std::optional<ExplainedSet> nextSmaller;
};

/// Percent of the rating of all sets that a running power uses; nothing where that is no number.
[[nodiscard]] std::optional<double> LoadingOf(const Candidate& set, double totalRunningKW) noexcept;

/// Judges every candidate of a site and explains those that are asked for.
/// @throws RaisedError as a run; StudyStopped.
[[nodiscard]] Explanation Explain(const std::shared_ptr<const SiteCandidates>& candidates,
                                  const CPwrSys& site, const CLoadProfile& profile,
                                  const DesignLimits& limits, const ExplainChoice& choice,
                                  const StopFlag& stop);

}  // namespace genvara
