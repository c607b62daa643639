#include "ProjectDifferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CDefaults.h"
#include "CMiscLoad.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProjectDifferencesTest : public testing::Test {
  protected:
    struct Records {
        explicit Records(const CDefaults& defaults) : project(defaults, LocalTime), site(defaults) {}
        void Step(const std::string& name, const std::vector<std::string>& loads, std::int32_t dip = 20) {
            profile.AddLoadStep(name, dip, 0);
            for (const std::string& load : loads) {
                auto made = std::make_unique<CMiscLoad>();
                made->name(load);
                made->RunningRealPower(1000);
                profile.LoadStep(profile.NumLoadSteps()).AddLoad(std::move(made));
            }
        }
        CProject project;
        CPwrSys site;
        CLoadProfile profile;
    };
    std::vector<std::string> Lines(std::size_t most = 12) const {
        return Differences({before.project, before.site, before.profile},
                           {now.project, now.site, now.profile}, most);
    }
    CDefaults defaults;
    Records before{defaults};
    Records now{defaults};
};

TEST_F(ProjectDifferencesTest, TheSameHasNone) {
    before.Step("Pumps", {"A", "B"});
    now.Step("Pumps", {"A", "B"});
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(ProjectDifferencesTest, TellsMembersWithBothValues) {
    now.project.Customer("Mill");
    now.site.Altitude(1500);
    now.site.Fuel(2);
    EXPECT_THAT(Lines(), ElementsAre("Customer \"\", now \"Mill\"", "Altitude 152.4 m, now 1500 m",
                                     "Fuel Diesel, now Nat. Gas"));
}

TEST_F(ProjectDifferencesTest, FiguresThatLookTheSameAreAndTimesAndPhasesDoNotCount) {
    before.site.Altitude(100);
    now.site.Altitude(100.00488);  // 328.1 ft, as 100 m is shown in feet
    now.site.Phases(1);
    now.project.LastModified({2030, 1, 2, 3, 4, 5});
    EXPECT_THAT(Lines(), IsEmpty());
    now.site.Altitude(100.2);
    EXPECT_THAT(Lines(), ElementsAre("Altitude 100 m, now 100.2 m"));
}

TEST_F(ProjectDifferencesTest, TellsStepsAndLoadsThatCameAndWent) {
    before.Step("Pumps", {"A", "B"});
    before.Step("Fans", {"C"});
    now.Step("Lights", {"D", "E"});
    now.Step("Pumps", {"B", "F"}, 15);
    EXPECT_THAT(Lines(), ElementsAre("Step 1, \"Lights\", added with 2 loads",
                                     "Step 2: maximum voltage dip of the step 20 %, now 15 %",
                                     "Load \"A\" of step 2 deleted", "Load \"F\" of step 2 added",
                                     "Step 2, \"Fans\", deleted with 1 load"));
}

TEST_F(ProjectDifferencesTest, TellsWhatOfALoadIsOther) {
    before.Step("Pumps", {"A"});
    now.Step("Pumps", {"A"});
    now.profile.LoadStep(1).begin()->Quantity(3);
    EXPECT_THAT(Lines(), ElementsAre("Load \"A\" of step 1: quantity 1, now 3"));
}

TEST_F(ProjectDifferencesTest, CountsWhatIsBeyondTheMost) {
    for (int step = 1; step <= 5; ++step) {
        now.Step("S" + std::to_string(step), {});
    }
    EXPECT_EQ(Lines(5).size(), 5U);
    EXPECT_THAT(Lines(4),
                ElementsAre("Step 1, \"S1\", added with 0 loads", "Step 2, \"S2\", added with 0 loads",
                            "Step 3, \"S3\", added with 0 loads", "and 2 more"));
}

TEST_F(ProjectDifferencesTest, LongTextsAreCutBetweenCharacters) {
    std::string text;
    for (int letter = 0; letter < 30; ++letter) {
        text += "\u00E9";  // two bytes each
    }
    now.project.Customer("x" + text);
    std::string cut = "x";
    for (int letter = 0; letter < 19; ++letter) {
        cut += "\u00E9";
    }
    EXPECT_THAT(Lines(), ElementsAre("Customer \"\", now \"" + cut + "...\""));
}

}  // namespace
}  // namespace genvara
