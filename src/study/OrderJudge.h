#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "DesignSearch.h"
#include "OrderItems.h"
#include "PreparedSite.h"
#include "StepJudge.h"

namespace genvara {

/// Judges arrangements of a project's loads by the tests of a run. Of one thread.
class OrderJudge {
  public:
    /// The project outlives the judge.
    OrderJudge(const StudyProject& project, const OrderItems& items, const StudyTables& tables);

    /// What a group of items brings to its step, worked out once.
    /// @throws RaisedError of a load.
    [[nodiscard]] const StepFigures& Own(const ItemGroup& group);
    /// The figures of all steps.
    /// @throws RaisedError of a load or a sum.
    [[nodiscard]] const ProfileFigures& FiguresOf(const Arrangement& arrangement);

    /// Rating of all sets of the first recommended one [kW]; nothing where there is none, or the run fails.
    [[nodiscard]] std::optional<double> Total(const ProfileFigures& figures);

    [[nodiscard]] const SiteRequirements& Site() const noexcept { return m_prepared.Site(); }
    /// The candidates, in the order of the catalogue.
    [[nodiscard]] const std::vector<Candidate>& Sets() const noexcept { return m_prepared.Sets(); }
    [[nodiscard]] double TotalOf(std::uint32_t candidate) const {
        return TotalRating(Sets()[candidate].nominalRating, *m_site);
    }
    [[nodiscard]] CatalogueRow RowOf(std::uint32_t candidate) const;

    /// Those of some candidates that pass all tests of one step; one that cannot be judged is kept.
    [[nodiscard]] std::vector<std::uint32_t> Passing(const StepFigures& step,
                                                     const std::vector<std::uint32_t>& candidates);
    /// Whether no arrangement whatever does with a candidate: the whole load overloads or hardly loads it, or
    /// an item alone is too much for it to start.
    [[nodiscard]] bool IsExcluded(std::uint32_t candidate);

  private:
    [[nodiscard]] CLoadStep StepOf(const ItemGroup& group) const;
    [[nodiscard]] bool HasOnlyPowers();
    [[nodiscard]] bool FailsAtTheEnd(const Candidate& set);
    [[nodiscard]] bool FailsToStart(const Candidate& set);

    const StudyProject* m_project;
    const CPwrSys* m_site;
    const OrderItems* m_items;
    std::shared_ptr<const SiteCandidates> m_candidates;
    DesignSearch m_search;
    PreparedSite m_prepared;
    StepJudge m_judge;
    std::map<ItemGroup, StepFigures> m_own;
    ProfileFigures m_figures;
    ProfileFigures m_oneStep;
};

}  // namespace genvara
