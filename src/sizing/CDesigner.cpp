#include "CDesigner.h"

#include <utility>

#include "DesignRun.h"
#include "StepDistortion.h"

namespace genvara {
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
    m_counts = {};
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
        run.Judge(*row);
    }
    m_chosen = run.ReleaseChosen();
    m_rejected = run.ReleaseRejected();
    m_counts = run.Counts();
    return NumChosenSets();
}

std::string CDesigner::TrimModelNum(std::string_view text) {
    return std::string(text.substr(0, text.find('-')));
}

}  // namespace genvara
