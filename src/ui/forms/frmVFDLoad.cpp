#include "frmVFDLoad.h"

#include "ChoiceBox.h"
#include "InputTypes.h"
#include "LastChance.h"
#include "MemberBounds.h"

namespace genvara {
namespace {

constexpr int kRatingDigits = 10;

}  // namespace

frmVFDLoad::frmVFDLoad(const LoadFormServices& services) : LoadFormOf(load_type::kVFD, services) {
    m_motorRating = AddField({.labelName = "lblMtrRating",
                              .name = "txtMtrRating",
                              .caption = "Motor Rating",
                              .digits = kRatingDigits,
                              .bounds = LoadBounds(load_type::kVFD, "MtrRating"),
                              .noteName = "lblMtrRatingUnits"},
                             key_filters::Numeric(), false);
    m_efficiency = AddSpinner({.labelName = "lbEff",
                               .name = "txtEff",
                               .caption = "Efficiency",
                               .digits = 3,
                               .bounds = LoadBounds(load_type::kVFD, "Efficiency"),
                               .noteName = "lblEffUnits"},
                              key_filters::UpTo(2, key_filters::NonZeroDigits()), "updEff");
    m_kvaLimit = AddSpinner({.labelName = "lblStartKVALimit",
                             .name = "txtStartKVALimit",
                             .caption = "Start kVA Limit",
                             .digits = 3,
                             .bounds = LoadBounds(load_type::kVFD, "KVALimit"),
                             .noteName = "lblStartKVALimitUnits"},
                            key_filters::UpTo(3, key_filters::Numeric()), "updStartKVALimit");
    m_input = AddInputTypes(Fields(), "VFD Type", "Input Filtering Installed");
    connect(&Phases(), &OptionFrame::Clicked, this,
            Event([this](std::int32_t code) { PhasesClicked(code); }));
    OpenForNewLoad();
}

void frmVFDLoad::PhasesClicked(std::int32_t code) {
    m_input.EnableTypes(HasInputTypes(code));
    m_input.filter->setEnabled(HasInputTypes(code));
}

void frmVFDLoad::ShowFigures(const CVFDLoad& load) const {
    m_efficiency.field->Content(std::to_string(load.Efficiency()));
    m_kvaLimit.field->Content(std::to_string(load.KVALimit()));
}

void frmVFDLoad::SetDefaults() {
    ShowFigures(CVFDLoad(Project().catalogue.Motors()));
}

void frmVFDLoad::ShowKind(const CVFDLoad& load) {
    m_motorRating->Content(Numbers().Plain(load.MtrRating()));
    ShowFigures(load);
    if (HasInputTypes(load.Phases())) {
        m_input.types->SelectCode(load.InputType());
    }
    m_input.filter->Tick(load.InputFilterInstalled());
}

bool frmVFDLoad::StoreKind(CVFDLoad& load) {
    load.InputType(StoredInputType(load.Phases(), m_input.types->Code().value_or(input_type::kSixPulse)));
    load.MtrRating(Number(*m_motorRating));
    StoreQuantity(load);
    load.Efficiency(Integer(*m_efficiency.field));
    load.KVALimit(Integer(*m_kvaLimit.field));
    load.InputFilterInstalled(m_input.filter->isChecked());
    return true;
}

EntryField* frmVFDLoad::FieldOf(LoadFigure /*figure*/) {
    return m_motorRating;
}

}  // namespace genvara
