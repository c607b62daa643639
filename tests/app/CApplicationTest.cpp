#include "CApplication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CatalogueBuilder.h"
#include "ProgramOptions.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

/// The smallest catalogue that an application starts with.
void BuildDatabase(const TemporaryFolder& folder) {
    const std::filesystem::path tables = folder / "tables";
    std::filesystem::create_directory(tables);
    const std::pair<const char*, const char*> files[] = {
        {"Gensets",
         "Frequency,WindingConnection,VoltageLL,Fuel,DerateCode,AltModel,GensetModel,EngineModel,Rating80C,"
         "Rating105C,Rating125C,Rating130C,Rating150C,LRkVA,StartingPower,BaseFreqDipKW,BaseFreqDip,ExpC\n"},
        {"Derate Codes", "ID,AltDerateBase,AltDerateSlope,TempDerateBase,TempDerateSlope\n"},
        {"Alternators", "ID,ModelNum,BasekW,BaseVolts,SubtransReact\n"},
        {"Properties", "ID,Version,Date,Initials\n1,1.0,today,AB\n2,2.5,today,AB\n"},
        {"Connections", "ID,Connection Type,Phases\n1,Wye,3\n"},
        {"Motor Code Letters", "CodeLetter,LRkVAPerHP\nF,5.3\n"},
        {"Motor Starting Multiplier", "Multiplier\n1\n"},
        {"Motor Power Conversions", "HP,RunningKW,RunningKVA,SPF\n10,8.5,10,0.5\n1,0.9,1.3,0.7\n"}};
    for (const auto& [table, content] : files) {
        WriteBytes(tables / (std::string(table) + ".csv"), content);
    }
    ASSERT_TRUE(
        BuildCatalogue(tables, folder / "Genvara.db", [](std::string_view, std::int64_t) {}).faults.empty());
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
    next.Run([](CApplication& started) {
        EXPECT_TRUE(started.IsMetric());
        EXPECT_EQ(started.ProjectPath(), "/projects");
        EXPECT_EQ(started.Designer().MinLoading(), 25);
    });
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

TEST(Application, KeepsStoredOptionsWithoutADatabaseAndReadsNoOtherVersions) {
    const TemporaryFolder folder;
    SettingsFile settings(folder / "settings.json");
    clsTRX_Registry registry(settings);
    const OptionValues stored{.projectPath = "/mine", .isMetric = true, .maxSetsRecommended = 3};
    WriteOptions(registry, CApplication::BaseRegistrySubkey(), stored);
    const std::string before = ReadBytes(folder / "settings.json");
    {
        CApplication application(Conditions(folder));
        EXPECT_FALSE(application.Run([](CApplication&) {}));
    }
    EXPECT_EQ(ReadBytes(folder / "settings.json"), before);

    const TemporaryFolder other;
    BuildDatabase(other);
    SettingsFile otherSettings(other / "settings.json");
    clsTRX_Registry otherRegistry(otherSettings);
    WriteOptions(otherRegistry, "Software\\Morvane\\Genvara\\7.9.0\\", stored);
    CApplication application(Conditions(other));
    EXPECT_TRUE(application.Run([](CApplication& started) {
        EXPECT_EQ(started.ProjectPath(), "");
        EXPECT_FALSE(started.IsMetric());
        EXPECT_EQ(started.Designer().MaxSetsRecommended(), 16);
    }));
}

TEST(Application, LeavesTheMotorTablesEmptyWhereTheyCannotBeRead) {
    const TemporaryFolder folder;
    CApplication application(Conditions(folder));
    application.LoadMotorConversions();
    EXPECT_TRUE(application.Motors().MotorHP.empty());
}

}  // namespace
}  // namespace genvara
