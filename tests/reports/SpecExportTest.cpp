#include "SpecExport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
        {"whatever case and blanks", "; note\n[ FUEL ]\n Fuel = old \nx=1", "; note\n[ FUEL ]\nfuel=LP\nx=1"},
        {"new key at the section's end", "[Fuel]\r\nx=1\r\n\r\n[Next]\r\ny=2\r\n",
         "[Fuel]\r\nx=1\r\nfuel=LP\r\n\r\n[Next]\r\ny=2\r\n"},
        {"new section", "[Other]\r\nfuel=mine", "[Other]\r\nfuel=mine\r\n[Fuel]\r\nfuel=LP\r\n"},
        {"last line without an end", "[Fuel]\r\nx=1", "[Fuel]\r\nx=1\r\nfuel=LP\r\n"},
        {"old line ends", "[Fuel]\rfuel=a\r[Z]\r", "[Fuel]\rfuel=LP\r[Z]\r"},
        {"the first of two sections", "[Fuel]\n[fuel]\nfuel=b\n", "[Fuel]\nfuel=LP\r\n[fuel]\nfuel=b\n"},
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
        SpecText("", m_reports, m_project, m_site),
        "[Project]\r\nprojectname=B\xE4"
        "ckerei\r\n[Fuel]\r\nfuel=Nat. Gas\r\n[Model No]\r\nmodel=MV100G\r\n"
        "[Alternator]\r\nalternator=TN225\r\n[Voltage]\r\nvoltage=277/480\r\n[Frequency]\r\nfrequency=60\r\n"
        "[Phase]\r\nphase=3\r\n[Rise]\r\nrise=125\r\n");
}

TEST_F(SpecExport, MarksWhatIsMissing) {
    m_site.ConnectCode(3);
    m_site.Voltage(240);
    m_site.RiseDutyCode(9);
    const std::string text = SpecText("", m_reports, m_project, m_site);
    for (const char* line :
         {"projectname=<none>\r\n", "fuel=<none>\r\n", "model=<none>\r\n", "alternator=<none>\r\n",
          "voltage=120/240\r\n", "phase=1\r\n", "rise=Unknown\r\n"}) {
        EXPECT_THAT(text, testing::HasSubstr(line));
    }
    m_site.ConnectCode(2);
    EXPECT_THAT(SpecText("", m_reports, m_project, m_site), testing::HasSubstr("phase=3\r\n"));
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

}  // namespace
}  // namespace genvara
