#include "OddMembers.h"

#include <gtest/gtest.h>

#include <string>

#include "AllKindsOfLoad.h"
#include "CBatChrgLoad.h"
#include "CMedEquipLoad.h"
#include "CMtrLoad.h"
#include "CUPSLoad.h"
#include "LoadFactory.h"

namespace genvara {
namespace {

TEST(OddMembers, AreNoneOfFreshLoads) {
    for (const LoadKindRow& kind : LoadKindRows()) {
        const bool sizeless =
            kind.loadType == load_type::kMedicalImaging;  // its powers of 0 cannot be entered
        EXPECT_EQ(OddMembers(*kind.make(kCopyMotors)), sizeless ? "continuous demand and peak demand" : "")
            << kind.name;
    }
}

TEST(OddMembers, AreSharesBeyondOneAndBelowNothing) {
    CMtrLoad motor;
    for (const double sound : {0.0, 0.4, 1.0}) {
        motor.StartingPF(sound);
        EXPECT_EQ(OddMembers(motor), "") << sound;
    }
    for (const double odd : {-0.01, 1.01}) {
        motor.StartingPF(odd);
        EXPECT_EQ(OddMembers(motor), "starting power factor") << odd;
    }
}

TEST(OddMembers, AreAllOfThem) {
    CBatChrgLoad charger;
    charger.BatteryVoltage(-480.0);
    EXPECT_EQ(OddMembers(charger), "battery voltage");
    charger.ChargeCurrent(-0.5);
    EXPECT_EQ(OddMembers(charger), "battery voltage and charge current");
    charger.BatteryVoltage(0.0);
    EXPECT_EQ(OddMembers(charger), "charge current");
}

TEST(OddMembers, AreNoCodes) {
    CUPSLoad supply;
    supply.Family(7);
    EXPECT_EQ(OddMembers(supply), "");
}

TEST(OddMembers, AreThoseThatTheFormRefusesAndTheRecordTakes) {
    CMedEquipLoad scanner;
    scanner.ContPowerFactor(1.0);
    scanner.PeakPowerFactor(1.0);
    scanner.ContVA(500000.0);
    scanner.PeakVA(5000000.0);
    EXPECT_EQ(OddMembers(scanner), "");
    scanner.ContVA(500001.0);
    EXPECT_EQ(OddMembers(scanner), "continuous demand");
    scanner.ContVA(1.0);
    scanner.PeakPowerFactor(1.2);
    EXPECT_EQ(OddMembers(scanner), "peak power factor");
}

TEST(OddMembers, CountACurrentLimitWhereItLimits) {
    CMtrLoad motor;
    motor.SolidStateCurrentLimit(99);
    motor.StartingMethod(starting_method::kAcrossTheLine);
    EXPECT_EQ(OddMembers(motor), "");
    motor.StartingMethod(starting_method::kSolidState);
    EXPECT_EQ(OddMembers(motor), "current limit of the solid-state starter");
    motor.SolidStateCurrentLimit(100);
    EXPECT_EQ(OddMembers(motor), "");
}

TEST(OddMembers, AreNoneOfAnotherEntryMethod) {
    CMtrLoad motor;
    motor.StartingAmps(-7.0);
    EXPECT_EQ(OddMembers(motor), "");
    motor.DataEntryMethod(motor_entry::kAmps);
    motor.RunningAmps(7.0);
    EXPECT_EQ(OddMembers(motor), "starting amps");
}

}  // namespace
}  // namespace genvara
