#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Candidate.h"
#include "CandidateReader.h"
#include "DesignLimits.h"
#include "DesignResults.h"
#include "GensetSource.h"
#include "ProfileFigures.h"
#include "ResultList.h"
#include "SiteRequirements.h"
#include "StepJudge.h"

namespace genvara {

/// What the lists of a run show of the set that was judged last.
/// @param altNum model number of its alternator.
[[nodiscard]] ChosenSet RecordOf(const GensetNumbers& row, const SetNames& names, const std::string& altNum,
                                 const Candidate& set, const StepJudge& judge);

/// One run over the candidates of a site, row by row.
class DesignRun {
  public:
    /// All of these outlive the run.
    DesignRun(GensetSource& gensets, const SiteRequirements& site, const ProfileFigures& profile,
              const DesignLimits& limits);

    /// Takes one candidate through every step and files it: recommended, undersized, or dropped without a
    /// word because it passes everything and stays below its minimum loading.
    /// @throws RaisedError of the database, of a field that cannot be read, or of the arithmetic.
    void Judge(const GensetRow& row);

    /// Of the candidates judged so far.
    [[nodiscard]] const RunCounts& Counts() const noexcept { return m_counts; }
    [[nodiscard]] std::vector<ChosenSet> ReleaseChosen() { return m_chosen.Release(); }
    [[nodiscard]] std::vector<RejectedSet> ReleaseRejected() { return m_rejected.Release(); }
    /// The same of a run that ends early: not sorted yet. No more than would be shown are ever kept.
    [[nodiscard]] std::vector<ChosenSet> ReleaseUnsortedChosen() { return m_chosen.ReleaseUnsorted(); }
    [[nodiscard]] std::vector<RejectedSet> ReleaseUnsortedRejected() { return m_rejected.ReleaseUnsorted(); }

  private:
    [[nodiscard]] std::optional<Fate> FateWithoutRecord(const GensetRow& row, const Candidate& set);
    template <typename Record, typename Before>
    void File(const GensetRow& row, const Candidate& set, ResultList<Record, Before>& list,
              std::int32_t reason);

    const SiteRequirements* m_site;
    const ProfileFigures* m_profile;
    SourceTables m_tables;
    StepJudge m_judge;
    bool m_stepsCannotFail;
    ResultList<ChosenSet, std::less<>> m_chosen;
    ResultList<RejectedSet, std::greater<>> m_rejected;
    RunCounts m_counts;
};

}  // namespace genvara
