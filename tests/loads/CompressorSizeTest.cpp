#include "CompressorSize.h"

#include <gtest/gtest.h>

#include <cmath>

#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

/// Motors whose figures can be worked out in the head; the largest takes what a load takes at most.
const MotorConversions kMotors{.MotorHP = {0, 10, 20, 1000},
                               .MotorRunningKW = {0, 8, 16, 798},
                               .MotorRunningKVA = {0, 10, 18, 887},
                               .MotorStartPF = {0.6, 0.5, 0.4, 0.2}};

TEST(CompressorSize, GivesAllPowers) {
    const struct {
        std::int32_t method;
        double size;
        double running;   // W
        double apparent;  // VA
        double starting;  // VA
        double startingPF;
    } rows[] = {// 60000 x 0.00016 = 9.6 hp: 9.6 x 0.8 kW, 9.6 x 1 kVA, 9.6 x 5.95 kVA; 0.6 - 0.96 x 0.1
                {aircond_entry::kBTU, 60000.0, 7680.0, 9600.0, 57120.0, 0.504},
                // 5 x 2 = 10 hp, a knot: 8 kW, 10 kVA, 10 x 5.95 kVA
                {aircond_entry::kTonnage, 5.0, 8000.0, 10000.0, 59500.0, 0.5},
                // 15 hp: 12 kW, 14 kVA, 15 x 5.3 kVA; midway between 0.5 and 0.4
                {aircond_entry::kHorsepower, 15.0, 12000.0, 14000.0, 79500.0, 0.45},
                // 14.99 hp: 14.99 x 5.95 = 89.1905 kVA; kW 11.992; kVA 10 + 0.8 x 4.99; 0.5 - 0.01 x 4.99
                {aircond_entry::kHorsepower, 14.99, 11992.0, 13992.0, 89190.5, 0.4501},
                // 0.5 hp: 0.4 kW, 0.5 kVA, 0.5 x 10.6 kVA; 0.6 - 0.05 x 0.1
                {aircond_entry::kHorsepower, 0.5, 400.0, 500.0, 5300.0, 0.595},
                // the largest: 1000 x 5.3 kVA
                {aircond_entry::kHorsepower, 1000.0, 798000.0, 887000.0, 5300000.0, 0.2},
                {aircond_entry::kTonnage, 500.0, 798000.0, 887000.0, 5300000.0, 0.2},
                // 6250000 x 0.00016 is 1000 and one rounding step above it
                {aircond_entry::kBTU, 6250000.0, 798000.0, 887000.0, 5300000.0, 0.2}};
    for (const auto& row : rows) {
        CAirCondLoad load;
        StoreCompressorSize(load, row.method, row.size, kMotors);
        EXPECT_EQ(load.DataEntryMethod(), row.method);
        EXPECT_DOUBLE_EQ(load.RunningRealPower(), row.running);
        EXPECT_DOUBLE_EQ(load.RunningAppPower(), row.apparent);
        EXPECT_DOUBLE_EQ(load.StartingAppPower(), row.starting);
        EXPECT_DOUBLE_EQ(load.StartingPF(), row.startingPF);
    }
}

TEST(CompressorSize, LeavesTheOtherSizesOut) {
    constexpr double kNone = -10.0;
    const struct {
        std::int32_t method;
        double btu;
        double tons;
        double horsepower;
    } rows[] = {{aircond_entry::kBTU, 40.0, kNone, kNone},
                {aircond_entry::kTonnage, kNone, 40.0, kNone},
                {aircond_entry::kHorsepower, kNone, kNone, 40.0}};
    for (const auto& before : rows) {
        for (const auto& row : rows) {
            CAirCondLoad load;
            StoreCompressorSize(load, before.method, 40.0, kMotors);
            StoreCompressorSize(load, row.method, 40.0, kMotors);
            EXPECT_EQ(load.BTU(), row.btu);
            EXPECT_EQ(load.Tonnage(), row.tons);
            EXPECT_EQ(load.HP(), row.horsepower);
        }
    }
}

TEST(CompressorSize, RefusesWhatIsOutOfRange) {
    CAirCondLoad load;
    const auto store = [&](std::int32_t method, double size) {
        return [&load, method, size] { StoreCompressorSize(load, method, size, kMotors); };
    };
    EXPECT_THAT(store(aircond_entry::kHorsepower, 0.0),
                Raises(15, "CAirCondLoad::HP", "Horsepower must be greater than 0."));
    EXPECT_THAT(store(aircond_entry::kHorsepower, 1000.1),
                Raises(15, "CAirCondLoad::HP", "Horsepower must be less than 1000.0."));
    EXPECT_THAT(store(aircond_entry::kBTU, 0.0),
                Raises(20, "CAirCondLoad::BTU", "BTU/hr must be greater than 0."));
    EXPECT_THAT(store(aircond_entry::kBTU, 6250001.0),
                Raises(20, "CAirCondLoad::BTU", "BTU/hr must be less than 6250000."));
    EXPECT_THAT(store(aircond_entry::kTonnage, 500.1),
                Raises(21, "CAirConLoad::Tonnage", "A/C tonnage must be less than 500.00."));
    EXPECT_THAT(store(aircond_entry::kBTU, std::nextafter(6250000.0, 7e6)),
                Raises(20, "CAirCondLoad::BTU", "BTU/hr must be less than 6250000."));
}

}  // namespace
}  // namespace genvara
