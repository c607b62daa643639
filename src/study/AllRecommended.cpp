#include "AllRecommended.h"

#include <algorithm>

#include "CannotFail.h"
#include "DesignRun.h"
#include "JudgeInOrder.h"
#include "WorkOutLoads.h"

namespace genvara {

AllSizing AllSizer::Size(const StudyProject& project) {
    RequireSizable(project, m_tables->rules);
    const CPwrSys& site = project.powerSystem;
    AllSizing sizing;
    sizing.candidates = m_tables->candidates.Of(FilterOf(site));
    m_profile = sizing.candidates->Rows().empty() ? ProfileFigures{} : FiguresOf(project.loadProfile, site);
    m_prepared.Prepare(sizing.candidates, RequirementsOf(site, project.limits));
    m_judge.Begin(m_prepared.Site(), m_profile);
    FindSets(sizing.sets);
    if (!sizing.sets.empty()) {
        const std::size_t first = sizing.sets.front();
        const Candidate& set = m_prepared.Sets()[first];
        m_judge.Judge(set);
        sizing.tightest = m_judge.TightestOf(set);
        sizing.first = RecordOf(m_prepared.Candidates().Rows()[first], m_prepared.NamesOf(first),
                                m_prepared.ModelNum(set.alternator), set, m_judge);
    }
    WorkOutLoads(project.loadProfile);
    return sizing;
}

void AllSizer::FindSets(std::vector<std::size_t>& sets) {
    if (CannotFail(m_profile) && !m_prepared.SmallestFirst().empty()) {
        // Behind a set that is too large for the load stand only larger ones.
        for (const std::uint32_t candidate : m_prepared.SmallestFirst()) {
            const Candidate& set = m_prepared.Sets()[candidate];
            if (FateOf(0, set, m_prepared.Site(), m_profile) == Fate::BelowMinLoading) {
                break;
            }
            if (m_judge.Passes(set)) {
                sets.push_back(candidate);
            }
        }
        return;
    }
    JudgeInOrder(m_prepared, m_profile, m_judge, [&](std::size_t i, Fate fate, std::int32_t /*reason*/) {
        if (fate == Fate::Recommended) {
            sets.push_back(i);
        }
    });
    const std::vector<Candidate>& figures = m_prepared.Sets();
    std::ranges::stable_sort(sets, [&figures](std::size_t left, std::size_t right) {
        return figures[left].deratedRating < figures[right].deratedRating;
    });
}

}  // namespace genvara
