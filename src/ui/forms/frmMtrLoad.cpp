#include "frmMtrLoad.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "ChoiceBox.h"
#include "ErrorNumbers.h"
#include "FailureRegion.h"
#include "LastChance.h"
#include "MotorEntry.h"
#include "Texts.h"
#include "frmSSCurrentLimit.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;
constexpr int kLoaded = 0;
constexpr int kUnloaded = 1;

namespace strings {
constexpr std::int32_t kHorsepower = 700;
constexpr std::int32_t kRunningKW = 701;
constexpr std::int32_t kAmps = 702;
constexpr std::int32_t kRunningAmps = 704;
constexpr std::int32_t kCodeLetter = 705;
constexpr std::int32_t kStartingMethod = 706;
constexpr std::int32_t kStartingKVA = 707;
constexpr std::int32_t kStartingPF = 708;
constexpr std::int32_t kSolidState = 755;
}  // namespace strings

/// The label before the main quantity. Its three captions hold an "r", which is its key.
QString PowerCaption(std::int32_t method) {
    const QString caption = Caption(kMotorPowerStrings[static_cast<std::size_t>(method)]);
    return QString(caption).insert(caption.indexOf('r', 0, Qt::CaseInsensitive), '&');
}

}  // namespace

frmMtrLoad::frmMtrLoad(const LoadFormServices& services)
    : LoadFormOf(load_type::kMotor, services),
      m_calculator({Project().catalogue.Motors(), m_codeLetters, m_multipliers}, Project().site.Voltage(),
                   SystemPhases(), Numbers()) {
    ReadTables();
    AddSizeFields();
    AddStarterFields();
    AddOptions();
    FillLists();
    Refresh();
    Connect();
    OpenForNewLoad();
}

void frmMtrLoad::ReadTables() {
    FailureRegion region;
    region.Run([&] { m_codeLetters = Project().catalogue.MotorCodeLetters(); });
    region.Run([&] { m_multipliers = Project().catalogue.MotorStartingMultipliers(); });
}

void frmMtrLoad::AddSizeFields() {
    m_entry = new OptionFrame("fraDataEntry", {},
                              {{"optHorsepower", Caption(strings::kHorsepower), motor_entry::kHorsepower},
                               {"optRunningKW", Caption(strings::kRunningKW), motor_entry::kRunningKW},
                               {"optAmps", Caption(strings::kAmps), motor_entry::kAmps}},
                              Qt::Horizontal);
    m_entry->setAccessibleName(tr("Data Entry Method"));
    Fields().AddWide(m_entry);
    m_power = AddField({.labelName = "lblPower",
                        .name = "txtPower",
                        .caption = PowerCaption(motor_entry::kHorsepower),
                        .digits = kDigits,
                        .bounds = MotorPowerBounds(motor_entry::kHorsepower),
                        .printsBounds = false},
                       key_filters::Numeric(), false);
    m_runAmps = AddField({.labelName = "lblRunAmps",
                          .name = "txtRunAmps",
                          .caption = Caption(strings::kRunningAmps),
                          .digits = kDigits,
                          .bounds = LoadBounds(load_type::kMotor, "RunningAmps"),
                          .printsBounds = false},
                         key_filters::Numeric(), false);
    m_powerLabel = findChild<QLabel*>("lblPower");
    m_runAmpsLabel = findChild<QLabel*>("lblRunAmps");
    for (QWidget* widget : {static_cast<QWidget*>(m_runAmps), static_cast<QWidget*>(m_runAmpsLabel)}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);  // so that nothing moves with the entry method
        widget->setSizePolicy(policy);
    }
}

void frmMtrLoad::AddStarterFields() {
    m_codeLetter = new ChoiceBox("cboCodeLetter");
    SetDigits(*m_codeLetter, kDigits);
    Fields().AddField("lblCodeLetter", Caption(strings::kCodeLetter), m_codeLetter);
    m_startMethod = new ChoiceBox("cboStartMethod");
    m_advanced = new QPushButton("Ad&vanced...");  // "A" is the key of the phase
    m_advanced->setObjectName("cmdAdvanced");
    m_advanced->setAutoDefault(false);
    Fields().AddField("lblStartMethod", Caption(strings::kStartingMethod), m_startMethod, m_advanced);
    m_startingKVA = AddField({.labelName = "lblStartingKVA",
                              .name = "txtStartingKVA",
                              .caption = Caption(strings::kStartingKVA),
                              .digits = kDigits,
                              .bounds = LoadBounds(load_type::kMotor, "StartingAppPower"),
                              .printsBounds = false},
                             key_filters::Numeric(), false);
    m_startingPF = AddField(
        {.labelName = "lblStartingPF",
         .name = "txtStartingPF",
         .caption = Caption(strings::kStartingPF),
         .digits = kDigits,
         .bounds = LoadBounds(load_type::kMotor, "StartingPF"),
         .printsBounds = false},
        [this, numeric = key_filters::Numeric()](const std::string& text, std::size_t selected,
                                                 char32_t key) {
            if (text.empty() || m_startingPF->selectedText() != m_startingPF->text()) {
                return numeric(text, selected, key);
            }
            // So that the separator that is about to go is not counted.
            m_startingPF->clear();
            m_calculator.StartingPFTyped({});
            return numeric({}, 0, key);
        },
        false);
    Enforce(*m_startingPF);
}

