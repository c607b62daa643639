#include <gtest/gtest.h>

#include <functional>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

TEST(MiscLoad, IsTheSameRunningAndStarting) {
    CMiscLoad load;
    EXPECT_EQ(load.RunningAppPower(), 0.0);
    EXPECT_EQ(load.RunningImgPower(), 0.0);
    load.RunningRealPower(8000);
    load.RunningPowerFactor(0.8);  // the triangle 8, 6, 10
    EXPECT_NEAR(load.RunningAppPower(), 10000, 1e-9);
    EXPECT_NEAR(load.RunningImgPower(), 6000, 1e-9);
    EXPECT_EQ(load.StartingRealPower(), 8000);
    EXPECT_EQ(load.StartingAppPower(), load.RunningAppPower());
    EXPECT_EQ(load.StartingImgPower(), load.RunningImgPower());
    load.RunningPowerFactor(1.0);
    EXPECT_EQ(load.RunningImgPower(), 0.0);
    load.Quantity(3);
    EXPECT_EQ(load.RunningRealPower(), 8000);
}

TEST(MotorLoad, DerivesImaginaryAndStartingPower) {
    CMtrLoad motor;
    EXPECT_EQ(motor.StartingRealPower(), 0.0);
    motor.RunningRealPower(8000);
    motor.RunningAppPower(10000);
    EXPECT_NEAR(motor.RunningImgPower(), 6000, 1e-9);
    motor.StartingAppPower(50000);
    motor.StartingPF(0.6);
    EXPECT_NEAR(motor.StartingRealPower(), 30000, 1e-9);
    EXPECT_NEAR(motor.StartingImgPower(), 40000, 1e-9);
    motor.StartingPF(-10);
    EXPECT_EQ(motor.StartingRealPower(), -10.0);
    motor.RunningAppPower(7000);  // less than its real power
    EXPECT_THAT([&] { (void)motor.RunningImgPower(); },
                Raises(5, "CMtrLoad::RunningImgPower", "Invalid procedure call or argument"));
    motor.StartingPF(1.5);
    EXPECT_THAT([&] { (void)motor.StartingImgPower(); },
                Raises(5, "CMtrLoad::StartingImgPower", "Invalid procedure call or argument"));
}

TEST(MotorLoad, KeepsTheShareOfTorqueThatStarterAndDipLeave) {
    CMtrLoad motor;
    const std::pair<std::int32_t, double> cases[] = {{1, 0.64},        // 0.8 squared
                                                     {2, 0.4096},      // (0.8 x 0.8) squared
                                                     {3, 0.2704},      // (0.8 x 0.65) squared
                                                     {4, 0.451584},    // (0.8 x 0.84) squared
                                                     {5, 0.21307456},  // (0.8 x 0.577) squared
                                                     {9, 0.64}};
    for (const auto& [method, torque] : cases) {
        motor.StartingMethod(method);
        EXPECT_NEAR(motor.StartingTorque(20), torque, 1e-12) << method;
    }
    motor.StartingMethod(6);
    motor.SolidStateCurrentLimit(400);
    EXPECT_NEAR(motor.StartingTorque(20), 0.16, 1e-12);  // (0.8 x 0.5) squared
}

TEST(LightLoad, SpreadsItsBallastPowerOverThePhases) {
    CLightLoad light;
    light.RunningRealPower(30000);
    light.LightType(light_type::kFluorescent);
    light.Ballast(ballast::kElectronic);
    for (const std::int32_t phase : {1, 2, 3}) {
        EXPECT_EQ(light.SinglePhaseElectBallastPower(phase), 10000.0);
        EXPECT_EQ(light.SinglePhaseMagBallastPower(phase), 0.0);
    }
    EXPECT_EQ(light.SinglePhaseElectBallastPower(0), 0.0);
    light.Phases(2);
    EXPECT_EQ(light.SinglePhaseElectBallastPower(1), 0.0);
    EXPECT_EQ(light.SinglePhaseElectBallastPower(2), 30000.0);
    light.Ballast(ballast::kHighEffMagnetic);
    EXPECT_EQ(light.SinglePhaseElectBallastPower(2), 0.0);
    EXPECT_EQ(light.SinglePhaseMagBallastPower(2), 30000.0);
    light.Ballast(ballast::kLowDistElectronic);
    EXPECT_EQ(light.SinglePhaseElectBallastPower(2) + light.SinglePhaseMagBallastPower(2), 0.0);
    EXPECT_EQ(light.SinglePhaseRectPower(2), 0.0);
}

