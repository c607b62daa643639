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
    if (const std::optional<Fate> fate = FateWithoutRecord(row, set)) {
        Count(m_counts, *fate);
        return;
    }
    const std::int32_t reason = m_judge.Judge(set);
    const Fate fate = FateOf(reason, set, *m_site, *m_profile);
    if (fate == Fate::Recommended) {
        File(row, set, m_chosen, reason);
    } else if (fate == Fate::Undersized) {
        File(row, set, m_rejected, reason);
    }
    Count(m_counts, fate);
}

/// The fate of a set if the list that it belongs to has no room for it and nothing of it can raise: most of a
/// large catalogue is of this kind once the lists are full, and its figures are not worked out.
std::optional<Fate> DesignRun::FateWithoutRecord(const GensetRow& row, const Candidate& set) {
    const bool chosen = m_chosen.Takes(set.deratedRating);
    const bool rejected = m_rejected.Takes(set.deratedRating);
    if ((chosen && rejected) || !m_stepsCannotFail || !CannotFail(set) || !HasNames(row, row)) {
        return std::nullopt;
    }
    if (!m_judge.Passes(set)) {
        return rejected ? std::nullopt : std::optional(Fate::Undersized);
    }
    const Fate fate = FateOf(0, set, *m_site, *m_profile);
    return chosen && fate == Fate::Recommended ? std::nullopt : std::optional(fate);
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
