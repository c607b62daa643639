#include "LoadTrial.h"

#include <gtest/gtest.h>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "MotorCalculatorTables.h"

namespace genvara {
namespace {

/// A motor of 10 hp as a form stores it.
void Fill(CMtrLoad& motor, double startingPF) {
    motor.HP(10.0);
    motor.RunningRealPower(8000.0);
    motor.RunningAppPower(10000.0);
    motor.StartingAppPower(60000.0);
    motor.StartingPF(startingPF);
}

TEST(LoadTrial, PassesALoadThatCanBeSized) {
    CMiscLoad misc;
    misc.RunningRealPower(2000000.0);
    misc.RunningPowerFactor(0.6);
    misc.Quantity(256);
    EXPECT_FALSE(TryFigures(misc));
    EXPECT_FALSE(TryFigures(CMiscLoad()));
    EXPECT_FALSE(TryFigures(CUPSLoad()));
    EXPECT_FALSE(TryFigures(CBatChrgLoad()));
    COfficeLoad office;
    office.NumCopiers(2147483647);
    EXPECT_FALSE(TryFigures(office));
    for (const double factor : {0.0, 0.4, 1.0}) {
        CMtrLoad motor;
        Fill(motor, factor);
        EXPECT_FALSE(TryFigures(motor)) << factor;
    }
}

TEST(LoadTrial, FindsAStartingPowerFactorBeyondOne) {
    CMtrLoad motor;
    for (const double factor : {1.0001, 1.38}) {
        Fill(motor, factor);
        const auto failed = TryFigures(motor);
        ASSERT_TRUE(failed) << factor;
        EXPECT_EQ(failed->figure, LoadFigure::Starting);
        EXPECT_EQ(failed->failure.Number(), 5);
    }
    CMedEquipLoad scanner;
    scanner.ContPowerFactor(1.1);
    EXPECT_EQ(TryFigures(scanner)->figure, LoadFigure::Running);
    scanner.ContPowerFactor(1.0);
    scanner.PeakPowerFactor(1.1);
    EXPECT_EQ(TryFigures(scanner)->figure, LoadFigure::Starting);
}

TEST(LoadTrial, FindsARealPowerAboveTheApparentOne) {
    CMtrLoad motor;
    Fill(motor, 0.4);
    motor.RunningAppPower(7999.0);
    EXPECT_EQ(TryFigures(motor)->figure, LoadFigure::Running);
}

TEST(LoadTrial, FindsAStartWithoutAPowerFactor) {
    CAirCondLoad cooler;
    cooler.RunningRealPower(8000.0);
    cooler.RunningAppPower(10000.0);
    cooler.StartingAppPower(60000.0);
    EXPECT_EQ(TryFigures(cooler)->failure.Number(), 11);  // divided by it
    cooler.StartingPF(0.4);
    EXPECT_FALSE(TryFigures(cooler));
}

TEST(LoadTrial, FindsWhatAllUnitsTogetherComeTo) {
    CBatChrgLoad charger;
    charger.BatteryVoltage(1e77);
    charger.ChargeCurrent(1e75);
    EXPECT_FALSE(TryFigures(charger));  // about 1.3e152 VA, whose square a double holds
    charger.Quantity(200);              // 2.6e154 VA, whose square it does not
    const auto failed = TryFigures(charger);
    ASSERT_TRUE(failed);
    EXPECT_EQ(failed->failure.Number(), 6);
}

TEST(LoadTrial, FindsMotorTablesThatDoNotServe) {
    const MotorConversions none;
    CVFDLoad drive(none);
    drive.MtrRating(10.0);
    EXPECT_EQ(TryFigures(drive)->figure, LoadFigure::Running);
    CVFDLoad served(kMotors);
    served.MtrRating(10.0);
    EXPECT_FALSE(TryFigures(served));
}

}  // namespace
}  // namespace genvara
