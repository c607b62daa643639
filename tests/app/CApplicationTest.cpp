#include "CApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ProgramOptions.h"
#include "RaisedError.h"
#include "SmallCatalogue.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

/// A catalogue with two versions and motors that are not in order.
void BuildDatabase(const TemporaryFolder& folder) {
    BuildSmallCatalogue(
        folder, {{"Properties", "ID,Version,Date,Initials\n1,1.0,today,AB\n2,2.5,today,AB\n"},
                 {"Motor Power Conversions", "HP,RunningKW,RunningKVA,SPF\n10,8.5,10,0.5\n1,0.9,1.3,0.7\n"}});
}

StartConditions Conditions(const TemporaryFolder& folder) {
    return {.programFolder = folder.Path(),
            .settingsFile = folder / "settings.json",
            .brandLabel = brand::kMorvane,
            .clock = [] { return DateTime{2026, 1, 2, 3, 4, 5}; }};
}

TEST(Application, NamesItsSettingsByVersion) {
    EXPECT_EQ(CApplication::BaseRegistrySubkey(), "Software\\Morvane\\Genvara\\8.0.0\\");
}

TEST(Application, ShowsTheWordsOfItsBrand) {
    EXPECT_EQ(WindowCaption(0, ""), "Morvane Genvara");
    EXPECT_EQ(WindowCaption(0, "   "), "Morvane Genvara");
    EXPECT_EQ(WindowCaption(0, " Mill "), "Morvane Genvara - Mill");
    EXPECT_EQ(WindowCaption(1, "Mill"), "Caldrix Ohmvane - Mill");
    EXPECT_EQ(WindowCaption(7, "Mill"), " - Mill");
    EXPECT_EQ(WindowCaption(7, ""), "");
}

TEST(Application, StartsWithFactorySettingsAndStoresAllSixOptionsAtItsEnd) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    {
        CApplication application(Conditions(folder));
        const bool shown = application.Run([](CApplication& started) {
            EXPECT_EQ(started.Designer().MinLoading(), 30);
            EXPECT_EQ(started.Designer().MaxLoading(), 80);
            EXPECT_EQ(started.Designer().MaxSetsRecommended(), 16);
            EXPECT_EQ(started.Designer().MaxSetsUndersized(), 5);
            EXPECT_EQ(started.Designer().DatabaseVersion(), "2.5");  // the last row counts
            EXPECT_EQ(started.ProjectPath(), "");
            EXPECT_FALSE(started.IsMetric());
            EXPECT_EQ(started.PowerSystem().Voltage(), 480);
            started.LoadMotorConversions();
            EXPECT_THAT(started.Motors().MotorHP, testing::ElementsAre(1.0, 10.0));  // sorted
            EXPECT_THAT(started.Motors().MotorRunningKVA, testing::ElementsAre(1.3, 10.0));
            started.IsMetric(true);
            started.ProjectPath("/projects");
            started.Designer().MinLoading(25);
        });
        EXPECT_TRUE(shown);
    }
    SettingsFile settings(folder / "settings.json");
    clsTRX_Registry registry(settings);
    registry.SubKey("Software\\Morvane\\Genvara\\8.0.0\\Options");
    EXPECT_EQ(registry.OpenKey(), 2);
    using Variant = clsTRX_Registry::Variant;
    EXPECT_EQ(registry.Value("IsMetric", registry_type::REG_DWORD), Variant(-1));
    EXPECT_EQ(registry.Value("ProjPath", registry_type::REG_SZ), Variant("/projects"));
    EXPECT_EQ(registry.Value("NumSets", registry_type::REG_DWORD), Variant(16));
    EXPECT_EQ(registry.Value("NumUnder", registry_type::REG_DWORD), Variant(5));
    EXPECT_EQ(registry.Value("MaxLoad", registry_type::REG_DWORD), Variant(80));
    EXPECT_EQ(registry.Value("MinLoad", registry_type::REG_DWORD), Variant(25));
    CApplication next(Conditions(folder));
    EXPECT_TRUE(next.Run([](CApplication& started) {
        EXPECT_TRUE(started.IsMetric());
        EXPECT_EQ(started.ProjectPath(), "/projects");
        EXPECT_EQ(started.Designer().MinLoading(), 25);
    }));
}

TEST(Application, EndsWithoutAWordWhereTheDatabaseIsMissing) {
    const TemporaryFolder folder;
    testing::internal::CaptureStderr();
    {
        CApplication application(Conditions(folder));
        EXPECT_FALSE(application.Run([](CApplication&) { FAIL() << "no window may be shown"; }));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

/// A value that an earlier run stored.
void Store(const TemporaryFolder& folder, const std::string& key, const std::string& name, std::int32_t type,
           const clsTRX_Registry::Variant& value) {
    SettingsFile settings(folder / "settings.json");
    clsTRX_Registry registry(settings);
    registry.SubKey(key);
    registry.AutoCreate(true);
    registry.OpenKey();
    registry.Value(name, type, value);
}

TEST(Application, ADatabaseThatIsNoneEndsTheStartToo) {
    const TemporaryFolder folder;
    WriteBytes(folder / "Genvara.db", std::string(4096, 'x'));
    CApplication application(Conditions(folder));
    EXPECT_FALSE(application.Run([](CApplication&) { FAIL() << "no window may be shown"; }));
}

TEST(Application, AStartThatFailedKeepsTheOptionsOfTheRunBefore) {
    const TemporaryFolder folder;
    Store(folder, "Software\\Morvane\\Genvara\\8.0.0\\Options", "ProjPath", registry_type::REG_SZ,
          "/projects");
    const std::string before = ReadBytes(folder / "settings.json");
    {
        CApplication application(Conditions(folder));
        EXPECT_FALSE(application.Run([](CApplication&) {}));
    }
    EXPECT_EQ(ReadBytes(folder / "settings.json"), before);
}

TEST(Application, AFailureOfTheWindowEndsTheRunAndTheOptionsAreStillWritten) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    {
        CApplication application(Conditions(folder));
        EXPECT_FALSE(application.Run([](CApplication&) { throw RaisedError(1, "frmMain", "no display"); }));
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "settings.json"));
}

