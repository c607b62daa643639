#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"

namespace genvara {
namespace {

using testing::ElementsAre;

const MotorConversions kNoMotors;

void Fill25(CMtrLoad& motor) {
    motor.name("Pump");
    motor.HP(25);
    motor.CodeLetter("g");
    motor.StartingAppPower(133700);
    motor.StartingPF(0.426);
}

TEST(MiscLoad, ReadsAsAnEngineerWritesIt) {
    CMiscLoad load;
    EXPECT_EQ(load.Summary(), "0.00 kW misc. load");
    load.RunningRealPower(12500);
    load.RunningPowerFactor(0.85);
    load.name("Heater");
    load.ID(4);
    load.Quantity(2);
    load.Phases(2);
    EXPECT_EQ(load.Summary(), "12.50 kW misc. load");
    EXPECT_THAT(load.GetProps(), ElementsAre("ID\t4", "Name\tHeater", "Qty\t2", "Phases\t1 - B",
                                             "Running kW\t12.500", "Running PF\t0.85"));
}

TEST(MotorLoad, SummarisesItsEntryLoadAndStart) {
    CMtrLoad motor;
    Fill25(motor);
    EXPECT_EQ(motor.Summary(), "25.00 HP, 3 phase, code G, loaded motor, w/ A.T.L. starting");
    motor.StartsLoaded(false);
    motor.FirePump(true);
    motor.Quantity(2);
    motor.Phases(1);
    motor.StartingMethod(6);
    EXPECT_EQ(motor.Summary(),
              "25.00 HP, 1 phase, code G, unloaded, fire pump motors, w/ 300% solid start starting");
    motor.DataEntryMethod(1);
    motor.RunningRealPower(18650);
    motor.StartingMethod(3);
    EXPECT_EQ(motor.Summary(),
              "18.650 kW, 1 phase, code G, unloaded, fire pump motors, w/ 65% Autotransformer starting");
    motor.DataEntryMethod(2);
    motor.StartingAmps(200);
    motor.RunningAmps(34.25);
    motor.StartingMethod(5);
    EXPECT_EQ(motor.Summary(),
              "200.0/34.3 A, 1 phase, code G, unloaded, fire pump motors, w/ wye-delta starting");
    motor.DataEntryMethod(3);
    motor.StartingMethod(4);
    EXPECT_EQ(motor.Summary(), "1 phase, code G, unloaded, fire pump motors, w/ part-winding starting");
    motor.StartingMethod(2);
    EXPECT_EQ(motor.Summary(),
              "1 phase, code G, unloaded, fire pump motors, w/ 80% Autotransformer starting");
    motor.StartingMethod(0);
    EXPECT_EQ(motor.Summary(), "1 phase, code G, unloaded, fire pump motors");
}

TEST(MotorLoad, ListsThirteenProperties) {
    CMtrLoad motor;
    Fill25(motor);
    EXPECT_THAT(motor.GetProps(),
                ElementsAre("ID\t0", "Name\tPump", "Qty\t1", "Phases\t3", "Starts Loaded\tYES",
                            "Starting Method\tAcross the Line", "Code Letter\tG", "Data Entry Method\tHP",
                            "HP\t25", "Starting PF\t0.43", "Starting kVA\t133.700",
                            "SS Start Current Limit\t300", "Fire Pump\tNO"));
    const std::pair<std::int32_t, const char*> methods[] = {{2, "80% Tapped Autotransformer"},
                                                            {3, "65% Tapped Autotransformer"},
                                                            {4, "Part Winding"},
                                                            {5, "Wye-Delta"},
                                                            {6, "Solid State"},
                                                            {7, "Unknown"}};
    for (const auto& [code, text] : methods) {
        motor.StartingMethod(code);
        EXPECT_EQ(motor.GetProps()[5], std::string("Starting Method\t") + text);
    }
    motor.StartsLoaded(false);
    motor.FirePump(true);
    motor.SolidStateCurrentLimit(450);
    EXPECT_EQ(motor.GetProps()[4], "Starts Loaded\tNO");
    EXPECT_EQ(motor.GetProps()[11], "SS Start Current Limit\t450");
    EXPECT_EQ(motor.GetProps()[12], "Fire Pump\tYES");
    EXPECT_EQ(motor.GetProps().size(), 13U);
    motor.DataEntryMethod(1);
    motor.RunningRealPower(18650);
    EXPECT_EQ(motor.GetProps()[7], "Data Entry Method\tRunning KW");
    EXPECT_EQ(motor.GetProps()[8], "Running kW\t18.650");
    motor.DataEntryMethod(2);
    motor.StartingAmps(200);
    motor.RunningAmps(34);
    EXPECT_EQ(motor.GetProps()[7], "Data Entry Method\tStart/Run Amps");
    EXPECT_EQ(motor.GetProps()[8], "Start/Run Amps\t200.0/34.0");
    motor.DataEntryMethod(5);
    EXPECT_EQ(motor.GetProps()[7], "Data Entry Method\tUnknown");
    EXPECT_EQ(motor.GetProps()[8], "---\t---");
}

TEST(LightLoad, NamesLampAndBallast) {
    CLightLoad light;
    EXPECT_EQ(light.Summary(), "Incandesent lighting");
    light.Ballast(2);
    EXPECT_EQ(light.Summary(), "Incandesent lighting");
    light.LightType(1);
    EXPECT_EQ(light.Summary(), "Floresent lighting with electronic ballast");
    light.LightType(2);
    light.Ballast(1);
    EXPECT_EQ(light.Summary(), "High Intensity Discharge lighting with high eff. magnetic ballast");
    light.Ballast(3);
    light.LightType(9);
    EXPECT_EQ(light.Summary(), "Floresent lighting with low distortion electronic ballast");
    light.RunningRealPower(30000);
    light.StartingRealPower(30000);
    light.RunningPowerFactor(0.9);
    EXPECT_THAT(light.GetProps(),
                ElementsAre("ID\t0", "Name\t", "Qty\t1", "Phases\tEven", "Type\tUnknown",
                            "Ballast\tLow Distortion Electronic", "Running kW\t30.000", "Running PF\t0.90",
                            "Starting kW\t30.000", "Starting PF\t1.00"));
    const std::pair<std::int32_t, const char*> lamps[] = {
        {-1, "Unknown"}, {0, "Incandesent"}, {1, "Fluorescent"}, {2, "HID"}, {3, "Unknown"}};
    for (const auto& [code, text] : lamps) {
        light.LightType(code);
        EXPECT_EQ(light.GetProps()[4], std::string("Type\t") + text);
    }
    const std::pair<std::int32_t, const char*> ballasts[] = {{-1, "Unknown"},
                                                             {0, "N/A"},
                                                             {1, "High Eff. Magnetic"},
                                                             {2, "Electronic"},
                                                             {3, "Low Distortion Electronic"},
                                                             {4, "Unknown"}};
    for (const auto& [code, text] : ballasts) {
        light.Ballast(code);
        EXPECT_EQ(light.GetProps()[5], std::string("Ballast\t") + text);
    }
    light.LightType(1);
    light.Ballast(0);
    EXPECT_EQ(light.Summary(), "Floresent lighting");
    light.Ballast(4);
    EXPECT_EQ(light.Summary(), "Floresent lighting");
}

TEST(AirCondLoad, ShowsTheSizeAsItWasEntered) {
    CAirCondLoad load;
    load.StartingPF(0.35);
    load.StartingAppPower(57120);
    load.BTU(60000);
    EXPECT_EQ(load.Summary(), "3 phase air conditioner");
    EXPECT_THAT(load.GetProps(),
                ElementsAre("ID\t0", "Name\t", "Qty\t1", "Phases\t3", "Data Entry Method\tBTU/hr",
                            "BTU/hr\t60000", "Starting PF\t0.35", "Starting kVA\t57.120"));
    load.DataEntryMethod(1);
    load.Tonnage(7.5);
    load.Phases(1);
    load.Quantity(2);
    EXPECT_EQ(load.Summary(), "1 phase air conditioners");
    EXPECT_EQ(load.GetProps()[4], "Data Entry Method\tTons");
    EXPECT_EQ(load.GetProps()[5], "Tons\t7.5");
    load.DataEntryMethod(2);
    load.HP(15);
    EXPECT_EQ(load.GetProps()[4], "Data Entry Method\tHP");
    EXPECT_EQ(load.GetProps()[5], "HP\t15");
    load.DataEntryMethod(3);
    EXPECT_EQ(load.GetProps()[4], "Data Entry Method\tERROR");
    EXPECT_EQ(load.GetProps()[5], "---\t---");
}

TEST(Loads, ListTheirOtherKinds) {
    CUPSLoad ups;
    ups.OutputRating(80000);
    ups.InputFilterInstalled(true);
    EXPECT_EQ(ups.Summary(), "UPS");
    EXPECT_THAT(ups.GetProps(),
                ElementsAre("ID\t0", "Name\t", "Qty\t1", "Phases\t3", "Output Rating (kVA)\t80.000",
                            "Loading\t100%", "Charging\t10%", "Input Filter\tYES"));
    ups.Quantity(2);
    ups.Loading(50);
    ups.Charging(0);
    ups.InputFilterInstalled(false);
    EXPECT_EQ(ups.Summary(), "UPSs");
    EXPECT_EQ(ups.GetProps()[5], "Loading\t50%");
    EXPECT_EQ(ups.GetProps()[6], "Charging\t0%");
    EXPECT_EQ(ups.GetProps()[7], "Input Filter\tNO");
    CVFDLoad drive(kNoMotors);
    EXPECT_EQ(drive.Summary(), "VFD");
    drive.MtrRating(7.5);
    drive.Quantity(2);
    EXPECT_EQ(drive.Summary(), "VFDs");
    EXPECT_THAT(drive.GetProps(),
                ElementsAre("ID\t0", "Name\t", "Qty\t2", "Phases\t3", "Motor HP\t7.5", "Drive Eff\t90%",
                            "Start/Run kVA Limit\t125%", "Input Filter\tNO"));
    drive.InputFilterInstalled(true);
    EXPECT_EQ(drive.GetProps()[7], "Input Filter\tYES");
    CBatChrgLoad charger;
    charger.BatteryVoltage(48);
    charger.ChargeCurrent(12.5);
    EXPECT_EQ(charger.Summary(), "Battery charger");
    EXPECT_THAT(charger.GetProps(),
                ElementsAre("ID\t0", "Name\t", "Qty\t1", "Phases\t3", "Type\tIndustial",
                            "Input\tFerro Resonant", "Battery Volts\t48", "Charging Current\t12.5"));
    charger.ChargerType(0);
    charger.ChargerInput(0);
    EXPECT_EQ(charger.GetProps()[4], "Type\tResidential");
    EXPECT_EQ(charger.GetProps()[5], "Input\tSCR");
    charger.ChargerType(2);
    charger.ChargerInput(2);
    EXPECT_EQ(charger.GetProps()[4], "Type\tTelecom");
    EXPECT_EQ(charger.GetProps()[5], "Input\tUnknown");
    charger.ChargerType(3);
    EXPECT_EQ(charger.GetProps()[4], "Type\tUnknown");
    charger.Quantity(2);
    EXPECT_EQ(charger.Summary(), "Battery chargers");
    CMedEquipLoad medical;
    medical.PeakVA(300000);
    medical.ContVA(50000);
    medical.PeakPowerFactor(0.85);
    medical.Phases(3);
    EXPECT_EQ(medical.Summary(), "Medical Imaging Equipment");
    medical.Quantity(2);
    EXPECT_EQ(medical.Summary(), "Medical Imaging Equipment");
    medical.Quantity(1);
    EXPECT_THAT(medical.GetProps(), ElementsAre("ID\t0", "Name\t", "Qty\t1", "Phases\t1 - C",
                                                "Peak kVA\t300.000", "Cont. kVA\t50.000", "Peak PF\t0.85",
                                                "Cont. PF\t0.9", "Max. Peak Demand Vdip\t6%"));
    COfficeLoad office;
    office.NumPCs(10);
    office.NumCopiers(1);
    EXPECT_EQ(office.Summary(), "Evenly Distributed, Office Equipment");
    EXPECT_THAT(office.GetProps(), ElementsAre("ID\t0", "Name\t", "Qty\t1", "Phases\tEven", "PCs\t10",
                                               "Printers\t0", "Faxes\t0", "Copiers\t1"));
    office.Phases(1);
    EXPECT_EQ(office.Summary(), "1 phase, Office Equipment");
    EXPECT_EQ(office.GetProps()[3], "Phases\t1 - A");
}

}  // namespace
}  // namespace genvara
