#include "TypographicQuotes.h"

#include <gtest/gtest.h>

namespace genvara {
namespace {

TEST(TypographicQuotes, StandInPlaceOfDoubleQuotesAndOfNothingElse) {
    EXPECT_EQ(TypographicQuotes("12\" pump"), "12\u201D pump");
    EXPECT_EQ(TypographicQuotes("\"North\" (\"B\")"), "\u201CNorth\u201D (\u201CB\u201D)");
    EXPECT_EQ(TypographicQuotes("\"\""), "\u201C\u201D");
    EXPECT_EQ(TypographicQuotes("a\r\n\"b\""), "a\r\n\u201Cb\u201D");
    EXPECT_EQ(TypographicQuotes("d'Or, 5' \u00C9t\u00E9"), "d'Or, 5' \u00C9t\u00E9");
    EXPECT_EQ(TypographicQuotes(""), "");
}

TEST(TypographicQuotes, GoOnWithWhatStandsBefore) {
    EXPECT_EQ(TypographicQuotes("\" pump", false), "\u201D pump");
    EXPECT_EQ(TypographicQuotes("\"", true), "\u201C");
}

}  // namespace
}  // namespace genvara
