#include "UPSEntry.h"

#include "LoadKinds.h"

namespace genvara {

UPSEntry::UPSEntry(std::int32_t systemPhases) : m_singlePhaseSystem(PhasesOffered(systemPhases).single) {
    m_state.phases = PhasesOffered(systemPhases).selected;
    m_state.phasesEnabled[static_cast<std::size_t>(m_state.phases)] = true;
    m_state.family = m_singlePhaseSystem ? ups_family::kOffLine : ups_family::kFastTransfer;
    m_state.fastTransferEnabled = !m_singlePhaseSystem;
}

void UPSEntry::PhasesClicked(std::int32_t code) {
    if (code == m_state.phases) {
        return;
    }
    m_state.phases = code;
    if (code == 0) {
        ThreePhaseClicked();
    } else {
        SinglePhaseClicked();
    }
}

void UPSEntry::ThreePhaseClicked() {
    m_state.typeEnabled = m_state.family == ups_family::kOnLine;
    m_state.filterEnabled = true;
    m_state.fastTransferEnabled = true;
}

void UPSEntry::SinglePhaseClicked() {
    m_state.typeEnabled = false;
    m_state.filterEnabled = false;
    if (m_state.family == ups_family::kFastTransfer) {
        m_state.fastTransferEnabled = false;
        FamilyClicked(ups_family::kOffLine);
    }
}

void UPSEntry::FamilyClicked(std::int32_t code) {
    switch (code) {
        case ups_family::kFastTransfer:
            m_state.family = code;
            FastTransferClicked();
            break;
        case ups_family::kOffLine:
            m_state.family = code;
            OffLineClicked();
            break;
        case ups_family::kOnLine:
            m_state.family = code;
            OnLineClicked();
            break;
        default:
            break;
    }
}

void UPSEntry::FastTransferClicked() {
    PhasesClicked(0);
    for (const std::size_t code : {1U, 2U, 3U}) {
        m_state.phasesEnabled[code] = false;
    }
    m_state.powerEnabled = false;
    m_state.typeEnabled = false;
    m_state.filterEnabled = false;
    m_state.warningVisible = true;
}

void UPSEntry::OffLineClicked() {
    OfferSinglePhases();
    m_state.powerEnabled = false;
    m_state.typeEnabled = false;
    m_state.filterEnabled = m_state.phases == 0;
    m_state.warningVisible = true;
}

void UPSEntry::OnLineClicked() {
    OfferSinglePhases();
    m_state.powerEnabled = true;
    m_state.typeEnabled = m_state.phases == 0;
    m_state.filterEnabled = m_state.phases == 0;
    m_state.warningVisible = false;
}

void UPSEntry::OfferSinglePhases() {
    m_state.phasesEnabled[1] = true;
    if (m_singlePhaseSystem) {
        PhasesClicked(1);
    } else {
        m_state.phasesEnabled[2] = true;
        m_state.phasesEnabled[3] = true;
    }
}

}  // namespace genvara
