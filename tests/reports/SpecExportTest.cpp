#include "SpecExport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "ProfileWriter.h"
#include "RaisedErrorMatcher.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

struct ProfileCase {
    const char* what;
    const char* before;
    const char* after;
};

TEST(ProfileWriter, ReplacesItsKeyAndKeepsTheRest) {
    const ProfileCase cases[] = {
        {"fresh", "", "[Fuel]\r\nfuel=LP\r\n"},
        {"in place", "[Fuel]\r\nfuel=old\r\nx=1\r\n", "[Fuel]\r\nfuel=LP\r\nx=1\r\n"},
        {"whatever case and blanks", "; note\n[ FUEL ]\n Fuel = old \nx=1",
         "; note\n[ FUEL ]\n Fuel =LP\nx=1"},
        {"new key at the section's end", "[Fuel]\r\nx=1\r\n\r\n[Next]\r\ny=2\r\n",
         "[Fuel]\r\nx=1\r\nfuel=LP\r\n\r\n[Next]\r\ny=2\r\n"},
        {"new section", "[Other]\r\nfuel=mine", "[Other]\r\nfuel=mine\r\n[Fuel]\r\nfuel=LP\r\n"},
        {"last line without an end", "[Fuel]\r\nx=1", "[Fuel]\r\nx=1\r\nfuel=LP\r\n"},
        {"old line ends", "[Fuel]\rfuel=a\r[Z]\r", "[Fuel]\rfuel=LP\r[Z]\r"},
        {"the first of two sections", "[Fuel]\n[fuel]\nfuel=b\n", "[Fuel]\nfuel=LP\r\n[fuel]\nfuel=b\n"},
        {"a key of the same name elsewhere", "[A]\nfuel=a\n[Fuel]\nfuel=b\n[B]\nfuel=c\n",
         "[A]\nfuel=a\n[Fuel]\nfuel=LP\n[B]\nfuel=c\n"},
        {"the first of two keys", "[Fuel]\nfuel=a\nFUEL=b\n", "[Fuel]\nfuel=LP\nFUEL=b\n"},
        {"a value of several equals signs", "[Fuel]\nfuel=a=b=c", "[Fuel]\nfuel=LP"},
        {"a value of nothing", "[Fuel]\r\nfuel=\r\n", "[Fuel]\r\nfuel=LP\r\n"},
        {"a longer name", "[Fuel]\nfuel2=a\n", "[Fuel]\nfuel2=a\nfuel=LP\r\n"},
        {"a note with the key", "[Fuel]\n;fuel=a\n", "[Fuel]\n;fuel=a\nfuel=LP\r\n"},
        {"a key before any section", "fuel=a\n", "fuel=a\n[Fuel]\r\nfuel=LP\r\n"},
        {"a key without a value", "[Fuel]\nfuel\n", "[Fuel]\nfuel\nfuel=LP\r\n"},
        {"a section that is not closed", "[Fuel\nfuel=a\n", "[Fuel\nfuel=a\n[Fuel]\r\nfuel=LP\r\n"},
        {"an empty section at the end", "[Fuel]", "[Fuel]\r\nfuel=LP\r\n"},
        {"blank lines behind the section", "[Fuel]\n\n\n", "[Fuel]\nfuel=LP\r\n\n\n"},
        {"bytes of any kind", "\xFF\x01=\n[Fuel]\nfuel=\xE9\n", "\xFF\x01=\n[Fuel]\nfuel=LP\n"},
    };
    for (const ProfileCase& row : cases) {
        EXPECT_EQ(WithProfileValue(row.before, "Fuel", "fuel", "LP"), row.after) << row.what;
    }
}

class SpecExport : public testing::Test {
  protected:
    CDefaults m_defaults;
    CProject m_project{m_defaults, [] { return DateTime{}; }};
    CPwrSys m_site{m_defaults};
    CLoadProfile m_profile;
    ErrorLog m_log{"."};
    CReports m_reports{0, m_profile, [] { return DateTime{}; }, m_log};
};

TEST_F(SpecExport, WritesEightSections) {
    m_project.ProjName("Bäckerei");
    m_reports.Fuel(2);
    m_reports.Data().ModelNum = "MV100G";
    m_reports.Data().AlternatorNum = "TN225";
    m_site.RiseDutyCode(2);
    EXPECT_EQ(
        SpecText("", m_reports, m_project, m_site).bytes,
        "[Project]\r\nprojectname=B\xE4"
        "ckerei\r\n[Fuel]\r\nfuel=Nat. Gas\r\n[Model No]\r\nmodel=MV100G\r\n"
        "[Alternator]\r\nalternator=TN225\r\n[Voltage]\r\nvoltage=277/480\r\n[Frequency]\r\nfrequency=60\r\n"
        "[Phase]\r\nphase=3\r\n[Rise]\r\nrise=125\r\n");
}

