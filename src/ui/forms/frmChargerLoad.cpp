#include "frmChargerLoad.h"

#include <QSignalBlocker>

#include "LastChance.h"
#include "MemberBounds.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;

}  // namespace

frmChargerLoad::frmChargerLoad(const LoadFormServices& services)
    : LoadFormOf(load_type::kBatteryCharger, services), m_entry(SystemPhases(), Project().site.Phases()) {
    AddOptions();
    m_voltage = AddField({.labelName = "lblBatVolts",
                          .name = "txtBatVolts",
                          .caption = "Battery Voltage",
                          .digits = kDigits,
                          .bounds = LoadBounds(load_type::kBatteryCharger, "BatteryVoltage"),
                          .noteName = "lblBatVoltUnits",
                          .note = "Vdc"},
                         key_filters::Numeric(), false);
    m_current = AddField({.labelName = "lblChargeCurrent",
                          .name = "txtChargeCurrent",
                          .caption = "Charge Current",
                          .digits = kDigits,
                          .bounds = LoadBounds(load_type::kBatteryCharger, "ChargeCurrent"),
                          .noteName = "lblChargeCurrentUnits",
                          .note = "Adc"},
                         key_filters::Numeric(), false);
    Connect();
    OpenForNewLoad();
}

void frmChargerLoad::AddOptions() {
    m_application = new OptionFrame("fraApp", "Application",
                                    {{"optIndustrial", "Industrial", charger_type::kIndustrial},
                                     {"optTelecom", "Telecom", charger_type::kTelecom},
                                     {"optResidential", "Residential", charger_type::kResidential}},
                                    Qt::Horizontal);
    m_input = new OptionFrame("fraType", "Type",
                              {{"optFerro", "Ferro Resonant", charger_input::kFerroResonant},
                               {"optSCR", "SCR", charger_input::kSCR}},
                              Qt::Horizontal);
    m_input->Select(charger_input::kFerroResonant);
    Fields().AddWide(m_application);
    Fields().AddWide(m_input);
}

void frmChargerLoad::Connect() {
    connect(&Phases(), &OptionFrame::Clicked, this, Event([this](std::int32_t code) {
        m_entry.PhasesClicked(code);
        Refresh();
    }));
    connect(m_application, &OptionFrame::Clicked, this, Event([this](std::int32_t code) {
                m_entry.ApplicationClicked(code);
                Refresh();
            }));
}

void frmChargerLoad::Refresh() {
    const ChargerEntry::State& state = m_entry.Shown();
    const QSignalBlocker phasesQuiet(Phases());
    const QSignalBlocker applicationQuiet(*m_application);
    Phases().Select(state.phases);
    Phases().Enable(0, state.threePhaseEnabled);
    m_application->Select(state.application);
    m_application->Enable(charger_type::kResidential, state.residentialEnabled);
    m_input->setEnabled(state.inputEnabled);
}

void frmChargerLoad::SetDefaults() {
    Refresh();
}

void frmChargerLoad::ShowKind(const CBatChrgLoad& load) {
    m_entry.ApplicationShown(load.ChargerType());
    Refresh();
    m_input->Select(load.ChargerInput());
    m_voltage->Content(Numbers().Plain(load.BatteryVoltage()));
    m_current->Content(Numbers().Plain(load.ChargeCurrent()));
}

bool frmChargerLoad::StoreKind(CBatChrgLoad& load) {
    StoreQuantity(load);
    load.ChargerType(m_entry.Shown().application);
    load.ChargerInput(m_input->Code().value_or(charger_input::kFerroResonant));
    load.BatteryVoltage(Number(*m_voltage));
    load.ChargeCurrent(Number(*m_current));
    return true;
}

EntryField* frmChargerLoad::FieldOf(LoadFigure /*figure*/) {
    return m_current;
}

}  // namespace genvara
