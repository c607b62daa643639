#include "FiguresText.h"

#include <gtest/gtest.h>

#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "MotorCalculatorTables.h"

namespace genvara {
namespace {

const EntryNumbers kPoint(NumberSigns{.decimal = "."});

TEST(FiguresText, TellsRunningAndStartingPowerOfOneUnit) {
    CMtrLoad motor;
    motor.RunningRealPower(8000.0);
    motor.RunningAppPower(10000.0);
    motor.StartingAppPower(60000.0);
    motor.StartingPF(0.4);
    // 0.4 × 60 kVA = 24 kW.
    EXPECT_EQ(FiguresText(motor, kPoint), "Running 8.00 kW, 10.00 kVA. Starting 24.00 kW, 60.00 kVA.");
}

TEST(FiguresText, TellsThoseOfAllUnitsAndOfOne) {
    CMiscLoad load;
    load.RunningRealPower(12500.0);
    load.RunningPowerFactor(0.8);
    load.Quantity(3);
    // 12.5 / 0.8 = 15.625, three of them 46.875.
    EXPECT_EQ(
        FiguresText(load, kPoint),
        "Running 37.50 kW, 46.88 kVA (3 × 12.50, 15.63). Starting 37.50 kW, 46.88 kVA (3 × 12.50, 15.63).");
    EXPECT_EQ(
        FiguresText(load, EntryNumbers(NumberSigns{.decimal = ","})),
        "Running 37,50 kW, 46,88 kVA (3 × 12,50, 15,63). Starting 37,50 kW, 46,88 kVA (3 × 12,50, 15,63).");
}

}  // namespace
}  // namespace genvara
