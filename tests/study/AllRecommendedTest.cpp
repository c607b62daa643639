#include "AllRecommended.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RaisedErrorMatcher.h"
#include "StudyFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

StudyProject WithLimits(Studied& studied) {
    StudyProject project = studied.Project();
    project.limits.MinLoading(30);
    project.limits.MaxLoading(80);
    return project;
}

TEST(AllSizer, FindsEverySetThatDoesSmallestFirst) {
    // 60 kW at 80 % of the rating want 75 kW; at 30 % they are enough for 200 kW, and not for a set of 300
    // kW.
    Studied studied;
    studied.fixture.AddKilowatts(60);
    studied.fixture.gensets.rows.push_back(
        MakeRow({.model = "M300", .rating = 300, .startKVA35 = 3000, .startingPower = 300}));
    studied.fixture.gensets.rows.push_back(
        MakeRow({.model = "M76", .rating = 76, .startKVA35 = 760, .startingPower = 76}));
    StudyProject project = WithLimits(studied);
    AllSizer sizer(studied.tables);
    // Positions in the order of the catalogue: 50, 100, 150, 200, 300, 76.
    const AllSizing sizing = sizer.Size(project);
    EXPECT_THAT(sizing.sets, ElementsAre(5U, 1U, 2U, 3U));
    EXPECT_EQ(sizing.first->ModelNum, "M76");
    ASSERT_TRUE(sizing.tightest);
    // However short a list is to be, every set counts.
    project.limits.MaxSetsRecommended(1);
    EXPECT_EQ(sizer.Size(project).sets.size(), 4U);
    project.limits.MinLoading(0);
    EXPECT_EQ(sizer.Size(project).sets.size(), 5U);
}

TEST(AllSizer, FindsTheSameWhereACandidateMightFail) {
    // A figure out of the ordinary, and each candidate goes through every step in the order of the catalogue.
    Studied studied;
    studied.fixture.AddKilowatts(60);
    studied.fixture.gensets.rows.push_back(
        MakeRow({.model = "Huge", .rating = 1e300, .startKVA35 = 1e300, .startingPower = 1e300}));
    studied.fixture.gensets.rows.push_back(
        MakeRow({.model = "M76", .rating = 76, .startKVA35 = 760, .startingPower = 76}));
    AllSizer sizer(studied.tables);
    EXPECT_THAT(sizer.Size(WithLimits(studied)).sets, ElementsAre(5U, 1U, 2U, 3U));
}

TEST(AllSizer, HasNoSetWhereNoneDoes) {
    Studied studied;
    studied.fixture.AddKilowatts(900);
    AllSizer sizer(studied.tables);
    const AllSizing sizing = sizer.Size(studied.Project());
    EXPECT_THAT(sizing.sets, IsEmpty());
    EXPECT_FALSE(sizing.first);
    EXPECT_FALSE(sizing.tightest);
}

TEST(AllSizer, FailsAsASizerOfTheFirstSetDoes) {
    Studied studied;
    AllSizer sizer(studied.tables);
    EXPECT_THAT([&] { (void)sizer.Size(studied.Project()); },
                Raises(0, "", "At least one load and load step must be entered."));
    studied.tables.rules.phasesOf = [](std::int32_t) { return std::optional<std::int32_t>(); };
    AllSizer elsewhere(studied.tables);
    EXPECT_THAT([&] { (void)elsewhere.Size(studied.Project()); },
                Raises(0, "", "The connection code 1 is not in the genset database."));
}

}  // namespace
}  // namespace genvara
