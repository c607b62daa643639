#include "OrderJudge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>

#include "CannotFail.h"
#include "RaisedError.h"

namespace genvara {
namespace {

/// Groups whose figures are kept; more would only fill the memory.
constexpr std::size_t kMostKept = 200000;
/// Sums of the same powers in another order differ by less, and so what fails by more fails in any order.
constexpr double kAnyOrder = 1e-9;

bool FailsClearly(const Verdict& verdict) {
    return verdict.applies && verdict.needed > verdict.available + kAnyOrder * std::abs(verdict.available);
}

bool IsNotNegative(const StepFigures& own) {
    const auto holds = [](const auto& figures) {
        return std::ranges::all_of(figures, [](double figure) { return figure >= 0.0; });
    };
    return holds(own.runKW) && holds(own.runKVAR) && own.stepStartKW >= 0.0 && own.startKVAR >= 0.0;
}

}  // namespace

OrderJudge::OrderJudge(const StudyProject& project, const OrderItems& items, const StudyTables& tables)
    : m_project(&project),
      m_site(&project.powerSystem),
      m_items(&items),
      m_candidates(tables.candidates.Of(FilterOf(project.powerSystem))) {
    m_prepared.Prepare(m_candidates, RequirementsOf(project.powerSystem, project.limits));
    m_oneStep.steps.resize(1);
}

const StepFigures& OrderJudge::Own(const ItemGroup& group) {
    const auto found = m_own.find(group);
    if (found != m_own.end()) {
        return found->second;
    }
    if (m_own.size() >= kMostKept) {
        m_own.clear();
    }
    return m_own.emplace(group, OwnFigures(StepOf(group), *m_site)).first->second;
}

/// The step that a group makes, by the limit that `Reordered` gives it.
CLoadStep OrderJudge::StepOf(const ItemGroup& group) const {
    const CLoadProfile& profile = m_project->loadProfile;
    CLoadStep made;
    std::int32_t dip = kStepVoltageDip.greatest;
    for (const LoadPlace& place : m_items->LoadsOf(group)) {
        const CLoadStep& step = profile.LoadStep(place.step);
        dip = std::min(dip, step.MaxVoltageDipOverride());
        made.AddLoad(std::next(step.begin(), place.load - 1)->Clone());
    }
    made.MaxVoltageDipOverride(dip);
    return made;
}

const ProfileFigures& OrderJudge::FiguresOf(const Arrangement& arrangement) {
    m_figures.steps.clear();
    StepFigures before;
    for (const ItemGroup& group : arrangement) {
        before = FiguresOn(Own(group), before);
        m_figures.steps.push_back(before);
    }
    m_figures.totalRunningKW = before.runKW[0];
    m_figures.totalRunningKVAR = before.runKVAR[0];
    return m_figures;
}

std::optional<double> OrderJudge::Total(const ProfileFigures& figures) {
    try {
        const SearchAnswer answer =
            m_search.Find(m_candidates, *m_site, figures, m_project->limits, DesignSearch::Goal::First);
        return answer.first ? std::optional(TotalRating(answer.nominalRating, *m_site)) : std::nullopt;
    } catch (const RaisedError&) {
        return std::nullopt;  // an order whose run fails is none
    }
}

CatalogueRow OrderJudge::RowOf(std::uint32_t candidate) const {
    const Candidate& set = Sets()[candidate];
    const GensetTexts& texts = m_candidates->Texts(candidate);
    const auto text = [](const DbText& field) {
        return field.IsNull() ? std::string() : field.Text("FindOrder");
    };
    return {.ModelNum = text(texts.GensetModel),
            .AltNum = m_prepared.ModelNum(set.alternator),
            .EngineNum = text(texts.EngineModel),
            .NominalRating = set.nominalRating,
            .DeratedRating = set.deratedRating};
}

std::vector<std::uint32_t> OrderJudge::Passing(const StepFigures& step,
                                               const std::vector<std::uint32_t>& candidates) {
    m_oneStep.steps.front() = step;
    m_judge.Begin(m_prepared.Site(), m_oneStep);
    const bool isOrdinary = CannotFail(m_oneStep);
    std::vector<std::uint32_t> passing;
    for (const std::uint32_t candidate : candidates) {
        const Candidate& set = Sets()[candidate];
        if (!isOrdinary || !CannotFail(set) || m_judge.Passes(set)) {
            passing.push_back(candidate);
        }
    }
    return passing;
}

bool OrderJudge::IsExcluded(std::uint32_t candidate) {
    try {
        const Candidate& set = Sets()[candidate];
        // Only powers that others cannot make less, and dips that grow with them, prove anything.
        return CannotFail(set) && set.baseFreqDip >= 0.0 && HasOnlyPowers() &&
               (FailsAtTheEnd(set) || FailsToStart(set));
    } catch (const RaisedError&) {
        return false;
    }
}

bool OrderJudge::HasOnlyPowers() {
    for (std::uint32_t item = 0; item < m_items->Size(); ++item) {
        if (!IsNotNegative(Own({item}))) {
            return false;
        }
    }
    return true;
}

/// Whatever the order, all of the load runs in the end.
bool OrderJudge::FailsAtTheEnd(const Candidate& set) {
    StepFigures end;
    for (std::uint32_t item = 0; item < m_items->Size(); ++item) {
        end = FiguresOn(Own({item}), end);
    }
    const StepOutcome none;
    const StepTrial trial{.step = end, .set = set, .outcome = none, .site = m_prepared.Site()};
    const double least = m_prepared.Site().minLoading * set.siteRating / 100.0;
    return FailsClearly(Rating(trial)) || FailsClearly(MaximumLoading(trial)) ||
           FailsClearly(PhaseLoading(trial)) || least > end.runKW[0] + kAnyOrder * std::abs(end.runKW[0]);
}

/// An item starts alone at best, on top of nothing, within the widest dip that it may have.
bool OrderJudge::FailsToStart(const Candidate& set) {
    ItemGroup all(m_items->Size());
    std::iota(all.begin(), all.end(), 0U);
    return std::ranges::any_of(all, [&](std::uint32_t item) {
        const StepFigures start = FiguresOn(Own({item}), {});
        m_oneStep.steps.front() = start;
        if (!CannotFail(m_oneStep)) {
            return false;
        }
        StepOutcome outcome;
        outcome.freqDip = FrequencyDip(start, set);
        outcome.voltDip = VoltageDip(start, set, outcome.freqDip);
        const StepTrial trial{.step = start, .set = set, .outcome = outcome, .site = m_prepared.Site()};
        const std::array verdicts{EngineStart(trial), OneStepCapability(trial), AllowedFrequencyDip(trial),
                                  AlternatorStart(trial), AllowedVoltageDip(trial)};
        return std::ranges::any_of(verdicts, FailsClearly);
    });
}

}  // namespace genvara
