#include "TableNumbers.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>

namespace genvara {
namespace {

struct NumberRow {
    const char* cell;
    double number;
    const char* unit;
};

/// What a failure tells of its parameter.
void PrintTo(const NumberRow& row, std::ostream* out) {
    *out << '"' << row.cell << '"';
}

class PlainNumbers : public testing::TestWithParam<NumberRow> {};

TEST_P(PlainNumbers, AreReadByThemselves) {
    const TableFigure figure = TableNumbers().Read(GetParam().cell);
    EXPECT_EQ(figure.fault, NumberFault::None);
    EXPECT_EQ(figure.number, GetParam().number);
    EXPECT_EQ(figure.unit, GetParam().unit);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PlainNumbers,
    testing::Values(NumberRow{"15", 15, ""}, NumberRow{" 15 ", 15, ""}, NumberRow{"-3", -3, ""},
                    NumberRow{"\u22123", -3, ""}, NumberRow{"+4", 4, ""}, NumberRow{"0.85", 0.85, ""},
                    NumberRow{"0,85", 0.85, ""}, NumberRow{"1.5", 1.5, ""}, NumberRow{"1,5", 1.5, ""},
                    NumberRow{"1.2345", 1.2345, ""}, NumberRow{"0,123", 0.123, ""}, NumberRow{",5", 0.5, ""},
                    NumberRow{"1234,567", 1234.567, ""}, NumberRow{"1,234.5", 1234.5, ""},
                    NumberRow{"1.234,5", 1234.5, ""}, NumberRow{"1,234,567", 1234567, ""},
                    NumberRow{"1.234.567", 1234567, ""}, NumberRow{"12,34,567", 1234567, ""},
                    NumberRow{"12 500", 12500, ""}, NumberRow{"12\u00A0500,5", 12500.5, ""},
                    NumberRow{"12\u202F500", 12500, ""}, NumberRow{"12'500.5", 12500.5, ""},
                    NumberRow{"12\u2019500", 12500, ""}, NumberRow{"1.5E+03", 1500, ""},
                    NumberRow{"2e3", 2000, ""}, NumberRow{"15 kW", 15, "kW"}, NumberRow{"15kW", 15, "kW"},
                    NumberRow{"90%", 90, "%"}, NumberRow{"1,5 kVA", 1.5, "kVA"},
                    NumberRow{"60000 BTU/hr", 60000, "BTU/hr"}, NumberRow{"5\n", 5, ""}));

TEST(TableNumbers, OtherTextsAreNone) {
    for (const char* text : {"", "kW", "-", "1.2.3", "1,2,3", "1.234,567.8", "1 2", "--1", "=1+1", "1-2",
                             "1.2,3,4", "#REF!", "1 1/2"}) {
        EXPECT_EQ(TableNumbers().Read(text).fault, NumberFault::NoNumber) << text;
    }
}

/// What a number means behind cells from which the table's writing is learnt.
TableFigure Behind(std::initializer_list<const char*> cells, const char* cell,
                   std::optional<char> usual = {}) {
    TableNumbers numbers;
    for (const char* each : cells) {
        numbers.Learn(each);
    }
    numbers.Usual(usual);
    return numbers.Read(cell);
}

TEST(TableNumbers, WhatMayBeEitherIsReadAsTheOthersAreWritten) {
    EXPECT_EQ(Behind({}, "1,234").fault, NumberFault::Ambiguous);
    EXPECT_EQ(Behind({}, "1.234").fault, NumberFault::Ambiguous);
    EXPECT_EQ(Behind({"7", "1,234", "x"}, "1,234").fault, NumberFault::Ambiguous);
    EXPECT_EQ(Behind({"0,85"}, "1,234").number, 1.234);
    EXPECT_EQ(Behind({"0,85"}, "1.234").number, 1234);
    EXPECT_EQ(Behind({"0.85"}, "1,234").number, 1234);
    EXPECT_EQ(Behind({"0.85"}, "1.234").number, 1.234);
    EXPECT_EQ(Behind({"1,234,567"}, "1.234").number, 1.234);  // a comma that parts thousands
    EXPECT_EQ(Behind({"1.234.567"}, "1,234").number, 1.234);
    EXPECT_EQ(Behind({"15,5 kW"}, "1.234").number, 1234);
    EXPECT_EQ(Behind({"0,85", "0.85"}, "1.234").fault, NumberFault::Ambiguous);
}

TEST(TableNumbers, WithoutAnyOtherTheUsualSignCounts) {
    EXPECT_EQ(Behind({}, "1.234", '.').number, 1.234);
    EXPECT_EQ(Behind({}, "1.234", ',').number, 1234);
    EXPECT_EQ(Behind({"0,85"}, "1.234", '.').number, 1234);  // the table knows better
    EXPECT_EQ(Behind({"0,85", "0.85"}, "1.234", '.').fault, NumberFault::Ambiguous);
}

}  // namespace
}  // namespace genvara
