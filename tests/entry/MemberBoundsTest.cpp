#include "MemberBounds.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "Load.h"

namespace genvara {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const EntryNumbers kPoint{NumberSigns{}};

/// A member, and what its form takes.
struct BoundsRow {
    std::int32_t loadType;
    const char* member;
    double least;
    double most;
    bool above;
    bool whole;
    const char* unit;
};

TEST(MemberBounds, AreThoseOfTheForms) {
    constexpr double kMostCount = 2147483647.0;
    const BoundsRow rows[] = {
        {load_type::kAirConditioning, "BTU", 0, 6250000, true, false, " BTU/hr"},
        {load_type::kAirConditioning, "Tonnage", 0, 500, true, false, " tons"},
        {load_type::kAirConditioning, "HP", 0, 1000, true, false, " HP"},
        {load_type::kBatteryCharger, "BatteryVoltage", 0, kInfinity, false, false, " V"},
        {load_type::kBatteryCharger, "ChargeCurrent", 0, kInfinity, false, false, " A"},
        {load_type::kLighting, "RunningRealPower", 0, 2000, false, false, " kW"},
        {load_type::kLighting, "RunningPowerFactor", 0.6, 1, false, false, ""},
        {load_type::kMedicalImaging, "ContVA", 0, 500, true, false, " kVA"},
        {load_type::kMedicalImaging, "PeakVA", 0, 5000, true, false, " kVA"},
        {load_type::kMedicalImaging, "ContPowerFactor", 0, 1, true, false, ""},
        {load_type::kMedicalImaging, "PeakPowerFactor", 0, 1, true, false, ""},
        {load_type::kMedicalImaging, "MaxPeakDemandVoltDip", 1, 99, false, true, "%"},
        {load_type::kMiscellaneous, "RunningRealPower", 0, 2000, false, false, " kW"},
        {load_type::kMiscellaneous, "RunningPowerFactor", 0.6, 1, false, false, ""},
        {load_type::kMotor, "HP", 0, 1000, true, false, " HP"},
        {load_type::kMotor, "RunningRealPower", 0, 798, true, false, " kW"},
        {load_type::kMotor, "RunningAmps", 0, kInfinity, true, false, " A"},
        {load_type::kMotor, "StartingAmps", 0, kInfinity, true, false, " A"},
        {load_type::kMotor, "StartingAppPower", 0, 25000, true, false, " kVA"},
        {load_type::kMotor, "StartingPF", 0, 1, false, false, ""},
        {load_type::kMotor, "SolidStateCurrentLimit", 100, 600, false, true, "%"},
        {load_type::kOffice, "NumPCs", 0, kMostCount, false, true, ""},
        {load_type::kOffice, "NumCopiers", 0, kMostCount, false, true, ""},
        {load_type::kUPS, "OutputRating", 1, 2500, false, true, " kVA"},
        {load_type::kUPS, "Loading", 50, 100, false, true, "%"},
        {load_type::kUPS, "Charging", 0, 25, false, true, "%"},
        {load_type::kVFD, "MtrRating", 0, 1000, true, false, " HP"},
        {load_type::kVFD, "Efficiency", 70, 99, false, true, "%"},
        {load_type::kVFD, "KVALimit", 100, 150, false, true, "%"},
        {load_type::kVFD, "Quantity", 1, 256, false, true, ""},
    };
    for (const BoundsRow& row : rows) {
        const NumberBounds bounds = LoadBounds(row.loadType, row.member);
        EXPECT_EQ(bounds.least, row.least) << row.member;
        EXPECT_EQ(bounds.most, row.most) << row.member;
        EXPECT_EQ(bounds.above, row.above) << row.member;
        EXPECT_EQ(bounds.whole, row.whole) << row.member;
        EXPECT_EQ(bounds.unit, row.unit) << row.member;
    }
}

TEST(MemberBounds, AreThoseOfTheSite) {
    EXPECT_EQ(BoundsNote(SiteBounds("GensetsInParallel"), kPoint), "( 1 - 16 )");
    EXPECT_EQ(BoundsNote(SiteBounds("MaxVoltageDip"), kPoint), "( 5% - 35% )");
    EXPECT_EQ(BoundsNote(SiteBounds("MaxFreqDip"), kPoint), "( 5% - 25% )");
    EXPECT_EQ(BoundsNote(SiteBounds("MaxHarmonics"), kPoint), "( 5% - 20% )");
    EXPECT_EQ(SiteBounds("Altitude").least, -500);
    EXPECT_EQ(SiteBounds("Altitude").most, 4572);
    EXPECT_EQ(SiteBounds("AmbTemp").least, -40);
    EXPECT_EQ(SiteBounds("AmbTemp").most, 66);
    EXPECT_EQ(BoundsNote(StepDipBounds(22), kPoint), "( 5% - 22% )");
    EXPECT_TRUE(StepDipBounds(22).whole);
}

TEST(MemberBounds, StandInTheFormsUnits) {
    EXPECT_EQ(PerEntryUnit("W"), 1000.0);
    EXPECT_EQ(PerEntryUnit("VA"), 1000.0);
    EXPECT_EQ(PerEntryUnit("hp"), 1.0);
    EXPECT_EQ(PerEntryUnit(""), 1.0);
}

TEST(MemberBounds, OfAPowerFactorHaveTwoDecimals) {
    EXPECT_EQ(BoundsNote(LoadBounds(load_type::kLighting, "RunningPowerFactor"), kPoint), "( 0.60 - 1.00 )");
    EXPECT_EQ(BoundsNote(LoadBounds(load_type::kMiscellaneous, "RunningPowerFactor"), kPoint),
              "( 0.60 - 1.00 )");
}

}  // namespace
}  // namespace genvara
