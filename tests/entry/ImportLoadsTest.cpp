// What rows of a table become, kind by kind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "ImportFixture.h"

namespace genvara {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kRounding = 1e-9;

TEST(ImportLoads, AMiscellaneousLoad) {
    const ImportFixture fixture;
    const ImportedTable table =
        fixture.Read("Type,Name,Qty,kW,pF,Description\nMisc.,Heater,3,12.5,0.8,roof\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& load = fixture.Only<CMiscLoad>(table);
    EXPECT_EQ(load.name(), "Heater");
    EXPECT_EQ(load.Description(), "roof");
    EXPECT_EQ(load.Quantity(), 3);
    EXPECT_EQ(load.Phases(), 0);
    EXPECT_EQ(load.RunningRealPower(), 12500);
    EXPECT_EQ(load.RunningPowerFactor(), 0.8);
    // 3 x 12.5 kW; 37.5 / 0.8 = 46.875 kVA, running and starting.
    EXPECT_THAT(table.rows[0].figures->runningKW, DoubleNear(37.5, kRounding));
    EXPECT_THAT(table.rows[0].figures->runningKVA, DoubleNear(46.875, kRounding));
    EXPECT_THAT(table.rows[0].figures->startingKW, DoubleNear(37.5, kRounding));
    EXPECT_THAT(table.rows[0].figures->startingKVA, DoubleNear(46.875, kRounding));
}

TEST(ImportLoads, WhatARowLeavesOpenIsWhatItsFormOpensWith) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read("Type,kW\nMisc. Linear Load,2\n");
    const auto& load = fixture.Only<CMiscLoad>(table);
    EXPECT_EQ(load.name(), "<Misc. Load>");
    EXPECT_EQ(load.Quantity(), 1);
    EXPECT_EQ(load.RunningPowerFactor(), 1.0);
    const ImportFixture singlePhase(1);
    EXPECT_EQ(singlePhase.Only<CMiscLoad>(singlePhase.Read("Type,kW\nMisc,2\n")).Phases(), 1);
}

TEST(ImportLoads, AMotorBySizeHasItsUsualLetterAndStart) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read("Type,HP,Phases\nMotor,50,3\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& motor = fixture.Only<CMtrLoad>(table);
    EXPECT_EQ(motor.name(), "<Motor>");
    EXPECT_EQ(motor.DataEntryMethod(), motor_entry::kHorsepower);
    EXPECT_EQ(motor.HP(), 50);
    EXPECT_EQ(motor.CodeLetter(), "F");  // from 15 hp
    EXPECT_EQ(motor.StartingMethod(), starting_method::kAcrossTheLine);
    EXPECT_TRUE(motor.StartsLoaded());
    EXPECT_FALSE(motor.FirePump());
    EXPECT_EQ(motor.SolidStateCurrentLimit(), 300);
    EXPECT_THAT(motor.RunningRealPower(), DoubleNear(40000, kRounding));  // 50 x 0.8 kW
    EXPECT_THAT(motor.RunningAppPower(), DoubleNear(50000, kRounding));
    EXPECT_EQ(motor.StartingAppPower(), 265000);  // 50 hp x 5.3 kVA/hp
    EXPECT_EQ(motor.StartingPF(), 0.4);
}

TEST(ImportLoads, AMotorWithStarterLetterAndUnloadedStart) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,Horsepower,Start,Code letter,Loaded,Fire pump,Phases\nMotor,20,Wye-Delta,k,no,yes,B\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& motor = fixture.Only<CMtrLoad>(table);
    EXPECT_EQ(motor.StartingMethod(), starting_method::kWyeDelta);
    EXPECT_EQ(motor.CodeLetter(), "K");
    EXPECT_FALSE(motor.StartsLoaded());
    EXPECT_TRUE(motor.FirePump());
    EXPECT_EQ(motor.Phases(), 2);
    EXPECT_EQ(motor.StartingAppPower(), 59400);                    // 20 hp x 9 kVA/hp x 0.33
    EXPECT_THAT(motor.StartingPF(), DoubleNear(0.26, kRounding));  // 0.4 x 0.65
}

