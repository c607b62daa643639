#include "KeyFilters.h"

#include <gtest/gtest.h>

namespace genvara {
namespace {

TEST(KeyFilters, NumericTakesDigitsAndOneSeparator) {
    EXPECT_EQ(NumericKeyFilter("1", U'5', "."), KeyVerdict::Pass);
    EXPECT_EQ(NumericKeyFilter("1", U'.', "."), KeyVerdict::Pass);
    EXPECT_EQ(NumericKeyFilter("1.", U'.', "."), KeyVerdict::Refuse);
    EXPECT_EQ(NumericKeyFilter("1", U'.', ","), KeyVerdict::Refuse);
    EXPECT_EQ(NumericKeyFilter("1", U',', ","), KeyVerdict::Pass);
    EXPECT_EQ(NumericKeyFilter("", U'-', "."), KeyVerdict::Refuse);
    EXPECT_EQ(NumericKeyFilter("1", kBackspace, "."), KeyVerdict::Pass);
    EXPECT_EQ(NumericKeyFilter("1", U'a', "."), KeyVerdict::Refuse);
    EXPECT_EQ(NumericKeyFilter("1", U'٣', "."), KeyVerdict::Refuse);
}

TEST(KeyFilters, NumericTakesASeparatorOfSeveralBytes) {
    const std::string arabic = "٫";  // U+066B
    EXPECT_EQ(NumericKeyFilter("1", U'٫', arabic), KeyVerdict::Pass);
    EXPECT_EQ(NumericKeyFilter("1٫", U'٫', arabic), KeyVerdict::Refuse);
    EXPECT_EQ(NumericKeyFilter("1", U'.', arabic), KeyVerdict::Refuse);
    EXPECT_EQ(NumericKeyFilter("", U'.', ""), KeyVerdict::Refuse);  // no separator at all
}

TEST(KeyFilters, DigitsAndLengths) {
    EXPECT_EQ(DigitKeyFilter(U'0'), KeyVerdict::Pass);
    EXPECT_EQ(DigitKeyFilter(kBackspace), KeyVerdict::Pass);
    EXPECT_EQ(DigitKeyFilter(U'.'), KeyVerdict::Refuse);
    EXPECT_EQ(NonZeroDigitKeyFilter(" ", U'0'), KeyVerdict::Refuse);
    EXPECT_EQ(NonZeroDigitKeyFilter("1", U'0'), KeyVerdict::Pass);
    EXPECT_EQ(NonZeroDigitKeyFilter("", U'7'), KeyVerdict::Pass);
    EXPECT_EQ(NonZeroDigitKeyFilter("", kBackspace), KeyVerdict::Pass);
    EXPECT_EQ(NonZeroDigitKeyFilter("", U'-'), KeyVerdict::Refuse);
    EXPECT_EQ(MaxLengthKeyFilter(2, 0, 3, U'1'), KeyVerdict::Pass);
    EXPECT_EQ(MaxLengthKeyFilter(4, 0, 3, U'1'), KeyVerdict::Refuse);  // longer already
    EXPECT_EQ(MaxLengthKeyFilter(3, 0, 3, U'1'), KeyVerdict::Refuse);
    EXPECT_EQ(MaxLengthKeyFilter(3, 1, 3, U'1'), KeyVerdict::Pass);
    EXPECT_EQ(MaxLengthKeyFilter(3, 0, 3, kBackspace), KeyVerdict::Pass);
}

TEST(KeyFilters, CutAtTheZeroCharacter) {
    EXPECT_EQ(StripAtNull(std::string("ab\0c", 4)), "ab");
    EXPECT_EQ(StripAtNull("abc"), "");
}

}  // namespace
}  // namespace genvara
