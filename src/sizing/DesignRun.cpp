#include "DesignRun.h"

#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>

#include "CDesigner.h"
#include "LanguageErrors.h"
#include "StepTests.h"

namespace genvara {
namespace {

constexpr std::string_view kChooseSets = "CDesigner::ChooseSets";
constexpr std::string_view kReadAlternator = "CDesigner::ReadAlternator";

/// The kept answer to a key; asked for at the first call.
template <typename Answer, typename Question>
Answer& Once(std::map<std::int32_t, Answer>& kept, std::int32_t key, Question question) {
    const auto found = kept.find(key);
    return found != kept.end() ? found->second : kept.emplace(key, question()).first->second;
}

bool SameCurve(const Candidate& one, const Candidate& other) noexcept {
    return one.baseFreqDipKW == other.baseFreqDipKW && one.baseFreqDip == other.baseFreqDip &&
           one.expC == other.expC;
}

}  // namespace

DesignRun::DesignRun(GensetSource& gensets, const CPwrSys& site, const SiteRequirements& requirements,
                     const ProfileFigures& profile, const DesignLimits& limits)
    : m_gensets(&gensets),
      m_site(&site),
      m_requirements(&requirements),
      m_profile(&profile),
      m_chosen(limits.MaxSetsRecommended(), std::less<>{}),
      m_rejected(limits.MaxSetsUndersized(), std::greater<>{}),
      m_outcomes(profile.steps.size()) {
    if (requirements.distortionValid) {
        m_distortions.reserve(profile.steps.size());
        for (const StepFigures& step : profile.steps) {
            m_distortions.emplace_back(step);
        }
    }
}

void DesignRun::Judge(const GensetRow& row) {
    ReadCandidate(row);
    m_worst = Worst{};
    std::int32_t reason = 0;
    for (std::size_t s = 0; s < m_outcomes.size(); ++s) {
        reason |= JudgeStep(s);
    }
    if (reason != 0) {
        File(row, m_rejected, reason);
        ++m_counts.undersized;
    } else if (!(m_requirements->minLoading * m_set.siteRating / 100.0 > m_profile->totalRunningKW)) {
        File(row, m_chosen, reason);
        ++m_counts.recommended;
    } else {
        ++m_counts.underloaded;
    }
}

void DesignRun::ReadCandidate(const GensetRow& row) {
    const double gensets = m_requirements->gensets;
    const std::int32_t derateCode = row.DerateCode.Integer(kChooseSets);
    m_set.nominalRating = NominalRatingOf(row, m_site->RiseDutyCode());
    const DerateFactors& factors = Once(m_derateFactors, derateCode, [&] {
        return FactorsAt(m_gensets->DerateCode(derateCode), m_site->AmbTemp(), m_site->Altitude());
    });
    m_set.deratedRating = DeratedRatingOf(m_set.nominalRating, factors);
    m_set.siteRating = Finite(gensets * m_set.deratedRating, kChooseSets);
    m_set.maxLoadKW = m_requirements->maxLoading * m_set.siteRating / 100.0;
    m_set.phaseRating = m_set.siteRating / m_requirements->phases;
    m_startKVA35 = row.LRkVA.Real(kChooseSets);
    m_set.siteStartKVA35 = Finite(gensets * m_startKVA35, kChooseSets);
    m_set.siteStartingPower = Finite(gensets * EngineStartingPowerOf(row, m_site->Fuel()), kChooseSets);
    ReadFrequencyDip(row);
    const std::int32_t alternatorId = row.AltModel.Integer(kChooseSets);
    m_alternator = &Once(m_alternators, alternatorId, [&] { return ReadAlternator(alternatorId); });
    m_set.hasDistortion = m_alternator->hasDistortion;
}

void DesignRun::ReadFrequencyDip(const GensetRow& row) {
    const Candidate before = m_set;
    m_set.baseFreqDipKW = 0.0;
    m_set.baseFreqDip = 0.0;
    m_set.expC = 0.0;
    if (!row.BaseFreqDipKW.IsNull() && !row.BaseFreqDip.IsNull() && !row.ExpC.IsNull()) {
        m_set.baseFreqDipKW = row.BaseFreqDipKW.Real(kChooseSets);
        m_set.baseFreqDip = row.BaseFreqDip.Real(kChooseSets);
        m_set.expC = row.ExpC.Real(kChooseSets);
    }
    // A set is offered with several alternators, one row after the other, and its curve is the engine's.
    m_sameFrequencyCurve = m_alternator != nullptr && SameCurve(before, m_set);
}

DesignRun::AlternatorRecord DesignRun::ReadAlternator(std::int32_t id) const {
    const AlternatorRow row = m_gensets->Alternator(id);
    AlternatorRecord record;
    record.ID = row.ID.Integer(kReadAlternator);
    record.ModelNum = CDesigner::TrimModelNum(row.ModelNum.Text(kReadAlternator));
    record.BasekW = row.BasekW.Real(kReadAlternator);
    record.BaseVolts = row.BaseVolts.Real(kReadAlternator);
    record.SubtransReact = row.SubtransReact.Real(kReadAlternator);
    record.hasDistortion = m_requirements->distortionValid && record.BasekW > 0.0 && record.BaseVolts > 0.0;
    if (record.hasDistortion) {
        const bool fixed = m_requirements->connectCode == kFixedScalingConnection;
        record.generatorPower = m_requirements->gensets * record.BasekW;
        record.generatorImpedance =
            ScaleReactance(record.SubtransReact, record.BaseVolts, m_requirements->voltage, fixed);
    }
    return record;
}

std::int32_t DesignRun::JudgeStep(std::size_t s) {
    const StepFigures& step = m_profile->steps[s];
    StepOutcome& outcome = m_outcomes[s];
    if (!m_sameFrequencyCurve) {
        outcome.freqDip = FrequencyDip(step, m_set);
    }
    outcome.voltDip = VoltageDip(step, m_set, outcome.freqDip);
    outcome.distortion = m_set.hasDistortion ? Distortion(s) : std::array<double, 3>{};
    KeepWorst(outcome);
    return FailedTests({.step = step, .set = m_set, .outcome = outcome, .site = *m_requirements});
}

const std::array<double, 3>& DesignRun::Distortion(std::size_t s) {
    if (m_alternator->distortion.size() == s) {
        m_alternator->distortion.push_back(
            m_distortions[s].On(m_alternator->generatorPower, m_alternator->generatorImpedance));
    }
    return m_alternator->distortion[s];
}

void DesignRun::KeepWorst(const StepOutcome& outcome) {
    m_worst.freqDip = std::max(m_worst.freqDip, outcome.freqDip);
    if (m_set.siteStartKVA35 > 0.0) {
        m_worst.voltDip = std::max(m_worst.voltDip, outcome.voltDip);
    }
    for (const double vthd : outcome.distortion) {
        m_worst.vthd = std::max(m_worst.vthd, vthd);
    }
}

/// Adds the candidate to a list, unless it would be cut off again. Fields that a record needs are read all
/// the same: a row that lacks one ends the run wherever it would stand in the list.
template <typename Record, typename Before>
void DesignRun::File(const GensetRow& row, ResultList<Record, Before>& list, std::int32_t reason) {
    const std::string& model = row.GensetModel.Text(kChooseSets);
    const std::string& engine = row.EngineModel.Text(kChooseSets);
    const std::int32_t fuelType = row.Fuel.Integer(kChooseSets);
    if (!list.Takes(m_set.deratedRating)) {
        return;
    }
    Record record;
    record.ModelNum = model;
    record.AltNum = m_alternator->ModelNum;
    record.EngineNum = engine;
    record.FuelType = fuelType;
    record.NominalRating = m_set.nominalRating;
    record.DeratedRating = m_set.deratedRating;
    record.StartingPower = row.StartingPower.Real(kChooseSets);
    record.StartKVA35 = m_startKVA35;
    for (const StepOutcome& outcome : m_outcomes) {
        record.VoltageDips.push_back(outcome.voltDip);
        record.FreqDips.push_back(outcome.freqDip);
        record.StepVTHD_A.push_back(outcome.distortion[0]);
        record.StepVTHD_B.push_back(outcome.distortion[1]);
        record.StepVTHD_C.push_back(outcome.distortion[2]);
    }
    record.MaxStepVoltDip = m_worst.voltDip;
    record.MaxStepFreqDip = m_worst.freqDip;
    record.MaxStepVTHD = m_worst.vthd;
    record.FreqDipAvail = HasFrequencyDip(m_set);
    record.figures = m_set;
    if constexpr (std::is_same_v<Record, RejectedSet>) {
        record.RejectionReason = reason;
    }
    list.Insert(std::move(record));
}

}  // namespace genvara
