#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <locale>

#include "CDefaults.h"
#include "GermanLocale.h"
#include "NumberText.h"
#include "ProgramOptions.h"
#include "TemporaryFolder.h"
#include "clsTRX_Registry.h"

namespace genvara {
namespace {

constexpr const char* kGerman = GermanLocale::kName;

class GermanUser : public testing::Test {
  protected:
    void SetUp() override {
        if (!m_german.IsBuilt()) {
            GTEST_SKIP() << "no localedef, or no sources of locales, on this machine";
        }
    }
    void TearDown() override {
        std::locale::global(std::locale::classic());
        setlocale(LC_ALL, "C");
    }

    TemporaryFolder m_folder;

  private:
    GermanLocale m_german;
};

TEST_F(GermanUser, FilesHoldTheSameUnderAnyLocale) {
    const auto write = [this](const std::string& name) {
        SettingsFile file(m_folder / name);
        clsTRX_Registry registry(file);
        CDefaults defaults;
        defaults.Altitude(-499.5);
        defaults.VoltageLL(13800);
        defaults.SaveDefaults(registry, "Defaults");
        WriteOptions(registry, "", {.projectPath = "/p", .isMetric = true, .maxSetsRecommended = 123456});
        CDefaults read;
        read.ReadDefaults(registry, "Defaults");
        EXPECT_EQ(read.Altitude(), -499.5);
        EXPECT_EQ(read.AmbTemp(), 21.1111111111);
        return ReadBytes(m_folder / name);
    };
    const std::string classic = write("classic.json");
    ASSERT_STREQ(setlocale(LC_ALL, kGerman), kGerman);
    std::locale::global(std::locale(kGerman));
    char comma[8];
    std::snprintf(comma, sizeof comma, "%.1f", 1.5);
    ASSERT_STREQ(comma, "1,5");  // the locale is at work
    const std::string german = write("german.json");
    EXPECT_EQ(german, classic);
    EXPECT_THAT(german, testing::HasSubstr("\"-499.5\""));
    EXPECT_THAT(german, testing::HasSubstr("\"21.1111111111\""));
    EXPECT_THAT(german, testing::HasSubstr("123456"));
    EXPECT_EQ(RenderFixed(1234.5, 2), "1234.50");
    EXPECT_EQ(RenderPlain(0.85), "0.85");
    EXPECT_EQ(ParseNumber("1.5"), 1.5);
}

}  // namespace
}  // namespace genvara
