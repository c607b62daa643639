#include "CDesigner.h"

#include <utility>

#include "DesignRun.h"
#include "FailureRegion.h"
#include "SiteCandidates.h"
#include "StepDistortion.h"

namespace genvara {
CDesigner::CDesigner(GensetSource& gensets, const CPwrSys& site, const CLoadProfile& profile)
    : m_gensets(&gensets), m_site(&site), m_profile(&profile), m_properties(gensets.Properties()) {}

CDesigner::~CDesigner() = default;

void CDesigner::SelectGensets() {
    m_stoppedAt.reset();
    m_candidates = m_gensets->SelectGensets(FilterOf(*m_site));
}

std::int32_t CDesigner::ChooseSets() {
    m_chosen.clear();
    m_rejected.clear();
    m_counts = {};
    m_stoppedAt.reset();
    const std::unique_ptr<GensetCursor> candidates = std::move(m_candidates);
    const GensetRow* row = candidates ? candidates->Next() : nullptr;
    if (row == nullptr) {
        return 0;
    }
    m_vthdCalcsValid = HasDistortionModel(m_site->ConnectCode());
    m_requirements = RequirementsOf(*m_site, *this);
    m_figures = FiguresOf(*m_profile, *m_site);
    DesignRun run(*m_gensets, m_requirements, m_figures, *this);
    for (; row != nullptr; row = candidates->Next()) {
        try {
            run.Judge(*row);
        } catch (const RaisedError&) {
            m_stoppedAt = Describe(*row, run.Counts().Candidates());
            m_chosen = run.ReleaseUnsortedChosen();
            m_rejected = run.ReleaseUnsortedRejected();
            m_counts = run.Counts();
            throw;
        }
    }
    m_chosen = run.ReleaseChosen();
    m_rejected = run.ReleaseRejected();
    m_counts = run.Counts();
    return NumChosenSets();
}

CDesigner::Results CDesigner::LastRun() const {
    return {.chosen = m_chosen,
            .rejected = m_rejected,
            .requirements = m_requirements,
            .figures = m_figures,
            .counts = m_counts,
            .vthdCalcsValid = m_vthdCalcsValid};
}

void CDesigner::LastRun(Results results) {
    m_chosen = std::move(results.chosen);
    m_rejected = std::move(results.rejected);
    m_requirements = results.requirements;
    m_figures = std::move(results.figures);
    m_counts = results.counts;
    m_vthdCalcsValid = results.vthdCalcsValid;
}

void CDesigner::ForgetRun() {
    m_candidates.reset();
    m_stoppedAt.reset();
    LastRun({});
}

std::string CDesigner::TrimModelNum(std::string_view text) {
    return std::string(text.substr(0, text.find('-')));
}

SetAtFault CDesigner::Describe(const GensetRow& row, std::int64_t position) const {
    constexpr std::string_view kMember = "CDesigner::Describe";
    SetAtFault set;
    set.row = m_gensets->RowNumber(FilterOf(*m_site), position);
    // Any field may be the one that cannot be read.
    FailureRegion region;
    region.Run([&] { set.model = row.GensetModel.Text(kMember); });
    region.Run([&] {
        const std::int32_t id = row.AltModel.Integer(kMember);
        set.alternator = std::to_string(id);
        set.alternator = m_gensets->Alternator(id).ModelNum.Text(kMember);
    });
    return set;
}

}  // namespace genvara