TEST(LightLoad, HasStartingFiguresOfItsOwn) {
    CLightLoad light;
    light.RunningRealPower(8000);
    light.RunningPowerFactor(0.8);
    light.StartingRealPower(6000);
    light.StartingPowerFactor(0.6);
    EXPECT_NEAR(light.RunningImgPower(), 6000, 1e-9);
    EXPECT_NEAR(light.StartingAppPower(), 10000, 1e-9);
    EXPECT_NEAR(light.StartingImgPower(), 8000, 1e-9);
}

TEST(AirCondLoad, WorksOutItsStartFromThePowerFactor) {
    CAirCondLoad load;
    EXPECT_EQ(load.StartingRealPower(), 0.0);
    EXPECT_THAT([&] { (void)load.StartingImgPower(); },
                Raises(11, "CAirCondLoad::StartingImgPower", "Division by zero"));
    load.StartingAppPower(50000);
    load.StartingPF(0.6);
    EXPECT_NEAR(load.StartingRealPower(), 30000, 1e-9);
    EXPECT_NEAR(load.StartingImgPower(), 40000, 1e-9);
    load.RunningRealPower(8000);
    load.RunningAppPower(10000);
    EXPECT_NEAR(load.RunningImgPower(), 6000, 1e-9);
}

TEST(UPSLoad, FollowsTheRatingOrTheLoading) {
    CUPSLoad ups;
    ups.OutputRating(100000);
    ups.Loading(60);  // plays no part here
    EXPECT_NEAR(ups.RunningAppPower(), 100000 / 0.9 * 1.1, 1e-6);
    EXPECT_NEAR(ups.RunningRealPower(), 116111.1111, 1e-3);
    ups.Family(ups_family::kOnLine);
    ups.Loading(100);
    EXPECT_NEAR(ups.RunningAppPower(), 115789.4737, 1e-3);  // 105263.1579 x 1.1
    EXPECT_NEAR(ups.RunningRealPower(), 110000, 1e-6);
    ups.Phases(1);
    EXPECT_NEAR(ups.RunningAppPower(), 122222.2222, 1e-3);   // 111111.1111 x 1.1
    EXPECT_NEAR(ups.RunningRealPower(), 103888.8889, 1e-3);  // x 0.85
    ups.Family(ups_family::kOffLine);
    EXPECT_NEAR(ups.RunningRealPower(), 116111.1111, 1e-3);  // x 0.95 on one phase too
    EXPECT_EQ(ups.StartingAppPower(), ups.RunningAppPower());
}

