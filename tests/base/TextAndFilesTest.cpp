#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <csignal>

#include "AtomicFile.h"
#include "CodePage.h"
#include "DateTime.h"
#include "ErrorLog.h"
#include "FailureRegion.h"
#include "LanguageErrors.h"
#include "RaisedErrorMatcher.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

TEST(CodePage, HoldsEveryByteThroughARoundTrip) {
    std::string bytes;
    for (int code = 0; code < 256; ++code) {
        bytes += static_cast<char>(code);
    }
    const EncodedText encoded = EncodeText(DecodeText(bytes));
    EXPECT_EQ(encoded.bytes, bytes);
    EXPECT_EQ(encoded.lostCharacters, 0U);
}

TEST(CodePage, KnowsTheCharactersOfTheWest) {
    EXPECT_EQ(EncodeText("é€–Ž").bytes, "\xE9\x80\x96\x8E");
    EXPECT_EQ(DecodeText("\xE9\x80\x96\x8E"), "é€–Ž");
    EXPECT_EQ(EncodeCharacter(U'€'), '\x80');
    EXPECT_EQ(EncodeCharacter(U'語'), std::nullopt);
}

TEST(CodePage, CountsWhatItCannotHold) {
    const EncodedText encoded = EncodeText(
        "a語b\xF0\x9F\x98\x80"
        "c\xFF");
    EXPECT_EQ(encoded.bytes, "a?b?c?");
    EXPECT_EQ(encoded.lostCharacters, 3U);
}

TEST(CodePage, ReadsOnlyValidUtf8) {
    EXPECT_EQ(DecodeUtf8("aé語"), U"aé語");
    // Overlong, surrogate, cut short, beyond the last character.
    EXPECT_EQ(DecodeUtf8("\xC0\x80"), U"\uFFFD\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xED\xA0\x80"), U"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xE8\xAA"), U"\uFFFD\uFFFD");
    EXPECT_EQ(DecodeUtf8("\xF4\x90\x80\x80"), U"\uFFFD\uFFFD\uFFFD\uFFFD");
    for (const char* invalid : {"\xC0\x80", "\xED\xA0\x80", "\xE8\xAA", "\xF4\x90\x80\x80", "Gr\xF6ner"}) {
        EXPECT_FALSE(IsUtf8(invalid)) << invalid;
    }
    for (const char* valid : {"", "aé語", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80"}) {
        EXPECT_TRUE(IsUtf8(valid)) << valid;
    }
}

TEST(DateTime, ReadsDatesThatExistAndRendersThemBack) {
    const DateTime moment{2003, 5, 21, 17, 2, 11};
    EXPECT_EQ(ParseDateTime("2003-05-21 17:02:11"), moment);
    EXPECT_EQ(ParseDateTime("2003-05-21"), (DateTime{2003, 5, 21, 0, 0, 0}));
    EXPECT_EQ(ParseDateTime("2024-02-29"), (DateTime{2024, 2, 29, 0, 0, 0}));
    for (const char* text : {"", "2003-02-29", "2003-13-01", "2003-05-21 24:00:00", "2003-5-21", "0000-01-01",
                             "2003-05-21T17:02:11", "2003-05-21 17:02", "21.05.2003"}) {
        EXPECT_EQ(ParseDateTime(text), std::nullopt) << text;
    }
    EXPECT_EQ(RenderFileDate(moment), "2003-05-21 17:02:11");
    EXPECT_EQ(RenderFileDate({2003, 5, 1, 0, 0, 0}), "2003-05-01");
    EXPECT_EQ(RenderIso(DateTime{}), "1899-12-30T00:00:00");
    EXPECT_EQ(RenderLongDate(moment), "May 21, 2003");
    EXPECT_EQ(RenderLongDate({2003, 12, 1, 0, 0, 0}), "December 1, 2003");
    EXPECT_EQ(RenderClockTime(moment), "05:02:11 PM");
    EXPECT_EQ(RenderClockTime({2003, 5, 1, 0, 7, 9}), "12:07:09 AM");
    EXPECT_EQ(RenderClockTime({2003, 5, 1, 12, 0, 0}), "12:00:00 PM");
}

TEST(AtomicFile, ReplacesWholeOrNotAtAll) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a", "old");
    chmod((folder / "a").c_str(), 0640);
    {
        AtomicFile abandoned(folder / "a");
        abandoned.Write("new");
    }
    EXPECT_EQ(ReadBytes(folder / "a"), "old");
    {
        AtomicFile file(folder / "a");
        file.Write("ne");
        file.Write("w");
        file.Commit();
    }
    EXPECT_EQ(ReadBytes(folder / "a"), "new");
    struct stat status {};
    stat((folder / "a").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}),
              1);  // nothing left behind
}

TEST(AtomicFile, KeepsWhoMayAndNotAsWhomItRan) {
    const TemporaryFolder folder;
    const mode_t mask = umask(0027);
    const auto savedMode = [&](const char* name) {
        AtomicFile file(folder / name);
        file.Commit();
        struct stat status {};
        stat((folder / name).c_str(), &status);
        return status.st_mode & 07777;
    };
    EXPECT_EQ(savedMode("new"), 0640U);
    WriteBytes(folder / "old", "old");
    chmod((folder / "old").c_str(), 06751);
    EXPECT_EQ(savedMode("old"), 0751U);
    umask(mask);
}

