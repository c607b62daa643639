#include "PropertyText.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "Properties.h"

namespace genvara {
namespace {

const PropertyFacts& FactsOf(std::string_view kind, std::string_view name) {
    for (const RecordKind& record : RecordKinds()) {
        for (const PropertyFacts* facts : record.members) {
            if (record.name == kind && facts->name == name) {
                return *facts;
            }
        }
    }
    throw std::out_of_range(std::string(name));
}

TEST(PropertyText, TellsBounds) {
    EXPECT_EQ(BoundsText({}), "");
    EXPECT_EQ(BoundsText(Range<double>{-0.5, 10.0}), "-0.5 to 10");
    EXPECT_EQ(BoundsText(PositiveRange{1000.0}), "above 0 up to 1000");
    EXPECT_EQ(BoundsText(Bounds(1.0, std::nullopt)), "1 and above");
    EXPECT_EQ(BoundsText(Bounds(std::nullopt, 100.0)), "100 and below");
}

TEST(PropertyText, BoundsHoldTheirEdgesUnlessTheyAreAboveThem) {
    EXPECT_TRUE(Bounds(Range<std::int32_t>{5, 35}).Hold(5));
    EXPECT_TRUE(Bounds(Range<std::int32_t>{5, 35}).Hold(35));
    EXPECT_FALSE(Bounds(Range<std::int32_t>{5, 35}).Hold(4.999));
    EXPECT_FALSE(Bounds(Range<std::int32_t>{5, 35}).Hold(35.001));
    EXPECT_FALSE(Bounds(PositiveRange{10}).Hold(0));
    EXPECT_TRUE(Bounds(PositiveRange{10}).Hold(5e-324));
    EXPECT_TRUE(Bounds(PositiveRange{10}).Hold(10));
    EXPECT_TRUE(Bounds().Hold(1e308));
}

TEST(PropertyText, TellsWhatIsExpected) {
    EXPECT_EQ(ExpectedText(FactsOf("PowerSystem", "Altitude")), "a number from -500 to 4572");
    EXPECT_EQ(ExpectedText(FactsOf("Motor", "HP")), "a number above 0 up to 1000");
    EXPECT_EQ(ExpectedText(FactsOf("Motor", "StartingPF")), "a number");
    EXPECT_EQ(ExpectedText(FactsOf("Office", "NumPCs")), "a whole number 0 and above");
    EXPECT_EQ(ExpectedText(FactsOf("PowerSystem", "Voltage")), "a whole number");
    EXPECT_EQ(ExpectedText(FactsOf("PowerSystem", "Phases")), "1 or 3");
    EXPECT_EQ(ExpectedText(FactsOf("Motor", "FirePump")), "true or false");
    EXPECT_EQ(ExpectedText(FactsOf("Motor", "name")), "a text");
    EXPECT_EQ(ExpectedText(FactsOf("Motor", "CodeLetter")), "a text of one character");
    EXPECT_EQ(ExpectedText(FactsOf("Motor", "Phases")),
              "a code: \"3 Phase\", \"Phase A\", \"Phase B\", \"Phase C\" or a number from 0 to 3");
    EXPECT_EQ(ExpectedText(FactsOf("BatteryCharger", "ChargerInput")),
              "a code: \"SCR\", \"Ferro Resonant\" or a number");
    EXPECT_EQ(ExpectedText(FactsOf("Project", "Created")), "a date as \"yyyy-mm-ddThh:mm:ss\"");
}

TEST(PropertyText, ShowsValues) {
    const PropertyFacts& fuel = FactsOf("PowerSystem", "Fuel");
    EXPECT_EQ(ValueText(fuel, 3), "L.P.");
    EXPECT_EQ(ValueText(fuel, 9), "9");
    EXPECT_EQ(ValueText(FactsOf("PowerSystem", "ConnectCode"), 3), "3");
    EXPECT_EQ(ValueText(FactsOf("PowerSystem", "Altitude"), 0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(ValueText(FactsOf("Motor", "FirePump"), false), "false");
    EXPECT_EQ(ValueText(FactsOf("Motor", "name"), "Pump"), "Pump");
    EXPECT_EQ(ValueText(FactsOf("Project", "Created"), DateTime{2026, 1, 2, 3, 4, 5}), "2026-01-02T03:04:05");
}

TEST(PropertyText, NamesCodesLetterForLetter) {
    const PropertyFacts& method = FactsOf("Motor", "StartingMethod");
    EXPECT_EQ(CodeOfName(method, "Autotransformer w/ 65% Tap"), 3);
    EXPECT_EQ(CodeOfName(method, "autotransformer w/ 65% tap"), std::nullopt);
    EXPECT_EQ(NameOfCode(method, 6), "Solid State");
    EXPECT_EQ(NameOfCode(method, 7), std::nullopt);
}

TEST(PropertyText, ReadsDatesOfOneForm) {
    EXPECT_EQ(ParseIso("1899-12-30T00:00:00"), DateTime{});
    EXPECT_EQ(ParseIso("2026-11-21T23:59:59"), (DateTime{2026, 11, 21, 23, 59, 59}));
    for (const char* text : {"", "2026-11-21", "2026-11-21 23:59:59", "2026-11-21T23:59",
                             "2026-11-31T00:00:00", "2026-11-21T24:00:00", "2026-11-21T23:59:59Z"}) {
        EXPECT_EQ(ParseIso(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace genvara
