#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "CProject.h"
#include "CPwrSys.h"
#include "RaisedErrorMatcher.h"
#include "SettingsFile.h"
#include "TemporaryFolder.h"
#include "clsTRX_Registry.h"

namespace genvara {
namespace {

constexpr DateTime kNow{2026, 11, 21, 10, 20, 30};
const Clock kClock = [] { return kNow; };

/// A display that notes what it is shown and fails where a test says so.
class NotingDisplay final : public ProjectDisplay, public PwrSysDisplay {
  public:
    std::vector<std::string> shown;
    std::vector<std::string> failing;
    std::map<std::string, std::string> values;

    void CreatedDateTime(const DateTime& moment) override { Note("CreatedDateTime", RenderFileDate(moment)); }
    void CustomerName(const std::string& text) override { Note("CustomerName", text); }
    void Description(const std::string& text) override { Note("Description", text); }
    void ModifiedDateTime(const DateTime& moment) override {
        Note("ModifiedDateTime", RenderFileDate(moment));
    }
    void ProjectName(const std::string& text) override { Note("ProjectName", text); }
    void UserName(const std::string& text) override { Note("UserName", text); }

    void MetricUnits(bool metric) override { Note("MetricUnits", fmt::format("{}", metric)); }
    void Altitude(double metres) override { Note("Altitude", fmt::format("{}", metres)); }
    void AmbTemp(double celsius) override { Note("AmbTemp", fmt::format("{}", celsius)); }
    void ConnectionCode(std::int32_t code) override { Note("ConnectionCode", fmt::format("{}", code)); }
    void Freq(std::int32_t hertz) override { Note("Freq", fmt::format("{}", hertz)); }
    void Fuel(std::int32_t code) override { Note("Fuel", fmt::format("{}", code)); }
    void GensetsInParallel(std::int32_t sets) override { Note("GensetsInParallel", fmt::format("{}", sets)); }
    void MaxFreqDip(std::int32_t percent) override { Note("MaxFreqDip", fmt::format("{}", percent)); }
    void MaxFreqDipEnabled(bool enabled) override { Note("MaxFreqDipEnabled", fmt::format("{}", enabled)); }
    void MaxHarmonics(std::int32_t percent) override { Note("MaxHarmonics", fmt::format("{}", percent)); }
    void MaxHarmonicsEnabled(bool enabled) override {
        Note("MaxHarmonicsEnabled", fmt::format("{}", enabled));
    }
    void MaxVoltageDip(std::int32_t percent) override { Note("MaxVoltageDip", fmt::format("{}", percent)); }
    void RiseDuty(std::int32_t code) override { Note("RiseDuty", fmt::format("{}", code)); }
    void Voltage(std::int32_t volts) override { Note("Voltage", fmt::format("{}", volts)); }

