#include "SettingsFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

#include "CDefaults.h"
#include "RaisedErrorMatcher.h"
#include "TemporaryFolder.h"
#include "clsTRX_Registry.h"

namespace genvara {
namespace {

using Variant = clsTRX_Registry::Variant;
using namespace registry_type;

constexpr std::int64_t kUnknownError = 0x800403F1;

auto RaisesUnknown(int systemError) {
    return Raises(kUnknownError, "clsTRX_Registry", fmt::format("Unknown Error No. {}", systemError));
}

/// Opening a key fails with the system's code, whether or not the key may be created.
void ExpectUnusable(const std::filesystem::path& path, int systemError) {
    SettingsFile file(path);
    clsTRX_Registry registry(file);
    registry.SubKey("A");
    for (const bool create : {false, true}) {
        registry.AutoCreate(create);
        EXPECT_THAT([&] { registry.OpenKey(); }, RaisesUnknown(systemError)) << path << create;
    }
}

/// Files of the process may not grow beyond a size while this lives, as on a disk that is full.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    SmallDisk(SmallDisk&&) = delete;
    SmallDisk& operator=(SmallDisk&&) = delete;

  private:
    rlimit m_before{};
    void (*m_handler)(int);
};

class OddStores : public testing::Test {
  protected:
    void Open() {
        m_registry.SubKey("A");
        m_registry.AutoCreate(true);
        m_registry.OpenKey();
    }
    void ExpectSetAside() {
        m_registry.SubKey("A");
        testing::internal::CaptureStderr();
        EXPECT_THAT([&] { m_registry.OpenKey(); },
                    Raises(0x800403EC, "clsTRX_Registry", "Key does not exist"));
        const std::string message = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::ranges::count(message, '\n'), 1) << message;
        EXPECT_THAT(message, testing::HasSubstr(m_path.string()));
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_path = m_folder / "settings.json";
    SettingsFile m_file{m_path};
    clsTRX_Registry m_registry{m_file};
};

TEST_F(OddStores, WhatIsNoOrdinaryFileIsNeverWaitedForNorReadWithoutEnd) {
    ASSERT_EQ(mkfifo(m_path.c_str(), 0600), 0);
    ExpectUnusable(m_path, EINVAL);
    const std::filesystem::path endless = m_folder / "endless";
    std::filesystem::create_symlink("/dev/zero", endless);
    ExpectUnusable(endless, EINVAL);
    EXPECT_TRUE(std::filesystem::is_symlink(endless));  // and not set aside
}

TEST_F(OddStores, OneThatCannotBeReachedIsNotTakenForAFirstRun) {
    std::filesystem::create_symlink("settings.json", m_path);
    SettingsFile loop(m_path);
    clsTRX_Registry registry(loop);
    registry.SubKey("A");
    EXPECT_THAT([&] { registry.OpenKey(); }, RaisesUnknown(ELOOP));
    WriteBytes(m_folder / "file", "");
    ExpectUnusable(m_folder / "file/settings.json", ENOTDIR);
}

TEST_F(OddStores, AFolderThatCannotBeMadeRaisesTheSystemsOwnCode) {
    SettingsFile file("/proc/no-such-folder/genvara/settings.json");
    clsTRX_Registry registry(file);
    registry.AutoCreate(true);
    EXPECT_THAT([&] { registry.OpenKey(); }, RaisesUnknown(ENOENT));
}

TEST_F(OddStores, AReadThatFailsIsNoDamage) {
    // Nothing is mapped at the address 0, so that the first read of this ordinary file fails.
    std::filesystem::create_symlink("/proc/self/mem", m_path);
    m_registry.SubKey("A");
    EXPECT_THAT([&] { m_registry.OpenKey(); }, RaisesUnknown(EIO));
    EXPECT_TRUE(std::filesystem::is_symlink(m_path));
}

TEST_F(OddStores, AValueOfAStoreThatBecameUnreadableRaisesTheSystemsCodeItself) {
    Open();
    std::filesystem::remove(m_path);
    EXPECT_THAT([&] { (void)m_registry.Value("x", REG_SZ); }, Raises(2, "clsTRX_Registry", "System error 2"));
    std::filesystem::create_directory(m_path);
    EXPECT_THAT([&] { (void)m_registry.Value("x", REG_SZ); },
                Raises(EISDIR, "clsTRX_Registry", fmt::format("System error {}", EISDIR)));
    EXPECT_THAT([&] { m_registry.Value("x", REG_SZ, Variant("")); }, RaisesUnknown(EISDIR));
}

TEST_F(OddStores, AFullDiskLeavesWhatWasStored) {
    Open();
    m_registry.Value("Name", REG_SZ, Variant("kept"));
    {
        const SmallDisk disk(1000);
        EXPECT_THAT([&] { m_registry.Value("Name", REG_SZ, Variant(std::string(5000, 'x'))); },
                    RaisesUnknown(EFBIG));
    }
    EXPECT_EQ(m_registry.Value("Name", REG_SZ), Variant("kept"));
}

TEST_F(OddStores, DefaultsThatCannotBeWrittenAreLostWithoutAWord) {
    CDefaults defaults;
    defaults.UserName("Ann");
    defaults.SaveDefaults(m_registry, "Defaults");
    defaults.UserName("Bob");
    {
        const SmallDisk disk(16);
        EXPECT_NO_THROW(defaults.SaveDefaults(m_registry, "Defaults"));
    }
    CDefaults read;
    read.ReadDefaults(m_registry, "Defaults");
    EXPECT_EQ(read.UserName(), "Ann");
}

TEST_F(OddStores, IntegersOfMoreThan32BitsAreDamage) {
    for (const char* integer :
         {"2147483648", "-2147483649", "18446744073709551615", "9223372036854775808", "1.5", "true"}) {
        WriteBytes(m_path, fmt::format(R"({{"80000002\\a":{{"n":{{"integer":{}}}}}}})", integer));
        ExpectSetAside();
    }
    WriteBytes(m_path, R"({"80000002\\a":{"least":{"integer":-2147483648},"most":{"integer":2147483647}}})");
    m_registry.OpenKey();
    EXPECT_EQ(m_registry.Value("least", REG_DWORD), Variant(std::numeric_limits<std::int32_t>::min()));
    EXPECT_EQ(m_registry.Value("most", REG_DWORD), Variant(std::numeric_limits<std::int32_t>::max()));
}

TEST_F(OddStores, DeepAndEmptyAndLargeOnesAreDamage) {
    for (const std::string& damage :
         {std::string(), std::string(900'000, '['), std::string(400'000, '[') + std::string(400'000, ']')}) {
        WriteBytes(m_path, damage);
        ExpectSetAside();
    }
    WriteBytes(m_path, "{}" + std::string(1U << 20U, ' '));  // settings, but two bytes beyond 1 MiB
    ExpectSetAside();
    WriteBytes(m_path, "{}" + std::string((1U << 20U) - 2, ' '));
    Open();  // just 1 MiB
}

TEST_F(OddStores, NoStoreGrowsBeyondWhatCanBeReadBack) {
    Open();
    m_registry.Value("Name", REG_SZ, Variant("kept"));
    EXPECT_THAT([&] { m_registry.Value("Long", REG_SZ, Variant(std::string(1U << 20U, 'x'))); },
                RaisesUnknown(EFBIG));
    EXPECT_EQ(m_registry.Value("Name", REG_SZ), Variant("kept"));
}

TEST_F(OddStores, DamageIsSetAsideWhereNobodyCanBeTold) {
    WriteBytes(m_path, "{");
    // A link to nowhere holds its name too.
    std::filesystem::create_symlink("nowhere", m_path.string() + ".damaged-1");
    const int before = dup(STDERR_FILENO);
    const int full = open("/dev/full", O_WRONLY);
    dup2(full, STDERR_FILENO);
    close(full);
    m_registry.SubKey("A");
    std::int32_t number = 0;
    try {
        m_registry.OpenKey();
    } catch (const RaisedError& failure) {
        number = failure.Number();
    }
    clearerr(stderr);
    dup2(before, STDERR_FILENO);
    close(before);
    EXPECT_EQ(number, static_cast<std::int32_t>(0x800403EC));
    EXPECT_EQ(ReadBytes(m_path.string() + ".damaged-2"), "{");
    EXPECT_TRUE(std::filesystem::is_symlink(m_path.string() + ".damaged-1"));
}

TEST_F(OddStores, ValuesOfTheOtherTypeAndTextsThatAreNoIntegers) {
    Open();
    m_registry.Value("Text", REG_SZ, Variant("5"));
    m_registry.Value("Integer", REG_DWORD, Variant(5));
    const auto invalidData = Raises(13, "clsTRX_Registry", "System error 13");
    EXPECT_THAT([&] { (void)m_registry.Value("Text", REG_DWORD); }, invalidData);
    EXPECT_THAT([&] { (void)m_registry.Value("Integer", REG_SZ); }, invalidData);
    EXPECT_THAT([&] { m_registry.Value("x", REG_DWORD, Variant("five")); },
                Raises(13, "clsTRX_Registry::Value", "Type mismatch"));
    EXPECT_THAT([&] { m_registry.Value("x", REG_DWORD, Variant("3000000000")); },
                Raises(6, "clsTRX_Registry::Value", "Overflow"));
    m_registry.Value("Text", REG_DWORD, Variant(7));  // the last writer's type counts
    EXPECT_EQ(m_registry.Value("Text", REG_DWORD), Variant(7));
    // 255 characters of two bytes each fit, 256 do not.
    std::string umlauts;
    for (int i = 0; i < 255; ++i) {
        umlauts += "ü";
    }
    m_registry.Value("Text", REG_SZ, Variant(umlauts));
    EXPECT_EQ(m_registry.Value("Text", REG_SZ), Variant(umlauts));
    m_registry.Value("Text", REG_SZ, Variant(umlauts + "ü"));
    EXPECT_THAT([&] { (void)m_registry.Value("Text", REG_SZ); },
                Raises(234, "clsTRX_Registry", "System error 234"));
}

}  // namespace
}  // namespace genvara
