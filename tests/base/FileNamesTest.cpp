#include "FileNames.h"

#include <gtest/gtest.h>

namespace genvara {
namespace {

struct Named {
    const char* name;
    const char* file;
};

TEST(FileNames, KeepWhatAFileNameCanHold) {
    const Named cases[] = {
        {"Mill", "Mill.prj"},
        {"Mécanique Générale (2. Bauabschnitt)", "Mécanique Générale (2. Bauabschnitt).prj"},
        {"語", "語.prj"},
        {"Mill 2.5", "Mill 2.5.prj"},
        {"  Mill. ", "Mill.prj"},
        {"../../etc/passwd", "etc-passwd.prj"},
        {".hidden", "hidden.prj"},
        {"--now", "now.prj"},
        {"a/b\\c:d*e?f\"g<h>i|j", "a-b-c-d-e-f-g-h-i-j.prj"},
        {"two\r\nlines\tand a tab\x7F", "two--lines-and a tab-.prj"},
        {"", ""},
        {" . - /", ""}};
    for (const Named& row : cases) {
        EXPECT_EQ(FileNameFor(row.name, ".prj"), row.file) << row.name;
    }
    EXPECT_EQ(FileNameFor("Mill", ".gvx"), "Mill.gvx");
}

TEST(FileNames, AreCutBetweenTwoCharacters) {
    EXPECT_EQ(FileNameFor(std::string(200, 'x'), ".prj"), std::string(200, 'x') + ".prj");
    EXPECT_EQ(FileNameFor(std::string(201, 'x'), ".prj"), std::string(200, 'x') + ".prj");
    // The two bytes of the letter are the 200th and the 201st.
    EXPECT_EQ(FileNameFor(std::string(199, 'x') + "é", ".prj"), std::string(199, 'x') + ".prj");
    EXPECT_EQ(FileNameFor(std::string(198, 'x') + "é", ".prj"), std::string(198, 'x') + "é.prj");
}

}  // namespace
}  // namespace genvara
