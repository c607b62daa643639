#include "Sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

#include "Advise.h"
#include "CLightLoad.h"
#include "Order.h"
#include "RaisedErrorMatcher.h"
#include "StudyFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;

constexpr double kLeastStep = 1e-3;

[[nodiscard]] SweepAxis AxisOf(Studied& studied, const std::string& text) {
    return ParseAxes({text}, studied.Project(), studied.tables.rules).front();
}

std::string ModelOf(const Sizing& sizing) {
    return sizing.set ? sizing.set->ModelNum : "none";
}

TEST(SweepRange, IncludesToWhereAStepHitsIt) {
    const SweepRange hit{.from = 0.1, .to = 0.7, .by = 0.2};
    EXPECT_EQ(hit.Count(), 4);
    EXPECT_EQ(hit.At(3), 0.7);
    EXPECT_EQ(hit.At(1), 0.3);  // and not 0.30000000000000004
    const SweepRange missed{.from = 0, .to = 10, .by = 3};
    EXPECT_EQ(missed.Count(), 4);
    EXPECT_EQ(missed.At(3), 9);
    EXPECT_EQ((SweepRange{.from = 5, .to = 5, .by = 1}.Count()), 1);
    EXPECT_EQ((SweepRange{.from = 0, .to = 1, .by = 1e-300}.Count()), 1e18);
}

/// What is asked first of a member with bounds, where some value stands.
struct FirstCase {
    Bounds bounds;
    double now;
    SweepRange expected;
    PropertyType type = PropertyType::Real;
};

TEST(SweepRange, AsksFirstForAllOrForHalfToDouble) {
    // At most 21 values: a step is the round number of 1, 2, 5, 10 that is no less than a twentieth of the
    // range.
    const Bounds above(PositiveRange{100.0});
    const std::array cases{
        // 5072 / 20 = 253.6: by 500, from -500, and to the bound in place of 5000.
        FirstCase{Bounds(-500.0, 4572.0), 100.0, {-500.0, 4572.0, 500.0}},
        // 1000 is 50 times 20 and no further; 1000 / 20 = 50.
        FirstCase{Bounds(0.0, 1000.0), 20.0, {0.0, 1000.0, 50.0}},
        // It is further than 50 times 19: 9.5 to 38 is 28.5, by 2, between the even numbers around.
        FirstCase{Bounds(0.0, 1000.0), 19.0, {8.0, 38.0, 2.0}},
        // Half of what stands there lies below the bound.
        FirstCase{Bounds(15.0, 10000.0), 20.0, {15.0, 40.0, 2.0}},
        // 50 to 200 without any bound, 150 / 20 = 7.5: by 10.
        FirstCase{Bounds(), 100.0, {50.0, 200.0, 10.0}},
        // From nothing on one asks for the least there is to ask: 0 to 1, by 0.05.
        FirstCase{Bounds(), 0.0, {0.0, 1.0, 0.05}},
        // What has to be above 0 begins a step further.
        FirstCase{above, 30.0, {5.0, 100.0, 5.0}},
        // Whole numbers go by one at least, in place of 0.5.
        FirstCase{Bounds(0.0, 6.0), 2.0, {0.0, 6.0, 1.0}, PropertyType::Whole},
        FirstCase{Bounds(0.0, 6.0), 2.0, {0.0, 6.0, 0.5}},
    };
    for (const FirstCase& row : cases) {
        PropertyFacts facts{.name = "Some", .words = "some"};
        facts.range = row.bounds;
        facts.type = row.type;
        const SweepRange range = FirstRange(facts, row.now);
        EXPECT_DOUBLE_EQ(range.from, row.expected.from) << row.now;
        EXPECT_DOUBLE_EQ(range.to, row.expected.to) << row.now;
        EXPECT_DOUBLE_EQ(range.by, row.expected.by) << row.now;
    }
}

TEST(Sweep, TellsHowManySetsThereAreAndTheirRating) {
    // 80 kW on two sets in parallel want 40 kW of each: two sets of 50 kW, 100 kW in all.
    Studied studied;
    studied.fixture.AddKilowatts(80);
    studied.fixture.site.GensetsInParallel(2);
    std::vector<std::pair<std::int32_t, double>> answers;
    Sweep(studied.Project(), {AxisOf(studied, "PowerSystem.GensetsInParallel=1,2")}, studied.tables, 1,
          studied.stop, [&](std::int64_t, const SweepPoint& point) {
              answers.emplace_back(point.sizing.sets, point.sizing.total);
          });
    EXPECT_THAT(answers, ElementsAre(std::pair(1, 100.0), std::pair(2, 100.0)));
}

TEST(Sweep, SizesEachPointOfTheGrid) {
    // 40 kW each: 1, 2 and 3 of them want ratings of 40, 80 and 120 kW.
    Studied studied;
    studied.fixture.AddKilowatts(40);
    const auto axes = std::vector{AxisOf(studied, "Step[1].Load[1].Quantity=1:3:1")};
    EXPECT_EQ(PointCount(axes), 3);
    std::vector<std::string> models;
    Sweep(studied.Project(), axes, studied.tables, 2, studied.stop,
          [&](std::int64_t, const SweepPoint& point) { models.push_back(ModelOf(point.sizing)); });
    EXPECT_THAT(models, ElementsAre("M50", "M100", "M150"));
}

