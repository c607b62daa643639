#include "DesignRun.h"

#include <type_traits>
#include <utility>

#include "CannotFail.h"

namespace genvara {

ChosenSet RecordOf(const GensetNumbers& row, const SetNames& names, const std::string& altNum,
                   const Candidate& set, const StepJudge& judge) {
    ChosenSet record;
    record.ModelNum = names.model;
    record.AltNum = altNum;
    record.EngineNum = names.engine;
    record.FuelType = names.fuelType;
    record.NominalRating = set.nominalRating;
    record.DeratedRating = set.deratedRating;
    record.StartingPower = row.StartingPower.Real("CDesigner::ChooseSets");
    record.StartKVA35 = set.startKVA35;
    for (const StepOutcome& outcome : judge.Outcomes()) {
        record.VoltageDips.push_back(outcome.voltDip);
        record.FreqDips.push_back(outcome.freqDip);
        record.StepVTHD_A.push_back(outcome.distortion[0]);
        record.StepVTHD_B.push_back(outcome.distortion[1]);
        record.StepVTHD_C.push_back(outcome.distortion[2]);
    }
    record.MaxStepVoltDip = judge.WorstFigures().voltDip;
    record.MaxStepFreqDip = judge.WorstFigures().freqDip;
    record.MaxStepVTHD = judge.WorstFigures().vthd;
    record.FreqDipAvail = HasFrequencyDip(set);
    record.figures = set;
    return record;
}

DesignRun::DesignRun(GensetSource& gensets, const SiteRequirements& site, const ProfileFigures& profile,
                     const DesignLimits& limits)
    : m_site(&site),
      m_profile(&profile),
      m_tables(gensets, site),
      m_stepsCannotFail(CannotFail(profile)),
      m_chosen(limits.MaxSetsRecommended(), std::less<>{}),
      m_rejected(limits.MaxSetsUndersized(), std::greater<>{}) {
    m_judge.Begin(site, profile);
}

void DesignRun::Judge(const GensetRow& row) {
    const Candidate set = CandidateAt(row, *m_site, m_tables);
    if (ChangesNothing(row, set)) {
        return;
    }
    const std::int32_t reason = m_judge.Judge(set);
    switch (FateOf(reason, set, *m_site, *m_profile)) {
        case Fate::Recommended:
            File(row, set, m_chosen, reason);
            break;
        case Fate::Undersized:
            File(row, set, m_rejected, reason);
            break;
        case Fate::BelowMinLoading:
            break;
    }
}

/// Whether the list that the set belongs to has no room for it, and nothing of it can raise: most of a large
/// catalogue is of this kind once the lists are full, and its figures are not worked out.
bool DesignRun::ChangesNothing(const GensetRow& row, const Candidate& set) {
    const bool chosen = m_chosen.Takes(set.deratedRating);
    const bool rejected = m_rejected.Takes(set.deratedRating);
    if ((chosen && rejected) || !m_stepsCannotFail || !CannotFail(set) || !HasNames(row, row)) {
        return false;
    }
    return chosen == rejected || m_judge.Passes(set) == rejected;
}

/// Adds the candidate to a list, unless it would be cut off again. Names that a record needs are read all
/// the same: a row that lacks one ends the run wherever it would stand in the list.
template <typename Record, typename Before>
void DesignRun::File(const GensetRow& row, const Candidate& set, ResultList<Record, Before>& list,
                     std::int32_t reason) {
    const SetNames names = NamesOf(row, row);
    if (!list.Takes(set.deratedRating)) {
        return;
    }
    Record record{RecordOf(row, names, m_tables.ModelNum(set.alternator), set, m_judge)};
    if constexpr (std::is_same_v<Record, RejectedSet>) {
        record.RejectionReason = reason;
    }
    list.Insert(std::move(record));
}

}  // namespace genvara
