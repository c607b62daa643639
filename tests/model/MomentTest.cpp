// Records compared and brought back: what counts as the same, and what a profile keeps when it goes back.

#include <gtest/gtest.h>

#include <cmath>

#include "AllKindsOfLoad.h"
#include "CDefaults.h"
#include "CLoadProfile.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "Properties.h"
#include "RandomProject.h"

namespace genvara {
namespace {

/// A value of a member's type that is another than the one it has.
PropertyValue Another(const PropertyFacts& facts, const PropertyValue& value) {
    switch (facts.type) {
        case PropertyType::Real:
            return std::abs(std::get<double>(value)) * 0.99 + 0.001;  // a size that nobody entered is below 0
        case PropertyType::Truth:
            return !std::get<bool>(value);
        case PropertyType::Text:
            return std::string(facts.oneCharacter ? "K" : "another text");
        case PropertyType::Moment:
            return DateTime{2031, 2, 3, 4, 5, 6};
        case PropertyType::Whole:
        case PropertyType::Code:
            break;
    }
    const std::int32_t number = std::get<std::int32_t>(value);
    return facts.name == "Phases" && !facts.only.empty() ? (number == 1 ? 3 : 1)
                                                         : (number > 1 ? number - 1 : number + 1);
}

TEST(HoldsSame, EveryMemberOfEveryKindOfLoadCounts) {
    CLoadStep step;
    AddAllKinds(step);
    int members = 0;
    for (const Load& load : step) {
        EXPECT_TRUE(load.Clone()->HoldsSame(load));
        for (const Property<Load>& row : LoadProperties(load.LoadType())) {
            const std::unique_ptr<Load> other = load.Clone();
            row.set(*other, Another(row.facts, row.get(load)));
            EXPECT_FALSE(other->HoldsSame(load)) << load.LoadType() << " " << row.facts.name;
            EXPECT_FALSE(load.HoldsSame(*other)) << load.LoadType() << " " << row.facts.name;
            ++members;
        }
    }
    EXPECT_GT(members, 9 * 4) << "four members that all kinds have, and each kind's own";
}

TEST(HoldsSame, PowersThatFollowFromInputsCountAndIDsDoNot) {
    CMtrLoad motor;
    CMtrLoad other;
    other.ID(17);
    EXPECT_TRUE(motor.HoldsSame(other));
    other.RunningAppPower(1000);
    EXPECT_FALSE(motor.HoldsSame(other));
    CAirCondLoad cold;
    CAirCondLoad colder;
    colder.StartingAppPower(1000);
    EXPECT_FALSE(cold.HoldsSame(colder));
    EXPECT_FALSE(cold.HoldsSame(motor)) << "another kind";
}

TEST(HoldsSame, EveryMemberOfSiteAndProjectCounts) {
    const CDefaults defaults;
    const CPwrSys site(defaults);
    for (const Property<CPwrSys>& row : PowerSystemProperties()) {
        CPwrSys other = site;
        EXPECT_TRUE(site.HoldsSame(other));
        row.set(other, Another(row.facts, row.get(site)));
        EXPECT_FALSE(site.HoldsSame(other)) << row.facts.name;
    }
    const CProject project(defaults, LocalTime);
    for (const Property<CProject>& row : ProjectProperties()) {
        CProject other = project;
        EXPECT_TRUE(project.HoldsSame(other));
        row.set(other, Another(row.facts, row.get(project)));
        EXPECT_FALSE(project.HoldsSame(other)) << row.facts.name;
    }
}

TEST(HoldsSame, OfStepsTheOrderCountsAndIDsOnlyForTheMoment) {
    CLoadProfile profile;
    profile.AddLoadStep("a", 20, 0);
    profile.AddLoadStep("a", 20, 0);
    CLoadStep& one = profile.LoadStep(1);
    CLoadStep& other = profile.LoadStep(2);
    EXPECT_TRUE(one.HoldsSame(other));
    EXPECT_FALSE(one.IsSameMoment(other)) << "another step";
    const CLoadStep before = one;
    EXPECT_TRUE(one.IsSameMoment(before));
    one.AddLoad(std::make_unique<CMiscLoad>());
    one.DeleteLoad(0);
    EXPECT_TRUE(one.HoldsSame(before));
    EXPECT_FALSE(one.IsSameMoment(before)) << "an addition counts";
    AddAllKinds(one);
    CLoadStep copy = one;
    EXPECT_TRUE(one.IsSameMoment(copy));
    copy.AddLoad(copy.TakeLoad(1));
    EXPECT_FALSE(one.HoldsSame(copy)) << "the first load comes last";
    CLoadStep renamed = one;
    renamed.Description("b");
    EXPECT_FALSE(one.HoldsSame(renamed));
    CLoadStep softer = one;
    softer.MaxVoltageDipOverride(21);
    EXPECT_FALSE(one.HoldsSame(softer));
}

TEST(LoadProfileMoment, GoesBackInOrderAndKeepsTheObjectsOfStepsThatAreTheSame) {
    CLoadProfile profile;
    profile.AddLoadStep("a", 20, 0);
    profile.AddLoadStep("b", 21, 0);
    CLoadProfile::Moment moment;
    for (const CLoadStep& step : profile) {
        moment.push_back(std::make_shared<const CLoadStep>(step));
    }
    const CLoadStep* first = &profile.LoadStep(1);
    profile.LowerLoadStep(2);
    profile.LoadStep(1).Description("c");
    profile.AddLoadStep("d", 22, 1);
    profile.Restore(moment);
    ASSERT_EQ(profile.NumLoadSteps(), 2);
    EXPECT_EQ(&profile.LoadStep(1), first);
    EXPECT_EQ(profile.LoadStep(2).Description(), "b");
    EXPECT_EQ(profile.LoadStep(2).StepID(), 1);
    EXPECT_EQ(profile.AddLoadStep("e", 20, 0), 3) << "2 was given to \"d\"";
    profile.DeleteAllLoadSteps();
    profile.Restore(moment);
    EXPECT_EQ(profile.LoadStep(1).Description(), "a");
}

}  // namespace
}  // namespace genvara
