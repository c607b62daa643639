#include "ChargerEntry.h"

#include "LoadKinds.h"

namespace genvara {

ChargerEntry::ChargerEntry(std::int32_t shownPhases, std::int32_t sitePhases)
    : m_threePhaseSite(sitePhases == 3) {
    const PhaseChoice choice = PhasesOffered(shownPhases);
    m_state.phases = choice.selected;
    m_state.threePhaseEnabled = !choice.single;
    m_state.residentialEnabled = choice.single;
}

void ChargerEntry::PhasesClicked(std::int32_t code) {
    if (code == m_state.phases) {
        return;
    }
    m_state.phases = code;
    if (code != 0) {
        m_state.residentialEnabled = true;
        return;
    }
    if (m_state.application == charger_type::kResidential) {
        ApplicationClicked(charger_type::kIndustrial);
    }
    m_state.residentialEnabled = false;
}

void ChargerEntry::ApplicationClicked(std::int32_t code) {
    switch (code) {
        case charger_type::kResidential:
            m_state.application = code;
            if (m_state.phases == 0) {
                PhasesClicked(1);
            }
            m_state.threePhaseEnabled = false;
            m_state.inputEnabled = false;
            break;
        case charger_type::kIndustrial:
        case charger_type::kTelecom:
            m_state.application = code;
            m_state.threePhaseEnabled = m_state.threePhaseEnabled || m_threePhaseSite;
            m_state.inputEnabled = code == charger_type::kIndustrial;
            break;
        default:
            break;
    }
}

void ChargerEntry::ApplicationShown(std::int32_t code) {
    if (code != m_state.application) {
        ApplicationClicked(code);
    }
    m_state.inputEnabled = code == charger_type::kIndustrial;
}

}  // namespace genvara
