#include "frmMedLoad.h"

#include <QLabel>
#include <algorithm>
#include <array>

#include "ChoiceBox.h"
#include "InputTypes.h"
#include "LastChance.h"
#include "MedEntry.h"
#include "MemberBounds.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;
constexpr int kDipDigits = 3;
constexpr std::size_t kMostDipDigits = 2;

}  // namespace

frmMedLoad::frmMedLoad(const LoadFormServices& services)
    : LoadFormOf(load_type::kMedicalImaging, services),
      m_contKVA(AddDemand({.labelName = "lblMaxContKVA",
                           .name = "txtMaxContKVA",
                           .caption = "Continuous kVA",
                           .digits = kDigits,
                           .bounds = LoadBounds(load_type::kMedicalImaging, "ContVA")})),
      m_contPF(AddDemand({.labelName = "lblContPF",
                          .name = "txtContPF",
                          .caption = "pF @ Continuous Power Demand",
                          .digits = kDigits,
                          .bounds = LoadBounds(load_type::kMedicalImaging, "ContPowerFactor")})),
      m_peakKVA(AddDemand({.labelName = "lblMaxMomentaryKVA",
                           .name = "txtMaxMomentaryKVA",
                           .caption = "Max. Peak kVA",
                           .digits = kDigits,
                           .bounds = LoadBounds(load_type::kMedicalImaging, "PeakVA")})),
      m_peakPF(AddDemand({.labelName = "lblPeakPF",
                          .name = "txtPeakPF",
                          .caption = "pF @ Max. Power Demand",
                          .digits = kDigits,
                          .bounds = LoadBounds(load_type::kMedicalImaging, "PeakPowerFactor")})) {
    AddDip();
    AddInputType();
    OpenForNewLoad();
}

EntryField* frmMedLoad::AddDemand(const FieldLook& look) {
    EntryField* field = AddField(look, key_filters::Numeric(), false);
    field->CheckBeforeLeaving([this, field] { return IsBad(*field); });
    return field;
}

void frmMedLoad::AddDip() {
    const Spinner dip = AddSpinner({.labelName = "lblMaxVoltDip",
                                    .name = "txtMaxVoltDip",
                                    .caption = "Max. Voltage Dip @ Peak Demand  (%)",
                                    .digits = kDipDigits,
                                    .bounds = LoadBounds(load_type::kMedicalImaging, "MaxPeakDemandVoltDip"),
                                    .printsBounds = false},
                                   key_filters::DigitsUpTo(kMostDipDigits), "updMaxVoltDip");
    m_maxVoltDip = dip.field;
    connect(dip.arrows, &UpDown::Stepped, this, Event([this](std::int32_t value) { DipStepped(value); }));
    m_warning = new QLabel("WARNING: Voltage dip during peak demand effects image quality.");
    m_warning->setObjectName("lblWarning");
    QFont font = m_warning->font();
    font.setBold(true);
    m_warning->setFont(font);
    QSizePolicy policy = m_warning->sizePolicy();
    policy.setRetainSizeWhenHidden(true);  // so that nothing moves when it comes
    m_warning->setSizePolicy(policy);
    Fields().AddWide(m_warning);
}

void frmMedLoad::AddInputType() {
    m_inputType = new ChoiceBox("cboType");
    for (const char* text : {"6 - pulse", "12 - pulse", "18 - pulse", "24 - pulse"}) {
        m_inputType->AddRow(text);
    }
    QLabel* label = Fields().AddField("lblType", "Input Type", m_inputType);
    label->hide();
    m_inputType->hide();
    connect(&Phases(), &OptionFrame::Clicked, this,
            Event([this](std::int32_t code) { m_inputType->setEnabled(code == 0); }));
}

bool frmMedLoad::IsBad(EntryField& field) {
    field.ClearError();
    field.Content(Trimmed(field.Content()));
    const bool bad = !field.text().isEmpty() && !field.Complaint().isEmpty();
    if (bad) {
        field.ShowError(field.Complaint());
        Platform().Beep();
    }
    return bad;
}

void frmMedLoad::DipStepped(std::int32_t percent) {
    m_warning->setVisible(percent >= kImageVoltDip);
}

void frmMedLoad::SetDefaults() {
    const CMedEquipLoad fresh;
    m_contPF->Content(Numbers().Fixed(fresh.ContPowerFactor(), 2));
    m_peakPF->Content(Numbers().Fixed(fresh.PeakPowerFactor(), 2));
    m_maxVoltDip->Content(std::to_string(fresh.MaxPeakDemandVoltDip()));
    DipStepped(fresh.MaxPeakDemandVoltDip());
}

void frmMedLoad::ShowKind(const CMedEquipLoad& load) {
    m_contPF->Content(Numbers().Plain(load.ContPowerFactor()));
    m_contKVA->Content(Numbers().Kilo(load.ContVA()));
    m_peakPF->Content(Numbers().Plain(load.PeakPowerFactor()));
    m_peakKVA->Content(Numbers().Kilo(load.PeakVA()));
    m_maxVoltDip->Content(std::to_string(load.MaxPeakDemandVoltDip()));
    DipStepped(load.MaxPeakDemandVoltDip());
}

bool frmMedLoad::StoreKind(CMedEquipLoad& load) {
    StoreQuantity(load);
    load.ContPowerFactor(Number(*m_contPF));
    load.ContVA(FromKilo(*m_contKVA));
    load.PeakVA(FromKilo(*m_peakKVA));
    load.PeakPowerFactor(Number(*m_peakPF));
    load.MaxPeakDemandVoltDip(Integer(*m_maxVoltDip));
    return true;
}

bool frmMedLoad::HoldsOk() {
    // Enter presses OK without leaving the field, and nothing behind the field would refuse its figure.
    const std::array demands{m_contKVA, m_contPF, m_peakKVA, m_peakPF};
    return std::ranges::any_of(demands,
                               [this](EntryField* field) { return field->hasFocus() && IsBad(*field); });
}

EntryField* frmMedLoad::FieldOf(LoadFigure figure) {
    return figure == LoadFigure::Running ? m_contPF : m_peakPF;
}

}  // namespace genvara