TEST(AtomicFile, FollowsALink) {
    const TemporaryFolder folder;
    WriteBytes(folder / "real", "old");
    std::filesystem::create_symlink(folder / "real", folder / "link");
    AtomicFile file(folder / "link");
    file.Write("new");
    file.Commit();
    EXPECT_EQ(ReadBytes(folder / "real"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
}

TEST(AtomicFile, RefusesFoldersMissingFoldersAndFullDisks) {
    const TemporaryFolder folder;
    EXPECT_THAT([&] { AtomicFile(folder.Path()); }, Raises(EISDIR, "AtomicFile", "Is a directory"));
    EXPECT_THAT([&] { AtomicFile(folder / "no/file"); },
                Raises(53, "AtomicFile", "No such file or directory"));
    EXPECT_THAT([] { AtomicFile("/dev/full").Write("x"); },
                Raises(ENOSPC, "AtomicFile", "No space left on device"));
}

TEST(AtomicFile, ADiskThatFillsUpLeavesTheOldFile) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a", "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(
        {
            AtomicFile file(folder / "a");
            file.Write(std::string(5000, 'x'));
            file.Commit();
        },
        RaisedError);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(ReadBytes(folder / "a"), "old");
}

/// A saver that is killed in the midst of its work, after it has written.
void KillASaverOf(const std::filesystem::path& target) {
    const pid_t saver = fork();
    if (saver == 0) {
        const AtomicFile file(target);
        file.Write("half");
        raise(SIGKILL);
    }
    waitpid(saver, nullptr, 0);
}

std::ptrdiff_t FilesIn(const TemporaryFolder& folder) {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
}

TEST(AtomicFile, TidiesUpAfterKilledSaversOfTheSameFileOnly) {
    const TemporaryFolder folder;
    WriteBytes(folder / "a", "old");
    WriteBytes(folder / ".genvara-notes", "the user's own");
    KillASaverOf(folder / "a");
    KillASaverOf(folder / "b");
    ASSERT_EQ(FilesIn(folder), 4) << "the old file, the user's own, two left behind";
    EXPECT_EQ(ReadBytes(folder / "a"), "old");
    AtomicFile file(folder / "a");
    file.Write("new");
    file.Commit();
    EXPECT_EQ(ReadBytes(folder / "a"), "new");
    EXPECT_EQ(FilesIn(folder), 3);
    AtomicFile(folder / "b").Commit();
    EXPECT_EQ(FilesIn(folder), 3) << "two files and the user's own";
}

TEST(AtomicFile, LeavesSaversAtWorkAlone) {
    const TemporaryFolder folder;
    AtomicFile first(folder / "a");
    first.Write("first");
    AtomicFile second(folder / "a");
    second.Write("second");
    EXPECT_EQ(FilesIn(folder), 2);
    second.Commit();
    EXPECT_EQ(ReadBytes(folder / "a"), "second");
    first.Commit();
    EXPECT_EQ(ReadBytes(folder / "a"), "first");
    EXPECT_EQ(FilesIn(folder), 1);
}

TEST(AtomicFile, SavesAFileOfTheLongestName) {
    const TemporaryFolder folder;
    const std::string name(NAME_MAX, 'n');
    AtomicFile file(folder / name);
    file.Write("new");
    file.Commit();
    EXPECT_EQ(ReadBytes(folder / name), "new");
}

TEST(FailureRegion, GoesOnAndKeepsTheMostRecentFailure) {
    FailureRegion region;
    int ran = 0;
    EXPECT_TRUE(region.Run([&] { ++ran; }));
    EXPECT_FALSE(region.Run([] { throw RaisedError(1, "a", "first"); }));
    EXPECT_FALSE(region.Run([] { throw RaisedError(2, "b", "second"); }));
    EXPECT_TRUE(region.Run([&] { ++ran; }));
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(region.Pending()->Number(), 2);
    region.Clear();
    EXPECT_FALSE(region.Pending());
}

TEST(LanguageErrors, CarryTheirNumbers) {
    EXPECT_THAT([] { (void)Quotient(0, 0, "m"); }, Raises(11, "m", "Division by zero"));
    EXPECT_THAT([] { (void)Quotient(1e308, 1e-10, "m"); }, Raises(6, "m", "Overflow"));
    EXPECT_THAT([] { (void)SquareRoot(-1, "m"); }, Raises(5, "m", "Invalid procedure call or argument"));
    EXPECT_THAT([] { (void)Power(-2, 0.5, "m"); }, Raises(5, "m", "Invalid procedure call or argument"));
    EXPECT_THAT([] { (void)Power(0, -1, "m"); }, Raises(11, "m", "Division by zero"));
    EXPECT_THAT([] { (void)Power(1e300, 2, "m"); }, Raises(6, "m", "Overflow"));
    EXPECT_EQ(Power(2, 10, "m"), 1024.0);
}

TEST(ErrorLog, AppendsToItsFileOnlyWhenAskedAndAcrossRuns) {
    const TemporaryFolder folder;
    for (int run = 0; run < 2; ++run) {
        ErrorLog log(folder.Path());
        log.LogError("not in the file");
        log.LogToFile(true);
        log.LogDebug("in the file");
        EXPECT_EQ(log.Text(), "not in the file\r\nin the file\r\n");
        log.Clear();
        EXPECT_EQ(log.Text(), "");
    }
    EXPECT_EQ(ReadBytes(folder / "err.log"), "in the file\r\n\r\nin the file\r\n\r\n");
}

TEST(ErrorLog, KeepsTheTextOfAnEntryThatItsFileDoesNotTake) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "err.log");
    ErrorLog log(folder.Path());
    log.LogToFile(true);
    EXPECT_THAT([&] { log.LogError("lost"); }, Raises(EISDIR, "ErrorLog", "Is a directory"));
    EXPECT_EQ(log.Text(), "lost\r\n");
}

}  // namespace
}  // namespace genvara
