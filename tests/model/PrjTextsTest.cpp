#include "PrjTexts.h"

#include <gtest/gtest.h>

#include "AllKindsOfLoad.h"
#include "CDefaults.h"

namespace genvara {
namespace {

TEST(PrjTexts, AreRidOfDoubleQuotesInEveryTextOfAProject) {
    CLoadProfile profile;
    profile.AddLoadStep("the \"first\"", 15, 0);
    CLoadStep& step = profile.LoadStep(1);
    AddAllKinds(step);
    std::size_t expected = 1;
    for (Load& load : step) {
        load.name("6\" " + load.name());
        load.Description("\"" + load.Description());
        expected += 2;
    }
    const CDefaults defaults;
    CProject project(defaults, [] { return DateTime{}; });
    project.ProjName("\"N\"");
    project.Customer("O'C");
    project.Description("2\" pipe");
    project.UserName("\"U");
    expected += 3;
    EXPECT_EQ(ReplaceDoubleQuotes(project, profile), expected);
    EXPECT_EQ(step.Description(), "the \u201Cfirst\u201D");
    EXPECT_EQ(project.ProjName(), "\u201CN\u201D");
    EXPECT_EQ(project.Customer(), "O'C");
    EXPECT_EQ(project.Description(), "2\u201D pipe");
    EXPECT_EQ(project.UserName(), "\u201CU");
    for (const Load& load : step) {
        EXPECT_TRUE(load.name().starts_with("6\u201D ")) << load.name();
        EXPECT_EQ(load.Description(), "\u201Cbehind the tank");
        EXPECT_EQ(load.Quantity(), 3);
    }
    EXPECT_EQ(ReplaceDoubleQuotes(project, profile), 0U);
}

}  // namespace
}  // namespace genvara
