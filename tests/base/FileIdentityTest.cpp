#include "FileIdentity.h"

#include <gtest/gtest.h>

#include <vector>

#include "TemporaryFolder.h"

namespace genvara {
namespace {

namespace fs = std::filesystem;

TEST(FileIdentity, IsThatOfTheFileAndNotOfItsName) {
    const TemporaryFolder folder;
    WriteBytes(folder / "job.prj", "1");
    WriteBytes(folder / "twin.prj", "1");
    fs::create_directory(folder / "sub");
    fs::create_symlink("job.prj", folder / "link.prj");
    fs::create_symlink("link.prj", folder / "link-to-link.prj");
    fs::create_hard_link(folder / "job.prj", folder / "hard.prj");
    fs::create_symlink(".", folder / "here");
    fs::create_symlink("nowhere", folder / "dangling.prj");
    const struct {
        const char* name;
        bool same;
    } rows[] = {{"job.prj", true},
                {"sub/../job.prj", true},
                {"./job.prj", true},
                {"link.prj", true},
                {"hard.prj", true},
                {"link-to-link.prj", true},
                {"here/here/job.prj", true},
                {"twin.prj", false},
                {"none.prj", false},
                {"dangling.prj", false},
                {"sub", false}};
    for (const auto& row : rows) {
        EXPECT_EQ(IsSameFile(folder / "job.prj", folder / row.name), row.same) << row.name;
        EXPECT_EQ(IsSameFile(folder / row.name, folder / "job.prj"), row.same) << row.name;
    }
}

TEST(FileIdentity, IsNoneOfWhatIsNoOrdinaryFile) {
    const TemporaryFolder folder;
    EXPECT_FALSE(IsSameFile(folder / "none.prj", folder / "none.prj"));
    EXPECT_FALSE(IsSameFile(folder.Path(), folder.Path()));
    EXPECT_FALSE(IsSameFile("/dev/null", "/dev/null"));
}

TEST(FileIdentity, RefusesToWriteOverAnInputAndSaysWhichItIs) {
    const TemporaryFolder folder;
    WriteBytes(folder / "job.prj", "1");
    WriteBytes(folder / "catalogue.db", "2");
    fs::create_symlink("catalogue.db", folder / "out.rtf");
    const std::vector<InputFile> inputs{{folder / "job.prj", "the project"},
                                        {folder / "sub/../catalogue.db", "a file that is not there"},
                                        {folder / "catalogue.db", "the catalogue"}};
    EXPECT_EQ(OverwriteRefusal(folder / "out.rtf", inputs),
              (folder / "out.rtf").string() + " is the catalogue and is not written over.");
    EXPECT_EQ(OverwriteRefusal(folder / "job.prj", inputs),
              (folder / "job.prj").string() + " is the project and is not written over.");
    EXPECT_EQ(OverwriteRefusal(folder / "new.rtf", inputs), std::nullopt);
    EXPECT_EQ(OverwriteRefusal(folder / "job.prj", {}), std::nullopt);
}

}  // namespace
}  // namespace genvara
