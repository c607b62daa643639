#include "frmUPSLoad.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ChoiceBox.h"
#include "InputTypes.h"
#include "LastChance.h"
#include "MemberBounds.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kRatingDigits = 10;

namespace strings {
constexpr std::int32_t kFastTransfer = 680;
constexpr std::int32_t kOffLine = 682;
constexpr std::int32_t kOnLine = 683;
constexpr std::int32_t kRating = 684;
constexpr std::int32_t kLoading = 685;
constexpr std::int32_t kCharging = 686;
constexpr std::int32_t kType = 687;
constexpr std::int32_t kFilter = 688;
constexpr std::int32_t kImportant = 689;
constexpr std::int32_t kWarning = 690;
}  // namespace strings

}  // namespace

frmUPSLoad::frmUPSLoad(const LoadFormServices& services)
    : LoadFormOf(load_type::kUPS, services), m_entry(SystemPhases()) {
    AddFigures();
    AddFamilies();
    AddWarning();
    Connect();
    OpenForNewLoad();
}

void frmUPSLoad::AddFigures() {
    m_rating = AddField({.labelName = "lblRating",
                         .name = "txtRating",
                         .caption = Caption(strings::kRating),
                         .digits = kRatingDigits,
                         .bounds = LoadBounds(load_type::kUPS, "OutputRating"),
                         .noteName = "lblRatingUnits"},
                        key_filters::NonZeroDigits(), false);
    m_loading = AddSpinner({.labelName = "lblLoading",
                            .name = "txtLoading",
                            .caption = Caption(strings::kLoading),
                            .digits = 3,
                            .bounds = LoadBounds(load_type::kUPS, "Loading"),
                            .noteName = "lblLoadingUnits"},
                           key_filters::UpTo(3, key_filters::NonZeroDigits()), "updLoading");
    m_charging = AddSpinner({.labelName = "lblCharging",
                             .name = "txtCharging",
                             .caption = Caption(strings::kCharging),
                             .digits = 3,
                             .bounds = LoadBounds(load_type::kUPS, "Charging"),
                             .noteName = "lblChargingUnits"},
                            key_filters::DigitsUpTo(2), "updCharging");
    m_input = AddInputTypes(Fields(), Caption(strings::kType), Caption(strings::kFilter));
}

void frmUPSLoad::AddFamilies() {
    m_family =
        new OptionFrame("fraType", tr("Family"),
                        {{"optHarborRelay", Caption(strings::kFastTransfer), ups_family::kFastTransfer},
                         {"optOffLine", Caption(strings::kOffLine), ups_family::kOffLine},
                         {"optOnLine", Caption(strings::kOnLine), ups_family::kOnLine}});
    Side().addWidget(m_family);
}

void frmUPSLoad::AddWarning() {
    m_warning = new QLabel(Caption(strings::kImportant) + '\n' + Caption(strings::kWarning));
    m_warning->setObjectName("lblWarning");
    m_warning->setWordWrap(true);
    m_warning->setFrameShape(QFrame::StyledPanel);
    m_warning->setMargin(metrics::kGap);
    QSizePolicy policy = m_warning->sizePolicy();
    policy.setRetainSizeWhenHidden(true);  // so that nothing moves with the family
    m_warning->setSizePolicy(policy);
    Below().addWidget(m_warning);
}

void frmUPSLoad::Connect() {
    connect(&Phases(), &OptionFrame::Clicked, this, Event([this](std::int32_t code) {
        m_entry.PhasesClicked(code);
        Refresh();
    }));
    connect(m_family, &OptionFrame::Clicked, this, Event([this](std::int32_t code) {
                m_entry.FamilyClicked(code);
                Refresh();
            }));
}

void frmUPSLoad::Refresh() {
    const UPSEntry::State& state = m_entry.Shown();
    const QSignalBlocker phasesQuiet(Phases());
    const QSignalBlocker familyQuiet(*m_family);
    Phases().Select(state.phases);
    for (std::int32_t code = 0; code <= 3; ++code) {
        Phases().Enable(code, state.phasesEnabled[static_cast<std::size_t>(code)]);
    }
    m_family->Select(state.family);
    m_family->Enable(ups_family::kFastTransfer, state.fastTransferEnabled);
    m_loading.Enable(state.powerEnabled);
    m_charging.Enable(state.powerEnabled);
    m_input.EnableTypes(state.typeEnabled);
    m_input.filter->setEnabled(state.filterEnabled);
    m_warning->setVisible(state.warningVisible);
}

void frmUPSLoad::ShowFigures(const CUPSLoad& load) const {
    m_loading.field->Content(std::to_string(load.Loading()));
    m_charging.field->Content(std::to_string(load.Charging()));
}

void frmUPSLoad::SetDefaults() {
    ShowFigures(CUPSLoad());
    Refresh();
}

void frmUPSLoad::ShowKind(const CUPSLoad& load) {
    m_entry.FamilyClicked(load.Family());
    Refresh();
    m_rating->Content(Numbers().Kilo(load.OutputRating()));
    ShowFigures(load);
    if (m_entry.Shown().phases == 0) {
        m_input.types->SelectCode(load.InputType());
    }
    m_input.filter->Tick(load.InputFilterInstalled());
}

bool frmUPSLoad::StoreKind(CUPSLoad& load) {
    load.Family(m_entry.Shown().family);
    load.InputType(StoredInputType(load.Phases(), m_input.types->Code().value_or(input_type::kSixPulse)));
    load.OutputRating(FromKilo(*m_rating));
    StoreQuantity(load);
    load.Loading(Integer(*m_loading.field));
    load.Charging(Integer(*m_charging.field));
    load.InputFilterInstalled(m_input.filter->isChecked());
    return true;
}

EntryField* frmUPSLoad::FieldOf(LoadFigure /*figure*/) {
    return m_rating;
}

}  // namespace genvara
