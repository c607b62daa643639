#include "VerdictWords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EngineFixture.h"

namespace genvara {
namespace {

std::size_t TestOf(std::int32_t bit) {
    const auto found = std::ranges::find(kStepTests, bit, &StepTest::bit);
    return static_cast<std::size_t>(found - kStepTests.begin());
}

/// Steps whose verdicts of one test are given; the others have nothing to do.
std::vector<StepVerdicts> Steps(std::size_t test, const std::vector<Verdict>& verdicts) {
    std::vector<StepVerdicts> steps(verdicts.size());
    for (std::size_t s = 0; s < steps.size(); ++s) {
        steps[s].fill({.needed = 0.0, .available = 1.0});
        steps[s][test] = verdicts[s];
    }
    return steps;
}

TEST(VerdictWords, TellFiguresApartThatAreNotEqual) {
    const std::size_t loading = TestOf(rejection::kMaxLoading);
    const auto texts = [](std::size_t test, double needed, double available) {
        const FigureTexts figures = FigureTextsOf(test, {.needed = needed, .available = available});
        return figures.needed + " " + figures.available;
    };
    EXPECT_EQ(texts(loading, 656.71, 640.0), "656.7 640.0");
    EXPECT_EQ(texts(loading, 640.0, 640.0), "640.0 640.0");
    EXPECT_EQ(texts(loading, 640.0004, 640.0), "640.0004 640.0000");
    EXPECT_EQ(texts(loading, 640.0000000000001, 640.0), "640.000000000 640.000000000");
    const std::size_t dip = TestOf(rejection::kVoltageDip);
    EXPECT_EQ(texts(dip, 11.14, 10.0), "11.1 10");
    EXPECT_EQ(texts(dip, 10.04, 10.0), "10.04 10");
}

TEST(VerdictWords, MakeASentenceOfEachTest) {
    EngineFixture fixture;
    fixture.AddKilowatts(10).Description("Chiller");
    fixture.AddKilowatts(10).Description("");
    const Verdict verdict{.needed = 11.1, .available = 10.0};
    const auto sentence = [&](std::int32_t bit) {
        return SentenceOf(fixture.profile, 1, TestOf(bit), verdict);
    };
    EXPECT_EQ(sentence(rejection::kVoltageDip), "step 1, Chiller: 11.1 % dip, 10 % allowed");
    EXPECT_EQ(sentence(rejection::kFrequencyDip), "step 1, Chiller: 11.1 % frequency dip, 10 % allowed");
    EXPECT_EQ(sentence(rejection::kDistortion), "step 1, Chiller: 11.1 % distortion, 10 % allowed");
    EXPECT_EQ(sentence(rejection::kEngineStart), "step 1, Chiller: 11.1 kW to start, 10.0 kW there");
    EXPECT_EQ(sentence(rejection::kRating), "step 1, Chiller: 11.1 kW running, 10.0 kW rated");
    EXPECT_EQ(sentence(rejection::kMaxLoading), "step 1, Chiller: 11.1 kW running, 10.0 kW allowed");
    EXPECT_EQ(sentence(rejection::kPhaseLoading), "step 1, Chiller: 11.1 kW on one phase, 10.0 kW there");
    EXPECT_EQ(sentence(rejection::kOneStepCapability),
              "step 1, Chiller: 11.1 kW in one step, 10.0 kW possible");
    EXPECT_EQ(sentence(rejection::kAlternatorStart),
              "step 1, Chiller: 11.1 kVA to start, 10.0 kVA within the allowed dip");
    EXPECT_EQ(SentenceOf(fixture.profile, 2, TestOf(rejection::kVoltageDip), verdict),
              "step 2: 11.1 % dip, 10 % allowed");
}

TEST(VerdictWords, CallTheWorstStepTheOneOfLeastMargin) {
    const std::size_t dip = TestOf(rejection::kVoltageDip);
    // Margins of 60, 10, 10 and 25 percent; the second lacks 9 points, the last 5.
    EXPECT_EQ(WorstStep(Steps(dip, {{4.0, 10.0}, {81.0, 90.0}, {9.0, 10.0}, {15.0, 20.0}}), dip), 1U);
    // Nothing is there: what lacks most is worst.
    EXPECT_EQ(WorstStep(Steps(dip, {{4.0, 0.0}, {7.0, 0.0}, {5.0, 0.0}}), dip), 1U);
    // No limit: the largest figure.
    EXPECT_EQ(WorstStep(Steps(dip, {{4.0, 1.0, false}, {3.0, 1.0, false}, {5.0, 1.0, false}}), dip), 2U);
}

ExplainedSet Set(std::vector<StepVerdicts> steps) {
    ExplainedSet explained;
    explained.steps = std::move(steps);
    std::int32_t number = 0;
    for (const StepVerdicts& verdicts : explained.steps) {
        KeepTighter(explained.tightest, ++number, verdicts);
        for (std::size_t test = 0; test < verdicts.size(); ++test) {
            explained.reason |= verdicts[test].Fails() ? kStepTests[test].bit : 0;
        }
    }
    explained.fate = explained.reason == 0 ? Fate::Recommended : Fate::Undersized;
    return explained;
}

TEST(VerdictWords, GiveTheReasonOfEachFate) {
    EngineFixture fixture;
    fixture.AddKilowatts(10).Description("Fans");
    fixture.AddKilowatts(10).Description("Chiller");
    const std::size_t dip = TestOf(rejection::kVoltageDip);
    EXPECT_EQ(ReasonOf(Set(Steps(dip, {{5.0, 10.0}, {8.9, 10.0}})), fixture.profile, 30),
              "step 2, Chiller: 8.9 % dip, 10 % allowed, 11.0 % left");
    // Of two failures the one that misses by more: 11 over 10 are 10 percent, 120 over 100 are 20.
    ExplainedSet undersized = Set(Steps(dip, {{11.0, 10.0}, {8.0, 10.0}}));
    undersized.steps[1][TestOf(rejection::kRating)] = {.needed = 120.0, .available = 100.0};
    EXPECT_EQ(ReasonOf(Set(undersized.steps), fixture.profile, 30),
              "step 2, Chiller: 120.0 kW running, 100.0 kW rated");
    // What has no limit is no reason, however far it is from what would be one.
    undersized.steps[0][TestOf(rejection::kFrequencyDip)] = {
        .needed = 90.0, .available = 5.0, .applies = false};
    EXPECT_EQ(ReasonOf(Set(undersized.steps), fixture.profile, 30),
              "step 2, Chiller: 120.0 kW running, 100.0 kW rated");
    ExplainedSet dropped = Set(Steps(dip, {{5.0, 10.0}, {8.9, 10.0}}));
    dropped.fate = Fate::BelowMinLoading;
    dropped.loading = 21.94;
    EXPECT_EQ(ReasonOf(dropped, fixture.profile, 30), "loaded to 21.9 %, 30 % wanted at least");
}

TEST(VerdictWords, CallAFailureByItsTestWhereNothingIsThere) {
    // A set that starts no kVA: its alternator fails with no margin, its dip of 100 percent with one.
    EngineFixture fixture;
    fixture.AddKilowatts(10).Description("Fans");
    std::vector<StepVerdicts> steps =
        Steps(TestOf(rejection::kAlternatorStart), {{.needed = 500.0, .available = 0.0}});
    EXPECT_EQ(ReasonOf(Set(steps), fixture.profile, 30),
              "step 1, Fans: 500.0 kVA to start, 0.0 kVA within the allowed dip");
}

TEST(VerdictWords, NameTheFates) {
    EXPECT_EQ(WordOf(Fate::Recommended), "recommended");
    EXPECT_EQ(WordOf(Fate::Undersized), "undersized");
    EXPECT_EQ(WordOf(Fate::BelowMinLoading), "below minimum loading");
}

}  // namespace
}  // namespace genvara
