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

}  // namespace
}  // namespace genvara