TEST(ImportLoads, WhatIsTypedOverAMotorsStartStands) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read("Type,HP,Starting kVA,Starting pF\nMotor,20,77.5,0.33\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& motor = fixture.Only<CMtrLoad>(table);
    EXPECT_EQ(motor.StartingAppPower(), 77500);
    EXPECT_EQ(motor.StartingPF(), 0.33);
    EXPECT_EQ(motor.CodeLetter(), "F");
}

TEST(ImportLoads, AMotorWithASoftStarter) {
    const ImportFixture fixture;
    const auto limited = [&](const char* limit) {
        const ImportedTable table =
            fixture.Read(std::string("Type,HP,Starting method,Current limit\nMotor,50,Solid State,") + limit);
        return fixture.Only<CMtrLoad>(table).StartingAppPower();
    };
    EXPECT_EQ(limited(""), 150000);  // 300 % of 50 kVA
    EXPECT_EQ(limited("250"), 125000);
    EXPECT_EQ(limited("600"), 265000);  // the locked rotor is less than 300 kVA
}

TEST(ImportLoads, AMotorByRunningKW) {
    const ImportFixture fixture;
    for (const char* text :
         {"Type,kW\nMotor,40\n", "Type,Running kW\nMotor,40\n", "Type,Power [W]\nMotor,40000\n",
          "Type,RunningRealPower\nMotor,40000\n", "Type,Power\nMotor,40 kW\n"}) {
        const ImportedTable table = fixture.Read(text);
        ASSERT_THAT(LinesOf(table), IsEmpty()) << text;
        const auto& motor = fixture.Only<CMtrLoad>(table);
        EXPECT_EQ(motor.DataEntryMethod(), motor_entry::kRunningKW);
        EXPECT_THAT(motor.RunningRealPower(), DoubleNear(40000, kRounding));
        EXPECT_THAT(motor.RunningAppPower(), DoubleNear(50000, 1e-6));
        EXPECT_EQ(motor.StartingAppPower(), 265000);
    }
}

/// What a motor is sold by, in kW: 30 kW / 0.74569987158 kW a horsepower = 40.23066...
TEST(ImportLoads, ARatingInKilowattsIsThatOfTheShaft) {
    constexpr double kHorsepower = 40.230662;
    constexpr double kDigits = 1e-6;
    const ImportFixture fixture;
    for (const char* text :
         {"Type,Motor rating [kW]\nMotor,30\n", "Type,Rating (kW)\nMotor,30\n", "Type,Size\nMotor,30 kW\n",
          "Type,Rated power [W]\nMotor,30000\n", "Type,HP\nMotor,30 kW\n"}) {
        const ImportedTable table = fixture.Read(text);
        ASSERT_THAT(LinesOf(table), IsEmpty()) << text;
        const auto& motor = fixture.Only<CMtrLoad>(table);
        EXPECT_EQ(motor.DataEntryMethod(), motor_entry::kHorsepower) << text;
        EXPECT_THAT(motor.HP(), DoubleNear(kHorsepower, kDigits)) << text;
        EXPECT_THAT(motor.RunningRealPower(), DoubleNear(kHorsepower * 800, 1e-2)) << text;  // 0.8 kW a hp
        EXPECT_THAT(table.notes, IsEmpty()) << text;
    }
    for (const char* text : {"Type,Motor rating [kW]\nVFD,30\n", "Type,Motor rating\nVFD,30 kW\n",
                             "Type,Size [kW]\nDrive,30\n"}) {
        const ImportedTable table = fixture.Read(text);
        ASSERT_THAT(LinesOf(table), IsEmpty()) << text;
        EXPECT_THAT(fixture.Only<CVFDLoad>(table).MtrRating(), DoubleNear(kHorsepower, kDigits)) << text;
    }
    // 3 / 0.7457 = 4.0231
    EXPECT_THAT(LinesOf(fixture.Read("Type,Motor rating [kW]\nMotor,-3\n")),
                ElementsAre(testing::HasSubstr("Horsepower: -4.02 is out of range.")));
    // What a drive takes from the line is none of its figures, and a compressor's kW may be those of cooling.
    EXPECT_THAT(LinesOf(fixture.Read("Type,Running [kW]\nVFD,30\n")), testing::Not(IsEmpty()));
    EXPECT_THAT(LinesOf(fixture.Read("Type,Rating [kW]\nAir Conditioning,30\n")), testing::Not(IsEmpty()));
}

