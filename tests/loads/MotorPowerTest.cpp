#include "MotorPower.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CAirCondLoad.h"
#include "CMiscLoad.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

/// Two sizes between which, and behind which, all is a line.
const MotorConversions kMotors{
    .MotorHP = {1, 10}, .MotorRunningKW = {0.9, 8}, .MotorRunningKVA = {1.5, 10}, .MotorStartPF = {0.7, 0.4}};

MotorPower Power(const MotorSize& size) {
    return RunningPowerOf(size, kMotors, "test");
}

TEST(MotorPower, OfHorsepower) {
    // Half way between the sizes: 0.9 + 7.1 / 2 = 4.45 kW, and half way again 1.5 + 8.5 / 2 = 5.75 kVA.
    const MotorPower power = Power({.method = motor_entry::kHorsepower, .figure = 5.5});
    EXPECT_DOUBLE_EQ(power.watts, 4450);
    EXPECT_DOUBLE_EQ(power.voltAmperes, 5750);
}

TEST(MotorPower, OfARunningPowerInTheUnitThatItIsLookedUpIn) {
    const MotorPower form =
        Power({.method = motor_entry::kRunningKW, .figure = 4.45, .unit = RunningUnit::Kilowatts});
    EXPECT_DOUBLE_EQ(form.watts, 4450);
    EXPECT_DOUBLE_EQ(form.voltAmperes, 5750);
    // 4442 behind the last row at its slope of 8.5 / 7.1: 10 + 5317.887... and no factor.
    const MotorPower reader =
        Power({.method = motor_entry::kRunningKW, .figure = 4450, .unit = RunningUnit::Watts});
    EXPECT_DOUBLE_EQ(reader.watts, 4450);
    EXPECT_NEAR(reader.voltAmperes, 5327.887324, 1e-6);
}

TEST(MotorPower, OfACurrentOnOnePhaseOrThree) {
    // 20 A x 480 V = 9.6 kVA; 0.9 + 7.1 x 8.1 / 8.5 = 7.665882 kW
    for (const std::int32_t phases : {1, 2, 3}) {
        const MotorPower power =
            Power({.method = motor_entry::kAmps, .figure = 20, .phases = phases, .volts = 480});
        EXPECT_DOUBLE_EQ(power.voltAmperes, 9600);
        EXPECT_NEAR(power.watts, 7665.882353, 1e-6);
    }
    // times the root of 3: 16.627688 kVA, and 8 + 7.1 x 6.627688 / 8.5 = 13.536069 kW
    const MotorPower power = Power({.method = motor_entry::kAmps, .figure = 20, .phases = 0, .volts = 480});
    EXPECT_NEAR(power.voltAmperes, 16627.687753, 1e-6);
    EXPECT_NEAR(power.watts, 13536.068593, 1e-6);
}

TEST(MotorPower, OfAMethodThatIsNoneIsNone) {
    for (const std::int32_t method : {-1, 3}) {
        const MotorPower power = Power({.method = method, .figure = 5});
        EXPECT_EQ(power.watts, 0);
        EXPECT_EQ(power.voltAmperes, 0);
    }
}

TEST(MotorPower, BeyondADoubleIsAnOverflowOfWhoAsked) {
    EXPECT_THAT([] { (void)Power({.method = motor_entry::kAmps, .figure = 1e308, .volts = 480}); },
                Raises(6, "test", "Overflow"));
    EXPECT_THAT([] { (void)Power({.method = motor_entry::kHorsepower, .figure = 1e307}); },
                Raises(6, "test", "Overflow"));
}

TEST(RebuildPowers, WorksAMotorOutByItsMethod) {
    CMtrLoad motor;
    motor.DataEntryMethod(motor_entry::kHorsepower);
    motor.HP(5.5);
    RebuildPowers(motor, 480, kMotors);
    EXPECT_DOUBLE_EQ(motor.RunningRealPower(), 4450);
    EXPECT_DOUBLE_EQ(motor.RunningAppPower(), 5750);
    motor.DataEntryMethod(motor_entry::kRunningKW);
    motor.RunningRealPower(4450);
    RebuildPowers(motor, 480, kMotors);
    EXPECT_DOUBLE_EQ(motor.RunningRealPower(), 4450);
    EXPECT_NEAR(motor.RunningAppPower(), 5327.887324, 1e-6);
    motor.DataEntryMethod(motor_entry::kAmps);
    motor.RunningAmps(20);
    motor.StartingAmps(999);
    motor.Phases(3);
    RebuildPowers(motor, 480, kMotors);
    EXPECT_DOUBLE_EQ(motor.RunningAppPower(), 9600);
    EXPECT_NEAR(motor.RunningRealPower(), 7665.882353, 1e-6);
}

TEST(RebuildPowers, OfAMethodThatIsNoneAreRefused) {
    CMtrLoad motor;
    motor.DataEntryMethod(3);
    EXPECT_THAT([&] { RebuildPowers(motor, 480, kMotors); },
                Raises(17, "CMtrLoad::RunningRealPower", "Running real power out of range."));
}

TEST(RebuildPowers, WorksACompressorOutAndLeavesOtherKindsAlone) {
    CAirCondLoad compressor;
    compressor.DataEntryMethod(aircond_entry::kTonnage);
    compressor.Tonnage(2.75);  // 5.5 hp, in the band of 6.7 kVA per horsepower
    RebuildPowers(compressor, 480, kMotors);
    EXPECT_DOUBLE_EQ(compressor.RunningRealPower(), 4450);
    EXPECT_DOUBLE_EQ(compressor.RunningAppPower(), 5750);
    EXPECT_DOUBLE_EQ(compressor.StartingAppPower(), 36850);
    EXPECT_DOUBLE_EQ(compressor.StartingPF(), 0.55);
    CMiscLoad misc;
    misc.RunningRealPower(1000);
    RebuildPowers(misc, 480, {});
    EXPECT_EQ(misc.RunningRealPower(), 1000);
}

}  // namespace
}  // namespace genvara
