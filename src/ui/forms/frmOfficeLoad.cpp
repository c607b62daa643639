#include "frmOfficeLoad.h"

#include <cstdint>
#include <string>

#include "MemberBounds.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;

}  // namespace

frmOfficeLoad::frmOfficeLoad(const LoadFormServices& services) : LoadFormOf(load_type::kOffice, services) {
    for (std::size_t i = 0; i < kOfficeCounts.size(); ++i) {
        const OfficeCount& count = kOfficeCounts[i];
        m_counts[i] = AddField({.labelName = count.label,
                                .name = count.field,
                                .caption = count.caption,
                                .digits = kDigits,
                                .bounds = LoadBounds(load_type::kOffice, count.member),
                                .printsBounds = false},
                               key_filters::Digits(), false);
    }
    OpenForNewLoad();
}

void frmOfficeLoad::ShowKind(const COfficeLoad& load) {
    for (std::size_t i = 0; i < kOfficeCounts.size(); ++i) {
        m_counts[i]->Content(std::to_string((load.*kOfficeCounts[i].stored)()));
    }
}

bool frmOfficeLoad::StoreKind(COfficeLoad& load) {
    StoreQuantity(load);
    if (NothingCounted()) {
        if (!IsTrying()) {
            ReportNothingCounted();
        }
        return false;
    }
    for (std::size_t i = 0; i < kOfficeCounts.size(); ++i) {
        if (!IsLeftOut(m_counts[i]->Content())) {
            (load.*kOfficeCounts[i].store)(Integer(*m_counts[i]));
        }
    }
    return true;
}

bool frmOfficeLoad::NothingCounted() const {
    std::array<std::string, kOfficeCounts.size()> texts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        texts[i] = m_counts[i]->Content();
    }
    return AllLeftOut(texts);
}

void frmOfficeLoad::ReportNothingCounted() {
    m_counts.front()->setFocus();
    for (EntryField* count : m_counts) {
        count->ClearError();
    }
    ShowError(std::string(kNothingCounted));
}

EntryField* frmOfficeLoad::FieldOf(LoadFigure /*figure*/) {
    return m_counts.front();
}

}  // namespace genvara
