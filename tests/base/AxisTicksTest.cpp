#include "AxisTicks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace genvara {
namespace {

using testing::ElementsAre;

TEST(AxisTicks, AreRoundAndHoldTheRange) {
    const AxisTicks ticks = TicksOver(-3.0, 13.0, 6);
    EXPECT_THAT(ticks.values, ElementsAre(-5.0, 0.0, 5.0, 10.0, 15.0));
    EXPECT_EQ(ticks.least, -5.0);
    EXPECT_EQ(ticks.greatest, 15.0);
    EXPECT_EQ(ticks.decimals, 0);
    const AxisTicks small = TicksOver(0.12, 0.31, 5);
    EXPECT_LE(small.least, 0.12);
    EXPECT_GE(small.greatest, 0.31);
    EXPECT_EQ(small.decimals, 2) << "steps of 0.05";
    EXPECT_LE(small.values.size(), 6U);
}

TEST(AxisTicks, OfARangeOfNothingHaveRoomAllTheSame) {
    for (const double value : {0.0, 5.0, -3.0, 1e12}) {
        const AxisTicks ticks = TicksOver(value, value, 5);
        EXPECT_LT(ticks.least, ticks.greatest) << value;
        EXPECT_GE(ticks.values.size(), 2U);
    }
    EXPECT_LT(TicksOver(std::nan(""), 1.0, 5).values.size(), 5U);
}

}  // namespace
}  // namespace genvara