TEST(UPSLoad, ReportsItsRectifierByFamilyInputAndFilter) {
    CUPSLoad ups;
    ups.OutputRating(100000);
    ups.Family(ups_family::kOnLine);
    const double power = ups.RunningRealPower();
    ups.InputType(input_type::kSixPulse);
    EXPECT_EQ(ups.ThreePhaseSixPulseRectPower(), power);
    EXPECT_EQ(ups.ThreePhaseSixPulseRectFilteredPower(), 0.0);
    ups.InputFilterInstalled(true);
    EXPECT_EQ(ups.ThreePhaseSixPulseRectPower(), power);
    EXPECT_EQ(ups.ThreePhaseSixPulseRectFilteredPower(), power);
    ups.InputType(input_type::kTwelvePulse);
    EXPECT_EQ(ups.ThreePhaseSixPulseRectPower(), 0.0);
    EXPECT_EQ(ups.ThreePhaseTwelvePulseRectPower(), power);
    EXPECT_EQ(ups.ThreePhaseTwelvePulseRectFilteredPower(), power);
    ups.Family(ups_family::kOffLine);
    EXPECT_EQ(ups.ThreePhaseTwelvePulseRectPower(), 0.0);
    EXPECT_EQ(ups.ThreePhaseTwelvePulseRectFilteredPower(), ups.RunningRealPower());
    for (const std::int32_t input : {input_type::kAboveTwelvePulse, input_type::kActive}) {
        ups.InputType(input);
        EXPECT_EQ(ups.ThreePhaseSixPulseRectPower() + ups.ThreePhaseTwelvePulseRectPower() +
                      ups.ThreePhaseSixPulseRectFilteredPower() +
                      ups.ThreePhaseTwelvePulseRectFilteredPower(),
                  0.0);
    }
    ups.Family(ups_family::kOnLine);
    ups.InputType(input_type::kSinglePhase);
    ups.Phases(2);
    EXPECT_EQ(ups.SinglePhaseRectPower(2), ups.RunningRealPower());
    EXPECT_EQ(ups.SinglePhaseRectPower(1), 0.0);
    ups.Phases(0);
    EXPECT_EQ(ups.SinglePhaseRectPower(1), 0.0);
}

TEST(VFDLoad, BuildsItsFiguresOnTheMotorTables) {
    const MotorConversions motors{.MotorHP = {50, 100, 200},
                                  .MotorRunningKW = {42, 80, 160},
                                  .MotorRunningKVA = {50, 92, 180},
                                  .MotorStartPF = {0.4, 0.35, 0.3}};
    CVFDLoad drive(motors);
    drive.MtrRating(100);
    drive.Efficiency(80);
    EXPECT_NEAR(drive.RunningRealPower(), 100000, 1e-9);
    EXPECT_NEAR(drive.RunningAppPower(), 111111.1111, 1e-3);
    EXPECT_NEAR(drive.StartingAppPower(), 138888.8889, 1e-3);
    EXPECT_NEAR(drive.StartingRealPower(), 125000, 1e-6);
    drive.InputType(input_type::kSixPulse);
    drive.InputFilterInstalled(true);
    EXPECT_EQ(drive.ThreePhaseSixPulseRectPower(), drive.RunningRealPower());
    EXPECT_EQ(drive.ThreePhaseSixPulseRectFilteredPower(), drive.RunningRealPower());
    drive.InputType(input_type::kActive);
    EXPECT_EQ(drive.ThreePhaseSixPulseRectPower() + drive.ThreePhaseSixPulseRectFilteredPower(), 0.0);
    drive.InputType(input_type::kSinglePhase);
    drive.Phases(3);
    EXPECT_EQ(drive.SinglePhaseRectPower(3), drive.RunningRealPower());
    EXPECT_EQ(drive.SinglePhaseRectPower(1), 0.0);
    EXPECT_EQ(CVFDLoad(motors).RunningRealPower(), 4.0 / 0.9 * 1000.0);  // 42 - 0.76 x 50, carried on to 0 hp
}

TEST(VFDLoad, PassesOnWhatTheMotorTablesLack) {
    const MotorConversions none;
    EXPECT_THAT([&] { (void)CVFDLoad(none).RunningAppPower(); },
                Raises(0x80040003, "InterpolateXY", "Value arrays have only one point."));
    const MotorConversions twice{.MotorHP = {50, 50},
                                 .MotorRunningKW = {42, 43},
                                 .MotorRunningKVA = {50, 51},
                                 .MotorStartPF = {0.4, 0.4}};
    EXPECT_THAT([&] { (void)CVFDLoad(twice).RunningAppPower(); },
                Raises(11, "CVFDLoad::RunningRealPower", "Division by zero"));
}

struct ChargerCase {
    std::int32_t type;
    std::int32_t phases;
    double volts;
    double amperes;
    double voltAmperes;
    double watts;
};

