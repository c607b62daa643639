#include "CandidateReader.h"

#include <string_view>

#include "CDesigner.h"
#include "LanguageErrors.h"
#include "StepDistortion.h"

namespace genvara {
namespace {

constexpr std::string_view kChooseSets = "CDesigner::ChooseSets";

/// The three fields of the curve stand or fall together: without one of them a row has none.
void ReadFrequencyDip(const GensetNumbers& row, Candidate& set) {
    if (!row.BaseFreqDipKW.IsNull() && !row.BaseFreqDip.IsNull() && !row.ExpC.IsNull()) {
        set.baseFreqDipKW = row.BaseFreqDipKW.Real(kChooseSets);
        set.baseFreqDip = row.BaseFreqDip.Real(kChooseSets);
        set.expC = row.ExpC.Real(kChooseSets);
    }
}

}  // namespace

AlternatorData AlternatorDataOf(const AlternatorRow& row) {
    constexpr std::string_view kMember = "CDesigner::ReadAlternator";
    (void)row.ID.Integer(kMember);  // nobody needs it, but a row without it is not read
    AlternatorData data;
    data.ModelNum = CDesigner::TrimModelNum(row.ModelNum.Text(kMember));
    data.BasekW = row.BasekW.Real(kMember);
    data.BaseVolts = row.BaseVolts.Real(kMember);
    data.SubtransReact = row.SubtransReact.Real(kMember);
    return data;
}

AlternatorOnSite AlternatorAt(const AlternatorData& alternator, const SiteRequirements& site,
                              std::size_t position) {
    AlternatorOnSite placed{.position = position};
    placed.hasDistortion = site.distortionValid && alternator.BasekW > 0.0 && alternator.BaseVolts > 0.0;
    if (placed.hasDistortion) {
        const bool fixed = site.connectCode == kFixedScalingConnection;
        placed.generatorPower = site.gensets * alternator.BasekW;
        placed.generatorImpedance =
            ScaleReactance(alternator.SubtransReact, alternator.BaseVolts, site.voltage, fixed);
    }
    return placed;
}

const DerateFactors& SourceTables::Derate(std::int32_t key) {
    const auto found = m_derateFactors.find(key);
    if (found != m_derateFactors.end()) {
        return found->second;
    }
    const DerateFactors factors = FactorsAt(m_gensets->DerateCode(key), m_site->ambTemp, m_site->altitude);
    return m_derateFactors.emplace(key, factors).first->second;
}

const AlternatorOnSite& SourceTables::Alternator(std::int32_t key) {
    const auto found = m_alternators.find(key);
    if (found != m_alternators.end()) {
        return found->second;
    }
    const AlternatorData data = AlternatorDataOf(m_gensets->Alternator(key));
    const AlternatorOnSite placed = AlternatorAt(data, *m_site, m_models.size());
    m_models.push_back(data.ModelNum);
    return m_alternators.emplace(key, placed).first->second;
}

Candidate CandidateAt(const GensetNumbers& row, const SiteRequirements& site, SiteTables& tables) {
    Candidate set;
    const std::int32_t derateCode = row.DerateCode.Integer(kChooseSets);
    set.nominalRating = NominalRatingOf(row, site.riseDutyCode);
    set.deratedRating = DeratedRatingOf(set.nominalRating, tables.Derate(derateCode));
    set.siteRating = Finite(site.gensets * set.deratedRating, kChooseSets);
    set.maxLoadKW = site.maxLoading * set.siteRating / 100.0;
    set.phaseRating = set.siteRating / site.phases;
    set.startKVA35 = row.LRkVA.Real(kChooseSets);
    set.siteStartKVA35 = Finite(site.gensets * set.startKVA35, kChooseSets);
    set.siteStartingPower = Finite(site.gensets * EngineStartingPowerOf(row, site.fuel), kChooseSets);
    ReadFrequencyDip(row, set);
    const AlternatorOnSite& alternator = tables.Alternator(row.AltModel.Integer(kChooseSets));
    set.hasDistortion = alternator.hasDistortion;
    set.generatorPower = alternator.generatorPower;
    set.generatorImpedance = alternator.generatorImpedance;
    set.alternator = alternator.position;
    return set;
}

SetNames NamesOf(const GensetNumbers& row, const GensetTexts& texts) {
    return {.model = texts.GensetModel.Text(kChooseSets),
            .engine = texts.EngineModel.Text(kChooseSets),
            .fuelType = row.Fuel.Integer(kChooseSets)};
}

bool HasNames(const GensetNumbers& row, const GensetTexts& texts) noexcept {
    return !texts.GensetModel.IsNull() && !texts.EngineModel.IsNull() && row.Fuel.IsInteger();
}

}  // namespace genvara