TEST(ImportLoads, HowAMotorsSizeWasReadIsTold) {
    const ImportFixture fixture;
    const std::string drawn =
        "\" is read as what a motor takes from the line while it runs. Head the column \"Motor rating [kW]\" "
        "if "
        "it is what the motor gives at its shaft.";
    const ImportedTable power = fixture.Read("Type,Power [kW]\nMotor,30\nMotor,20\nMisc,5\n");
    EXPECT_THAT(power.notes, ElementsAre("\"Power [kW]" + drawn));
    EXPECT_EQ(fixture.Only<CMtrLoad>(power).RunningRealPower(), 30000);
    EXPECT_THAT(fixture.Read("Type,kW\nMotor,30\n").notes, ElementsAre("\"kW" + drawn));
    EXPECT_THAT(fixture.Read("Type,kW\nMisc,30\n").notes, IsEmpty());
    EXPECT_THAT(fixture.Read("Type,Running kW\nMotor,30\n").notes, IsEmpty());
    EXPECT_THAT(
        fixture.Read("Type,Motor rating\nVFD,30\n").notes,
        ElementsAre("\"Motor rating\" names no unit and is read in hp. Head the column \"Motor rating "
                    "[kW]\" if it is in kW."));
    EXPECT_THAT(fixture.Read("Type,Motor size,HP\nMotor,30,\nVFD,,40\n").notes,
                ElementsAre(testing::HasSubstr("\"Motor size\" names no unit")));
    EXPECT_THAT(fixture.Read("Type,Motor rating [hp]\nVFD,30\n").notes, IsEmpty());
}

TEST(ImportLoads, AMotorByAmps) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read("Type,Starting Amps,Running Amps,Phase\nMotor,300,60.5,A\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& motor = fixture.Only<CMtrLoad>(table);
    EXPECT_EQ(motor.DataEntryMethod(), motor_entry::kAmps);
    EXPECT_EQ(motor.StartingAmps(), 300);
    EXPECT_EQ(motor.RunningAmps(), 60.5);
    // On one phase 60.5 A x 480 V = 29.04 kVA, which a motor of 29.04 hp takes: 23.232 kW, 29.04 x 5.3 kVA.
    EXPECT_THAT(motor.RunningAppPower(), DoubleNear(29040, 1e-6));
    EXPECT_THAT(motor.RunningRealPower(), DoubleNear(23232, 1e-6));
    EXPECT_EQ(motor.StartingAppPower(), 153910);  // 153.912 kVA as the field shows it
    const ImportedTable three = fixture.Read("Type,Starting Amps,Running Amps\nMotor,300,60.5\n");
    // x 1.7320508 on three phases: 50.298755 kVA.
    EXPECT_THAT(fixture.Only<CMtrLoad>(three).RunningAppPower(), DoubleNear(50298.755, 0.001));
}

TEST(ImportLoads, LightingBringsItsBallastAndStartsWithWhatItRunsWith) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,Running kW,Running pF,Lamp,Ballast\nLighting,30,0.95,Fluorescent,Electronic\n"
        "Lighting,4,,Incandescent,\nLighting,5,0.9,High Intensity Discharge,\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& light = fixture.Only<CLightLoad>(table);
    EXPECT_EQ(light.LightType(), light_type::kFluorescent);
    EXPECT_EQ(light.Ballast(), ballast::kElectronic);
    EXPECT_EQ(light.RunningRealPower(), 30000);
    EXPECT_EQ(light.StartingRealPower(), 30000);
    EXPECT_EQ(light.RunningPowerFactor(), 0.95);
    EXPECT_EQ(light.StartingPowerFactor(), 0.95);
    EXPECT_EQ(light.SinglePhaseElectBallastPower(2), 10000);  // a third
    EXPECT_EQ(dynamic_cast<const CLightLoad&>(*table.rows[1].load).Ballast(), ballast::kNone);
    EXPECT_EQ(dynamic_cast<const CLightLoad&>(*table.rows[2].load).Ballast(), ballast::kHighEffMagnetic);
}

