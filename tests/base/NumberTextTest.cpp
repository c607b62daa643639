#include "NumberText.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>

namespace genvara {
namespace {

struct FixedCase {
    double value;
    int decimals;
    const char* text;
};

TEST(RenderFixed, RoundsHalfAwayFromZeroOnTheDecimalForm) {
    // 0.285 and 1.005 lie below their decimal forms as doubles; at 15 significant digits they are exact.
    const FixedCase cases[] = {
        {0.285, 2, "0.29"},
        {1.005, 2, "1.01"},
        {2.5, 0, "3"},
        {-2.5, 0, "-3"},
        {0.5, 0, "1"},
        {0.49999, 0, "0"},
        {12.5, 2, "12.50"},
        {0.0, 3, "0.000"},
        {-0.0, 2, "0.00"},
        {-0.004, 2, "0.00"},
        {-0.005, 2, "-0.01"},
        {999.995, 2, "1000.00"},
        {9.9995, 3, "10.000"},
        {123456789.125, 2, "123456789.13"},
        {0.0004, 3, "0.000"},
        {0.0005, 3, "0.001"},
        {1e15, 0, "1000000000000000"},
        {1e-300, 3, "0.000"},
    };
    for (const FixedCase& row : cases) {
        EXPECT_EQ(RenderFixed(row.value, row.decimals), row.text) << row.value;
    }
}

TEST(RenderPlain, ShowsFifteenSignificantDigitsWithoutTrailingZeros) {
    const std::pair<double, const char*> cases[] = {
        {1000.0, "1000"},
        {0.85, "0.85"},
        {-10.0, "-10"},
        {0.0, "0"},
        {-0.0, "0"},
        {1.0 / 3.0, "0.333333333333333"},
        {2.0 / 3.0, "0.666666666666667"},
        {200.0 / 3.0, "66.6666666666667"},
        {1e20, "1E+20"},
        {1.5e100, "1.5E+100"},
        {999999999999999.0, "999999999999999"},
        {1e15, "1E+15"},
        {0.00001, "0.00001"},
        {1e-15, "0.000000000000001"},
        {1e-16, "1E-16"},
        {1.0 / 3e6, "3.33333333333333E-07"},
        {0.1 + 0.2, "0.3"},
        {21.1111111111, "21.1111111111"},
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(RenderPlain(value), text) << value;
    }
}

TEST(ParseNumber, ReadsWholeDecimalNumbersOnly) {
    const std::pair<const char*, double> good[] = {
        {"1000", 1000.0}, {"0.85", 0.85}, {".85", 0.85},   {"5.", 5.0},    {" 7 ", 7.0},
        {"-3", -3.0},     {"+3", 3.0},    {"1E+20", 1e20}, {"1e-5", 1e-5}, {"1E-400", 0.0},
    };
    for (const auto& [text, value] : good) {
        EXPECT_EQ(ParseNumber(text), value) << text;
    }
    for (const char* text :
         {"", " ", ".", "-", "nan", "inf", "1E400", "0x10", "1,5", "1 2", "12a", "1E", "--1", "#TRUE#"}) {
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    }
}

TEST(ParseNumber, ReadsBackWhatPlainNumbersShow) {
    EXPECT_TRUE(rc::check("plain text is within the fifteenth digit", [](double value) {
        RC_PRE(std::isfinite(value) && (value == 0.0 || std::abs(value) > 1e-290));
        const std::optional<double> back = ParseNumber(RenderPlain(value));
        RC_ASSERT(back.has_value());
        RC_ASSERT(std::abs(*back - value) <= 1e-14 * std::abs(value));
    }));
    EXPECT_TRUE(rc::check("shortest text is exact", [](double value) {
        RC_PRE(std::isfinite(value) && (value == 0.0 || std::abs(value) > 1e-290));
        RC_ASSERT(ParseNumber(RenderShortest(value)) == value);
    }));
}

TEST(RoundToInteger, TakesHalvesToTheEvenNeighbourAndRefusesTheRest) {
    EXPECT_EQ(RoundToInteger(2.5), 2);
    EXPECT_EQ(RoundToInteger(3.5), 4);
    EXPECT_EQ(RoundToInteger(-0.5), 0);
    EXPECT_EQ(RoundToInteger(2147483647.0), 2147483647);
    EXPECT_EQ(RoundToInteger(2147483648.0), std::nullopt);
    EXPECT_EQ(RoundToInteger(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

}  // namespace
}  // namespace genvara
