#include "EntryNumbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <limits>

#include "GermanLocale.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

const EntryNumbers kPoint({.decimal = ".", .grouping = ","});
const EntryNumbers kComma({.decimal = ",", .grouping = "."});
const EntryNumbers kPlainPoint{NumberSigns{}};

TEST(EntryNumbers, ReadNumbersInTheUsersSeparator) {
    EXPECT_EQ(kComma.Number("12,5"), 12.5);
    EXPECT_EQ(kPoint.Number(" 12.5 "), 12.5);
    EXPECT_EQ(kComma.Read("-7"), -7.0);
    EXPECT_EQ(kComma.Integer("12,5"), 12);
    EXPECT_EQ(kPoint.Integer("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(kPoint.FromKilo("12.5"), 12500.0);
    for (const char* text : {"", " ", "abc", "1,2,3", "12.5", "1e999"}) {
        EXPECT_EQ(kComma.Read(text), std::nullopt) << text;
        EXPECT_THAT([&] { (void)kComma.Number(text); }, Raises(13, "EntryNumbers", "Type mismatch")) << text;
        EXPECT_THAT([&] { (void)kComma.Integer(text); }, Raises(13, "EntryNumbers", "Type mismatch")) << text;
    }
    EXPECT_THAT([] { (void)kPoint.Integer("2147483648"); }, Raises(6, "EntryNumbers", "Overflow"));
    EXPECT_THAT([] { (void)kPoint.FromKilo("1e306"); }, Raises(6, "EntryNumbers", "Overflow"));
}

TEST(EntryNumbers, KnowWholeNumbersFromBrokenOnes) {
    EXPECT_EQ(kPoint.Whole("20"), 20);
    EXPECT_EQ(kPoint.Whole("20.0000009"), 20);
    EXPECT_EQ(kPoint.Whole("19.9999991"), 20);
    for (const char* text : {"20.000001", "20.5", "19.999999"}) {
        EXPECT_THAT([&] { (void)kPoint.Whole(text); }, Raises(13, "EntryNumbers", "Type mismatch")) << text;
    }
}

TEST(EntryNumbers, ReadASeparatorOfSeveralBytes) {
    const EntryNumbers arabic({.decimal = "٫"});  // U+066B
    EXPECT_EQ(arabic.Read("1٫5"), 1.5);
    EXPECT_EQ(arabic.Read("1٫5٫2"), std::nullopt);
    EXPECT_EQ(arabic.Plain(1.5), "1٫5");
}

TEST(EntryNumbers, ABadTextIsNeitherEmptyNorANumber) {
    EXPECT_FALSE(kPoint.IsBad(""));
    EXPECT_FALSE(kPoint.IsBad("12.5"));
    EXPECT_FALSE(kComma.IsBad("12,5"));
    EXPECT_TRUE(kComma.IsBad("12.5"));
    EXPECT_TRUE(kPoint.IsBad("12,5"));
    EXPECT_TRUE(kPoint.IsBad("abc"));
}

TEST(EntryNumbers, ShowFiguresInTheUsersSeparator) {
    EXPECT_EQ(kComma.Plain(0.85), "0,85");
    EXPECT_EQ(kComma.Plain(85.0), "85");
    EXPECT_EQ(kComma.Fixed(0.9, 2), "0,90");
    EXPECT_EQ(kPoint.Rounded(328.084), "328.1");
    EXPECT_EQ(kComma.Rounded(-3.25), "-3,3");  // half away from zero
    EXPECT_EQ(kPoint.Rounded(25.04), "25");
    EXPECT_EQ(kComma.Kilo(1234.5), "1,2345");
}

TEST(EntryNumbers, AWholeNumberLosesWhatItsValueHasNot) {
    const struct {
        const char* text;
        const char* left;
    } rows[] = {{"007", "7"},
                {"0", "0"},
                {"", ""},
                {" ", " "},
                {"2,5", "2"},
                {"3,5", "4"},  // halves to the even one
                {"abc", "abc"},
                {"1.5", "1.5"},  // no separator of this locale
                {"99999999999", "99999999999"}};
    for (const auto& row : rows) {
        EXPECT_EQ(kComma.WholeText(row.text), row.left) << row.text;
    }
}

TEST(EntryNumbers, TakeAPastedNumberWithoutWhatStandsAroundIt) {
    const char* const texts[] = {
        "15",       "15\r\n",   "\t15",     " 15 ",
        "15\r",     "15\n\n",   "\u00A015", "15\u00A0\r\n",  // no-break spaces
        "\u202F15", "15\u2009", "\uFEFF15", "\u200B15\t\r\n",
    };
    for (const char* text : texts) {
        EXPECT_EQ(kPoint.AsTyped(text), "15") << text;
    }
    EXPECT_EQ(kPoint.AsTyped("\u221240.5"), "-40.5");  // a minus sign
    EXPECT_EQ(kPoint.AsTyped(" \t\r\n"), "");
    EXPECT_EQ(kPoint.AsTyped("1 5"), "1 5") << "a blank within is no grouping of this locale";
    EXPECT_EQ(kPoint.AsTyped("a lot"), "a lot");
}

TEST(EntryNumbers, TakeAPastedNumberWithoutItsGrouping) {
    const struct {
        const EntryNumbers& numbers;
        const char* text;
        const char* typed;
    } rows[] = {{kPoint, "1,000", "1000"},
                {kPoint, "-12,345,678.9", "-12345678.9"},
                {kPoint, "6,250,000\r\n", "6250000"},
                {kPoint, "1,23,456", "123456"},  // as in India
                {kPoint, "1,00", "1,00"},        // none: a decimal comma?
                {kPoint, "1,0000", "1,0000"},
                {kPoint, ",100", ",100"},
                {kPoint, "1234,567", "1234,567"},
                {kPoint, "0.123,456", "0.123,456"},
                {kComma, "1.000", "1000"},
                {kComma, "12.345,6", "12345,6"},
                {kComma, "12.5", "12.5"},
                {kPlainPoint, "1,000", "1,000"}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.numbers.AsTyped(row.text), row.typed) << row.text;
    }
    const EntryNumbers french({.decimal = ",", .grouping = "\u202F"});
    EXPECT_EQ(french.AsTyped("1\u202F234\u202F567,5"), "1234567,5");
    EXPECT_EQ(french.AsTyped("1\u00A0234"), "1234") << "another blank for the same";
    EXPECT_EQ(french.AsTyped("1 23"), "1 23");
}

TEST(EntryNumbers, TrimsBlanksAlone) {
    EXPECT_EQ(Trimmed("  Pump 1 "), "Pump 1");
    EXPECT_EQ(Trimmed("   "), "");
    EXPECT_EQ(Trimmed("\tPump"), "\tPump");
}

TEST(EntryNumbers, SignsAreThoseOfTheEnvironmentAlone) {
    const GermanLocale german;
    if (!german.IsBuilt()) {
        GTEST_SKIP() << "no localedef, or no sources of locales, on this machine";
    }
    GermanLocale::UseForNumbers();
    EXPECT_EQ(DecimalSeparator(), ",");
    EXPECT_EQ(UserNumberSigns().grouping, ".");
    EXPECT_STREQ(localeconv()->decimal_point, ".");  // the process keeps its own
    setenv("LC_NUMERIC", "C", 1);
    EXPECT_EQ(DecimalSeparator(), ".");
    setenv("LC_NUMERIC", "no_SUCH", 1);
    EXPECT_EQ(DecimalSeparator(), ".");
}

}  // namespace
}  // namespace genvara
