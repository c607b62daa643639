#include "NumberBounds.h"

#include <gtest/gtest.h>

#include "CMtrLoad.h"
#include "MotorEntry.h"
#include "SiteEntry.h"

namespace genvara {
namespace {

const EntryNumbers kPoint{NumberSigns{}};
const EntryNumbers kComma({.decimal = ","});

TEST(NumberBounds, StandBehindTheirField) {
    const NumberBounds factor{.least = 0.6, .most = 1, .decimals = 2};
    EXPECT_EQ(BoundsNote({.most = 2000, .unit = " kW"}, kPoint), "( 0 - 2000 kW )");
    EXPECT_EQ(BoundsNote(factor, kPoint), "( 0.60 - 1.00 )");
    EXPECT_EQ(BoundsNote(factor, kComma), "( 0,60 - 1,00 )");
    EXPECT_EQ(BoundsNote({.least = 50, .most = 100, .unit = "%"}, kPoint), "( 50% - 100% )");
    EXPECT_EQ(BoundsNote({.least = 1, .most = 16}, kPoint), "( 1 - 16 )");
}

TEST(NumberBounds, SayWhatTheyWant) {
    EXPECT_EQ(WantedText({.most = 25, .unit = "%"}, kPoint), "Enter 0 to 25 %.");
    EXPECT_EQ(WantedText({.least = 0.6, .most = 1, .decimals = 2}, kComma), "Enter 0,60 to 1,00.");
    EXPECT_EQ(WantedText({.most = 1000, .above = true, .unit = " HP"}, kPoint),
              "Enter a number above 0, up to 1000 HP.");
    EXPECT_EQ(WantedText({.above = true, .unit = " A"}, kPoint), "Enter a number above 0 A.");
    EXPECT_EQ(WantedText({.unit = " V"}, kPoint), "Enter 0 V or more.");
}

TEST(NumberBounds, ComplainOfWhatIsBeyondThemAndOfNothingElse) {
    const NumberBounds quantity{.name = "Quantity", .least = 1, .most = 256, .whole = true};
    const NumberBounds factor{.name = "pF", .least = 0.6, .most = 1.0, .decimals = 2};
    const NumberBounds rating{.name = "Motor Rating", .most = 1000, .above = true, .unit = " HP"};
    const NumberBounds dip{
        .name = "Max. Voltage Dip  (%)", .least = 5, .most = 35, .whole = true, .unit = "%"};
    const struct {
        const NumberBounds& bounds;
        const char* text;
        const char* complaint;
    } rows[] = {
        {quantity, "1", ""},
        {quantity, " 256 ", ""},
        {quantity, "", "Quantity is blank. Enter 1 to 256."},
        {quantity, "  ", "Quantity is blank. Enter 1 to 256."},
        {quantity, "0", "Quantity: 0 is out of range. Enter 1 to 256."},
        {quantity, "257", "Quantity: 257 is out of range. Enter 1 to 256."},
        {quantity, "2,5", "Quantity: 2,5 is no whole number. Enter 1 to 256."},
        {quantity, "2,0000001", ""},
        {quantity, "many", "Quantity: many is no number. Enter 1 to 256."},
        {quantity, "123456789012345678901234567890",
         "Quantity: 123456789012345678901234... is out of range. Enter 1 to 256."},
        {factor, "0,6", ""},
        {factor, "0,5999", "pF: 0,5999 is out of range. Enter 0,60 to 1,00."},
        {factor, "1", ""},
        {factor, "1,0001", "pF: 1,0001 is out of range. Enter 0,60 to 1,00."},
        {rating, "0", "Motor Rating: 0 is out of range. Enter a number above 0, up to 1000 HP."},
        {rating, "0,001", ""},
        {rating, "1000", ""},
        {rating, "1000,1", "Motor Rating: 1000,1 is out of range. Enter a number above 0, up to 1000 HP."},
        {dip, "36", "Max. Voltage Dip: 36 is out of range. Enter 5 to 35 %."}};
    for (const auto& row : rows) {
        EXPECT_EQ(Complaint(row.bounds, row.text, kComma), row.complaint) << row.text;
    }
}

TEST(MotorEntry, BoundsFollowTheEntryMethod) {
    EXPECT_EQ(WantedText(MotorPowerBounds(motor_entry::kHorsepower), kPoint),
              "Enter a number above 0, up to 1000 HP.");
    EXPECT_EQ(WantedText(MotorPowerBounds(motor_entry::kRunningKW), kPoint),
              "Enter a number above 0, up to 798 kW.");
    EXPECT_EQ(Complaint(MotorPowerBounds(motor_entry::kAmps), "", kPoint),
              "Starting Amps is blank. Enter a number above 0 A.");
}

TEST(SiteEntry, ShowsFiguresInTheUsersUnits) {
    EXPECT_EQ(SiteText(SiteFigure::Altitude, 152.4, false, kPoint), "500");  // x 3.28084
    EXPECT_EQ(SiteText(SiteFigure::Altitude, 152.46, true, kComma), "152,5");
    EXPECT_EQ(SiteText(SiteFigure::AmbTemp, 21.1111111111, false, kPoint), "70");
    EXPECT_EQ(UnitString(SiteFigure::Altitude, true), 500);
    EXPECT_EQ(UnitString(SiteFigure::Altitude, false), 501);
    EXPECT_EQ(UnitString(SiteFigure::AmbTemp, true), 502);
    EXPECT_EQ(UnitString(SiteFigure::AmbTemp, false), 503);
}

TEST(SiteEntry, StoresWhatWasEnteredInSI) {
    EXPECT_EQ(InSI(SiteFigure::Altitude, 15000.0, false), 4572.0);
    EXPECT_EQ(InSI(SiteFigure::AmbTemp, 150.8, false), 66.0) << "and not a rounding error above it";
    EXPECT_EQ(InSI(SiteFigure::AmbTemp, 150.8, true), 150.8);
}

TEST(SiteEntry, ConvertsATextThatIsANumber) {
    EXPECT_EQ(ConvertedText(SiteFigure::Altitude, "100", false, kPoint), "328.1");
    EXPECT_EQ(ConvertedText(SiteFigure::Altitude, "328,1", true, kComma), "100");
    EXPECT_EQ(ConvertedText(SiteFigure::AmbTemp, "77", true, kPoint), "25");
    EXPECT_EQ(ConvertedText(SiteFigure::AmbTemp, "25", false, kPoint), "77");
    EXPECT_EQ(ConvertedText(SiteFigure::AmbTemp, "hot", false, kPoint), std::nullopt);
}

TEST(SiteEntry, ComplainsInTheUnitsThatAreShown) {
    const struct {
        SiteFigure figure;
        bool metric;
        const char* text;
        const char* complaint;
    } rows[] = {
        {SiteFigure::Altitude, true, "4572", ""},
        {SiteFigure::Altitude, true, "4572.1", "Figure: 4572.1 is out of range. Enter -500 to 4572 meters."},
        {SiteFigure::Altitude, true, "-500", ""},
        {SiteFigure::Altitude, true, "-500.1", "Figure: -500.1 is out of range. Enter -500 to 4572 meters."},
        {SiteFigure::Altitude, false, "15000", ""},
        // 15000.1 ft x 0.3048 = 4572.03 m
        {SiteFigure::Altitude, false, "15000.1",
         "Figure: 15000.1 is out of range. Enter -1640.4 to 15000 feet."},
        {SiteFigure::Altitude, false, "-1640.4", ""},  // -499.99 m
        {SiteFigure::AmbTemp, false, "150.8", ""},
        {SiteFigure::AmbTemp, false, "150.9", "Figure: 150.9 is out of range. Enter -40 to 150.8 F."},
        {SiteFigure::AmbTemp, false, "-40", ""},
        {SiteFigure::AmbTemp, true, "-40.1", "Figure: -40.1 is out of range. Enter -40 to 66 C."},
        {SiteFigure::AmbTemp, true, "", "Figure is blank. Enter -40 to 66 C."},
        {SiteFigure::AmbTemp, true, "hot", "Figure: hot is no number. Enter -40 to 66 C."}};
    for (const auto& row : rows) {
        EXPECT_EQ(SiteComplaint(row.figure, "Figure", row.text, row.metric, kPoint), row.complaint)
            << row.text;
    }
}

}  // namespace
}  // namespace genvara
