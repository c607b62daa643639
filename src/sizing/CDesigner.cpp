#include "CDesigner.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "Derating.h"
#include "LanguageErrors.h"
#include "RaisedError.h"
#include "ResultList.h"
#include "StepDistortion.h"

namespace genvara {
namespace {

constexpr std::string_view kChooseSets = "CDesigner::ChooseSets";
constexpr std::string_view kReadAlternator = "CDesigner::ReadAlternator";

/// An alternator's data as the tests and the records take them.
struct AlternatorRecord {
    std::int32_t ID = 0;
    std::string ModelNum;
    double BasekW = 0.0;
    double BaseVolts = 0.0;
    double SubtransReact = 0.0;
};

/// The kept answer to a key; asked for at the first call.
template <typename Answer, typename Question>
const Answer& Once(std::map<std::int32_t, Answer>& kept, std::int32_t key, Question question) {
    const auto found = kept.find(key);
    return found != kept.end() ? found->second : kept.emplace(key, question()).first->second;
}

}  // namespace

/// One run over the candidates: what depends on the step alone is worked out before the first of them.
class CDesigner::Run {
  public:
    Run(CDesigner& designer, const ProfileFigures& figures)
        : m_designer(&designer),
          m_site(designer.m_requirements),
          m_steps(designer.m_steps),
          m_totalRunningKW(figures.totalRunningKW),
          m_chosen(designer.MaxSetsRecommended(), std::less<>{}),
          m_rejected(designer.MaxSetsUndersized(), std::greater<>{}) {
        m_outcomes.resize(m_steps.size());
        if (m_site.distortionValid) {
            m_distortions.reserve(m_steps.size());
            for (const StepFigures& step : m_steps) {
                m_distortions.emplace_back(step);
            }
        }
    }

    /// Takes one candidate through every step and files it.
    void Judge(const GensetRow& row) {
        ReadCandidate(row);
        m_worst = Worst{};
        std::int32_t reason = 0;
        for (std::size_t s = 0; s < m_steps.size(); ++s) {
            reason |= JudgeStep(s);
        }
        if (reason == 0) {
            // A set that passes everything and stays below its minimum loading is dropped without a word.
            if (!(m_site.minLoading * m_set.siteRating / 100.0 > m_totalRunningKW)) {
                File(row, m_chosen, [](ChosenSet&) {});
            }
            return;
        }
        File(row, m_rejected, [reason](RejectedSet& record) { record.RejectionReason = reason; });
    }

    void Finish() {
        m_designer->m_chosen = m_chosen.Release();
        m_designer->m_rejected = m_rejected.Release();
    }

  private:
    struct Worst {
        double voltDip = 0.0;
        double freqDip = 0.0;
        double vthd = 0.0;
        bool freqDipAvail = true;
    };

    void ReadCandidate(const GensetRow& row) {
        const CPwrSys& site = *m_designer->m_site;
        const std::int32_t derateCode = row.DerateCode.Integer(kChooseSets);
        m_set = Candidate{};
        m_set.nominalRating = NominalRatingOf(row, site.RiseDutyCode());
        const DerateFactors& factors = Once(m_derateFactors, derateCode, [&] {
            return FactorsAt(m_designer->m_gensets->DerateCode(derateCode), site.AmbTemp(), site.Altitude());
        });
        m_set.deratedRating = DeratedRatingOf(m_set.nominalRating, factors);
        m_set.siteRating = Finite(m_site.gensets * m_set.deratedRating, kChooseSets);
        m_startKVA35 = row.LRkVA.Real(kChooseSets);
        m_set.siteStartKVA35 = Finite(m_site.gensets * m_startKVA35, kChooseSets);
        m_set.siteStartingPower =
            Finite(m_site.gensets * EngineStartingPowerOf(row, site.Fuel()), kChooseSets);
        if (!row.BaseFreqDipKW.IsNull() && !row.BaseFreqDip.IsNull() && !row.ExpC.IsNull()) {
            m_set.baseFreqDipKW = row.BaseFreqDipKW.Real(kChooseSets);
            m_set.baseFreqDip = row.BaseFreqDip.Real(kChooseSets);
            m_set.expC = row.ExpC.Real(kChooseSets);
        }
        const std::int32_t alternatorId = row.AltModel.Integer(kChooseSets);
        m_alternator = &Once(m_alternators, alternatorId, [&] { return ReadAlternator(alternatorId); });
        ReadGenerator();
    }

    [[nodiscard]] AlternatorRecord ReadAlternator(std::int32_t id) const {
        const AlternatorRow row = m_designer->m_gensets->Alternator(id);
        return {.ID = row.ID.Integer(kReadAlternator),
                .ModelNum = TrimModelNum(row.ModelNum.Text(kReadAlternator)),
                .BasekW = row.BasekW.Real(kReadAlternator),
                .BaseVolts = row.BaseVolts.Real(kReadAlternator),
                .SubtransReact = row.SubtransReact.Real(kReadAlternator)};
    }