  private:
    void Note(const std::string& member, const std::string& value) {
        if (std::ranges::find(failing, member) != failing.end()) {
            throw RaisedError(5, "panel", "refused");
        }
        shown.push_back(member);
        values[member] = value;
    }
};

TEST(Project, StartsFromTheUsersDefaults) {
    CDefaults defaults;
    defaults.UserName("Ann");
    defaults.CustomerName("Mill");
    CProject project(defaults, kClock);
    EXPECT_EQ(project.UserName(), "Ann");
    EXPECT_EQ(project.Customer(), "Mill");
    project.ProjName("x");
    project.Description("y");
    project.SetCreationTime();
    project.ResetDefaults();
    EXPECT_EQ(project.ProjName(), "");
    EXPECT_EQ(project.Description(), "");
    EXPECT_EQ(project.Created(), kNow);  // the caller's business
    project.LastModified({});
    project.SetModifyTime();
    EXPECT_EQ(project.LastModified(), kNow);
}

TEST(Project, ShowsWhatCanBeShownAndRaisesOnce) {
    const CDefaults defaults;
    const CProject project(defaults, kClock);
    NotingDisplay display;
    project.Display(display);
    EXPECT_THAT(display.shown, testing::ElementsAre("CreatedDateTime", "CustomerName", "Description",
                                                    "ModifiedDateTime", "ProjectName", "UserName"));
    display.failing = {"CustomerName", "UserName"};
    display.shown.clear();
    EXPECT_THAT([&] { project.Display(display); },
                Raises(1, "CProject::Display", "2 error(s) occured while displaying project data"));
    EXPECT_EQ(display.shown.size(), 4U);
}

TEST(PowerSystem, ShowsEverythingButThePhases) {
    const CDefaults defaults;
    const CPwrSys site(defaults);
    NotingDisplay display;
    site.Display(display, true);
    EXPECT_THAT(display.shown,
                testing::ElementsAre("MetricUnits", "Altitude", "AmbTemp", "ConnectionCode", "Freq", "Fuel",
                                     "GensetsInParallel", "MaxFreqDip", "MaxFreqDipEnabled", "MaxHarmonics",
                                     "MaxHarmonicsEnabled", "MaxVoltageDip", "RiseDuty", "Voltage"));
    display.failing = {"Voltage"};
    EXPECT_THAT([&] { site.Display(display, false); },
                Raises(1, "CPwrSys::Display", "1 error(s) occured while displaying power system data"));
}

struct SiteCase {
    std::function<void(CPwrSys&)> accept;
    std::function<void(CPwrSys&)> refuse;
    std::int32_t number;
    const char* source;
    const char* description;
};

TEST(PowerSystem, ChecksItsRanges) {
    const std::vector<SiteCase> cases{
        {[](CPwrSys& s) { s.Altitude(-500); }, [](CPwrSys& s) { s.Altitude(-500.1); }, 3, "CPwrSys::Altitude",
         "Invalid altitude"},
        {[](CPwrSys& s) { s.Altitude(4572); }, [](CPwrSys& s) { s.Altitude(4572.1); }, 3, "CPwrSys::Altitude",
         "Invalid altitude"},
        {[](CPwrSys& s) { s.AmbTemp(66); }, [](CPwrSys& s) { s.AmbTemp(66.5); }, 4, "CPwrSys::AmbTemp",
         "Invalid ambient temperature"},
        {[](CPwrSys& s) { s.AmbTemp(-40); }, [](CPwrSys& s) { s.AmbTemp(-41); }, 4, "CPwrSys::AmbTemp",
         "Invalid ambient temperature"},
        {[](CPwrSys& s) { s.Freq(1); }, [](CPwrSys& s) { s.Freq(0); }, 5, "CPwrSys::Freq",
         "Invalid system frequency"},
        {[](CPwrSys& s) { s.GensetsInParallel(16); }, [](CPwrSys& s) { s.GensetsInParallel(17); }, 6,
         "CPwrSys::GensetsInParallel", "Invalid number of parallel sets"},
        {[](CPwrSys& s) { s.GensetsInParallel(1); }, [](CPwrSys& s) { s.GensetsInParallel(0); }, 6,
         "CPwrSys::GensetsInParallel", "Invalid number of parallel sets"},
        {[](CPwrSys& s) { s.Phases(1); }, [](CPwrSys& s) { s.Phases(2); }, 7, "CPwrSys::Phases",
         "Invalid number of phases"},
        {[](CPwrSys& s) { s.Phases(3); }, [](CPwrSys& s) { s.Phases(0); }, 7, "CPwrSys::Phases",
         "Invalid number of phases"},
        {[](CPwrSys& s) { s.MaxHarmonics(20); }, [](CPwrSys& s) { s.MaxHarmonics(21); }, 10,
         "CPwrSys::MaxHarmonics", "Invalid maximum harmonics"},
        {[](CPwrSys& s) { s.MaxHarmonics(5); }, [](CPwrSys& s) { s.MaxHarmonics(4); }, 10,
         "CPwrSys::MaxHarmonics", "Invalid maximum harmonics"},
        {[](CPwrSys& s) { s.MaxVoltageDip(35); }, [](CPwrSys& s) { s.MaxVoltageDip(36); }, 11,
         "CPwrSys::MaxVoltageDip", "Invalid maximum voltage dip"},
        {[](CPwrSys& s) { s.MaxVoltageDip(5); }, [](CPwrSys& s) { s.MaxVoltageDip(4); }, 11,
         "CPwrSys::MaxVoltageDip", "Invalid maximum voltage dip"},
        {[](CPwrSys& s) { s.MaxFreqDip(25); }, [](CPwrSys& s) { s.MaxFreqDip(26); }, 12,
         "CPwrSys::MaxFreqDip", "Invalid maximum frequency dip"},
        {[](CPwrSys& s) { s.MaxFreqDip(5); }, [](CPwrSys& s) { s.MaxFreqDip(4); }, 12, "CPwrSys::MaxFreqDip",
         "Invalid maximum frequency dip"},
    };
    const CDefaults defaults;
    CPwrSys site(defaults);
    for (const SiteCase& row : cases) {
        EXPECT_NO_THROW(row.accept(site)) << row.source;
        EXPECT_THAT([&] { row.refuse(site); }, Raises(row.number, row.source, row.description));
    }
    site.Altitude(100);
    EXPECT_THROW(site.Altitude(5000), RaisedError);
    EXPECT_EQ(site.Altitude(), 100.0);
}

TEST(PowerSystem, TakesTheDefaultsAndIsThreePhaseUntilItsConnectionSays) {
    CDefaults defaults;
    defaults.VoltageLL(208);
    defaults.ConnectCode(3);
    defaults.Duty(1);
    CPwrSys site(defaults);
    EXPECT_EQ(site.Voltage(), 208);
    EXPECT_EQ(site.ConnectCode(), 3);
    EXPECT_EQ(site.RiseDutyCode(), 1);
    EXPECT_EQ(site.Phases(), 3);
    EXPECT_FALSE(site.MaxFreqDipEnabled());
    EXPECT_EQ(site.Altitude(), 152.4);
    site.MaxFreqDipEnabled(true);
    site.Phases(1);
    site.ResetDefaults();
    EXPECT_FALSE(site.MaxFreqDipEnabled());
    EXPECT_EQ(site.Phases(), 3);
}

TEST(Project, ShowsEachMemberInItsOwnPlace) {
    const CDefaults defaults;
    CProject project(defaults, kClock);
    project.Created({2024, 1, 2, 3, 4, 5});
    project.LastModified({2025, 6, 7, 8, 9, 10});
    project.Customer("The customer");
    project.Description("What for");
    project.ProjName("The job");
    project.UserName("The engineer");
    NotingDisplay display;
    project.Display(display);
    const std::map<std::string, std::string> expected{{"CreatedDateTime", "2024-01-02 03:04:05"},
                                                      {"ModifiedDateTime", "2025-06-07 08:09:10"},
                                                      {"CustomerName", "The customer"},
                                                      {"Description", "What for"},
                                                      {"ProjectName", "The job"},
                                                      {"UserName", "The engineer"}};
    EXPECT_EQ(display.values, expected);
}

/// Defaults as a store holds them, in which no setter has a say.
CDefaults Stored(const std::map<std::string, clsTRX_Registry::Variant>& changes) {
    const TemporaryFolder folder;
    SettingsFile file(folder / "settings.json");
    clsTRX_Registry registry(file);
    CDefaults().SaveDefaults(registry, "Defaults");
    registry.SubKey("Defaults");
    registry.OpenKey();
    for (const auto& [name, value] : changes) {
        const bool isText = std::holds_alternative<std::string>(value);
        registry.Value(name, isText ? registry_type::REG_SZ : registry_type::REG_DWORD, value);
    }
    registry.CloseKey();
    CDefaults defaults;
    defaults.ReadDefaults(registry, "Defaults");
    return defaults;
}

TEST(PowerSystem, TakesEachDefaultToItsOwnMemberAndShowsItThere) {
    const CDefaults defaults = Stored({{"Voltage", 415},
                                       {"Connection", 7},
                                       {"Freq", 50},
                                       {"Fuel", 2},
                                       {"Duty", 4},
                                       {"NumSets", 3},
                                       {"Altitude", "321.5"},
                                       {"AmbTemp", "37.25"},
                                       {"MaxVoltDip", 17},
                                       {"MaxFreqDip", 12},
                                       {"MaxHarm", 9}});
    const CPwrSys site(defaults);
    NotingDisplay display;
    site.Display(display, true);
    const std::map<std::string, std::string> expected{{"MetricUnits", "true"},
                                                      {"Altitude", "321.5"},
                                                      {"AmbTemp", "37.25"},
                                                      {"ConnectionCode", "7"},
                                                      {"Freq", "50"},
                                                      {"Fuel", "2"},
                                                      {"GensetsInParallel", "3"},
                                                      {"MaxFreqDip", "12"},
                                                      {"MaxFreqDipEnabled", "false"},
                                                      {"MaxHarmonics", "9"},
                                                      {"MaxHarmonicsEnabled", "false"},
                                                      {"MaxVoltageDip", "17"},
                                                      {"RiseDuty", "4"},
                                                      {"Voltage", "415"}};
    EXPECT_EQ(display.values, expected);
}

TEST(PowerSystem, HasAFigureOfItsOwnForADefaultThatItRefuses) {
    struct Fallback {
        const char* name;
        clsTRX_Registry::Variant refused;
        std::function<double(const CPwrSys&)> member;
        double fallback;
    };
    const std::vector<Fallback> fallbacks{
        {"Freq", 0, [](const CPwrSys& site) { return site.Freq(); }, 60},
        {"NumSets", 17, [](const CPwrSys& site) { return site.GensetsInParallel(); }, 1},
        {"Altitude", "4572.1", [](const CPwrSys& site) { return site.Altitude(); }, 0.0},
        {"AmbTemp", "66.5", [](const CPwrSys& site) { return site.AmbTemp(); }, 15.0},
        {"MaxVoltDip", 36, [](const CPwrSys& site) { return site.MaxVoltageDip(); }, 20},
        {"MaxFreqDip", 26, [](const CPwrSys& site) { return site.MaxFreqDip(); }, 20},
        {"MaxHarm", 21, [](const CPwrSys& site) { return site.MaxHarmonics(); }, 15},
    };
    for (const Fallback& row : fallbacks) {
        // The others come from the store all the same, behind the one that failed too.
        const CDefaults defaults = Stored({{row.name, row.refused}, {"Voltage", 415}, {"MaxHarm", 9}});
        const CPwrSys site(defaults);
        EXPECT_EQ(row.member(site), row.fallback) << row.name;
        EXPECT_EQ(site.Voltage(), 415) << row.name;
        EXPECT_EQ(site.MaxHarmonics(), std::string(row.name) == "MaxHarm" ? 15 : 9) << row.name;
    }
}

}  // namespace
}  // namespace genvara
