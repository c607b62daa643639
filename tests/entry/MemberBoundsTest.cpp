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
    bool above;
    bool whole;
    const char* member;
    double least;
    double most;
    const char* unit;
};

TEST(MemberBounds, AreThoseOfTheForms) {
    constexpr double kMostCount = 2147483647.0;
    const BoundsRow rows[] = {
        {load_type::kAirConditioning, true, false, "BTU", 0, 6250000, " BTU/hr"},
        {load_type::kAirConditioning, true, false, "Tonnage", 0, 500, " tons"},
        {load_type::kAirConditioning, true, false, "HP", 0, 1000, " HP"},
        {load_type::kBatteryCharger, false, false, "BatteryVoltage", 0, kInfinity, " V"},
        {load_type::kBatteryCharger, false, false, "ChargeCurrent", 0, kInfinity, " A"},
        {load_type::kLighting, false, false, "RunningRealPower", 0, 2000, " kW"},
        {load_type::kLighting, false, false, "RunningPowerFactor", 0.6, 1, ""},
        {load_type::kMedicalImaging, true, false, "ContVA", 0, 500, " kVA"},
        {load_type::kMedicalImaging, true, false, "PeakVA", 0, 5000, " kVA"},
        {load_type::kMedicalImaging, true, false, "ContPowerFactor", 0, 1, ""},
        {load_type::kMedicalImaging, true, false, "PeakPowerFactor", 0, 1, ""},
        {load_type::kMedicalImaging, false, true, "MaxPeakDemandVoltDip", 1, 99, "%"},
        {load_type::kMiscellaneous, false, false, "RunningRealPower", 0, 2000, " kW"},
        {load_type::kMiscellaneous, false, false, "RunningPowerFactor", 0.6, 1, ""},
        {load_type::kMotor, true, false, "HP", 0, 1000, " HP"},
        {load_type::kMotor, true, false, "RunningRealPower", 0, 798, " kW"},
        {load_type::kMotor, true, false, "RunningAmps", 0, kInfinity, " A"},
        {load_type::kMotor, true, false, "StartingAmps", 0, kInfinity, " A"},
        {load_type::kMotor, true, false, "StartingAppPower", 0, 25000, " kVA"},
        {load_type::kMotor, false, false, "StartingPF", 0, 1, ""},
        {load_type::kMotor, false, true, "SolidStateCurrentLimit", 100, 600, "%"},
        {load_type::kOffice, false, true, "NumPCs", 0, kMostCount, ""},
        {load_type::kOffice, false, true, "NumCopiers", 0, kMostCount, ""},
        {load_type::kUPS, false, true, "OutputRating", 1, 2500, " kVA"},
        {load_type::kUPS, false, true, "Loading", 50, 100, "%"},
        {load_type::kUPS, false, true, "Charging", 0, 25, "%"},
        {load_type::kVFD, true, false, "MtrRating", 0, 1000, " HP"},
        {load_type::kVFD, false, true, "Efficiency", 70, 99, "%"},
        {load_type::kVFD, false, true, "KVALimit", 100, 150, "%"},
        {load_type::kVFD, false, true, "Quantity", 1, 256, ""},
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
