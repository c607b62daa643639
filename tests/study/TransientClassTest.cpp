#include "TransientClass.h"

#include <gtest/gtest.h>

#include "CPwrSys.h"

namespace genvara {
namespace {

ChosenSet Dipping(std::vector<double> voltage, std::vector<double> frequency) {
    ChosenSet set;
    set.FuelType = fuel::kDiesel;
    set.VoltageDips = std::move(voltage);
    set.FreqDips = std::move(frequency);
    return set;
}

TEST(TransientClass, HasBothSidesOfEachLimit) {
    struct Case {
        double voltageDip;
        double freqDip;
        const char* name;
    };
    const Case cases[] = {
        {0.0, 0.0, "G3"},       {15.0, 7.0, "G3"},      {15.0001, 7.0, "G2"},  {15.0, 7.0001, "G2"},
        {20.0, 10.0, "G2"},     {20.0001, 10.0, "G1"},  {20.0, 10.0001, "G1"}, {25.0, 15.0, "G1"},
        {25.0001, 0.0, "none"}, {0.0, 15.0001, "none"}, {100.0, 80.0, "none"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(TransientClassOf(Dipping({row.voltageDip}, {row.freqDip})), row.name)
            << row.voltageDip << " " << row.freqDip;
    }
}

TEST(TransientClass, IsTheOneThatEveryStepKeeps) {
    EXPECT_EQ(TransientClassOf(Dipping({14.0, 3.0, 19.0}, {6.0, 1.0, 2.0})), "G2");
    EXPECT_EQ(TransientClassOf(Dipping({14.0, 3.0, 2.0}, {6.0, 11.0, 2.0})), "G1");
}

TEST(TransientClass, IsNotForOtherFuelsNorWithoutFrequencyData) {
    for (const std::int32_t code : {fuel::kAny, fuel::kNaturalGas, fuel::kLP, fuel::kGasoline}) {
        ChosenSet set = Dipping({1.0}, {1.0});
        set.FuelType = code;
        EXPECT_EQ(TransientClassOf(set), std::nullopt) << code;
    }
    ChosenSet set = Dipping({1.0}, {0.0});
    set.FreqDipAvail = false;
    EXPECT_EQ(TransientClassOf(set), std::nullopt);
}

}  // namespace
}  // namespace genvara
