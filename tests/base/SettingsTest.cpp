#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <nlohmann/json.hpp>
#include <vector>

#include "CDefaults.h"
#include "ProgramOptions.h"
#include "RaisedErrorMatcher.h"
#include "SettingsFile.h"
#include "TemporaryFolder.h"
#include "clsTRX_Registry.h"

namespace genvara {
namespace {

using Variant = clsTRX_Registry::Variant;
using namespace registry_type;

class Settings : public testing::Test {
  protected:
    void Open(const std::string& path = "Software\\Test\\") {
        m_registry.SubKey(path);
        m_registry.AutoCreate(true);
        m_registry.OpenKey();
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_path = m_folder / "genvara/settings.json";
    SettingsFile m_file{m_path};
    clsTRX_Registry m_registry{m_file};
};

TEST_F(Settings, KeepTextAndIntegersApartByRootPathAndName) {
    Open();
    m_registry.Value("Name", REG_SZ, Variant("Größe \\ \"x\""));
    m_registry.Value("Count", REG_DWORD, Variant(-1));
    m_registry.Value("FromText", REG_DWORD, Variant("42"));
    m_registry.Value("FromInteger", REG_SZ, Variant(42));
    SettingsFile again(m_path);  // another run of the program
    clsTRX_Registry registry(again);
    registry.SubKey("software\\TEST");  // paths and names do not look at case
    EXPECT_EQ(registry.OpenKey(), 2);
    EXPECT_EQ(registry.Value("NAME", REG_SZ), Variant("Größe \\ \"x\""));
    EXPECT_EQ(registry.Value("count", REG_DWORD), Variant(-1));
    EXPECT_EQ(registry.Value("FromText", REG_DWORD), Variant(42));
    EXPECT_EQ(registry.Value("FromInteger", REG_SZ), Variant("42"));
    EXPECT_THAT([&] { (void)registry.Value("Name", REG_DWORD); }, testing::Throws<RaisedError>());
    registry.CloseKey();
    registry.RootKey(HKEY_LOCAL_MACHINE - 1);  // another root: nothing is there
    EXPECT_THAT([&] { registry.OpenKey(); }, Raises(0x800403EC, "clsTRX_Registry", "Key does not exist"));
    registry.RootKey(1);
    EXPECT_THAT([&] { registry.OpenKey(); },
                Raises(0x800403E8, "clsTRX_Registry", "Cann't open parent key."));
}

TEST_F(Settings, OpenKeyTellsWhetherItCreated) {
    m_registry.SubKey("A");
    EXPECT_THAT([&] { m_registry.OpenKey(); }, Raises(0x800403EC, "clsTRX_Registry", "Key does not exist"));
    EXPECT_THAT([&] { (void)m_registry.Value("x", REG_SZ); },
                Raises(0x800403EE, "clsTRX_Registry", "No key opened."));
    m_registry.AutoCreate(true);
    EXPECT_EQ(m_registry.OpenKey(), 1);
    EXPECT_EQ(m_registry.OpenKey(), 2);
}

TEST_F(Settings, RaiseTheNumbersOfEachProblem) {
    EXPECT_THAT([&] { m_registry.Value("x", REG_SZ, Variant("")); },
                Raises(0x800403EE, "clsTRX_Registry", "No key opened"));
    Open();
    EXPECT_THAT([&] { m_registry.Value("x", 3, Variant("")); },
                Raises(0x800403EF, "clsTRX_Registry", "Unimplemented registry type"));
    EXPECT_THAT([&] { (void)m_registry.Value("x", 3); },
                Raises(0x800403EF, "clsTRX_Registry", "Unimplemented registry type."));
    EXPECT_THAT([&] { (void)m_registry.Value("x", REG_SZ); }, Raises(2, "clsTRX_Registry", "System error 2"));
    m_registry.Value("empty", REG_SZ, Variant(""));
    EXPECT_EQ(m_registry.Value("empty", REG_SZ), Variant(""));
    m_registry.Value("fits", REG_SZ, Variant(std::string(255, 'x')));
    EXPECT_EQ(m_registry.Value("fits", REG_SZ), Variant(std::string(255, 'x')));
    m_registry.Value("long", REG_SZ, Variant(std::string(256, 'x')));
    EXPECT_THAT([&] { (void)m_registry.Value("long", REG_SZ); },
                Raises(234, "clsTRX_Registry", "System error 234"));
    m_registry.CloseKey();
    m_registry.CloseKey();
    EXPECT_THAT([&] { m_registry.Value("x", REG_SZ, Variant("")); },
                Raises(0x800403EE, "clsTRX_Registry", "No key opened"));
}

TEST_F(Settings, AFolderInTheFilesPlaceIsAnUnknownError) {
    std::filesystem::create_directories(m_path);
    m_registry.AutoCreate(true);
    EXPECT_THAT([&] { m_registry.OpenKey(); },
                Raises(0x800403F1, "clsTRX_Registry", "Unknown Error No. 21"));  // EISDIR
}

TEST_F(Settings, KeepATextThatIsNoUtf8ByteForByte) {
    Open();
    const std::string folder = "/home/M\xFCller/\xFF";
    m_registry.Value("ProjPath", REG_SZ, Variant(folder));
    EXPECT_EQ(m_registry.Value("ProjPath", REG_SZ), Variant(folder));
}

TEST_F(Settings, AWriteThatFailsIsAnUnknownErrorAndKeepsWhatWasThere) {
    Open("Defaults");
    m_registry.Value("UserName", REG_SZ, Variant("Ann"));
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THAT([&] { m_registry.Value("UserName", REG_SZ, Variant("Bob")); },
                Raises(0x800403F1, "clsTRX_Registry", "Unknown Error No. 27"));  // EFBIG
    EXPECT_NO_THROW(CDefaults().SaveDefaults(m_registry, "Defaults"));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    Open("Defaults");
    EXPECT_EQ(m_registry.Value("UserName", REG_SZ), Variant("Ann"));
}

TEST_F(Settings, SetADamagedStoreAsideAndNeverOverTheOneBefore) {
    std::filesystem::create_directories(m_path.parent_path());
    for (const char* damage : {"{", "[]", R"({"k":1})", R"({"k":{"v":{"text":1}}})",
                               R"({"k":{"v":{"integer":99999999999}}})", "\xFF\x00"}) {
        WriteBytes(m_path, damage);
        testing::internal::CaptureStderr();
        EXPECT_THAT([&] { m_registry.OpenKey(); },
                    Raises(0x800403EC, "clsTRX_Registry", "Key does not exist"));
        EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("set aside"));
        EXPECT_FALSE(std::filesystem::exists(m_path));
    }
    EXPECT_EQ(ReadBytes(m_path.string() + ".damaged-1"), "{");
    EXPECT_EQ(ReadBytes(m_path.string() + ".damaged-2"), "[]");
    EXPECT_TRUE(std::filesystem::exists(m_path.string() + ".damaged-6"));
}

TEST_F(Settings, EightProgramsThatWriteAtOnceLoseNothing) {
    constexpr int kPrograms = 8;
    constexpr int kValues = 20;
    for (int program = 0; program < kPrograms; ++program) {
        if (fork() == 0) {
            int status = 0;
            try {
                clsTRX_Registry registry(m_file);
                registry.AutoCreate(true);
                registry.SubKey("Shared");
                registry.OpenKey();
                for (int i = 0; i < kValues; ++i) {
                    registry.Value(std::to_string(program * kValues + i), REG_DWORD, Variant(i));
                }
            } catch (const RaisedError&) {
                status = 1;
            }
            _exit(status);
        }
    }
    for (int program = 0; program < kPrograms; ++program) {
        int status = 0;
        wait(&status);
        EXPECT_EQ(status, 0);
    }
    Open("Shared");
    for (int i = 0; i < kPrograms * kValues; ++i) {
        EXPECT_EQ(m_registry.Value(std::to_string(i), REG_DWORD), Variant(i % kValues)) << i;
    }
}

TEST_F(Settings, DefaultPathFollowsTheConfigurationFolder) {
    setenv("XDG_CONFIG_HOME", "/some/where", 1);
    EXPECT_EQ(SettingsFile::DefaultPath(), "/some/where/genvara/settings.json");
    setenv("XDG_CONFIG_HOME", "not/absolute", 1);
    setenv("HOME", "/home/ann", 1);
    EXPECT_EQ(SettingsFile::DefaultPath(), "/home/ann/.config/genvara/settings.json");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(SettingsFile::DefaultPath(), "/home/ann/.config/genvara/settings.json");
}

TEST_F(Settings, DefaultsComeBackAsTheyWereSaved) {
    CDefaults saved;
    saved.UserName("Ann");
    saved.CustomerName("Büro, \"West\"");
    saved.VoltageLL(208);
    saved.NumParallelSets(3);
    saved.Altitude(1234.5678901234);
    saved.AmbTemp(-40);
    saved.MaxHarmonics(20);
    saved.SaveDefaults(m_registry, "Defaults");
    CDefaults read;
    read.ReadDefaults(m_registry, "Defaults");
    EXPECT_EQ(read.UserName(), "Ann");
    EXPECT_EQ(read.CustomerName(), "Büro, \"West\"");
    EXPECT_EQ(read.VoltageLL(), 208);
    EXPECT_EQ(read.NumParallelSets(), 3);
    EXPECT_EQ(read.Altitude(), 1234.5678901234);
    EXPECT_EQ(read.AmbTemp(), -40.0);
    EXPECT_EQ(read.MaxHarmonics(), 20);
    m_registry.SubKey("Defaults");
    m_registry.OpenKey();
    EXPECT_EQ(m_registry.Value("Altitude", REG_SZ), Variant("1234.5678901234"));  // doubles travel as text
    EXPECT_EQ(m_registry.Value("Voltage", REG_DWORD), Variant(208));
}

/// Every default under the name that it is stored by, no two alike.
const std::vector<std::pair<const char*, Variant>> kStoredDefaults{
    {"UserName", "Ann"},  {"CustomerName", "Mill"},
    {"Voltage", 208},     {"Connection", 5},
    {"Freq", 50},         {"Fuel", 3},
    {"Duty", 1},          {"NumSets", 4},
    {"Altitude", "12.5"}, {"AmbTemp", "-40"},
    {"MaxVoltDip", 30},   {"MaxFreqDip", 20},
    {"MaxHarm", 10}};

TEST_F(Settings, EachDefaultIsStoredUnderItsOwnName) {
    CDefaults saved;
    saved.UserName("Ann");
    saved.CustomerName("Mill");
    saved.VoltageLL(208);
    saved.ConnectCode(5);
    saved.Freq(50);
    saved.Fuel(3);
    saved.Duty(1);
    saved.NumParallelSets(4);
    saved.Altitude(12.5);
    saved.AmbTemp(-40);
    saved.MaxVoltageDip(30);
    saved.MaxFreqDip(20);
    saved.MaxHarmonics(10);
    saved.SaveDefaults(m_registry, "Defaults");
    Open("Defaults");
    for (const auto& [name, value] : kStoredDefaults) {
        const auto type = std::holds_alternative<std::string>(value) ? REG_SZ : REG_DWORD;
        EXPECT_EQ(m_registry.Value(name, type), value) << name;
    }
}

TEST_F(Settings, EachDefaultIsReadByItsOwnName) {
    Open("Defaults");
    for (const auto& [name, value] : kStoredDefaults) {
        m_registry.Value(name, std::holds_alternative<std::string>(value) ? REG_SZ : REG_DWORD, value);
    }
    CDefaults read;
    read.ReadDefaults(m_registry, "Defaults");
    EXPECT_EQ(read.UserName(), "Ann");
    EXPECT_EQ(read.CustomerName(), "Mill");
    EXPECT_EQ(read.VoltageLL(), 208);
    EXPECT_EQ(read.ConnectCode(), 5);
    EXPECT_EQ(read.Freq(), 50);
    EXPECT_EQ(read.Fuel(), 3);
    EXPECT_EQ(read.Duty(), 1);
    EXPECT_EQ(read.NumParallelSets(), 4);
    EXPECT_EQ(read.Altitude(), 12.5);
    EXPECT_EQ(read.AmbTemp(), -40.0);
    EXPECT_EQ(read.MaxVoltageDip(), 30);
    EXPECT_EQ(read.MaxFreqDip(), 20);
    EXPECT_EQ(read.MaxHarmonics(), 10);
}

TEST_F(Settings, EachOptionIsStoredAndReadByItsOwnName) {
    const std::vector<std::pair<const char*, Variant>> stored{{"ProjPath", "/p"}, {"IsMetric", 0},
                                                              {"NumSets", 3},     {"NumUnder", 4},
                                                              {"MaxLoad", 95},    {"MinLoad", 35}};
    WriteOptions(m_registry, "Base\\",
                 {.projectPath = "/p",
                  .isMetric = false,
                  .maxSetsRecommended = 3,
                  .maxSetsUndersized = 4,
                  .maxLoading = 95,
                  .minLoading = 35});
    Open("Base\\Options");
    for (const auto& [name, value] : stored) {
        const auto type = std::holds_alternative<std::string>(value) ? REG_SZ : REG_DWORD;
        EXPECT_EQ(m_registry.Value(name, type), value) << name;
    }
    OptionValues read;
    read.isMetric = true;
    ReadOptions(m_registry, "Base\\",
                {.setProjectPath = [&](const std::string& value) { read.projectPath = value; },
                 .setIsMetric = [&](bool value) { read.isMetric = value; },
                 .setMaxSetsRecommended = [&](std::int32_t value) { read.maxSetsRecommended = value; },
                 .setMaxSetsUndersized = [&](std::int32_t value) { read.maxSetsUndersized = value; },
                 .setMaxLoading = [&](std::int32_t value) { read.maxLoading = value; },
                 .setMinLoading = [&](std::int32_t value) { read.minLoading = value; }});
    EXPECT_EQ(read.projectPath, "/p");
    EXPECT_FALSE(read.isMetric);
    EXPECT_EQ(read.maxSetsRecommended, 3);
    EXPECT_EQ(read.maxSetsUndersized, 4);
    EXPECT_EQ(read.maxLoading, 95);
    EXPECT_EQ(read.minLoading, 35);
}

TEST_F(Settings, DefaultsTakeStoredValuesAsTheyStand) {
    CDefaults().SaveDefaults(m_registry, "Defaults");
    Open("Defaults");
    m_registry.Value("MaxHarm", REG_DWORD, Variant(99));  // beyond what the setter takes
    CDefaults read;
    read.ReadDefaults(m_registry, "Defaults");
    EXPECT_EQ(read.MaxHarmonics(), 99);
}

TEST_F(Settings, OneMissingDefaultBringsTheFactorysBackWhole) {
    CDefaults defaults;
    const auto fails = Raises(3, "CDefaults::ReadDefaults", "Error reading defaults from system registry.");
    EXPECT_THAT([&] { defaults.ReadDefaults(m_registry, "Defaults"); }, fails);  // no key
    Open("Defaults");
    m_registry.Value("UserName", REG_SZ, Variant("Ann"));
    m_registry.Value("Voltage", REG_DWORD, Variant(208));
    EXPECT_THAT([&] { defaults.ReadDefaults(m_registry, "Defaults"); }, fails);
    EXPECT_EQ(defaults.UserName(), "");
    EXPECT_EQ(defaults.VoltageLL(), 480);
    EXPECT_EQ(defaults.Altitude(), 152.4);
    EXPECT_EQ(defaults.AmbTemp(), 21.1111111111);
}

TEST_F(Settings, SavingToAStoreThatCannotBeOpenedShowsNothing) {
    std::filesystem::create_directories(m_path);
    EXPECT_NO_THROW(CDefaults().SaveDefaults(m_registry, "Defaults"));
}

TEST_F(Settings, OptionsThatCannotBeReadLeaveTheOthers) {
    Open("Base\\Options");
    m_registry.Value("NumSets", REG_DWORD, Variant(7));
    m_registry.Value("MaxLoad", REG_DWORD, Variant(500));
    m_registry.Value("IsMetric", REG_DWORD, Variant(2));
    bool metric = false;
    std::int32_t sets = 0;
    std::int32_t minLoad = 30;
    ReadOptions(m_registry, "Base\\",
                {.setProjectPath = [](const std::string&) { FAIL(); },
                 .setIsMetric = [&](bool value) { metric = value; },
                 .setMaxSetsRecommended = [&](std::int32_t value) { sets = value; },
                 .setMaxSetsUndersized = [](std::int32_t) { FAIL(); },
                 .setMaxLoading = [](std::int32_t) { throw RaisedError(13, "x", "refused"); },
                 .setMinLoading = [&](std::int32_t value) { minLoad = value; }});
    EXPECT_TRUE(metric);
    EXPECT_EQ(sets, 7);
    EXPECT_EQ(minLoad, 30);
}

TEST_F(Settings, OptionsStoreTrueAsAllBitsSet) {
    WriteOptions(m_registry, "Base\\", {.projectPath = "/p", .isMetric = true, .maxSetsRecommended = 3});
    Open("Base\\Options");
    EXPECT_EQ(m_registry.Value("IsMetric", REG_DWORD), Variant(-1));
    EXPECT_EQ(m_registry.Value("ProjPath", REG_SZ), Variant("/p"));
    EXPECT_EQ(m_registry.Value("NumSets", REG_DWORD), Variant(3));
}

struct DefaultsCase {
    std::function<void(CDefaults&)> set;
    bool accepted;
    std::int32_t number;
    const char* source;
    const char* description;
};

TEST(Defaults, CheckTheirRanges) {
    const std::vector<DefaultsCase> cases{
        {[](CDefaults& d) { d.VoltageLL(0); }, true, 0, "", ""},
        {[](CDefaults& d) { d.VoltageLL(-1); }, false, 9, "CDefaults::VoltageLL",
         "Invalid line-to-line voltage."},
        {[](CDefaults& d) { d.Freq(1); }, true, 0, "", ""},
        {[](CDefaults& d) { d.Freq(0); }, false, 5, "CDefaults::Freq", "Invalid frequency"},
        {[](CDefaults& d) { d.NumParallelSets(1); }, true, 0, "", ""},
        {[](CDefaults& d) { d.NumParallelSets(16); }, true, 0, "", ""},
        {[](CDefaults& d) { d.NumParallelSets(0); }, false, 6, "CDefaults::GensetsInParallel",
         "Invalid number of parallel sets"},
        {[](CDefaults& d) { d.NumParallelSets(17); }, false, 6, "CDefaults::GensetsInParallel",
         "Invalid number of parallel sets"},
        {[](CDefaults& d) { d.Altitude(-500); }, true, 0, "", ""},
        {[](CDefaults& d) { d.Altitude(4572); }, true, 0, "", ""},
        {[](CDefaults& d) { d.Altitude(4572.1); }, false, 3, "CDefaults::Altitude", "Invalid altitude"},
        {[](CDefaults& d) { d.AmbTemp(66); }, true, 0, "", ""},
        {[](CDefaults& d) { d.AmbTemp(-40.1); }, false, 4, "CDefaults::AmbTemp",
         "Invalid ambient temperature"},
        {[](CDefaults& d) { d.MaxVoltageDip(35); }, true, 0, "", ""},
        {[](CDefaults& d) { d.MaxVoltageDip(36); }, false, 11, "CDefaults::MaxVoltageDip",
         "Invalid maximum voltage dip"},
        {[](CDefaults& d) { d.MaxFreqDip(25); }, true, 0, "", ""},
        {[](CDefaults& d) { d.MaxFreqDip(26); }, false, 12, "CDefaults::MaxFreqDip",
         "Invalid maximum frequency dip"},
        {[](CDefaults& d) { d.MaxHarmonics(20); }, true, 0, "", ""},
        {[](CDefaults& d) { d.MaxHarmonics(21); }, false, 10, "CDefaults::MaxHarmonics",
         "Invalid maximum harmonics"},
    };
    for (const DefaultsCase& row : cases) {
        CDefaults defaults;
        if (row.accepted) {
            EXPECT_NO_THROW(row.set(defaults));
        } else {
            EXPECT_THAT([&] { row.set(defaults); }, Raises(row.number, row.source, row.description));
        }
    }
}

}  // namespace
}  // namespace genvara
