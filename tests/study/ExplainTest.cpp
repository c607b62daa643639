#include "Explain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>

#include "RandomDesign.h"
#include "SiteCandidates.h"

namespace genvara {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kRounding = 1e-9;

Explanation ExplainIt(EngineFixture& fixture, const ExplainChoice& choice = {}, const bool stopped = false) {
    const auto candidates = std::make_shared<const SiteCandidates>(fixture.gensets, FilterOf(fixture.site));
    const StopFlag stop{stopped};
    return Explain(candidates, fixture.site, fixture.profile, fixture.designer, choice, stop);
}

std::vector<std::string> Models(const Explanation& explanation) {
    std::vector<std::string> models;
    for (const ExplainedSet& explained : explanation.sets) {
        models.push_back(explained.set.ModelNum);
    }
    return models;
}

/// Loads of power factor 0.6, whose imaginary power is 4/3 of the real one.
void AddInductive(EngineFixture& fixture, double kilowatts) {
    auto load = std::make_unique<CMiscLoad>();
    load->RunningRealPower(kilowatts * 1000.0);
    load->RunningPowerFactor(0.6);
    fixture.AddStep().AddLoad(std::move(load));
}

TEST(Explain, GivesEachTestItsFiguresAndItsMargin) {
    // 60 kW and 80 kVAR start, then 30 kW and 40 kVAR on top: 100 kVA, then 150.
    EngineFixture fixture;
    AddInductive(fixture, 60);
    AddInductive(fixture, 30);
    fixture.site.MaxVoltageDip(20);
    fixture.site.MaxFreqDipEnabled(true);
    fixture.site.MaxFreqDip(8);
    fixture.designer.MaxLoading(80);
    fixture.gensets.rows = {MakeRow({.rating = 120,
                                     .startKVA35 = 700,
                                     .startingPower = 150,
                                     .baseFreqDipKW = 75,
                                     .baseFreqDip = 10,
                                     .expC = 2})};
    const Explanation explanation = ExplainIt(fixture);
    ASSERT_EQ(explanation.sets.size(), 1U);
    const ExplainedSet& set = explanation.sets[0];
    struct Row {
        double needed;
        double available;
        double margin;
    };
    // Frequency dips of 10 (60/75)^2 = 6.4 and 10 (30/75)^2 = 1.6 percent; a dip of 20 percent lets 20/35 of
    // 700 kVA start; voltage dips of 100/700 x 35 + 0.4 x 6.4 = 7.56 and 150/700 x 35 + 0.4 x 1.6 = 8.14
    // percent.
    const std::array<std::array<Row, 8>, 2> expected{{{{{60, 150, 60},
                                                        {60, 120, 50},
                                                        {60, 96, 37.5},
                                                        {20, 40, 50},
                                                        {60, 75, 20},
                                                        {6.4, 8, 20},
                                                        {100, 400, 75},
                                                        {7.56, 20, 62.2}}},
                                                      {{{90, 150, 40},
                                                        {90, 120, 25},
                                                        {90, 96, 6.25},
                                                        {30, 40, 25},
                                                        {30, 75, 60},
                                                        {1.6, 8, 80},
                                                        {150, 400, 62.5},
                                                        {8.14, 20, 59.3}}}}};
    ASSERT_EQ(set.steps.size(), 2U);
    for (std::size_t step = 0; step < 2; ++step) {
        for (std::size_t test = 0; test < 8; ++test) {
            const Verdict& verdict = set.steps[step][test];
            const Row& row = expected.at(step).at(test);
            EXPECT_THAT(verdict.needed, DoubleNear(row.needed, kRounding)) << step << kStepTests[test].name;
            EXPECT_THAT(verdict.available, DoubleNear(row.available, kRounding))
                << step << kStepTests[test].name;
            EXPECT_TRUE(verdict.applies);
            EXPECT_FALSE(verdict.Fails());
            EXPECT_THAT(verdict.Margin().value_or(-1), DoubleNear(row.margin, kRounding))
                << step << kStepTests[test].name;
        }
        EXPECT_FALSE(set.steps[step][8].applies);  // the alternator has no data
        EXPECT_FALSE(set.steps[step][8].Margin());
    }
    EXPECT_EQ(set.fate, Fate::Recommended);
    EXPECT_EQ(set.reason, 0);
    ASSERT_TRUE(set.tightest);
    EXPECT_EQ(kStepTests[set.tightest->test].name, "MaxLoading");
    EXPECT_EQ(set.tightest->stepNumber, 2);
    EXPECT_THAT(set.tightest->margin, DoubleNear(6.25, kRounding));
    EXPECT_THAT(set.loading.value_or(-1), DoubleNear(75.0, kRounding));
    EXPECT_EQ(set.transientClass, "G3");
}

TEST(Explain, OfEqualMarginsTheFirstStepAndThenTheFirstTestIsTightest) {
    // Rating, loading of 100 percent and phases have one margin in each step; the second adds nothing.
    EngineFixture fixture;
    fixture.AddKilowatts(60);
    fixture.AddStep();
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    const Explanation explanation = ExplainIt(fixture);
    const std::optional<Tightest>& tightest = explanation.sets.at(0).tightest;
    ASSERT_TRUE(tightest);
    EXPECT_EQ(kStepTests[tightest->test].name, "Rating");
    EXPECT_EQ(tightest->stepNumber, 1);
}

TEST(Explain, TestsWithoutALimitOrDataDoNotApply) {
    EngineFixture fixture;
    fixture.AddKilowatts(60);
    fixture.gensets.rows = {MakeRow({.rating = 100}),
                            MakeRow({.rating = 110, .baseFreqDipKW = 200, .baseFreqDip = 9})};
    const Explanation explanation = ExplainIt(fixture, {.all = true, .models = {}});
    const auto applies = [&](std::size_t set, std::size_t test) {
        return explanation.sets[set].steps[0][test].applies;
    };
    constexpr std::size_t kOneStep = 4;
    constexpr std::size_t kFrequency = 5;
    EXPECT_FALSE(applies(0, kOneStep));
    EXPECT_FALSE(applies(0, kFrequency));
    EXPECT_TRUE(applies(1, kOneStep));
    EXPECT_FALSE(applies(1, kFrequency));  // no limit
    fixture.site.MaxFreqDipEnabled(true);
    EXPECT_TRUE(ExplainIt(fixture, {.all = true, .models = {}}).sets[1].steps[0][kFrequency].applies);
}

TEST(Explain, HasNoMarginWhereNothingIsThere) {
    EngineFixture fixture;
    fixture.AddKilowatts(60);
    fixture.gensets.rows = {MakeRow({.rating = 0, .startKVA35 = 0})};
    const ExplainedSet set = ExplainIt(fixture).sets.at(0);
    for (const std::size_t test : {1U, 2U, 3U, 6U}) {  // rating, loading, phases, alternator
        EXPECT_TRUE(set.steps[0][test].Fails());
        EXPECT_EQ(set.steps[0][test].Margin(), std::nullopt);
    }
    EXPECT_EQ(set.loading, std::nullopt);
}

/// Five sets against 60 kW, of which 30 percent are the least loading; the last two are too large.
class FiveSets : public EngineFixture {
  public:
    FiveSets() {
        AddKilowatts(60);
        designer.MinLoading(30);
        gensets.rows = {MakeRow({.model = "B", .rating = 150}),     MakeRow({.model = "tiny", .rating = 20}),
                        MakeRow({.model = "A", .rating = 100}),     MakeRow({.model = "small", .rating = 50}),
                        MakeRow({.model = "large", .rating = 300}), MakeRow({.model = "small", .rating = 45}),
                        MakeRow({.model = "huge", .rating = 400})};
    }
};

TEST(Explain, CountsCandidatesBeforeTheListsAreCut) {
    FiveSets fixture;
    fixture.designer.MaxSetsRecommended(1);
    fixture.designer.MaxSetsUndersized(2);
    const Explanation explanation = ExplainIt(fixture);
    EXPECT_EQ(explanation.counts.Candidates(), 7);
    EXPECT_EQ(explanation.counts.recommended, 2);
    EXPECT_EQ(explanation.counts.undersized, 3);
    EXPECT_EQ(explanation.counts.underloaded, 2);
    EXPECT_THAT(Models(explanation), ElementsAre("A", "small", "small"));
    EXPECT_EQ(explanation.sets[1].set.NominalRating, 50.0);  // the larger one first
    EXPECT_THAT(Models(ExplainIt(fixture, {.all = true, .models = {}})),
                ElementsAre("B", "tiny", "A", "small", "large", "small", "huge"));
}

TEST(Explain, ShowsTheCandidatesOfModelsInTheOrderOfTheCatalogue) {
    FiveSets fixture;
    const Explanation explanation =
        ExplainIt(fixture, {.all = false, .models = {"small", "huge", "B", "nothing", "small"}});
    EXPECT_THAT(Models(explanation), ElementsAre("B", "small", "small", "huge"));
    EXPECT_THAT(explanation.unknownModels, ElementsAre("nothing"));
    EXPECT_EQ(explanation.sets[3].fate, Fate::BelowMinLoading);
    EXPECT_THAT(explanation.sets[3].loading.value_or(-1), DoubleNear(15.0, kRounding));
    EXPECT_THAT(ExplainIt(fixture, {.all = true, .models = {"B"}}).sets, testing::SizeIs(7));
}

TEST(Explain, SetsTheNextSmallerSetBesideTheFirstRecommendedOne) {
    FiveSets fixture;
    // Two more of 50 kW that fail: one starts less, and misses by more.
    fixture.gensets.rows.insert(fixture.gensets.rows.begin(),
                                MakeRow({.model = "weak", .rating = 50, .startingPower = 10}));
    fixture.gensets.rows.push_back(MakeRow({.model = "late", .rating = 50}));
    const Explanation explanation = ExplainIt(fixture);
    ASSERT_TRUE(explanation.first);
    ASSERT_TRUE(explanation.nextSmaller);
    EXPECT_EQ(explanation.first->set.ModelNum, "A");
    EXPECT_EQ(explanation.nextSmaller->set.ModelNum, "small");  // the first of the two that are equal
    EXPECT_EQ(explanation.nextSmaller->set.NominalRating, 50.0);
}

TEST(Explain, ASetOfTheSameRatingIsNoSmallerOne) {
    EngineFixture fixture;
    fixture.AddKilowatts(60);
    fixture.gensets.rows = {MakeRow({.model = "weak", .rating = 100, .startingPower = 10}),
                            MakeRow({.model = "right", .rating = 100})};
    const Explanation explanation = ExplainIt(fixture);
    EXPECT_EQ(explanation.first->set.ModelNum, "right");
    EXPECT_FALSE(explanation.nextSmaller);
}

TEST(Explain, WithoutARecommendedSetTakesTheLargestUndersizedOne) {
    EngineFixture fixture;
    fixture.AddKilowatts(600);
    fixture.gensets.rows = {MakeRow({.model = "small", .rating = 20}),
                            MakeRow({.model = "best", .rating = 90}),
                            MakeRow({.model = "same", .rating = 90})};
    const Explanation explanation = ExplainIt(fixture);
    EXPECT_FALSE(explanation.first);
    ASSERT_TRUE(explanation.nextSmaller);
    EXPECT_EQ(explanation.nextSmaller->set.ModelNum, "best");
}

TEST(Explain, WithoutCandidatesExplainsNothing) {
    EngineFixture fixture;
    fixture.AddKilowatts(60);
    const Explanation explanation = ExplainIt(fixture, {.all = false, .models = {"A"}});
    EXPECT_EQ(explanation.counts.Candidates(), 0);
    EXPECT_THAT(explanation.sets, IsEmpty());
    EXPECT_THAT(explanation.unknownModels, ElementsAre("A"));
}

TEST(Explain, ShowsADroppedSetThatHasNoNames) {
    FiveSets fixture;
    GensetRow& huge = fixture.gensets.rows.back();
    huge.GensetModel.AssignNull();
    huge.EngineModel.AssignNull();
    huge.Fuel = DbNumber();
    const Explanation explanation = ExplainIt(fixture, {.all = true, .models = {}});
    EXPECT_EQ(explanation.sets.back().set.ModelNum, "");
    EXPECT_EQ(explanation.sets.back().set.EngineNum, "");
    EXPECT_EQ(explanation.sets.back().transientClass, std::nullopt);
    EXPECT_EQ(explanation.sets.back().fate, Fate::BelowMinLoading);
}

TEST(Explain, EndsWhenItIsToldToStop) {
    FiveSets fixture;
    EXPECT_THROW((void)ExplainIt(fixture, {}, true), StudyStopped);
}

/// What a designer's lists and an explanation have in common.
template <typename Set>
void ExpectSameSet(const ExplainedSet& explained, const Set& set, const std::vector<StepVerdicts>& verdicts) {
    ASSERT_EQ(explained.set.ModelNum, set.ModelNum);
    ASSERT_EQ(explained.set.DeratedRating, set.DeratedRating);
    ASSERT_EQ(explained.set.VoltageDips, set.VoltageDips);
    ASSERT_EQ(explained.set.FreqDips, set.FreqDips);
    ASSERT_EQ(explained.set.StepVTHD_B, set.StepVTHD_B);
    ASSERT_EQ(explained.steps.size(), verdicts.size());
    std::int32_t bits = 0;
    for (std::size_t s = 0; s < verdicts.size(); ++s) {
        for (std::size_t test = 0; test < kStepTests.size(); ++test) {
            const Verdict& verdict = explained.steps[s][test];
            ASSERT_EQ(verdict.needed, verdicts[s][test].needed);
            ASSERT_EQ(verdict.available, verdicts[s][test].available);
            ASSERT_EQ(verdict.applies, verdicts[s][test].applies);
            bits |= verdict.Fails() ? kStepTests[test].bit : 0;
        }
    }
    ASSERT_EQ(bits, explained.reason);
    if constexpr (std::is_same_v<Set, RejectedSet>) {
        ASSERT_EQ(bits, set.RejectionReason);
    } else {
        ASSERT_EQ(bits, 0);
    }
}

TEST(Explain, TellsOfTheListsWhatARunFound) {
    int chosen = 0;
    int rejected = 0;
    for (std::uint32_t number = 0; number < 400; ++number) {
        RandomDesign design(number);
        EngineFixture& fixture = design.fixture;
        const CDesigner& designer = fixture.designer;
        std::optional<RaisedError> failure;
        try {
            fixture.Run();
        } catch (const RaisedError& error) {
            failure = error;
        }
        if (failure) {
            try {
                (void)ExplainIt(fixture);
                FAIL() << "design " << number;
            } catch (const RaisedError& error) {
                ASSERT_EQ(error.Source(), failure->Source());
                ASSERT_EQ(error.Number(), failure->Number());
            }
            continue;
        }
        const Explanation explanation = ExplainIt(fixture);
        ASSERT_EQ(explanation.counts.recommended, designer.Counts().recommended);
        ASSERT_EQ(explanation.counts.undersized, designer.Counts().undersized);
        ASSERT_EQ(explanation.counts.underloaded, designer.Counts().underloaded);
        const auto listed = static_cast<std::size_t>(designer.NumChosenSets() + designer.NumRejectedSets());
        ASSERT_EQ(explanation.sets.size(), listed);
        std::size_t next = 0;
        for (std::int32_t i = 0; i < designer.NumChosenSets(); ++i, ++next, ++chosen) {
            ASSERT_EQ(explanation.sets[next].fate, Fate::Recommended);
            ExpectSameSet(explanation.sets[next], designer.ChosenSets()[static_cast<std::size_t>(i)],
                          designer.Verdicts(i));
        }
        for (std::int32_t i = 0; i < designer.NumRejectedSets(); ++i, ++next, ++rejected) {
            ASSERT_EQ(explanation.sets[next].fate, Fate::Undersized);
            ExpectSameSet(explanation.sets[next], designer.RejectedSets()[static_cast<std::size_t>(i)],
                          designer.VerdictsRej(i));
        }
        ASSERT_FALSE(HasFatalFailure()) << "design " << number;
    }
    EXPECT_GT(chosen, 100);
    EXPECT_GT(rejected, 100);
}

}  // namespace
}  // namespace genvara
