#include "StringTable.h"

#include <gtest/gtest.h>

namespace genvara {
namespace {

TEST(StringTable, FindsItsFirstAndLastAndNothingBetweenIds) {
    EXPECT_EQ(StringTable::Text(10), "Morvane");
    EXPECT_EQ(StringTable::Text(12), "\\GVHelp\\Helpfile.hlp");
    EXPECT_EQ(StringTable::Text(604), "Misc. Linear Load");
    EXPECT_EQ(StringTable::Text(755), "Solid State");
    EXPECT_EQ(StringTable::Text(855), "Increase the maximum Vthd.");
    for (const std::int32_t id : {-1, 0, 9, 13, 856, 100000}) {
        EXPECT_EQ(StringTable::Text(id), "") << id;
    }
}

TEST(StringTable, HoldsEveryTextOfEachGroupAndNoOther) {
    // Counted group by group: brand 6, buttons 2, menus 22, tool tips 9, prompts 2, dialogs 3, side bar and
    // project 9, power system 17, steps and loads 6, about 7, options 6, units and duties 10, kinds 9.
    constexpr int kFrame = 6 + 2 + 22 + 9 + 2 + 3 + 9 + 17 + 6 + 7 + 6 + 10 + 9;
    // Form, common and lighting 23, air conditioning 3, UPS 10, motor 9, starting 7, warning 1, search 6.
    constexpr int kForms = 23 + 3 + 10 + 9 + 7 + 1 + 6;
    int count = 0;
    for (std::int32_t id = 0; id < 2000; ++id) {
        count += StringTable::Text(id).empty() ? 0 : 1;
    }
    EXPECT_EQ(count, kFrame + kForms);
}

}  // namespace
}  // namespace genvara