TEST(ImportLoads, AnAirConditionerByEachOfItsSizes) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,BTU/hr,Tons,Compressor HP\nAir Conditioning,60000,,\nA/C,,5,\nAirConditioner,,,9.6\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto airCond = [&](std::size_t row) -> const CAirCondLoad& {
        return dynamic_cast<const CAirCondLoad&>(*table.rows[row].load);
    };
    EXPECT_EQ(airCond(0).BTU(), 60000);
    EXPECT_THAT(airCond(0).StartingAppPower(), DoubleNear(57120, 1e-6));  // 9.6 hp x 5.95 kVA/hp
    EXPECT_THAT(airCond(0).RunningRealPower(), DoubleNear(7680, 1e-6));   // 9.6 x 0.8 kW
    EXPECT_EQ(airCond(1).Tonnage(), 5);
    EXPECT_THAT(airCond(1).StartingAppPower(), DoubleNear(59500, 1e-6));  // 10 hp x 5.95
    EXPECT_EQ(airCond(2).HP(), 9.6);
    EXPECT_EQ(airCond(2).StartingPF(), 0.4);
}

TEST(ImportLoads, AUPSByFamilyAndPhases) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,Rating,Family,Phases,Loading,Charging,UPS Type,Input filter\n"
        "UPS,100,On Line,3,100,10,12 pulse,yes\nUPS,50,,,,,,\nUPS,20 kVA,On-Line,C,80%,5 %,,\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto ups = [&](std::size_t row) -> const CUPSLoad& {
        return dynamic_cast<const CUPSLoad&>(*table.rows[row].load);
    };
    EXPECT_EQ(ups(0).Family(), ups_family::kOnLine);
    EXPECT_EQ(ups(0).InputType(), input_type::kTwelvePulse);
    EXPECT_TRUE(ups(0).InputFilterInstalled());
    // 100 / 0.95 x 1.1 = 115.789 kVA, x 0.95 = 110 kW.
    EXPECT_THAT(ups(0).RunningRealPower(), DoubleNear(110000, 1e-6));
    EXPECT_EQ(ups(1).Family(), ups_family::kFastTransfer);
    EXPECT_EQ(ups(1).InputType(), input_type::kSixPulse);
    EXPECT_THAT(ups(1).RunningAppPower(), DoubleNear(61111.111, 0.001));  // 50 / 0.9 x 1.1
    EXPECT_EQ(ups(2).Phases(), 3);
    EXPECT_EQ(ups(2).InputType(), input_type::kSinglePhase);
    EXPECT_EQ(ups(2).Loading(), 80);
    EXPECT_EQ(ups(2).Charging(), 5);
    EXPECT_THAT(ups(2).RunningAppPower(), DoubleNear(18666.667, 0.001));  // 0.8 x 20 / 0.9 x 1.05
}

TEST(ImportLoads, ADrive) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,HP,Efficiency [%],Start kVA Limit,VFD Type,Input filter,Phases\nVFD,100,80,150,>12 pulse,no,3\n"
        "Drive,50,,,,,B\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto drive = [&](std::size_t row) -> const CVFDLoad& {
        return dynamic_cast<const CVFDLoad&>(*table.rows[row].load);
    };
    EXPECT_EQ(drive(0).MtrRating(), 100);
    EXPECT_EQ(drive(0).InputType(), input_type::kAboveTwelvePulse);
    EXPECT_THAT(drive(0).RunningRealPower(), DoubleNear(100000, 1e-6));       // 80 kW / 0.8
    EXPECT_THAT(drive(0).StartingAppPower(), DoubleNear(166666.667, 0.001));  // / 0.9 x 1.5
    EXPECT_EQ(drive(1).Efficiency(), 90);
    EXPECT_EQ(drive(1).KVALimit(), 125);
    EXPECT_EQ(drive(1).InputType(), input_type::kSinglePhase);
}