    void ReadGenerator() {
        m_set.hasDistortion =
            m_site.distortionValid && m_alternator->BasekW > 0.0 && m_alternator->BaseVolts > 0.0;
        if (m_set.hasDistortion) {
            const bool fixed = m_site.connectCode == kFixedScalingConnection;
            m_set.generatorPower = m_site.gensets * m_alternator->BasekW;
            m_set.generatorImpedance =
                ScaleReactance(m_alternator->SubtransReact, m_alternator->BaseVolts, m_site.voltage, fixed);
        }
    }

    /// Bits of the tests that the candidate fails at a step.
    std::int32_t JudgeStep(std::size_t s) {
        const StepFigures& step = m_steps[s];
        StepOutcome& outcome = m_outcomes[s];
        outcome.freqDip = FrequencyDip(step, m_set);
        outcome.voltDip = VoltageDip(step, m_set, outcome.freqDip);
        outcome.distortion = m_set.hasDistortion
                                 ? m_distortions[s].On(m_set.generatorPower, m_set.generatorImpedance)
                                 : std::array<double, 3>{};
        KeepWorst(outcome);
        const StepTrial trial{.step = step, .set = m_set, .outcome = outcome, .site = m_site};
        std::int32_t reason = 0;
        for (const StepTest& test : kStepTests) {
            reason |= test.judge(trial).Fails() ? test.bit : 0;
        }
        return reason;
    }

    void KeepWorst(const StepOutcome& outcome) {
        m_worst.freqDip = std::max(m_worst.freqDip, outcome.freqDip);
        m_worst.freqDipAvail = HasFrequencyDip(m_set);
        if (m_set.siteStartKVA35 > 0.0) {
            m_worst.voltDip = std::max(m_worst.voltDip, outcome.voltDip);
        }
        for (const double vthd : outcome.distortion) {
            m_worst.vthd = std::max(m_worst.vthd, vthd);
        }
    }

    /// Adds the candidate to a list, unless it would be cut off again. Fields that a record needs are read
    /// all the same: a row that lacks one ends the run wherever it would stand in the list.
    template <typename Record, typename Before, typename Completion>
    void File(const GensetRow& row, ResultList<Record, Before>& list, Completion complete) {
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
        record.FreqDipAvail = m_worst.freqDipAvail;
        record.figures = m_set;
        complete(record);
        list.Insert(std::move(record));
    }

    CDesigner* m_designer;
    const SiteRequirements& m_site;
    const std::vector<StepFigures>& m_steps;
    double m_totalRunningKW;
    std::vector<StepDistortion> m_distortions;
    std::map<std::int32_t, DerateFactors> m_derateFactors;
    std::map<std::int32_t, AlternatorRecord> m_alternators;
    ResultList<ChosenSet, std::less<>> m_chosen;
    ResultList<RejectedSet, std::greater<>> m_rejected;

    // Of the present candidate.
    Candidate m_set;
    double m_startKVA35 = 0.0;
    const AlternatorRecord* m_alternator = nullptr;
    std::vector<StepOutcome> m_outcomes;
    Worst m_worst;
};

CDesigner::CDesigner(GensetSource& gensets, const CPwrSys& site, const CLoadProfile& profile)
    : m_gensets(&gensets), m_site(&site), m_profile(&profile), m_properties(gensets.Properties()) {}

CDesigner::~CDesigner() = default;

void CDesigner::SelectGensets() {
    m_candidates = m_gensets->SelectGensets({.frequency = m_site->Freq(),
                                             .connectCode = m_site->ConnectCode(),
                                             .voltage = m_site->Voltage(),
                                             .fuel = m_site->Fuel()});
}

std::int32_t CDesigner::ChooseSets() {
    m_chosen.clear();
    m_rejected.clear();
    const std::unique_ptr<GensetCursor> candidates = std::move(m_candidates);
    const GensetRow* row = candidates ? candidates->Next() : nullptr;
    if (row == nullptr) {
        return 0;
    }
    m_vthdCalcsValid = HasDistortionModel(m_site->ConnectCode());
    m_requirements = ReadSite();
    ProfileFigures figures = FiguresOf(*m_profile, *m_site);
    m_totalRunningKW = figures.totalRunningKW;
    m_totalRunningKVAR = figures.totalRunningKVAR;
    m_peakStartingKVA = figures.peakStartingKVA;
    m_steps = std::move(figures.steps);
    Run run(*this, figures);
    for (; row != nullptr; row = candidates->Next()) {
        run.Judge(*row);
    }
    run.Finish();
    return NumChosenSets();
}

std::string CDesigner::TrimModelNum(std::string_view text) {
    return std::string(text.substr(0, text.find('-')));
}

SiteRequirements CDesigner::ReadSite() const {
    return {.gensets = static_cast<double>(m_site->GensetsInParallel()),
            .phases = static_cast<double>(m_site->Phases()),
            .voltage = static_cast<double>(m_site->Voltage()),
            .connectCode = m_site->ConnectCode(),
            .maxFreqDipEnabled = m_site->MaxFreqDipEnabled(),
            .maxFreqDip = static_cast<double>(m_site->MaxFreqDip()),
            .maxHarmonicsEnabled = m_site->MaxHarmonicsEnabled(),
            .maxHarmonics = static_cast<double>(m_site->MaxHarmonics()),
            .minLoading = MinLoading(),
            .maxLoading = MaxLoading(),
            .distortionValid = m_vthdCalcsValid};
}

}  // namespace genvara
