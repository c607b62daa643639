#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "CPwrSys.h"
#include "DesignLimits.h"
#include "DesignResults.h"
#include "Margins.h"
#include "PreparedSite.h"
#include "ProfileFigures.h"
#include "SiteCandidates.h"
#include "StepJudge.h"

namespace genvara {

/// What a run comes to, without its lists: the answer for one of thousands of variations.
struct SearchAnswer {
    std::optional<std::size_t> first;  ///< position of the first recommended set among the candidates
    double nominalRating = 0.0;        ///< of that set [kW]
    std::optional<Tightest> tightest;  ///< of that set
    std::int32_t numChosenSets = 0;  ///< after the cut to the list's limit; 1 at most where one was asked for
};

/// Finds the first recommended set of one variation after the other, over candidates in memory. The answer is
/// that of a run of `CDesigner`, to the last bit, and so is the failure. Of one thread; each thread has its
/// own.
class DesignSearch {
  public:
    /// How far a search goes.
    enum class Goal : std::uint8_t {
        Count,  ///< every set that the list of recommended ones would show
        First,  ///< the first of them
    };

    /// The figures are those of the profile at this site.
    /// @throws RaisedError of a run.
    [[nodiscard]] SearchAnswer Find(const std::shared_ptr<const SiteCandidates>& candidates,
                                    const CPwrSys& site, const ProfileFigures& profile,
                                    const DesignLimits& limits, Goal goal);

    /// The record of a candidate of the search before, as the list of recommended sets has it.
    [[nodiscard]] ChosenSet RecordAt(std::size_t candidate);

  private:
    void FindSmallestFirst(SearchAnswer& answer, std::int32_t limit);
    void FindInOrder(SearchAnswer& answer, std::int32_t limit);
    [[nodiscard]] std::optional<Tightest> TightestAt(std::size_t candidate);

    PreparedSite m_prepared;
    ProfileFigures m_profile;
    StepJudge m_judge;
};

}  // namespace genvara
