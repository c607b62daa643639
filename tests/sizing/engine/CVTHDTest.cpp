#include "CVTHD.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <utility>

#include "EngineFixture.h"
#include "RaisedErrorMatcher.h"
#include "StepDistortion.h"

namespace genvara {
namespace {

constexpr double kTolerance = 1e-9;

/// A calculator whose harmonic impedance is the load of a phase [kW] times the given impedance / 100.
CVTHD Generator(double impedance) {
    CVTHD calculator;
    calculator.GenPower(300.0);
    calculator.GenImpedance(impedance);
    return calculator;
}

double FirstPhase(CVTHD& calculator) {
    CVTHD::PerPhase results{};
    calculator.VTHD(results);
    return results[0];
}

TEST(CVTHD, IsZeroWithoutNonLinearLoad) {
    CVTHD calculator = Generator(0.1);
    EXPECT_EQ(FirstPhase(calculator), 0.0);
    EXPECT_EQ(calculator.HarmonicImpedance(2), 0.0);
}

TEST(CVTHD, InterpolatesBetweenTheFourImpedances) {
    // 30 kW of six-pulse rectifiers are 10 kW and a share of 1 on each phase, so that the columns are the
    // sums of the terms cc, c and 1: 6.76 + 14.44 - 18.18 = 3.02; 8.79 + 16.94 - 21.02 = 4.71; 8.503 + 13.565
    // - 12.441 = 9.627; 17.58 + 31.819 - 35.332 = 14.067.
    const std::pair<double, double> cases[] = {
        {0.025, 1.51},   // z 0.0025: half way from the origin
        {0.05, 3.02},    // z 0.005
        {0.075, 3.865},  // z 0.0075: (3.02 + 4.71) / 2
        {0.1, 4.71},     // z 0.01
        {0.3, 7.1685},   // z 0.03: (4.71 + 9.627) / 2
        {0.5, 9.627},    // z 0.05
        {0.75, 11.847},  // z 0.075: (9.627 + 14.067) / 2
        {1.0, 14.067},   // z 0.1
        {2.0, 22.947},   // z 0.2: 14.067 + 4.44 x 2
    };
    for (const auto& [impedance, vthd] : cases) {
        CVTHD calculator = Generator(impedance);
        calculator.RectifierPwr6P(30.0);
        EXPECT_NEAR(FirstPhase(calculator), vthd, kTolerance) << impedance;
        EXPECT_NEAR(calculator.HarmonicImpedance(1), impedance / 10.0, kTolerance);
    }
}

TEST(CVTHD, CountsControlledRectifiersAsSixPulse) {
    CVTHD calculator = Generator(0.05);
    calculator.RectifierPwr6P(12.0);
    calculator.PhaseCtrlPwr6P(18.0);
    EXPECT_NEAR(FirstPhase(calculator), 3.02, kTolerance);
}

TEST(CVTHD, TakesTheOtherCoefficientsFromAnEighthOfTwelvePulse) {
    CVTHD calculator = Generator(0.05);
    calculator.RectifierPwr12P(30.0);
    // b = 1: 0.932 + 0.095 + 0.616
    EXPECT_NEAR(FirstPhase(calculator), 1.643, kTolerance);
    // b = 0.125 exactly, c = 0.875: -0.981 x 0.109375 + 2.287 x 0.765625 + 0.384 x 0.875 + 0.932 +
    // 0.095 x 0.125 + 0.616 x 0.015625
    calculator.RectifierPwr12P(3.75);
    calculator.RectifierPwr6P(26.25);
    EXPECT_NEAR(FirstPhase(calculator), 2.9331875, kTolerance);
}

TEST(CVTHD, IgnoresTheSharesOfANegligibleLoad) {
    // 0.01 kW counts as nothing but the constant: -18.18 x z / 0.005 with z = 0.01 x 0.05 / 100.
    CVTHD calculator = Generator(0.05);
    calculator.SinglePhaseMagBallastPwr(0, 0.01);
    EXPECT_NEAR(FirstPhase(calculator), -18.18 * 5e-6 / 0.005, kTolerance);
}

TEST(CVTHD, ForgetsTheLoadBefore) {
    CVTHD calculator = Generator(0.05);
    calculator.RectifierPwr6P(30.0);
    (void)FirstPhase(calculator);
    calculator.RectifierPwr6P(0.0);
    EXPECT_EQ(FirstPhase(calculator), 0.0);
}

TEST(CVTHD, RefusesWhatNoSourceAndNoLoadCanBe) {
    struct Case {
        std::function<void(CVTHD&)> set;
        const char* source;
        const char* description;
    };
    const Case cases[] = {
        {[](CVTHD& c) { c.GenPower(0.0); }, "CVTHD::GenPower", "Invalid generator power input."},
        {[](CVTHD& c) { c.GenImpedance(0.0); }, "CVTHD::GenImpedance", "Invalid generator impedance input."},
        {[](CVTHD& c) { c.RectifierPwr12P(-1.0); }, "CVTHD::RectifierPwr12P",
         "Invalid 12 pulse rectifier power input."},
        {[](CVTHD& c) { c.RectifierPwr6P(-1.0); }, "CVTHD::RectifierPwr6P",
         "Invalid 6 pulse rectifier power input."},
        {[](CVTHD& c) { c.PhaseCtrlPwr6P(-1.0); }, "CVTHD::PhaseCtrlPwr6P",
         "Invalid 6 pulse phase controlled power input."},
        {[](CVTHD& c) { c.SinglePhaseRectPwr(0, -1.0); }, "CVTHD::SinglePhaseRectPwr",
         "Invalid single phase rectifier power input."},
        {[](CVTHD& c) { c.SinglePhaseElecBallastPwr(1, -1.0); }, "CVTHD::SinglePhaseElecBallastPwr",
         "Invalid single phase electric ballast power input."},
        {[](CVTHD& c) { c.SinglePhaseMagBallastPwr(2, -1.0); }, "CVTHD::SinglePhaseMagBallastPwr",
         "Invalid single phase magnetic ballast power input."},
    };
    for (const Case& row : cases) {
        CVTHD calculator;
        EXPECT_THAT([&] { row.set(calculator); }, Raises(0x80040001, row.source, row.description));
    }
    CVTHD calculator;
    EXPECT_THAT([&] { calculator.SinglePhaseRectPwr(3, 1.0); },
                Raises(9, "CVTHD::SinglePhaseRectPwr", "Subscript out of range"));
    calculator.SinglePhaseRectPwr(0, 5.0);
    EXPECT_THAT(
        [&] { calculator.SinglePhaseRectPwr(0, -5.0); },
        Raises(0x80040001, "CVTHD::SinglePhaseRectPwr", "Invalid single phase rectifier power input."));
    EXPECT_EQ(calculator.SinglePhaseRectPwr(0), 5.0);
}

TEST(ScaleReactance, FollowsTheVoltageAndTheWindings) {
    EXPECT_EQ(VoltageConnectionFactor(240.0), 2);
    EXPECT_EQ(VoltageConnectionFactor(240.5), 1);
    EXPECT_NEAR(ScaleReactance(0.1, 1.0, 2.0, true), 0.1 * 57600.0 / 43264.0, 1e-15);
    EXPECT_NEAR(ScaleReactance(0.1, 240.0, 480.0, false), 0.1, 1e-15);  // 2 squared, half squared
    EXPECT_NEAR(ScaleReactance(0.1, 416.0, 480.0, false), 0.1 * 173056.0 / 230400.0, 1e-15);
    EXPECT_THAT([] { (void)ScaleReactance(0.1, 416.0, 0.0, false); },
                Raises(11, "CDesigner::ScaleReactance", "Division by zero"));
}

TEST(AdjustFilteredVTHD, CorrectsByBallastsFilterAndImpedance) {
    struct Case {
        double ballast;
        double filtered;
        double impedance;
        double corrected;  // of 5 percent
    };
    const Case cases[] = {
        {0.5, 0.5, 0.01, 5.0},   // the filter's share is not above a half
        {0.5, 0.75, 0.2, 4.5},   // 5 - 0.25 / 0.5
        {0.6, 0.75, 0.08, 5.0},  // mostly ballasts at a high impedance: untouched
        {0.6, 0.75, 0.07, 7.2},  // 10.4 - 0.4 x 8, whatever the filter took
        {0.6, 0.1, 0.07, 7.2},
    };
    for (const Case& row : cases) {
        double vthd = 5.0;
        AdjustFilteredVTHD(vthd, row.ballast, row.filtered, row.impedance);
        EXPECT_NEAR(vthd, row.corrected, kTolerance) << row.ballast << " " << row.filtered;
    }
}

/// Figures of a step with the given three-phase loads [kW].
StepFigures Rectifiers(double six, double sixFiltered, double twelve, double twelveFiltered) {
    StepFigures figures;
    figures.rect6P = six;
    figures.rect6PFiltered = sixFiltered;
    figures.rect12P = twelve;
    figures.rect12PFiltered = twelveFiltered;
    figures.nonLinear.fill(six / 3.0 + twelve / 3.0);
    return figures;
}

TEST(StepDistortion, TakesFilteredSixPulseRectifiersOffTwice) {
    // 4.71 at z 0.01, less (10 + 10) / 10.
    EXPECT_NEAR(StepDistortion(Rectifiers(30, 30, 0, 0)).On(300, 0.1)[0], 2.71, kTolerance);
}

TEST(StepDistortion, AdjustsForFilteredTwelvePulseRectifiers) {
    // 1.643 at z 0.005, less (1 - 0.5) / 0.5.
    EXPECT_NEAR(StepDistortion(Rectifiers(0, 0, 30, 30)).On(300, 0.05)[0], 0.643, kTolerance);
}

TEST(StepDistortion, TakesBothOffWhereBothAreFiltered) {
    // b = c = 0.5 at z 0.005: (-0.981 + 2.287 + 0.616) / 4 + (0.384 + 0.095) / 2 + 0.932 = 1.652,
    // less (5 + 5) / 10 and 5 / 10.
    EXPECT_NEAR(StepDistortion(Rectifiers(15, 15, 15, 15)).On(300, 0.05)[0], 0.152, kTolerance);
}

TEST(StepDistortion, NeverFallsBelowZero) {
    // 3.02 x 0.2 at z 0.001, less 2.
    EXPECT_EQ(StepDistortion(Rectifiers(30, 30, 0, 0)).On(300, 0.01)[0], 0.0);
}

/// Magnetic ballasts and twelve-pulse rectifiers [kW on each phase].
StepFigures Ballasts(double ballast, double twelve) {
    StepFigures figures;
    figures.rect12P = 3.0 * twelve;
    figures.ballastMag.fill(ballast);
    figures.ballast.fill(ballast);
    figures.nonLinear.fill(ballast + twelve);
    return figures;
}

TEST(StepDistortion, SetsBallastsAtAHighImpedance) {
    // q = 8/9, r = 1/9, z = 9 x 1 / 100 = 0.09: 8.5 - (1/9) x 4.
    EXPECT_NEAR(StepDistortion(Ballasts(8, 1)).On(300, 1.0)[0], 8.5 - 4.0 / 9.0, kTolerance);
    // At 0.08 exactly the rule does not hold. a = 0.875, b = 0.125; column 3 = 2.964312, column 4 = 2.566828:
    // 2.964312 - 0.6 x 0.397484.
    EXPECT_NEAR(StepDistortion(Ballasts(7, 1)).On(300, 1.0)[0], 2.725822, 1e-5);
}

TEST(StepDistortion, FiltersAloneLeaveAPhaseAsItIs) {
    for (const auto& [six, twelve] : {std::pair{30.0, 0.0}, {0.0, 30.0}, {30.0, 30.0}}) {
        StepDistortion distortion(Rectifiers(0, six, 0, twelve));
        EXPECT_EQ(distortion.On(300, 0.1), (std::array{0.0, 0.0, 0.0})) << six << " " << twelve;
    }
}

TEST(StepDistortion, FiltersCorrectThePhasesThatHaveNonLinearLoadAndNoOther) {
    // 10 kW of single-phase rectifiers on B alone: d = 1 at z = 10 x 0.1 / 100 = 0.01, 11.82 + 14.33 - 21.02
    // = 5.13.
    StepFigures figures;
    figures.rect1P[1] = 10.0;
    figures.nonLinear[1] = 10.0;
    struct Case {
        double six;
        double twelve;
        double onB;  // percent
    };
    const Case cases[] = {
        {0.0, 0.0, 5.13},
        {30.0, 0.0, 3.13},   // less (10 + 10) / 10
        {0.0, 24.0, 4.53},   // less (0.8 - 0.5) / 0.5
        {30.0, 24.0, 2.33},  // less 2 and 0.8
    };
    for (const Case& row : cases) {
        figures.rect6PFiltered = row.six;
        figures.rect12PFiltered = row.twelve;
        const std::array<double, 3> vthd = StepDistortion(figures).On(300, 0.1);
        EXPECT_EQ(vthd[0], 0.0);
        EXPECT_NEAR(vthd[1], row.onB, kTolerance) << row.six << " " << row.twelve;
        EXPECT_EQ(vthd[2], 0.0);
    }
}

TEST(StepDistortion, FiltersCorrectTheLeastNonLinearLoad) {
    // The other side of the edge: 0.001 kW of ballasts on A. All of the phase's load is ballasts, and z =
    // 0.001 x 0.1 / 100 is low: 10.4 - (1 - 1) x 8, whatever stood there before.
    StepFigures figures = Rectifiers(0, 0, 0, 3);
    figures.ballast[0] = figures.ballastMag[0] = figures.nonLinear[0] = 0.001;
    EXPECT_NEAR(StepDistortion(figures).On(300, 0.1)[0], 10.4, kTolerance);
}

TEST(StepDistortion, FailsForAPowerThatTheModelRefusesOnlyWhenASetIsJudged) {
    StepDistortion distortion(Rectifiers(-3, 0, 0, 0));
    EXPECT_THAT([&] { (void)distortion.On(300, 0.1); },
                Raises(0x80040001, "CVTHD::RectifierPwr6P", "Invalid 6 pulse rectifier power input."));
}

TEST(Designer, WorksOutDistortionForTheTwoThreePhaseConnectionsOnly) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.alternators[1] = MakeAlternator(1, 100, 480, 0.1);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    for (const auto& [code, valid] : {std::pair{1, true}, {2, true}, {3, false}}) {
        fixture.site.ConnectCode(code);
        fixture.Run();
        EXPECT_EQ(fixture.designer.VTHD_CalcsValid(), valid) << code;
    }
}

TEST(Designer, RefusesAnAlternatorWithoutReactance) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.alternators[1] = MakeAlternator(1, 100, 480, 0.0);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    EXPECT_THAT([&] { fixture.Run(); },
                Raises(0x80040001, "CVTHD::GenImpedance", "Invalid generator impedance input."));
}

}  // namespace
}  // namespace genvara
