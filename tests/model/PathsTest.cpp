#include "Paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "AllKindsOfLoad.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

struct Project {
    CDefaults defaults;
    CProject project{defaults, [] { return DateTime{}; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    DesignLimits limits;
    PathRoots roots{project, site, profile, limits};

    Project() {
        profile.AddLoadStep("one", 20, 0);
        profile.AddLoadStep("two", 25, 0);
        AddAllKinds(profile.LoadStep(2));
    }
    [[nodiscard]] PathTarget At(std::string_view path) const { return FollowPath(path, roots); }
    void Set(std::string_view path, std::string_view value) const {
        const PathTarget target = At(path);
        SetValue(target, ParseValue(FactsOf(target), value));
    }
};

TEST(Paths, LeadToMembersOfEveryRecord) {
    Project project;
    project.Set("PowerSystem.Altitude", "1500.5");
    project.Set("PowerSystem.Fuel", "diesel");
    project.Set("PowerSystem.MaxFreqDipEnabled", "true");
    project.Set("Designer.MaxLoading", "75");
    project.Set("Project.ProjName", "Mill, the old one");
    project.Set("Project.Created", "2026-01-02T03:04:05");
    project.Set("Step[1].MaxVoltageDipOverride", "11");
    project.Set("Step[2].Load[6].StartingMethod", "Wye-Delta");
    project.Set("Step[2].Load[9].InputType", "2");
    EXPECT_EQ(project.site.Altitude(), 1500.5);
    EXPECT_EQ(project.site.Fuel(), fuel::kDiesel);
    EXPECT_TRUE(project.site.MaxFreqDipEnabled());
    EXPECT_EQ(project.limits.MaxLoading(), 75);
    EXPECT_EQ(project.project.ProjName(), "Mill, the old one");
    EXPECT_EQ(project.project.Created(), (DateTime{2026, 1, 2, 3, 4, 5}));
    EXPECT_EQ(project.profile.LoadStep(1).MaxVoltageDipOverride(), 11);
    EXPECT_EQ(dynamic_cast<const CMtrLoad&>(*project.profile.LoadStep(2).LoadItem(5)).StartingMethod(),
              starting_method::kWyeDelta);
    EXPECT_EQ(dynamic_cast<const CVFDLoad&>(*project.profile.LoadStep(2).LoadItem(8)).InputType(),
              input_type::kTwelvePulse);
    EXPECT_EQ(ValueOf(project.At("Step[2].Load[2].BatteryVoltage")), PropertyValue(48.0));
    EXPECT_EQ(ValueOf(project.At("Step[2].Description")), PropertyValue("two"));
    EXPECT_EQ(FactsOf(project.At("PowerSystem.Voltage")).unit, "V");
}

TEST(Paths, OfOtherShapesAreNone) {
    Project project;
    for (const char* text :
         {"", "PowerSystem", "PowerSystem.", ".Altitude", "PowerSystem.Altitude.", "Step.Description",
          "Step[0].Description", "Step[-1].Description", "Step[x].Description", "Step[1]Description",
          "Step[1", "Step[1].Load[0].name", "Step[1].Load[].name", "Step[1].Load[1]",
          "PowerSystem[1].Altitude", "PowerSystem.Altitude[1]", "Step[99999999999].Description",
          "Step[1 ].Description", "Step[2].Load[1].name.x"}) {
        EXPECT_THAT(
            [&] { (void)project.At(text); },
            Raises(0, "",
                   "\"" + std::string(text) +
                       "\" is no path: one looks like PowerSystem.Altitude, Step[2].MaxVoltageDipOverride or "
                       "Step[2].Load[1].Quantity."))
            << text;
    }
}

TEST(Paths, ThatLeadNowhereNameWhatIsNearest) {
    Project project;
    const std::vector<std::pair<const char*, const char*>> cases{
        {"PowerSystem.Altitud", "PowerSystem.Altitud does not exist; the nearest is Altitude."},
        {"PowerSystem.altitude", "PowerSystem.altitude does not exist; the nearest is Altitude."},
        {"Designer.MaxSets",
         "Designer.MaxSets does not exist; the nearest are MaxSetsRecommended and MaxSetsUndersized."},
        {"Step[1].Dip", "Step[1].Dip does not exist; the nearest is Description."},
        {"Step[2].Load[6].running amp",
         "Step[2].Load[6].running amp does not exist; the nearest is RunningAmps."},
        {"Step[2].Load[6].starting apparent power",
         "Step[2].Load[6].starting apparent power does not exist; the nearest is StartingAppPower."},
        {"Step[3].Description", "Step[3] does not exist: the project has 2 steps."},
        {"Step[1].Load[1].name", "Step[1].Load[1] does not exist: the step has none."},
        {"Step[2].Load[10].name", "Step[2].Load[10] does not exist: the step has 9 loads."},
        {"PowerSys.Altitude", "PowerSys does not exist; the nearest is PowerSystem."},
        {"Step[1].Load", "Step[1].Load does not exist; the nearest is Description."},
    };
    for (const auto& [path, message] : cases) {
        const auto follow = [&, place = path] { (void)project.At(place); };
        EXPECT_THAT(follow, Raises(0, "", message)) << path;
    }
}

TEST(Paths, LeadToNoMemberThatTheEntryMethodDoesNotUse) {
    Project project;
    // The motor is given by its amps, the air conditioner by its tons.
    EXPECT_THAT(
        [&] { (void)project.At("Step[2].Load[6].HP"); },
        Raises(
            0, "",
            "Step[2].Load[6].HP does not exist for the entry method of this load, which uses RunningAmps and "
            "StartingAmps."));
    EXPECT_NO_THROW((void)project.At("Step[2].Load[6].RunningAmps"));
    EXPECT_THROW((void)project.At("Step[2].Load[1].BTU"), RaisedError);
    EXPECT_NO_THROW((void)project.At("Step[2].Load[1].Tonnage"));
}

TEST(Paths, TakeOnlyValuesThatAPersonMayEnter) {
    Project project;
    const auto refused = [&](const char* path, const char* value, const std::string& message) {
        const PathTarget target = project.At(path);
        EXPECT_THAT([&] { (void)ParseValue(FactsOf(target), value); }, Raises(0, "", message)) << path;
    };
    refused("PowerSystem.Altitude", "4572.1",
            "\"4572.1\" is no value of Altitude: expected a number from -500 to 4572.");
    refused("PowerSystem.Altitude", "high",
            "\"high\" is no value of Altitude: expected a number from -500 to 4572.");
    refused("PowerSystem.Altitude", "1e999",
            "\"1e999\" is no value of Altitude: expected a number from -500 to 4572.");
    refused("PowerSystem.Freq", "60.5", "\"60.5\" is no value of Freq: expected a whole number 1 and above.");
    refused("PowerSystem.Voltage", "3000000000",
            "\"3000000000\" is no value of Voltage: expected a whole number.");
    refused("PowerSystem.Phases", "2", "\"2\" is no value of Phases: expected 1 or 3.");
    refused("PowerSystem.MaxFreqDipEnabled", "True",
            "\"True\" is no value of MaxFreqDipEnabled: expected true or false.");
    refused("PowerSystem.Fuel", "Diesl", "\"Diesl\" is no value of Fuel; the nearest is Diesel.");
    refused("PowerSystem.Fuel", "5",
            "\"5\" is no value of Fuel: expected 0 \"Any Fuel\", 1 \"Diesel\", 2 \"Nat. Gas\", 3 \"L.P.\" or "
            "4 \"Gasoline\".");
    refused("PowerSystem.Fuel", "",
            "\"\" is no value of Fuel: expected 0 \"Any Fuel\", 1 \"Diesel\", 2 \"Nat. Gas\", 3 \"L.P.\" or "
            "4 \"Gasoline\".");
    refused("Project.Created", "yesterday",
            "\"yesterday\" is no value of Created: expected a date as \"yyyy-mm-ddThh:mm:ss\".");
    refused("Step[2].Load[6].CodeLetter", "AB",
            "\"AB\" is no value of CodeLetter: expected a text of one character.");
    // The class takes any; the entry form's bounds count for a person.
    refused("Step[2].Load[6].SolidStateCurrentLimit", "99",
            "\"99\" is no value of SolidStateCurrentLimit: expected a whole number from 100 to 600.");
    refused("Step[2].Load[4].ContVA", "0",
            "\"0\" is no value of ContVA: expected a number above 0 up to 500000.");
    refused("Step[2].Load[6].StartingPF", "1.01",
            "\"1.01\" is no value of StartingPF: expected a number from 0 to 1.");
    refused("Step[2].Load[2].BatteryVoltage", "-1",
            "\"-1\" is no value of BatteryVoltage: expected a number 0 and above.");
    EXPECT_NO_THROW((void)ParseValue(FactsOf(project.At("Step[2].Load[6].StartingPF")), "1"));
    EXPECT_NO_THROW((void)ParseValue(FactsOf(project.At("Step[2].Load[2].BatteryVoltage")), "0"));
    const PathTarget limit = project.At("Step[2].Load[6].SolidStateCurrentLimit");
    for (const char* value : {"100", "600", "3e2"}) {
        EXPECT_NO_THROW((void)ParseValue(FactsOf(limit), value)) << value;
    }
    // Codes with a name, by number or by name whatever the capitals.
    const PropertyFacts& phases = FactsOf(project.At("Step[2].Load[1].Phases"));
    EXPECT_EQ(ParseValue(phases, "3"), PropertyValue(3));
    EXPECT_EQ(ParseValue(phases, "3 phase"), PropertyValue(0));
    EXPECT_EQ(ParseValue(phases, "PHASE C"), PropertyValue(3));
}

TEST(Paths, OfWhichASetterIsAskedMayBeRefused) {
    Project project;
    EXPECT_THAT([&] { SetValue(project.At("PowerSystem.Altitude"), 5000.0); },
                Raises(3, "CPwrSys::Altitude", "Invalid altitude"));
}

}  // namespace
}  // namespace genvara
