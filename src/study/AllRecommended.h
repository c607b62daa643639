#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "Variation.h"

/// Every set that does a changed project's job, and not the first of them alone.
namespace genvara {

/// What sizing a project comes to, with all recommended sets, however long a list may be.
struct AllSizing {
    std::shared_ptr<const SiteCandidates> candidates;
    std::vector<std::size_t> sets;     ///< positions among the candidates, smallest derated rating first
    std::optional<ChosenSet> first;    ///< the record of the first of them
    std::optional<Tightest> tightest;  ///< of that set
};

/// Sizes one project after the other. Of one thread.
class AllSizer {
  public:
    explicit AllSizer(const StudyTables& tables) : m_tables(&tables) {}

    /// The sets of a run of the designer whose list of recommended sets has no end.
    /// @throws RaisedError as `ProjectSizer::Size`.
    [[nodiscard]] AllSizing Size(const StudyProject& project);

  private:
    void FindSets(std::vector<std::size_t>& sets);

    const StudyTables* m_tables;
    PreparedSite m_prepared;
    ProfileFigures m_profile;
    StepJudge m_judge;
};

}  // namespace genvara
