#include "frmMedLoad.h"

#include <QLabel>
#include <algorithm>
#include <array>

#include "ChoiceBox.h"
#include "EntryText.h"
#include "LastChance.h"
#include "MedEntry.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;
constexpr std::string_view kKVA = " kVA";
constexpr int kDipDigits = 3;
constexpr std::size_t kMostDipDigits = 2;

}  // namespace

frmMedLoad::frmMedLoad(const LoadFormServices& services)
    : LoadFormOf(load_type::kMedicalImaging, services),
      m_contKVA(AddDemand({.labelName = "lblMaxContKVA",
                           .name = "txtMaxContKVA",
                           .caption = "Continuous kVA",
                           .digits = kDigits},
                          kMostContKVA, kKVA)),
      m_contPF(AddDemand({.labelName = "lblContPF",
                          .name = "txtContPF",
                          .caption = "pF @ Continuous Power Demand",
                          .digits = kDigits},
                         kMostMedPowerFactor, {})),
      m_peakKVA(AddDemand({.labelName = "lblMaxMomentaryKVA",
                           .name = "txtMaxMomentaryKVA",
                           .caption = "Max. Peak kVA",
                           .digits = kDigits},
                          kMostPeakKVA, kKVA)),
      m_peakPF(AddDemand({.labelName = "lblPeakPF",
                          .name = "txtPeakPF",
                          .caption = "pF @ Max. Power Demand",
                          .digits = kDigits},
                         kMostMedPowerFactor, {})) {
    AddDip();
    AddInputType();
    OpenForNewLoad();
}

frmMedLoad::Demand frmMedLoad::AddDemand(const FieldLook& look, double limit, std::string_view unit) {
    FieldLook bounded = look;
    bounded.note = ToQt(BoundsNote("0", Plain(limit), unit));
    const Demand demand{.field = AddField(bounded, key_filters::Numeric(), false), .limit = limit};
    demand.field->CheckBeforeLeaving([this, demand] { return IsBad(demand); });
    return demand;
}

void frmMedLoad::AddDip() {
    const Spinner dip = AddSpinner(
        {.labelName = "lblMaxVoltDip",
         .name = "txtMaxVoltDip",
         .caption = "Max. Voltage Dip @ Peak Demand  (%)",
         .digits = kDipDigits},
        key_filters::DigitsUpTo(kMostDipDigits), "updMaxVoltDip",
        {.least = medical_limits::kEnteredVoltDip.least, .most = medical_limits::kEnteredVoltDip.greatest});
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

bool frmMedLoad::IsBad(const Demand& demand) {
    EntryField& field = *demand.field;
    field.ClearError();
    field.Content(Trimmed(field.Content()));
    const bool bad = IsBadDemand(field.Content(), demand.limit, Separator());
    if (bad) {
        field.ShowError(tr("The figure must be above 0 and not above %1.").arg(ToQt(Plain(demand.limit))));
        Platform().Beep();
    }
    return bad;
}

void frmMedLoad::DipStepped(std::int32_t percent) {
    m_warning->setVisible(percent >= kImageVoltDip);
}

void frmMedLoad::SetDefaults() {
    const CMedEquipLoad fresh;
    m_contPF.field->Content(Fixed(fresh.ContPowerFactor(), 2));
    m_peakPF.field->Content(Fixed(fresh.PeakPowerFactor(), 2));
    m_maxVoltDip->Content(std::to_string(fresh.MaxPeakDemandVoltDip()));
    DipStepped(fresh.MaxPeakDemandVoltDip());
}

void frmMedLoad::ShowKind(const CMedEquipLoad& load) {
    m_contPF.field->Content(Plain(load.ContPowerFactor()));
    m_contKVA.field->Content(Plain(load.ContVA() / kPerKilo));
    m_peakPF.field->Content(Plain(load.PeakPowerFactor()));
    m_peakKVA.field->Content(Plain(load.PeakVA() / kPerKilo));
    m_maxVoltDip->Content(std::to_string(load.MaxPeakDemandVoltDip()));
    DipStepped(load.MaxPeakDemandVoltDip());
}

bool frmMedLoad::StoreKind(CMedEquipLoad& load) {
    StoreQuantity(load);
    load.ContPowerFactor(Number(*m_contPF.field));
    load.ContVA(Kilo(*m_contKVA.field));
    load.PeakVA(Kilo(*m_peakKVA.field));
    load.PeakPowerFactor(Number(*m_peakPF.field));
    load.MaxPeakDemandVoltDip(Integer(*m_maxVoltDip));
    return true;
}

bool frmMedLoad::HoldsOk() {
    // Enter presses OK without leaving the field, and nothing behind the field would refuse its figure.
    const std::array demands{m_contKVA, m_contPF, m_peakKVA, m_peakPF};
    return std::ranges::any_of(
        demands, [this](const Demand& demand) { return demand.field->hasFocus() && IsBad(demand); });
}

}  // namespace genvara