TEST(Sweep, FindsWhereTheAnswerChanges) {
    // A site above 1000 m takes 1 % for each 100 m: 97 kW of 100 are there up to 1300 m.
    Studied studied;
    studied.fixture.AddKilowatts(97);
    const auto stretches = FindBreaks(studied.Project(), AxisOf(studied, "PowerSystem.Altitude=0:2000:1"),
                                      studied.tables, 1, studied.stop, [](std::int64_t) {});
    ASSERT_EQ(stretches.size(), 2U);
    EXPECT_EQ(ModelOf(stretches[0].point.sizing), "M100");
    EXPECT_EQ(ModelOf(stretches[1].point.sizing), "M150");
    EXPECT_THAT(std::get<double>(stretches[0].to), testing::DoubleNear(1300, kLeastStep));
    EXPECT_THAT(std::get<double>(stretches[1].from), testing::DoubleNear(1300, kLeastStep));
    EXPECT_EQ(stretches[1].to, PropertyValue(2000.0));
}

TEST(Sweep, KeepsAPointThatFails) {
    Studied studied;
    studied.fixture.AddKilowatts(40);
    studied.tables.rules.phasesOf = [](std::int32_t code) {
        return code == 1 ? std::optional(3) : std::nullopt;
    };
    const auto axes = std::vector{AxisOf(studied, "PowerSystem.ConnectCode=1,9")};
    std::vector<bool> failed;
    Sweep(studied.Project(), axes, studied.tables, 1, studied.stop,
          [&](std::int64_t, const SweepPoint& point) { failed.push_back(point.error.has_value()); });
    EXPECT_THAT(failed, ElementsAre(false, true));
}

TEST(Order, MayJoinStepsWhoseLoadsStartBetterTogether) {
    // Loads of unity power factor run with what they start with: no order needs less than all of them.
    Studied studied;
    studied.fixture.AddKilowatts(40);
    studied.fixture.AddKilowatts(50);
    const OrderAnswer answer = FindOrder(studied.Project(), {.maxSteps = 2, .before = {}, .together = {}},
                                         studied.tables, {}, studied.stop);
    EXPECT_TRUE(answer.isPresent);
    EXPECT_TRUE(answer.proven);
    EXPECT_EQ(ModelOf(answer.best), "M100");
    ASSERT_TRUE(answer.bound);
    EXPECT_EQ(answer.bound->ModelNum, "M100");
}

TEST(Order, StartsTheLargestSurplusFirst) {
    // A lamp of 40 kW that starts with 90 kW: behind 50 kW it wants 140, before them 90.
    Studied studied;
    studied.fixture.AddKilowatts(50);
    auto lamp = std::make_unique<CLightLoad>();
    lamp->RunningRealPower(40000);
    lamp->StartingRealPower(90000);
    studied.fixture.AddStep().AddLoad(std::move(lamp));
    EXPECT_EQ(ModelOf(ProjectSizer(studied.tables).Size(studied.Project())), "M150");
    const OrderAnswer answer = FindOrder(studied.Project(), {.maxSteps = 2, .before = {}, .together = {}},
                                         studied.tables, {}, studied.stop);
    EXPECT_EQ(ModelOf(answer.best), "M100");
    EXPECT_THAT(answer.steps, ElementsAre(ElementsAre(LoadPlace{2, 1}), ElementsAre(LoadPlace{1, 1})));
    const OrderAnswer kept =
        FindOrder(studied.Project(), {.maxSteps = 2, .before = {{{1, 1}, {2, 1}}}, .together = {}},
                  studied.tables, {}, studied.stop);
    EXPECT_EQ(ModelOf(kept.best), "M150");
    EXPECT_TRUE(kept.proven);
}

TEST(Advise, ListsTheLeastLimitThatSuffices) {
    // 97 kW are 97 % of the next smaller set, which may be loaded by 80 % of it.
    Studied studied;
    studied.fixture.AddKilowatts(97);
    studied.fixture.designer.MaxLoading(80);
    AdviceChoice choice;
    const AdviceList list =
        Advise(studied.Project(), choice, studied.tables, 2, studied.stop, [](std::int64_t, std::int64_t) {});
    EXPECT_EQ(ModelOf(list.now), "M150");
    ASSERT_EQ(list.advice.size(), 1U);
    EXPECT_EQ(list.advice[0].text, "Load the sets up to 97 % instead of 80 %.");
    EXPECT_EQ(ModelOf(list.advice[0].sizing), "M100");
    EXPECT_EQ(list.advice[0].saved, 50.0);
}

TEST(Advise, StopsBetweenTwoVariations) {
    Studied studied;
    studied.fixture.AddKilowatts(97);
    studied.stop = true;
    EXPECT_THROW((void)Advise(studied.Project(), {}, studied.tables, 2, studied.stop,
                              [](std::int64_t, std::int64_t) {}),
                 StudyStopped);
}

}  // namespace
}  // namespace genvara