TEST(ImportLoads, ABatteryCharger) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,Battery voltage,Charge current,Application,Charger input,Phases\n"
        "Battery Charger,48,100,Telecom,,3\nCharger,24 V,10 "
        "A,Industrial,SCR,A\nCharger,12,20,Residential,,B\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto charger = [&](std::size_t row) -> const CBatChrgLoad& {
        return dynamic_cast<const CBatChrgLoad&>(*table.rows[row].load);
    };
    EXPECT_EQ(charger(0).ChargerType(), charger_type::kTelecom);
    EXPECT_EQ(charger(0).ChargerInput(), charger_input::kFerroResonant);
    EXPECT_THAT(charger(0).RunningAppPower(), DoubleNear(5866.667, 0.001));  // 48 x 1.1 x 100 / 0.9
    EXPECT_EQ(charger(1).ChargerInput(), charger_input::kSCR);
    EXPECT_THAT(charger(1).RunningRealPower(), DoubleNear(396.0, 0.1));  // 264 / 0.53333 x 0.8
    EXPECT_EQ(charger(2).ChargerType(), charger_type::kResidential);
    EXPECT_EQ(charger(2).Phases(), 2);
}

TEST(ImportLoads, MedicalImaging) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,Continuous kVA,Continuous pF,Max. Peak kVA,Peak pF,Max. voltage dip\n"
        "Medical Imaging,50,0.8,300,0.9,7\nMedical Equipment,10,,20,,\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& load = fixture.Only<CMedEquipLoad>(table);
    EXPECT_THAT(load.RunningRealPower(), DoubleNear(40000, kRounding));
    EXPECT_THAT(load.StartingRealPower(), DoubleNear(270000, kRounding));
    EXPECT_EQ(load.MaxPeakDemandVoltDip(), 7);
    const auto& fresh = dynamic_cast<const CMedEquipLoad&>(*table.rows[1].load);
    EXPECT_EQ(fresh.ContPowerFactor(), 0.9);
    EXPECT_EQ(fresh.PeakPowerFactor(), 0.9);
    EXPECT_EQ(fresh.MaxPeakDemandVoltDip(), 6);
}

TEST(ImportLoads, OfficeEquipment) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,PCs,Printers,Fax Machines,Copiers,Phases\nOffice Equipment,10,2,1,1,C\nOffice,,3,,,even\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& load = fixture.Only<COfficeLoad>(table);
    EXPECT_EQ(load.RunningRealPower(), 6000);  // 3000 + 1200 + 600 + 1200 W
    EXPECT_EQ(load.Phases(), 3);
    const auto& printers = dynamic_cast<const COfficeLoad&>(*table.rows[1].load);
    EXPECT_EQ(printers.NumPCs(), 0);
    EXPECT_EQ(printers.NumPrinters(), 3);
    EXPECT_EQ(printers.Phases(), 0);
}

TEST(ImportLoads, ADecimalCommaThousandsAndUnitsComeToTheSame) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Typ;Type;Power [W];pF [%]\nx;Misc;12.500;80\ny;Misc;12.500,5;0,8 pu\nz;Misc;1,25 kW;\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto misc = [&](std::size_t row) -> const CMiscLoad& {
        return dynamic_cast<const CMiscLoad&>(*table.rows[row].load);
    };
    EXPECT_EQ(misc(0).RunningRealPower(), 12500);
    EXPECT_EQ(misc(0).RunningPowerFactor(), 0.8);
    EXPECT_EQ(misc(1).RunningRealPower(), 12500.5);
    EXPECT_EQ(misc(1).RunningPowerFactor(), 0.8);
    EXPECT_EQ(misc(2).RunningRealPower(), 1250);
    EXPECT_THAT(table.notes,
                ElementsAre("The column \"Typ\" means nothing here and is passed over. Is it \"Type\"?"));
}

TEST(ImportLoads, AFormulaIsATextAndADoubleQuoteATypographicOne) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read(
        "Type,Name,Description,kW\nMisc,\"=HYPERLINK(\"\"http://x\"\")\",\"@sum\r\n+1\t-2\",1\n");
    ASSERT_THAT(LinesOf(table), IsEmpty());
    const auto& load = fixture.Only<CMiscLoad>(table);
    EXPECT_EQ(load.name(), "=HYPERLINK(\u201Chttp://x\u201D)");
    EXPECT_EQ(load.Description(), "@sum +1 -2");
}

}  // namespace
}  // namespace genvara