TEST(BatteryCharger, TurnsItsOutputIntoInput) {
    const ChargerCase cases[] = {
        {2, 0, 48, 100, 5866.6667, 5573.3333},  // 5280 / 0.9, x 0.95
        {1, 0, 24, 10, 310.5882, 279.5294},     // 264 / 0.85, x 0.9
        {1, 1, 24, 10, 494.9997, 395.9997},     // 264 / 0.53333367, x 0.8
        {0, 0, 12, 10, 264.0, 211.2},           // 132 / 0.5, x 0.8
        {0, 2, 12, 10, 264.0, 211.2},          {7, 1, 10, 10, 110.0, 110.0},
        {1, 2, 119, 1, 261.8, 209.44},          // 130.9 / 0.5
        {1, 2, 1201, 1, 1651.375, 1321.1},      // 1321.1 / 0.8
        {1, 2, 121, 1, 266.0520, 212.8416},     // 133.1 / 0.5002781
        {1, 2, 120, 1, 263.9998, 211.1999},     // 132 / 0.5000003, above what a W less would give
        {1, 2, 1200, 1, 1649.9993, 1319.9994},  // 1320 / 0.8000004
    };
    for (const ChargerCase& row : cases) {
        CBatChrgLoad charger;
        EXPECT_EQ(charger.RunningAppPower(), 0.0);
        EXPECT_EQ(charger.RunningImgPower(), 0.0);
        charger.ChargerType(row.type);
        charger.Phases(row.phases);
        charger.BatteryVoltage(row.volts);
        charger.ChargeCurrent(row.amperes);
        EXPECT_NEAR(charger.RunningAppPower(), row.voltAmperes, 1e-4) << row.volts;
        EXPECT_NEAR(charger.RunningRealPower(), row.watts, 1e-4) << row.volts;
    }
}

TEST(BatteryCharger, AnswersForEveryPhaseWithItsWholePower) {
    CBatChrgLoad charger;
    charger.BatteryVoltage(48);
    charger.ChargeCurrent(100);
    EXPECT_EQ(charger.ThreePhaseSixPulseRectPower(), 0.0);
    charger.ChargerInput(charger_input::kSCR);
    EXPECT_EQ(charger.ThreePhaseSixPulseRectPower(), charger.RunningRealPower());
    EXPECT_EQ(charger.SinglePhaseRectPower(1), 0.0);
    charger.Phases(2);
    EXPECT_EQ(charger.ThreePhaseSixPulseRectPower(), 0.0);
    for (const std::int32_t phase : {1, 2, 3}) {
        EXPECT_EQ(charger.SinglePhaseRectPower(phase), charger.RunningRealPower());
    }
    charger.BatteryVoltage(1e200);
    charger.ChargeCurrent(1e200);
    EXPECT_THAT([&] { (void)charger.RunningRealPower(); },
                Raises(6, "CBatChrgLoad::SmallChargerEfficiency", "Overflow"));
    charger.Phases(0);
    EXPECT_THAT([&] { (void)charger.RunningRealPower(); },
                Raises(6, "CBatChrgLoad::RunningAppPower", "Overflow"));
}

TEST(MedicalLoad, TakesThePeakForTheStart) {
    CMedEquipLoad load;
    load.ContVA(50000);
    load.ContPowerFactor(0.8);
    load.PeakVA(300000);
    load.PeakPowerFactor(0.9);
    EXPECT_NEAR(load.RunningRealPower(), 40000, 1e-9);
    EXPECT_NEAR(load.StartingRealPower(), 270000, 1e-9);
    EXPECT_NEAR(load.RunningImgPower(), 30000, 1e-9);
    EXPECT_NEAR(load.StartingImgPower(), 130767, 1.0);  // 300000 x root of 0.19
    EXPECT_EQ(load.InputType(), 1);
    EXPECT_EQ(load.MaxPeakDemandVoltDip(), 6);
    load.ContPowerFactor(1.5);
    EXPECT_THAT([&] { (void)load.RunningImgPower(); },
                Raises(5, "CMedEquipLoad::RunningImgPower", "Invalid procedure call or argument"));
}