TEST(Application, ReadsNoOptionsOfAnotherVersion) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    Store(folder, "Software\\Morvane\\Genvara\\7.9.0\\Options", "IsMetric", registry_type::REG_DWORD, -1);
    CApplication application(Conditions(folder));
    EXPECT_TRUE(application.Run([](CApplication& started) { EXPECT_FALSE(started.IsMetric()); }));
}

TEST(Application, GoesOnBehindAnOptionThatItsTargetRefuses) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    const std::string options = "Software\\Morvane\\Genvara\\8.0.0\\Options";
    Store(folder, options, "NumSets", registry_type::REG_SZ, "seven");  // of the other type
    Store(folder, options, "MaxLoad", registry_type::REG_DWORD, 101);   // above 100 %
    Store(folder, options, "MinLoad", registry_type::REG_DWORD, 10);
    CApplication application(Conditions(folder));
    EXPECT_TRUE(application.Run([](CApplication& started) {
        EXPECT_EQ(started.Designer().MaxSetsRecommended(), 16);
        EXPECT_EQ(started.Designer().MaxLoading(), 80);
        EXPECT_EQ(started.Designer().MinLoading(), 10);
    }));
}

TEST(Application, StartsANewProjectFromTheUsersDefaults) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    {
        SettingsFile settings(folder / "settings.json");
        clsTRX_Registry registry(settings);
        CDefaults defaults;
        defaults.UserName("Ann");
        defaults.VoltageLL(208);
        defaults.SaveDefaults(registry, CApplication::BaseRegistrySubkey() + "Defaults");
    }
    CApplication application(Conditions(folder));
    EXPECT_TRUE(application.Run([](CApplication& started) {
        EXPECT_EQ(started.Defaults().UserName(), "Ann");
        EXPECT_EQ(started.Project().UserName(), "Ann");
        EXPECT_EQ(started.PowerSystem().Voltage(), 208);
    }));
}

TEST(Application, StartsAndEndsWithoutAWordWhereSettingsCannotBeKept) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    std::filesystem::create_directory(folder / "settings.json");
    testing::internal::CaptureStderr();
    {
        CApplication application(Conditions(folder));
        EXPECT_TRUE(application.Run([](CApplication& started) {
            EXPECT_EQ(started.Defaults().VoltageLL(), 480);
            EXPECT_EQ(started.Designer().MaxLoading(), 80);
        }));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Application, TheSecondBrandHasItsWordsButTheFirstOnesHelpAndKey) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    std::filesystem::create_directory(folder / "GVHelp");
    WriteBytes(folder / "GVHelp/Helpfile.hlp", "<p>Help</p>");
    StartConditions conditions = Conditions(folder);
    conditions.brandLabel = brand::kCaldrix;
    CApplication application(conditions);
    EXPECT_EQ(application.BrandLabel(), 1);
    EXPECT_EQ(WordsOf(application.BrandLabel()).productName, "Ohmvane");
    EXPECT_EQ(WordsOf(application.BrandLabel()).webCaption, "Caldrix on the &Web");
    EXPECT_EQ(WordsOf(0).webCaption, "Morvane on the &Web");
    EXPECT_EQ(WordsOf(2).productName, "");
    EXPECT_EQ(WordsOf(-1).productName, "");
    EXPECT_TRUE(application.Run([&](CApplication& started) {
        EXPECT_EQ(started.HelpFile().Filename(), folder / "GVHelp/Helpfile.hlp");
    }));
    EXPECT_EQ(CApplication::BaseRegistrySubkey(), "Software\\Morvane\\Genvara\\8.0.0\\");
}

TEST(Application, LooksForItsDatabaseBesideTheProgram) {
    const TemporaryFolder folder;
    const CApplication application(Conditions(folder));
    EXPECT_EQ(application.DatabaseFile(), folder / "Genvara.db");
    EXPECT_THAT(application.DBConnectStr(),
                testing::HasSubstr("Data Source=" + (folder / "Genvara.db").string() + ";"));
    EXPECT_TRUE(std::filesystem::equivalent(ProgramFolder(),
                                            std::filesystem::read_symlink("/proc/self/exe").parent_path()));
    EXPECT_EQ(StartConditions{}.programFolder, ProgramFolder());
}

TEST(Application, LeavesTheMotorTablesEmptyWhereTheyCannotBeRead) {
    const TemporaryFolder folder;
    BuildDatabase(folder);
    DropTable(folder, "Motor Power Conversions");
    CApplication application(Conditions(folder));
    EXPECT_TRUE(application.Run([](CApplication& started) { started.LoadMotorConversions(); }));
    EXPECT_TRUE(application.Motors().MotorHP.empty());
}

}  // namespace
}  // namespace genvara
