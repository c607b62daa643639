#include "CannotFail.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace genvara {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// An ordinary set: 100 kW with frequency data and an alternator that distortion is worked out for.
Candidate Ordinary() {
    Candidate set;
    set.siteStartKVA35 = 300.0;
    set.baseFreqDipKW = 70.0;
    set.baseFreqDip = 10.0;
    set.expC = 1.1;
    set.hasDistortion = true;
    set.generatorPower = 120.0;
    set.generatorImpedance = 0.12;
    return set;
}

TEST(CannotFail, HoldsForOrdinarySets) {
    EXPECT_TRUE(CannotFail(Ordinary()));
    EXPECT_TRUE(CannotFail(Candidate{}));  // no data of any kind
    Candidate set = Ordinary();
    set.baseFreqDipKW = -1.0;  // no data, whatever the others are
    set.expC = -3.0;
    set.hasDistortion = false;
    set.generatorImpedance = 0.0;
    EXPECT_TRUE(CannotFail(set));
    set.siteStartKVA35 = -5.0;  // starts nothing: the dip is 100 percent
    EXPECT_TRUE(CannotFail(set));
}

TEST(CannotFail, ProvesNothingOfFiguresOutOfTheOrdinary) {
    struct Case {
        double Candidate::*figure;
        double inside;
        double outside;
    };
    const Case cases[] = {
        {&Candidate::siteStartKVA35, 1e-6, 9e-7},
        {&Candidate::baseFreqDipKW, 1e-6, 9e-7},
        {&Candidate::baseFreqDipKW, 1e12, 1.1e12},
        {&Candidate::baseFreqDipKW, 1e12, kInfinity},
        {&Candidate::baseFreqDip, 1e6, 1.1e6},
        {&Candidate::baseFreqDip, -1e6, -1.1e6},
        {&Candidate::baseFreqDip, 0.0, kNone},
        {&Candidate::expC, 8.0, 8.1},
        {&Candidate::expC, 0.0, -0.1},
        {&Candidate::expC, 0.0, kNone},
        {&Candidate::generatorPower, 1e-6, 9e-7},
        {&Candidate::generatorPower, 1e12, 1.1e12},
        {&Candidate::generatorImpedance, 1e-9, 0.0},
        {&Candidate::generatorImpedance, 1e6, 1.1e6},
        {&Candidate::generatorImpedance, 1e-9, -0.1},
    };
    for (const Case& row : cases) {
        Candidate set = Ordinary();
        set.*row.figure = row.inside;
        EXPECT_TRUE(CannotFail(set)) << row.inside;
        set.*row.figure = row.outside;
        EXPECT_FALSE(CannotFail(set)) << row.outside;
    }
}

TEST(CannotFail, LooksAtEveryPowerOfEveryStep) {
    ProfileFigures ordinary;
    ordinary.steps.resize(2);
    ordinary.steps[1].nonLinear = {1.0, 1.0, 1.0};
    EXPECT_TRUE(CannotFail(ordinary));
    const std::function<double&(StepFigures&)> powers[] = {
        [](StepFigures& s) -> double& { return s.stepStartKW; },
        [](StepFigures& s) -> double& { return s.startKVA; },
        [](StepFigures& s) -> double& { return s.rect6P; },
        [](StepFigures& s) -> double& { return s.rect12P; },
        [](StepFigures& s) -> double& { return s.rect6PFiltered; },
        [](StepFigures& s) -> double& { return s.rect12PFiltered; },
        [](StepFigures& s) -> double& { return s.phaseCtrl6P; },
        [](StepFigures& s) -> double& { return s.rect1P[2]; },
        [](StepFigures& s) -> double& { return s.ballastElec[1]; },
        [](StepFigures& s) -> double& { return s.ballastMag[0]; },
    };
    for (const auto& power : powers) {
        ProfileFigures figures = ordinary;
        power(figures.steps[1]) = 1e12;
        EXPECT_TRUE(CannotFail(figures));
        for (const double value : {-0.001, 1.1e12, kInfinity, kNone}) {
            power(figures.steps[1]) = value;
            EXPECT_FALSE(CannotFail(figures)) << value;
        }
    }
}

TEST(CannotFail, AsksForLoadThatAFilterMayBeAPartOf) {
    ProfileFigures figures;
    figures.steps.resize(1);
    figures.steps[0].rect12PFiltered = 5.0;
    figures.steps[0].nonLinear = {5.0, 5.0, 0.0};
    EXPECT_FALSE(CannotFail(figures));
    figures.steps[0].nonLinear[2] = 0.1;
    EXPECT_TRUE(CannotFail(figures));
}

}  // namespace
}  // namespace genvara
