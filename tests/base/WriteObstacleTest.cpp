#include "WriteObstacle.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "TemporaryFolder.h"

namespace genvara {
namespace {

std::string Obstacle(const std::filesystem::path& file) {
    return WriteObstacle(file).value_or("none");
}

/// Whether a question is answered so by a process that may not write everything, as the administrator may.
bool SaysAnOrdinaryUser(const std::filesystem::path& file, const std::string& expected) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr uid_t kNobody = 65534;
        const bool ordinary = geteuid() != 0 || setuid(kNobody) == 0;
        _exit(ordinary && Obstacle(file) == expected ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(WriteObstacle, IsNoneForANewFileAndForOneThatCanBeReplaced) {
    const TemporaryFolder folder;
    EXPECT_EQ(Obstacle(folder / "new.prj"), "none");
    EXPECT_FALSE(std::filesystem::exists(folder / "new.prj")) << "asked for, not made";
    WriteBytes(folder / "old.prj", "content");
    EXPECT_EQ(Obstacle(folder / "old.prj"), "none");
    EXPECT_EQ(ReadBytes(folder / "old.prj"), "content");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(WriteObstacle, IsInThePath) {
    const TemporaryFolder folder;
    WriteBytes(folder / "file", "");
    std::filesystem::create_directory(folder / "sub");
    EXPECT_EQ(Obstacle(folder / "missing/a.prj"), "its folder does not exist");
    EXPECT_EQ(Obstacle(folder / "file/a.prj"), "its folder is a file");
    EXPECT_EQ(Obstacle(folder / "sub"), "there is a folder of that name");
    EXPECT_EQ(Obstacle(folder / std::string(300, 'x')), "its name is too long");
}

TEST(WriteObstacle, IsADeviceOrAPipeAndNobodyWaitsForIt) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(Obstacle(folder / "pipe"), "there is a device of that name");
    EXPECT_EQ(Obstacle("/dev/null"), "there is a device of that name");
}

TEST(WriteObstacle, IsWhatTheUserMayNotWrite) {
    const TemporaryFolder folder;
    using std::filesystem::perms;
    std::filesystem::permissions(folder.Path(), perms::all);
    WriteBytes(folder / "read-only.prj", "content");
    std::filesystem::permissions(folder / "read-only.prj", perms::owner_read | perms::others_read);
    std::filesystem::create_directory(folder / "closed");
    std::filesystem::permissions(folder / "closed",
                                 perms::owner_read | perms::owner_exec | perms::others_exec);
    EXPECT_TRUE(SaysAnOrdinaryUser(folder / "new.prj", "none"));
    EXPECT_TRUE(SaysAnOrdinaryUser(folder / "read-only.prj", "the file can only be read"));
    EXPECT_TRUE(SaysAnOrdinaryUser(folder / "closed/a.prj", "nothing may be written to its folder"));
}

TEST(WriteObstacle, IsNamedWhereItShowsOnlyInWriting) {
    EXPECT_EQ(WriteObstacle("a.prj", ENOSPC, "No space left on device"), "the disk is full");
    EXPECT_EQ(WriteObstacle("a.prj", EFBIG, "File too large"), "it would be larger than files may be");
    EXPECT_EQ(WriteObstacle("a.prj", EROFS, "Read-only file system"), "its disk can only be read");
    EXPECT_EQ(WriteObstacle("a.prj", EIO, "Input/output error"), "Input/output error");
}

}  // namespace
}  // namespace genvara