TEST(OfficeLoad, CountsItsMachines) {
    COfficeLoad office;
    office.NumPCs(10);
    office.NumPrinters(2);
    office.NumFaxes(1);
    office.NumCopiers(1);
    EXPECT_EQ(office.RunningRealPower(), 6000.0);
    EXPECT_NEAR(office.RunningAppPower(), 7500, 1e-9);
    EXPECT_NEAR(office.RunningImgPower(), 4500, 1e-9);
    EXPECT_EQ(office.SinglePhaseRectPower(0), 0.0);
    EXPECT_EQ(office.SinglePhaseRectPower(2), 2000.0);
    office.Phases(3);
    EXPECT_EQ(office.SinglePhaseRectPower(3), 6000.0);
    EXPECT_EQ(office.SinglePhaseRectPower(1), 0.0);
    office.NumCopiers(2147483647);
    EXPECT_NEAR(office.RunningRealPower(), 4800.0 + 1200.0 * 2147483647.0, 1.0);
}

TEST(AirCondLoad, TakesTheStartOfTheLargestCompressorExactly) {
    CAirCondLoad load;
    load.HP(1000);
    load.StartingAppPower(1000 * 5.3 * 1000);  // 1000 hp at 5.3 kVA per hp
    EXPECT_EQ(load.StartingAppPower(), 5300000.0);
    load.StartingPF(-10);
    EXPECT_EQ(load.StartingRealPower(), -10.0);
}

TEST(Loads, NameTheMemberThatCannotBeWorkedOut) {
    struct Case {
        std::function<void()> read;
        std::int32_t number;
        const char* member;
        const char* description;
    };
    constexpr const char* kInvalid = "Invalid procedure call or argument";
    CMtrLoad motor;
    motor.StartingAppPower(25000000);
    motor.StartingPF(1e305);
    motor.SolidStateCurrentLimit(0);
    motor.StartingMethod(starting_method::kSolidState);
    CMtrLoad unlimited;
    unlimited.StartingMethod(starting_method::kSolidState);
    unlimited.SolidStateCurrentLimit(-100);
    CAirCondLoad cooler;
    cooler.RunningRealPower(10000);
    cooler.RunningAppPower(8000);
    cooler.StartingAppPower(5300000);
    cooler.StartingPF(1e305);
    CMedEquipLoad medical;
    medical.ContVA(1e200);
    medical.ContPowerFactor(-1e200);
    medical.PeakVA(1e200);
    medical.PeakPowerFactor(1e200);
    CBatChrgLoad charger;
    charger.BatteryVoltage(1e100);
    charger.ChargeCurrent(1e100);  // 1e200 VA is a number, its square is not
    const Case cases[] = {
        {[&] { (void)motor.StartingRealPower(); }, 6, "CMtrLoad::StartingRealPower", "Overflow"},
        {[&] { (void)motor.StartingTorque(20); }, 11, "CMtrLoad::StartingTorque", "Division by zero"},
        {[&] { (void)unlimited.StartingTorque(20); }, 5, "CMtrLoad::StartingTorque", kInvalid},
        {[&] { (void)cooler.RunningImgPower(); }, 5, "CAirCondLoad::RunningImgPower", kInvalid},
        {[&] { (void)cooler.StartingRealPower(); }, 6, "CAirCondLoad::StartingRealPower", "Overflow"},
        {[&] { (void)cooler.StartingImgPower(); }, 5, "CAirCondLoad::StartingImgPower", kInvalid},
        {[&] { (void)medical.RunningRealPower(); }, 6, "CMedEquipLoad::RunningRealPower", "Overflow"},
        {[&] { (void)medical.StartingRealPower(); }, 6, "CMedEquipLoad::StartingRealPower", "Overflow"},
        {[&] { (void)medical.StartingImgPower(); }, 5, "CMedEquipLoad::StartingImgPower", kInvalid},
        {[&] { (void)charger.RunningImgPower(); }, 6, "CBatChrgLoad::RunningImgPower", "Overflow"},
        {[&] { (void)charger.StartingImgPower(); }, 6, "CBatChrgLoad::RunningImgPower", "Overflow"},
    };
    for (const Case& row : cases) {
        EXPECT_THAT(row.read, Raises(row.number, row.member, row.description));
    }
}

}  // namespace
}  // namespace genvara
