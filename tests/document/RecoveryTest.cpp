// What is kept of a project against crashes, and of projects that commands drop.

#include "Recovery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "AllKindsOfLoad.h"
#include "Document.h"
#include "JsonProject.h"
#include "KeptWords.h"
#include "RandomProject.h"
#include "SmallCatalogue.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RecoveryTest : public testing::Test {
  protected:
    RecoveryTest() {
        BuildSmallCatalogue(folder, {{"Connections", "ID,Connection Type,Phases\n1,Wye,3\n4,Series,1\n"}});
        catalogue.emplace(folder / "Genvara.db");
        catalogue->RequireFit();
        document.emplace(defaults, *catalogue, [] { return DateTime{2026, 3, 4, 5, 6, 7}; });
    }
    ProjectMoment Named(const std::string& name) {
        document->Change("Edit", [&] { document->Project().ProjName(name); });
        return document->Moment();
    }
    /// Names of the files of the folder, by their endings.
    int Count(const std::string& ending) {
        int count = 0;
        std::error_code none;
        for (const auto& entry : std::filesystem::directory_iterator(state, none)) {
            count += entry.path().extension() == ending ? 1 : 0;
        }
        return count;
    }
    /// Runs a program that keeps a project and is killed.
    void Crash(const ProjectMoment& moment, const KeptOrigin& origin) {
        const pid_t child = fork();
        if (child == 0) {
            Recovery recovery(state, motors);
            recovery.Keep(moment, origin);
            recovery.Finish();
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    std::vector<std::string> NamesOf(const std::vector<KeptProject>& projects) {
        std::vector<std::string> names;
        names.reserve(projects.size());
        for (const KeptProject& kept : projects) {
            names.push_back(WordsOf(kept, defaults, *catalogue).name);
        }
        return names;
    }

    TemporaryFolder folder;
    std::filesystem::path state = folder / "state/recovery";
    const MotorConversions& motors = kRandomMotors;
    CDefaults defaults;
    std::optional<Catalogue> catalogue;
    std::optional<Document> document;
    ProjectReadObserver nobody;
};

TEST_F(RecoveryTest, WritesNothingUntilThereIsSomethingToKeepAndLeavesNothingBehind) {
    {
        Recovery recovery(state, motors);
        recovery.Forget();
        recovery.Finish();
        EXPECT_FALSE(std::filesystem::exists(state));
        recovery.Keep(Named("Mill"), {});
        recovery.Finish();
        EXPECT_EQ(Count(".project"), 1);
        EXPECT_EQ(Count(".lock"), 1);
    }
    EXPECT_TRUE(std::filesystem::is_empty(state)) << "a normal end";
}

TEST_F(RecoveryTest, KeepsTheLatestAndForgetsWhatItsFileHolds) {
    Recovery recovery(state, motors);
    for (const char* name : {"one", "two", "three"}) {
        recovery.Keep(Named(name), {});
    }
    recovery.Finish();
    EXPECT_EQ(Count(".project"), 1);
    recovery.Forget();
    recovery.Finish();
    EXPECT_EQ(Count(".project"), 0);
}

TEST_F(RecoveryTest, IsWrittenWithinTwoSecondsOfAChange) {
    Recovery recovery(state, motors);
    recovery.Keep(Named("first"), {});
    recovery.Keep(Named("second"), {});  // within the pause behind the first
    for (int tenths = 0; tenths < 20; ++tenths) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    const auto files = std::filesystem::directory_iterator(state);
    for (const auto& entry : files) {
        if (entry.path().extension() == ".project") {
            EXPECT_THAT(ReadBytes(entry.path()), testing::HasSubstr("second"));
            return;
        }
    }
    FAIL() << "nothing was written";
}

TEST_F(RecoveryTest, ARunningProgramsProjectIsNobodyElses) {
    Recovery first(state, motors);
    Recovery second(state, motors);
    first.Keep(Named("first"), {});
    second.Keep(Named("second"), {});
    first.Finish();
    second.Finish();
    EXPECT_EQ(Count(".project"), 2);
    EXPECT_THAT(TakeOverLost(state), IsEmpty());
    EXPECT_EQ(Count(".project"), 2);
}

TEST_F(RecoveryTest, WhatAKilledProgramLeftIsTakenOverOnceAndStaysInTheList) {
    const KeptOrigin origin{.file = "/home/me/mill.prj",
                            .stamp = FileStamp{.size = 17, .changed = -5, .hash = 0xFFFFFFFFFFFFFFF1ULL}};
    Crash(Named("Mill"), origin);
    ASSERT_THAT(DroppedProjects(state), IsEmpty());
    const std::vector<KeptProject> lost = TakeOverLost(state);
    EXPECT_THAT(NamesOf(lost), ElementsAre("Mill"));
    EXPECT_EQ(lost.at(0).origin, origin);
    EXPECT_LT(std::chrono::system_clock::now() - lost.at(0).keptAt, std::chrono::minutes(10));
    EXPECT_THAT(TakeOverLost(state), IsEmpty());
    EXPECT_THAT(NamesOf(DroppedProjects(state)), ElementsAre("Mill"));
    EXPECT_EQ(Count(".lock"), 0);
    RemoveKept(lost.at(0).project);
    EXPECT_TRUE(std::filesystem::is_empty(state));
}

TEST_F(RecoveryTest, AProgramThatWasKilledBeforeItKeptAnythingLeavesNothingToOffer) {
    std::filesystem::create_directories(state);
    WriteBytes(state / "running-aaaaaa.lock", "");
    WriteBytes(state / ".genvara-0badcafe-Killed", "half a proj");
    EXPECT_THAT(TakeOverLost(state), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(state));
}

TEST_F(RecoveryTest, AProjectWithoutItsOriginIsOneWithoutAFile) {
    Crash(Named("Mill"), {.file = "/x.prj"});
    for (const auto& entry : std::filesystem::directory_iterator(state)) {
        if (entry.path().extension() == ".origin") {
            WriteBytes(entry.path(), "{\"File\": 7");
        }
    }
    const auto lost = TakeOverLost(state);
    ASSERT_THAT(lost, SizeIs(1));
    EXPECT_EQ(lost[0].origin, KeptOrigin{});
}

TEST_F(RecoveryTest, ListsTheLastTenThatWereDropped) {
    Recovery recovery(state, motors);
    for (int number = 1; number <= 12; ++number) {
        recovery.Drop(Named("drop " + std::to_string(number)), {});
        recovery.Finish();
    }
    const std::vector<std::string> names = NamesOf(DroppedProjects(state));
    ASSERT_THAT(names, SizeIs(10));
    EXPECT_EQ(names.front(), "drop 12");
    EXPECT_EQ(names.back(), "drop 3");
}

TEST_F(RecoveryTest, DroppedOnesOutliveTheProgram) {
    { Recovery(state, motors).Drop(Named("Mill"), {.file = "/a.prj"}); }
    ASSERT_THAT(NamesOf(DroppedProjects(state)), ElementsAre("Mill"));
    EXPECT_EQ(DroppedProjects(state)[0].origin.file, "/a.prj");
}

TEST_F(RecoveryTest, WhatIsKeptForGoodIsFoundAtTheNextStartWhateverHappensThen) {
    std::filesystem::path file;
    {
        Recovery recovery(state, motors);
        recovery.Keep(Named("before"), {});
        file = recovery.KeepForGood(Named("Precious"), {.file = "/a.prj"});
        EXPECT_TRUE(std::filesystem::exists(file));
        recovery.Forget();
        recovery.Finish();
    }
    EXPECT_TRUE(std::filesystem::exists(file));
    EXPECT_THAT(NamesOf(TakeOverLost(state)), ElementsAre("Precious"));
}

TEST_F(RecoveryTest, AFolderThatCannotBeWrittenKeepsNobodyFromHisWork) {
    std::filesystem::create_directories(folder / "state");
    WriteBytes(state, "a file where the folder belongs");
    Recovery recovery(state, motors);
    recovery.Keep(Named("Mill"), {});
    recovery.Drop(Named("Mill"), {});
    recovery.Finish();
    EXPECT_THROW((void)recovery.KeepForGood(Named("Mill"), {}), std::exception);
    EXPECT_EQ(ReadBytes(state), "a file where the folder belongs");
}

TEST_F(RecoveryTest, ARecoveredDocumentHoldsAllThatWasKeptAndWritesNothing) {
    const std::string file = (folder / "a.prj").string();
    document->ProjectFile(file);
    document->Project().ProjName("Old");
    document->Write();
    const std::string bytes = ReadBytes(file);
    document->Change("Edit", [&] {
        document->Project().ProjName("\u65E5 \"quoted\"");
        document->PowerSystem().Altitude(1234.5);
        document->LoadProfile().AddLoadStep("all", 17, 0);
        AddAllKinds(document->LoadProfile().LoadStep(1));
    });
    const ProjectMoment before = document->Moment();
    Crash(before, {.file = document->StampedFile(), .stamp = document->Stamp()});
    const KeptProject kept = TakeOverLost(state).at(0);
    Document other(defaults, *catalogue);
    other.Recover(kept.project, kept.origin.file, kept.origin.stamp, nobody);
    EXPECT_EQ(other.ProjectFile(), file);
    EXPECT_TRUE(other.IsChanged());
    EXPECT_EQ(other.UndoName(), std::nullopt);
    EXPECT_EQ(other.Project().ProjName(), "\u65E5 \"quoted\"");
    EXPECT_EQ(other.Project().LastModified(), before.project->LastModified());
    EXPECT_EQ(other.PowerSystem().Altitude(), 1234.5);
    EXPECT_EQ(other.LoadProfile().LoadStep(1).NumLoads(), 9);
    EXPECT_EQ(ReadBytes(file), bytes);
    EXPECT_FALSE(other.ReplacesAnothers(file));
    WriteBytes(file, bytes + " ");
    EXPECT_TRUE(other.ReplacesAnothers(file)) << "what was known of the file before the crash still counts";
}

TEST_F(RecoveryTest, WhateverAProjectHoldsComesBackAsItsFileWouldHaveIt) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        Document one(defaults, *catalogue);
        one.Change("Fill", [&] {
            RandomProject(seed, Letters::Any)
                .Fill({one.Project(), one.PowerSystem(), one.LoadProfile(), kRandomMotors});
        });
        const std::filesystem::path kept = folder / "kept.project";
        WriteKept(kept, one.Moment(), {}, kRandomMotors);
        CProject project(defaults, LocalTime);
        CPwrSys site(defaults);
        CLoadProfile profile;
        ASSERT_EQ(ReadProjectFile(kept, {project, site, profile, kRandomMotors}, nobody), ReadResult::Done);
        EXPECT_EQ(RenderJsonProject({project, site, profile}, {}),
                  RenderJsonProject({one.Project(), one.PowerSystem(), one.LoadProfile()}, {}))
            << seed;
    }
}

