#include "mdlUtility.h"

#include <gtest/gtest.h>

#include <cmath>

#include "RaisedErrorMatcher.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

TEST(InterpolateXY, WalksTheTableAndCarriesItsEndsOn) {
    const std::vector<double> X{1.0, 2.0, 4.0};
    const std::vector<double> Y{10.0, 30.0, 40.0};
    EXPECT_EQ(InterpolateXY(1.0, X, Y), 10.0);
    EXPECT_EQ(InterpolateXY(4.0, X, Y), 40.0);
    EXPECT_EQ(InterpolateXY(1.5, X, Y), 20.0);  // half of 20 above 10
    EXPECT_EQ(InterpolateXY(3.0, X, Y), 35.0);  // 5 a unit above 30
    EXPECT_EQ(InterpolateXY(0.0, X, Y), -10.0);
    EXPECT_EQ(InterpolateXY(6.0, X, Y), 50.0);
}

TEST(InterpolateXY, GivesTheStoredValueOnAKnotBitForBit) {
    const std::vector<double> X{0.1, 0.7, 1.3};
    const std::vector<double> Y{1.0 / 3.0, 1.0 / 7.0, 1.0 / 11.0};
    for (std::size_t i = 0; i < X.size(); ++i) {
        EXPECT_EQ(InterpolateXY(X[i], X, Y), Y[i]);
    }
}

TEST(InterpolateXY, RefusesTablesThatDoNotFit) {
    EXPECT_THAT(
        [] {
            (void)InterpolateXY(1, {1, 2}, {1});
        },
        Raises(0x80040002, "InterpolateXY", "Value array are not the same size."));
    EXPECT_THAT([] { (void)InterpolateXY(1, {1}, {1}); },
                Raises(0x80040003, "InterpolateXY", "Value arrays have only one point."));
    EXPECT_THAT([] { (void)InterpolateXY(1, {}, {}); },
                Raises(0x80040003, "InterpolateXY", "Value arrays have only one point."));
    EXPECT_THAT(
        [] {
            (void)InterpolateXY(0, {1, 1}, {1, 2}, "CVFDLoad::RunningRealPower");
        },
        Raises(11, "CVFDLoad::RunningRealPower", "Division by zero"));
}

TEST(ArcCos, IsExactAtTheEndsAndRefusesValuesAboveOne) {
    EXPECT_EQ(ArcCos(1.0), 0.0);
    EXPECT_EQ(ArcCos(-1.0), 3.14159265358979);
    EXPECT_EQ(ArcCos(-7.0), 3.14159265358979);
    EXPECT_NEAR(ArcCos(0.5), 1.0471975511965976, 1e-15);  // a third of a half turn
    EXPECT_NEAR(ArcCos(-0.5), 2.0943951023931953, 1e-15);
    EXPECT_THAT([] { (void)ArcCos(1.5); }, Raises(5, "ArcCos", "Invalid procedure call or argument"));
}

TEST(Conversions, FollowTheTrade) {
    EXPECT_EQ(HPToBTU(2.0), 12500.0);
    EXPECT_DOUBLE_EQ(BTUToHP(60000.0), 9.6);
    EXPECT_EQ(HPToTons(10.0), 5.0);
    EXPECT_EQ(TonsToHP(5.0), 10.0);
    EXPECT_EQ(FeetToMeters(500.0), 152.4);
    EXPECT_DOUBLE_EQ(MetersToFeet(100.0), 328.084);
    EXPECT_DOUBLE_EQ(FahrenheitToCelsius(212.0), 100.0);
    EXPECT_DOUBLE_EQ(CelsiusToFahrenheit(100.0), 212.0);
}

TEST(LockedRotorKVAPerHP, TakesTheFirstBandThatHolds) {
    struct Case {
        double hp;
        double kVAPerHP;
        std::string_view letter;
    };
    for (const Case& row :
         {Case{1000, 5.3, "F"}, Case{15, 5.3, "F"}, Case{14.99, 5.95, "G"}, Case{7.5, 5.95, "G"},
          Case{7.49, 6.7, "H"}, Case{5, 6.7, "H"}, Case{4.99, 7.55, "J"}, Case{3, 7.55, "J"},
          Case{2.99, 8.5, "K"}, Case{1.5, 8.5, "K"}, Case{1.49, 9.5, "L"}, Case{1, 9.5, "L"},
          Case{0.99, 10.6, "M"}, Case{0, 10.6, "M"}, Case{-0.01, 0, ""}}) {
        EXPECT_EQ(LockedRotorKVAPerHP(row.hp), row.kVAPerHP) << row.hp;
        EXPECT_EQ(UsualCodeLetter(row.hp), row.letter) << row.hp;
    }
}

}  // namespace
}  // namespace genvara
