#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "CProject.h"
#include "CPwrSys.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

constexpr DateTime kNow{2026, 11, 21, 10, 20, 30};
const Clock kClock = [] { return kNow; };

/// A display that notes what it is shown and fails where a test says so.
class NotingDisplay final : public ProjectDisplay, public PwrSysDisplay {
  public:
    std::vector<std::string> shown;
    std::vector<std::string> failing;

    void CreatedDateTime(const DateTime& /*moment*/) override { Note("CreatedDateTime"); }
    void CustomerName(const std::string& /*text*/) override { Note("CustomerName"); }
    void Description(const std::string& /*text*/) override { Note("Description"); }
    void ModifiedDateTime(const DateTime& /*moment*/) override { Note("ModifiedDateTime"); }
    void ProjectName(const std::string& /*text*/) override { Note("ProjectName"); }
    void UserName(const std::string& /*text*/) override { Note("UserName"); }

    void MetricUnits(bool /*metric*/) override { Note("MetricUnits"); }
    void Altitude(double /*metres*/) override { Note("Altitude"); }
    void AmbTemp(double /*celsius*/) override { Note("AmbTemp"); }
    void ConnectionCode(std::int32_t /*code*/) override { Note("ConnectionCode"); }
    void Freq(std::int32_t /*hertz*/) override { Note("Freq"); }
    void Fuel(std::int32_t /*code*/) override { Note("Fuel"); }
    void GensetsInParallel(std::int32_t /*sets*/) override { Note("GensetsInParallel"); }
    void MaxFreqDip(std::int32_t /*percent*/) override { Note("MaxFreqDip"); }
    void MaxFreqDipEnabled(bool /*enabled*/) override { Note("MaxFreqDipEnabled"); }
    void MaxHarmonics(std::int32_t /*percent*/) override { Note("MaxHarmonics"); }
    void MaxHarmonicsEnabled(bool /*enabled*/) override { Note("MaxHarmonicsEnabled"); }
    void MaxVoltageDip(std::int32_t /*percent*/) override { Note("MaxVoltageDip"); }
    void RiseDuty(std::int32_t /*code*/) override { Note("RiseDuty"); }
    void Voltage(std::int32_t /*volts*/) override { Note("Voltage"); }

  private:
    void Note(const std::string& member) {
        if (std::ranges::find(failing, member) != failing.end()) {
            throw RaisedError(5, "panel", "refused");
        }
        shown.push_back(member);
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
    const SiteCase cases[] = {
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

}  // namespace
}  // namespace genvara