void frmMtrLoad::AddOptions() {
    m_loaded = new OptionFrame("fraLoadUnload", "Loaded / Unloaded Starting",
                               {{"optLoaded", "&Loaded", kLoaded}, {"optUnloaded", "&Unloaded", kUnloaded}});
    m_firePump = new QCheckBox("&Fire Pump Motor");
    m_firePump->setObjectName("chkFirePump");
    Side().addWidget(m_loaded);
    Side().addWidget(m_firePump);
}

void frmMtrLoad::FillLists() {
    std::int32_t row = 0;
    for (const CodeLetterRecord& letter : m_codeLetters) {
        m_codeLetter->AddRow(ToQt(letter.CodeLetter), row++);
    }
    std::int32_t code = starting_method::kAcrossTheLine;
    for (const std::int32_t method : kStartMethodStrings) {
        m_startMethod->AddRow(Caption(method), code++);
    }
}

void frmMtrLoad::Connect() {
    ConnectFields();
    connect(m_entry, &OptionFrame::Clicked, this, Event([this](std::int32_t m) { EntryMethodClicked(m); }));
    connect(&Phases(), &OptionFrame::Clicked, this, Event([this](std::int32_t c) { PhasesClicked(c); }));
    connect(m_codeLetter, &ChoiceBox::Clicked, this,
            Event([this](int row) { Do([&] { m_calculator.CodeLetterClicked(row); }); }));
    connect(m_startMethod, &ChoiceBox::Clicked, this, Event([this](int row) { StartMethodClicked(row); }));
    connect(m_advanced, &QPushButton::clicked, this, Event([this] { AdvancedClicked(); }));
    connect(m_loaded, &OptionFrame::Clicked, this, Event([this](std::int32_t code) {
                Do([&] { code == kLoaded ? m_calculator.LoadedClicked() : m_calculator.UnloadedClicked(); });
                ShowStartingPF();
            }));
    connect(m_firePump, &QCheckBox::toggled, this,
            Event([this](bool on) { m_calculator.FirePumpChecked(on); }));
}

void frmMtrLoad::ConnectFields() {
    using Typed = void (MotorCalculator::*)(std::string);
    const auto onTyping = [this](EntryField* field, Typed typed) {
        connect(field, &QLineEdit::textEdited, this,
                Event([this, field, typed] { Do([&] { (m_calculator.*typed)(field->Content()); }); }));
    };
    onTyping(m_power, &MotorCalculator::PowerChanged);
    onTyping(m_runAmps, &MotorCalculator::RunAmpsChanged);
    onTyping(m_startingKVA, &MotorCalculator::StartingKVATyped);
    onTyping(m_startingPF, &MotorCalculator::StartingPFTyped);
    m_power->OnLeft([this] { Do([this] { m_calculator.PowerLeft(); }); });
    m_runAmps->OnLeft([this] { Do([this] { m_calculator.RunAmpsLeft(); }); });
}

void frmMtrLoad::Do(const std::function<void()>& operation) {
    if (m_refreshing) {
        return;  // a selection that only shows what the calculator holds
    }
    QString unusable;
    try {
        operation();
    } catch (const RaisedError& failure) {
        unusable = ToQt(failure.Number() == errors::kOverflow ? "" : failure.Description());
    }
    Refresh();
    if (!unusable.isEmpty()) {
        m_power->ShowError(tr("The catalogue's motor tables cannot be used: %1").arg(unusable));
    }
}

