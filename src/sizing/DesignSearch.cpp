#include "DesignSearch.h"

#include <algorithm>

#include "CannotFail.h"
#include "DesignRun.h"
#include "JudgeInOrder.h"

namespace genvara {

SearchAnswer DesignSearch::Find(const std::shared_ptr<const SiteCandidates>& candidates, const CPwrSys& site,
                                const ProfileFigures& profile, const DesignLimits& limits, Goal goal) {
    m_profile = profile;
    m_prepared.Prepare(candidates, RequirementsOf(site, limits));
    m_judge.Begin(m_prepared.Site(), m_profile);
    const std::int32_t listed = std::max(limits.MaxSetsRecommended(), 0);
    const std::int32_t limit = goal == Goal::First ? std::min(listed, 1) : listed;
    SearchAnswer answer;
    if (CannotFail(m_profile) && !m_prepared.SmallestFirst().empty()) {
        FindSmallestFirst(answer, limit);
    } else {
        FindInOrder(answer, limit);
    }
    if (answer.first) {
        answer.nominalRating = m_prepared.Sets()[*answer.first].nominalRating;
        answer.tightest = TightestAt(*answer.first);
    }
    return answer;
}

ChosenSet DesignSearch::RecordAt(std::size_t candidate) {
    const Candidate& set = m_prepared.Sets()[candidate];
    m_judge.Judge(set);
    return RecordOf(m_prepared.Candidates().Rows()[candidate], m_prepared.NamesOf(candidate),
                    m_prepared.ModelNum(set.alternator), set, m_judge);
}

/// The list is full, or begins with a set, as soon as that many have passed; and behind a set that is too
/// large for the load stand only larger ones.
void DesignSearch::FindSmallestFirst(SearchAnswer& answer, std::int32_t limit) {
    for (const std::uint32_t candidate : m_prepared.SmallestFirst()) {
        const Candidate& set = m_prepared.Sets()[candidate];
        const bool tooLarge = FateOf(0, set, m_prepared.Site(), m_profile) == Fate::BelowMinLoading;
        if (tooLarge || answer.numChosenSets == limit) {
            break;
        }
        if (m_judge.Passes(set)) {
            answer.first = answer.first.value_or(candidate);
            ++answer.numChosenSets;
        }
    }
}

void DesignSearch::FindInOrder(SearchAnswer& answer, std::int32_t limit) {
    std::optional<std::size_t> smallest;
    JudgeInOrder(m_prepared, m_profile, m_judge, [&](std::size_t i, Fate fate, std::int32_t /*reason*/) {
        if (fate != Fate::Recommended) {
            return;
        }
        const std::vector<Candidate>& sets = m_prepared.Sets();
        if (!smallest || sets[i].deratedRating < sets[*smallest].deratedRating) {
            smallest = i;
        }
        answer.numChosenSets = std::min(answer.numChosenSets + 1, limit);
    });
    if (limit > 0) {
        answer.first = smallest;
    }
}

std::optional<Tightest> DesignSearch::TightestAt(std::size_t candidate) {
    const Candidate& set = m_prepared.Sets()[candidate];
    m_judge.Judge(set);
    return m_judge.TightestOf(set);
}

}  // namespace genvara