TEST_F(RecoveryTest, ALoadThatCannotBeWorkedOutKeepsTheOthersFromGettingLost) {
    document->Change("Fill", [&] {
        document->LoadProfile().AddLoadStep("Pumps", 17, 0);
        CLoadStep& step = document->LoadProfile().LoadStep(1);
        AddAllKinds(step);
        auto motor = std::make_unique<CMtrLoad>();
        motor->name("odd");
        motor->DataEntryMethod(7);  // none of the three, as a file may hold
        step.AddLoad(std::move(motor));
    });
    const std::filesystem::path kept = folder / "kept.project";
    WriteKept(kept, document->Moment(), {}, motors);
    EXPECT_EQ(ReadBytes(kept).substr(0, 5), "8,0,0") << "JSON would be read whole or not at all";
    const KeptWords words = WordsOf({.project = kept, .origin = {}, .keptAt = {}}, defaults, *catalogue);
    EXPECT_EQ(words.fault, "");
    EXPECT_EQ(words.steps, 1);
}

TEST_F(RecoveryTest, TellsWhatIsOtherThanInTheFile) {
    const std::string file = (folder / "a.prj").string();
    document->ProjectFile(file);
    document->LoadProfile().AddLoadStep("Pumps", 17, 0);
    AddAllKinds(document->LoadProfile().LoadStep(1));
    document->Write();
    document->Change("Edit", [&] { document->PowerSystem().Altitude(1500); });
    const std::filesystem::path kept = folder / "kept.project";
    WriteKept(kept, document->Moment(), {.file = file}, motors);
    KeptProject project{.project = kept, .origin = {.file = file}, .keptAt = {}};
    KeptWords words = WordsOf(project, defaults, *catalogue);
    EXPECT_TRUE(words.hasFile);
    EXPECT_EQ(words.steps, 1);
    EXPECT_EQ(words.loads, 9);
    EXPECT_THAT(words.differences, testing::Contains("Altitude 152.4 m, now 1500 m"));
    WriteBytes(file, "no project");
    EXPECT_FALSE(WordsOf(project, defaults, *catalogue).hasFile);
    WriteBytes(kept, "{");
    EXPECT_NE(WordsOf(project, defaults, *catalogue).fault, "");
}

}  // namespace
}  // namespace genvara