void frmMtrLoad::Refresh() {
    const MotorCalculator::Fields& state = m_calculator.State();
    m_refreshing = true;
    const std::array<std::pair<EntryField*, const std::string*>, 4> texts{
        {{m_power, &state.txtPower},
         {m_runAmps, &state.txtRunAmps},
         {m_startingKVA, &state.txtStartingKVA},
         {m_startingPF, &state.txtStartingPF}}};
    for (const auto& [field, text] : texts) {
        if (field->Content() != *text) {
            field->Content(*text);
        }
    }
    m_entry->Select(state.entryMethod);
    ShowEntryMethod();
    m_loaded->Select(state.loaded ? kLoaded : kUnloaded);
    m_codeLetter->setCurrentIndex(state.codeLetterIndex);
    m_startMethod->setCurrentIndex(state.startMethodIndex);
    m_advanced->setEnabled(state.advancedEnabled);
    m_firePump->setChecked(state.firePump);
    m_refreshing = false;
}

void frmMtrLoad::ShowStartingPF() {
    // Loading a motor whose factor was typed for an unloaded start may take it beyond 1.
    if (Numbers().Read(m_startingPF->Content()) && !m_startingPF->Complaint().isEmpty()) {
        m_startingPF->ShowError(m_startingPF->Complaint());
    }
}

void frmMtrLoad::ShowEntryMethod() {
    const std::int32_t method = m_calculator.State().entryMethod;
    m_power->Bounds(MotorPowerBounds(method));
    m_powerLabel->setText(PowerCaption(method));
    m_power->setAccessibleName(WithoutMnemonic(PowerCaption(method)));
    m_runAmpsLabel->setVisible(method == motor_entry::kAmps);
    m_runAmps->setVisible(method == motor_entry::kAmps);
}

std::int32_t frmMtrLoad::SolidStateCurrentLimit() const noexcept {
    return m_calculator.SolidStateCurrentLimit();
}

void frmMtrLoad::SolidStateCurrentLimit(std::int32_t percent) {
    Do([&] { m_calculator.SolidStateCurrentLimit(percent); });
}

void frmMtrLoad::EntryMethodClicked(std::int32_t method) {
    Do([&] {
        m_calculator.EntryMethodClicked(method);
        for (EntryField* field : {m_power, m_runAmps, m_startingKVA, m_startingPF}) {
            field->ClearError();
        }
    });
}

void frmMtrLoad::PhasesClicked(std::int32_t code) {
    Do([&] { code == 0 ? m_calculator.ThreePhaseClicked() : m_calculator.SinglePhaseClicked(code); });
}

void frmMtrLoad::StartMethodClicked(std::int32_t row) {
    bool warn = false;
    Do([&] { warn = m_calculator.StartMethodClicked(row); });
    if (warn) {
        Platform().ShowMessage(this, {.text = FromQt(Caption(kStarterWarningString)),
                                      .icon = MessageIcon::Exclamation,
                                      .title = "WARNING"});
    }
}

void frmMtrLoad::AdvancedClicked() {
    if (m_startMethod->currentText() != Caption(strings::kSolidState)) {
        return;
    }
    frmSSCurrentLimit dialog(this, Platform());
    dialog.ParentForm(*this);
    dialog.exec();
    Do([this] { m_calculator.AdvancedClosed(); });
}

void frmMtrLoad::ShowKind(const CMtrLoad& load) {
    Do([&] { m_calculator.CurrentLoad(load); });
}

bool frmMtrLoad::HoldsOk() {
    // Enter presses OK without leaving the field; what its leaving works out must not be missing.
    if (m_runAmps->hasFocus()) {
        Do([this] { m_calculator.RunAmpsLeft(); });
    }
    return false;
}

bool frmMtrLoad::StoreKind(CMtrLoad& load) {
    StoreQuantity(load);
    MotorCalculator::Field field{};
    try {
        m_calculator.StoreInLoad(load, field);
    } catch (const RaisedError&) {
        Current(FieldOf(field));
        if (field == MotorCalculator::Field::None && !IsTrying()) {
            // All else without a field takes any value.
            m_codeLetter->ShowError(tr("%1: nothing is selected.").arg(Caption(strings::kCodeLetter)));
            m_codeLetter->setFocus();
        }
        throw;
    }
    return true;
}

EntryField* frmMtrLoad::FieldOf(MotorCalculator::Field field) const {
    switch (field) {
        case MotorCalculator::Field::Power:
            return m_power;
        case MotorCalculator::Field::RunAmps:
            return m_runAmps;
        case MotorCalculator::Field::StartingKVA:
            return m_startingKVA;
        case MotorCalculator::Field::StartingPF:
            return m_startingPF;
        case MotorCalculator::Field::None:
            break;
    }
    return nullptr;
}

EntryField* frmMtrLoad::FieldOf(LoadFigure figure) {
    return figure == LoadFigure::Starting ? m_startingPF : m_power;
}

}  // namespace genvara
