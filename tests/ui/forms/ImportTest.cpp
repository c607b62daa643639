// A row of a table of loads comes to what somebody gets who enters the same in the form.

#include "ImportTable.h"

#include <gtest/gtest.h>

#include <QTest>
#include <functional>
#include <ostream>

#include "ChoiceBox.h"
#include "FormsFixture.h"
#include "MakeLoadForm.h"

namespace genvara {
namespace {

void Choose(const QWidget& form, const char* name, const char* row) {
    auto& list = Find<ChoiceBox>(form, name);
    const int at = list.findText(row);
    ASSERT_GE(at, 0) << row;
    list.setCurrentIndex(at);
    emit list.activated(at);
}

struct Entry {
    const char* name;
    std::int32_t loadType;
    std::int32_t phases;  ///< of the site
    const char* table;
    void (*enter)(const QWidget& form);
};

/// What a failure tells of its parameter.
void PrintTo(const Entry& entry, std::ostream* out) {
    *out << entry.name;
}

class ImportedLikeEntered : public FormsTest, public testing::WithParamInterface<Entry> {};

TEST_P(ImportedLikeEntered, TheLoadsHoldTheSame) {
    const Entry& entry = GetParam();
    host.phases = entry.phases;
    App().PowerSystem().Phases(entry.phases);
    App().PowerSystem().Voltage(480);
    const auto form = MakeLoadForm(entry.loadType, Services());
    form->open();
    QApplication::setActiveWindow(form.get());
    entry.enter(*form);
    Click(*form, "cmdOK");
    for (const ScriptedPlatform::Asked& asked : platform.Take()) {
        EXPECT_EQ(asked.message.title, "WARNING") << "that of a starter is no refusal";
    }
    ASSERT_EQ(Step().NumLoads(), 1);

    Catalogue& catalogue = App().Catalogue();
    const EntryRules rules{
        .motors = {catalogue.Motors(), catalogue.MotorCodeLetters(), catalogue.MotorStartingMultipliers()},
        .phasesOf = {}};
    const ImportedTable table =
        ReadLoadTable(entry.table, App().LoadProfile(), App().PowerSystem(), rules, {.stepAtHand = 1});
    ASSERT_TRUE(table.CanBeAdded()) << FaultLine(table.faults.front());
    EXPECT_EQ(Members(*table.rows.at(0).load), Members(*Step().begin()));
    EXPECT_TRUE(table.rows.at(0).load->HoldsSame(*Step().begin()));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ImportedLikeEntered,
    testing::Values(
        Entry{"Misc", load_type::kMiscellaneous, 3,
              "Type;Name;Description;Qty;Phases;kW;pF\nMisc;Heater;on the roof;3;B;12,345;0,8\n",
              [](const QWidget& form) {
                  Type(form, "txtName", "Heater");
                  Type(form, "txtDecription", "on the roof");
                  Type(form, "txtQty", "3");
                  Type(form, "txtkW", "12.345");
                  Type(form, "txtPF", "0.8");
                  Click(form, "optPhaseB");
              }},
        Entry{"MotorByHorsepower", load_type::kMotor, 3,
              "Type,HP,Start,Loaded,Fire pump\nMotor,37.5,Part Winding,no,yes\n",
              [](const QWidget& form) {
                  Type(form, "txtPower", "37.5");
                  Choose(form, "cboStartMethod", "Part Winding");
                  Click(form, "optUnloaded");
                  Click(form, "chkFirePump");
              }},
        Entry{"MotorByPower", load_type::kMotor, 3, "Type,Running kW,Code letter,Phases\nMotor,33,H,C\n",
              [](const QWidget& form) {
                  Click(form, "optRunningKW");
                  Type(form, "txtPower", "33");
                  Choose(form, "cboCodeLetter", "H");
                  Click(form, "optPhaseC");
              }},
        Entry{"MotorByAmps", load_type::kMotor, 1,
              "Type,Starting amps,Running amps,Start,Starting kVA\nMotor,300,60,Wye-Delta,50.5\n",
              [](const QWidget& form) {
                  Click(form, "optAmps");
                  Type(form, "txtPower", "300");
                  Type(form, "txtRunAmps", "60");
                  Field(form, "txtQty").setFocus();
                  Choose(form, "cboStartMethod", "Wye-Delta");
                  Type(form, "txtStartingKVA", "50.5");
              }},
        Entry{"Lighting", load_type::kLighting, 3,
              "Type,Running kW,Running pF,Lamp,Ballast\nLighting,30,0.95,HID,Low Distortion Electronic\n",
              [](const QWidget& form) {
                  Type(form, "txtRunKW", "30");
                  Click(form, "optHID");
                  Type(form, "txtRunPF", "0.95");
                  Click(form, "optLowDistElectronic");
              }},
        Entry{"Incandescent", load_type::kLighting, 1, "Type,Running kW\nLighting,3\n",
              [](const QWidget& form) { Type(form, "txtRunKW", "3"); }},
        Entry{"AirConditioner", load_type::kAirConditioning, 3, "Type,Tons\nAC,7.5\n",
              [](const QWidget& form) {
                  Click(form, "optTonnage");
                  Type(form, "txtPower", "7.5");
              }},
        Entry{"UPS", load_type::kUPS, 3,
              "Type,Rating,Loading,Battery charger,UPS type,Family,Input filter\nUPS,80,90,15,12 pulse,On "
              "Line,x\n",
              [](const QWidget& form) {
                  Click(form, "optOnLine");
                  Type(form, "txtRating", "80");
                  Type(form, "txtLoading", "90");
                  Type(form, "txtCharging", "15");
                  Choose(form, "cboType", "12 pulse");
                  Click(form, "chkInputFilter");
              }},
        Entry{"UPSAsOpened", load_type::kUPS, 1, "Type,Rating\nUPS,80\n",
              [](const QWidget& form) { Type(form, "txtRating", "80"); }},
        Entry{"UPSOnOnePhase", load_type::kUPS, 3, "Type,Rating,Family,Phases\nUPS,80,Off Line,B\n",
              [](const QWidget& form) {
                  Click(form, "optOffLine");
                  Click(form, "optPhaseB");
                  Type(form, "txtRating", "80");
              }},
        Entry{"Drive", load_type::kVFD, 3,
              "Type,Motor rating,Efficiency,Start kVA limit,Phases\nVFD,40,93,120,A\n",
              [](const QWidget& form) {
                  Type(form, "txtMtrRating", "40");
                  Type(form, "txtEff", "93");
                  Type(form, "txtStartKVALimit", "120");
                  Click(form, "optPhaseA");
              }},
        Entry{"Charger", load_type::kBatteryCharger, 3,
              "Type,Battery voltage,Charge current,Application,Phases\nCharger,24,10.5,Residential,C\n",
              [](const QWidget& form) {
                  Click(form, "optPhaseC");
                  Click(form, "optResidential");
                  Type(form, "txtBatVolts", "24");
                  Type(form, "txtChargeCurrent", "10.5");
              }},
        Entry{"Medical", load_type::kMedicalImaging, 3,
              "Type,Continuous kVA,Max. Peak kVA,Peak pF,Dip\nMedical,40,120,0.85,7\n",
              [](const QWidget& form) {
                  Type(form, "txtMaxContKVA", "40");
                  Type(form, "txtMaxMomentaryKVA", "120");
                  Type(form, "txtPeakPF", "0.85");
                  Type(form, "txtMaxVoltDip", "7");
              }},
        Entry{"Office", load_type::kOffice, 3, "Type,PCs,Copiers\nOffice,10,2\n",
              [](const QWidget& form) {
                  Type(form, "txtPC", "10");
                  Type(form, "txtCopiers", "2");
              }}),
    [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace genvara