TEST_F(SpecExport, MarksWhatIsMissing) {
    m_site.ConnectCode(3);
    m_site.Voltage(240);
    m_site.RiseDutyCode(9);
    const std::string text = SpecText("", m_reports, m_project, m_site).bytes;
    for (const char* line :
         {"projectname=<none>\r\n", "fuel=<none>\r\n", "model=<none>\r\n", "alternator=<none>\r\n",
          "voltage=120/240\r\n", "phase=1\r\n", "rise=Unknown\r\n"}) {
        EXPECT_THAT(text, testing::HasSubstr(line));
    }
    m_site.ConnectCode(2);
    EXPECT_THAT(SpecText("", m_reports, m_project, m_site).bytes, testing::HasSubstr("phase=3\r\n"));
}

TEST_F(SpecExport, ReplacesItsKeysInAnExistingFile) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a.gvx", "[Mine]\nkey=1\n[RISE]\nrise=old\n");
    ExportSpec(folder / "a.gvx", m_reports, m_project, m_site);
    const std::string once = ReadBytes(folder / "a.gvx");
    EXPECT_THAT(once, testing::StartsWith("[Mine]\nkey=1\n[RISE]\nrise=130\n[Project]\r\n"));
    ExportSpec(folder / "a.gvx", m_reports, m_project, m_site);
    EXPECT_EQ(ReadBytes(folder / "a.gvx"), once);
    EXPECT_THAT([&] { ExportSpec(folder.Path(), m_reports, m_project, m_site); },
                Raises(EISDIR, "AtomicFile", "Is a directory"));
}

TEST_F(SpecExport, TranslatesEveryRise) {
    const std::pair<std::int32_t, const char*> rises[] = {
        {0, "80"}, {1, "105"}, {2, "125"}, {3, "130"}, {4, "150"}, {5, "Unknown"}, {-1, "Unknown"}};
    for (const auto& [code, text] : rises) {
        m_site.RiseDutyCode(code);
        EXPECT_THAT(SpecText("", m_reports, m_project, m_site).bytes,
                    testing::EndsWith("[Rise]\r\nrise=" + std::string(text) + "\r\n"));
    }
}

TEST_F(SpecExport, TellsHowManyCharactersItCouldNotHold) {
    const TemporaryFolder folder;
    m_project.ProjName("東京 é");
    m_reports.Data().ModelNum = "two\r\nlines \U0001F600";
    EXPECT_EQ(ExportSpec(folder / "a.gvx", m_reports, m_project, m_site), 3U);
    const std::string written = ReadBytes(folder / "a.gvx");
    EXPECT_THAT(written, testing::StartsWith("[Project]\r\nprojectname=?? \xE9\r\n[Fuel]"));
    // A line end inside a value would make a line of its own.
    EXPECT_THAT(written, testing::HasSubstr("model=two  lines ?\r\n[Alternator]"));
}

TEST_F(SpecExport, KeepsEveryLineOfAForeignFile) {
    const TemporaryFolder folder;
    const std::string foreign = "\xEF\xBB\xBF; mine\n\n[FREQUENCY]\rFrequency = 1 ; old\r\n[Z]\nno end";
    WriteBytes(folder / "a.gvx", foreign);
    ExportSpec(folder / "a.gvx", m_reports, m_project, m_site);
    EXPECT_THAT(ReadBytes(folder / "a.gvx"),
                testing::StartsWith("\xEF\xBB\xBF; mine\n\n[FREQUENCY]\rFrequency =60\r\n[Z]\nno end\r\n"
                                    "[Project]\r\nprojectname=<none>\r\n[Fuel]\r\n"));
}

TEST_F(SpecExport, RefusesAFileThatItCannotRead) {
    // What cannot be read cannot be kept. The system's view of this process's memory, read from its start, is
    // an ordinary file whose reading fails for every user.
    const TemporaryFolder folder;
    std::filesystem::create_symlink("/proc/self/mem", folder / "a.gvx");
    EXPECT_THAT([&] { ExportSpec(folder / "a.gvx", m_reports, m_project, m_site); },
                Raises(EIO, "ExportSpec", "Input/output error"));
}

TEST_F(SpecExport, RefusesAFileThatMayOnlyBeWritten) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "this user may read everything";
    }
    const TemporaryFolder folder;
    WriteBytes(folder / "a.gvx", "[Mine]\nkey=1\n");
    std::filesystem::permissions(folder / "a.gvx", std::filesystem::perms::owner_write);
    EXPECT_THAT([&] { ExportSpec(folder / "a.gvx", m_reports, m_project, m_site); },
                Raises(EACCES, "ExportSpec", "Permission denied"));
    std::filesystem::permissions(folder / "a.gvx", std::filesystem::perms::owner_all);
    EXPECT_EQ(ReadBytes(folder / "a.gvx"), "[Mine]\nkey=1\n");
}

}  // namespace
}  // namespace genvara
