#include "ProjectFile.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "CAirCondLoad.h"
#include "CLightLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "LoadFactory.h"
#include "RaisedErrorMatcher.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

using testing::HasSubstr;

constexpr DateTime kSaved{2003, 5, 21, 17, 2, 11};

/// Notes what the reader passes over.
class NotingObserver final : public ProjectReadObserver {
  public:
    std::vector<std::string> items;
    void Skipped(const SkippedItem& item) override {
        items.push_back(std::to_string(item.line) + " " + item.record + ": " + item.expected + ", " +
                        item.found);
    }
};

/// A model with round motor tables: h hp run at 0.8 h kW and h kVA and start at 0.4.
struct Model {
    CDefaults defaults;
    CProject project{defaults, [] { return kSaved; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    MotorConversions motors{.MotorHP = {1, 10, 1000},
                            .MotorRunningKW = {0.8, 8, 800},
                            .MotorRunningKVA = {1, 10, 1000},
                            .MotorStartPF = {0.4, 0.4, 0.4}};
    NotingObserver observer;

    [[nodiscard]] ProjectModel All() { return {project, site, profile, motors}; }

    ReadResult Read(const std::string& bytes) {
        MemorySource source(bytes);
        return ReadProject(source, All(), observer);
    }
    [[nodiscard]] std::string Text() { return RenderProject(All(), {8, 0, 0}, kSaved).bytes; }
    [[nodiscard]] Load& FirstLoad() { return *profile.LoadStep(1).begin(); }
};

const std::string kExample =
    "8,0,0,1\r\n"
    "#2003-05-20 09:15:00#,\"Customer\",\"Notes\",#2003-05-21 17:02:11#,\"Job\",\"Engineer\"\r\n"
    "0,25,1,60,1,1\r\n"
    "20,#FALSE#,15,#FALSE#\r\n"
    "20,3,3,480\r\n"
    "1\r\n"
    "\"Step 1\",15\r\n"
    "1\r\n"
    "1,4,\"Pumps\",\"\",1,0\r\n"
    "10000,0.9\r\n";

/// The head of the example with one step, and the loads that a test says.
std::string WithLoads(int count, const std::string& loads) {
    return kExample.substr(0, kExample.find("1\r\n1,4,")) + std::to_string(count) + "\r\n" + loads;
}

TEST(ProjectFile, ReadsAndWritesTheSameBytes) {
    Model model;
    EXPECT_EQ(model.Read(kExample), ReadResult::Done);
    EXPECT_TRUE(model.observer.items.empty());
    EXPECT_EQ(model.project.ProjName(), "Job");
    EXPECT_EQ(model.project.Customer(), "Customer");
    EXPECT_EQ(model.project.Description(), "Notes");
    EXPECT_EQ(model.project.UserName(), "Engineer");
    EXPECT_EQ(model.project.Created(), (DateTime{2003, 5, 20, 9, 15, 0}));
    EXPECT_EQ(model.project.LastModified(), kSaved);
    EXPECT_EQ(model.site.AmbTemp(), 25.0);
    EXPECT_EQ(model.FirstLoad().RunningRealPower(), 10000.0);
    EXPECT_EQ(model.Text(), kExample);
}

TEST(ProjectFile, AnEmptyProjectEndsWithItsStepCount) {
    Model model;
    EXPECT_TRUE(model.Text().ends_with("\r\n0\r\n"));
    Model other;
    other.Read(kExample);
    other.Read(model.Text());
    EXPECT_EQ(other.profile.NumLoadSteps(), 0);
}

TEST(ProjectFile, LooksAtTheFormatAloneToTellACompatibleFile) {
    Model model;
    model.project.ProjName("stays");
    for (const char* head :
         {"8,0,0,2\r\n", "8,0,0\r\n", "", "rubbish", "8,x,0,1\r\n", "\"", "#TRUE#,1,1,1"}) {
        EXPECT_EQ(model.Read(head), ReadResult::Incompatible) << head;
    }
    EXPECT_EQ(model.project.ProjName(), "stays");
    EXPECT_EQ(model.Read("1" + kExample.substr(1)), ReadResult::Done);
    EXPECT_EQ(model.Read("99,7,5,1" + kExample.substr(7)), ReadResult::Done);
}

TEST(ProjectFile, ReadsValuesWhateverLinesTheyStandOn) {
    std::string lines = kExample;
    for (std::size_t at = lines.find(','); at != std::string::npos; at = lines.find(',', at + 2)) {
        lines.replace(at, 1, "\n  ");
    }
    Model model;
    EXPECT_EQ(model.Read(lines), ReadResult::Done);
    EXPECT_TRUE(model.observer.items.empty());
    EXPECT_EQ(model.Text(), kExample);
}

TEST(ProjectFile, KeepsCommasAccentsAndLineBreaksButNoQuotes) {
    Model model;
    model.Read(kExample);
    model.project.ProjName("Müller, Söhne\r\n& Co €");
    const std::string text = model.Text();
    EXPECT_THAT(text, HasSubstr("\"M\xFCller, S\xF6hne\r\n& Co \x80\""));
    Model other;
    other.Read(text);
    EXPECT_EQ(other.project.ProjName(), "Müller, Söhne\r\n& Co €");
    model.project.ProjName("a\"b");
    other.Read(model.Text());
    EXPECT_EQ(other.project.ProjName(), "a");
    EXPECT_EQ(other.project.UserName(), "b\"");  // the rest is a value of its own, and the user's name shifts
    EXPECT_EQ(RenderProject(model.All(), {8, 0, 0}, kSaved).lostCharacters, 0U);
    model.project.ProjName("東京");
    EXPECT_EQ(RenderProject(model.All(), {8, 0, 0}, kSaved).lostCharacters, 2U);
}

TEST(ProjectFile, TextWithoutQuotesRunsToTheDelimiter) {
    std::string text = kExample;
    text.replace(text.find("\"Customer\""), 10, "  A \"quoted\" word ");
    Model model;
    model.Read(text);
    EXPECT_EQ(model.project.Customer(), "A \"quoted\" word ");
    EXPECT_EQ(model.project.ProjName(), "Job");
}

TEST(ProjectFile, AStatementThatFailsLeavesItsRestAtZero) {
    // The third value of the power system's first record is no number: 100 m and 30 °C stand, the rest is 0,
    // which the connection takes and the frequency and the number of sets refuse. The next statement begins
    // behind it.
    std::string text = kExample;
    text.replace(text.find("0,25,1,60,1,1"), 13, "100,30,x");
    Model model;
    EXPECT_EQ(model.Read(text), ReadResult::Done);
    EXPECT_EQ(model.site.Altitude(), 100.0);
    EXPECT_EQ(model.site.AmbTemp(), 30.0);
    EXPECT_EQ(model.site.ConnectCode(), 0);
    EXPECT_EQ(model.site.Freq(), 60);
    EXPECT_EQ(model.site.Fuel(), 0);
    EXPECT_EQ(model.site.MaxFreqDip(), 20);
    EXPECT_EQ(model.site.Voltage(), 480);
    EXPECT_THAT(
        model.observer.items,
        testing::ElementsAre("3 power system A: a whole number, x",
                             "3 power system A: a value that is accepted, Invalid system frequency "
                             "(CPwrSys::Freq)",
                             "3 power system A: a value that is accepted, Invalid number of parallel sets "
                             "(CPwrSys::GensetsInParallel)"));
}

TEST(ProjectFile, ADateThatCannotBeReadIsTheZeroDate) {
    std::string text = kExample;
    text.replace(text.find("#2003-05-20 09:15:00#"), 21, "#2003-02-30#");
    Model model;
    model.Read(text);
    EXPECT_EQ(model.project.Created(), DateTime{});
    EXPECT_EQ(model.project.LastModified(), DateTime{});
    EXPECT_EQ(model.project.Customer(), "");
}

TEST(ProjectFile, ReadsNumbersAsTheyMayStand) {
    std::string text = kExample;
    text.replace(text.find("0,25,1,60,1,1"), 13, " -.5 ,2.55E+1,1.5,59.5,1,2.5");
    Model model;
    model.Read(text);
    EXPECT_EQ(model.site.Altitude(), -0.5);
    EXPECT_EQ(model.site.AmbTemp(), 25.5);
    EXPECT_EQ(model.site.ConnectCode(), 2);  // halves go to the even neighbour
    EXPECT_EQ(model.site.Freq(), 60);
    EXPECT_EQ(model.site.GensetsInParallel(), 2);
    for (const char* bad : {"nan", "inf", "1E400", "1,5,5,5", ""}) {
        Model other;
        std::string damaged = kExample;
        damaged.replace(damaged.find("\r\n0,25"), 3, std::string("\r\n") + bad);
        EXPECT_EQ(other.Read(damaged), ReadResult::Done) << bad;
    }
}

TEST(ProjectFile, AStepWithAWrongDipIsNotAddedAndItsLoadsGoWhereTheyCan) {
    Model model;
    const std::string head = kExample.substr(0, kExample.find("1\r\n\"Step 1\""));
    model.Read(head +
               "3\r\n\"one\",4\r\n\"two\",20\r\n\"three\",20\r\n"
               "1\r\n1,4,\"A\",\"\",1,0\r\n1000,1\r\n1\r\n2,4,\"B\",\"\",1,0\r\n1000,1\r\n1\r\n3,4,\"C\","
               "\"\",1,0\r\n1000,1\r\n");
    ASSERT_EQ(model.profile.NumLoadSteps(), 2);
    EXPECT_EQ(model.profile.LoadStep(1).Description(), "two");
    EXPECT_EQ(model.FirstLoad().name(), "A");
    EXPECT_EQ(model.profile.LoadStep(2).begin()->name(), "B");
    ASSERT_EQ(model.observer.items.size(), 2U);  // the step, and the load of the position that is not there
    EXPECT_THAT(model.observer.items[1], HasSubstr("Invalid load step number."));
}

TEST(ProjectFile, PassesOverALoadThatItsSettersRefuse) {
    Model model;
    model.Read(WithLoads(3,
                         "1,4,\"A\",\"\",0,0\r\n1000,1\r\n1,4,\"B\",\"\",1,0\r\n1000,0.5\r\n"
                         "1,4,\"C\",\"\",1,0\r\n1000,1\r\n"));
    ASSERT_EQ(model.profile.LoadStep(1).NumLoads(), 1);
    EXPECT_EQ(model.FirstLoad().name(), "C");
    EXPECT_EQ(model.FirstLoad().ID(), 0);
    EXPECT_THAT(model.observer.items,
                testing::ElementsAre(
                    "9 load 1 of step 1 (CMiscLoad): a value that is accepted, Load quantity out of range "
                    "(CMiscLoad::Quantity)",
                    "11 load 2 of step 1 (CMiscLoad): a value that is accepted, Running power factor out of "
                    "range (CMiscLoad::RunningPowerFactor)"));
}

TEST(ProjectFile, CountsBeyondTheEndOfTheFileEndAtOnce) {
    Model model;
    const std::string head = kExample.substr(0, kExample.find("1\r\n\"Step 1\""));
    model.Read(head + "2000000000\r\n\"one\",20\r\n");
    EXPECT_EQ(model.profile.NumLoadSteps(), 1);
    model.Read(WithLoads(2000000000, "1,4,\"A\",\"\",1,0\r\n1000,1\r\n"));
    EXPECT_EQ(model.profile.LoadStep(1).NumLoads(), 1);
    EXPECT_THAT(model.observer.items.back(), HasSubstr("the end of the file"));
    model.Read(head + "-5\r\n");
    EXPECT_EQ(model.profile.NumLoadSteps(), 0);
}

TEST(ProjectFile, NeverDropsStepIDsToZeroAgain) {
    Model model;
    model.Read(kExample);
    model.Read(kExample);
    EXPECT_EQ(model.profile.LoadStep(1).StepID(), 1);
    EXPECT_EQ(model.FirstLoad().ID(), 0);
}

TEST(ProjectFile, RebuildsAMotorFromHorsepower) {
    Model model;
    model.Read(WithLoads(1, "1,5,\"M\",\"\",1,0\r\n0,\"g\",1,#TRUE#,#FALSE#\r\n10\r\n60000,0.4,300\r\n"));
    const auto& motor = dynamic_cast<CMtrLoad&>(model.FirstLoad());
    EXPECT_EQ(motor.HP(), 10.0);
    EXPECT_EQ(motor.CodeLetter(), "G");
    EXPECT_NEAR(motor.RunningRealPower(), 8000, 1e-9);
    EXPECT_NEAR(motor.RunningAppPower(), 10000, 1e-9);
    EXPECT_EQ(motor.StartingAppPower(), 60000);
}

TEST(ProjectFile, LooksAMotorsWattsUpAsTheyStand) {
    // 8000 looked up in kW: 10 + 1.25 x (8000 - 8) = 10000, taken as VA.
    Model model;
    model.Read(WithLoads(1, "1,5,\"M\",\"\",1,0\r\n1,\"F\",2,#FALSE#,#TRUE#\r\n8000\r\n60000,0.4,250\r\n"));
    const auto& motor = dynamic_cast<CMtrLoad&>(model.FirstLoad());
    EXPECT_EQ(motor.RunningRealPower(), 8000);
    EXPECT_NEAR(motor.RunningAppPower(), 10000, 1e-9);
    EXPECT_EQ(motor.HP(), -10);
    EXPECT_FALSE(motor.StartsLoaded());
    EXPECT_TRUE(motor.FirePump());
    EXPECT_EQ(motor.SolidStateCurrentLimit(), 250);
}

TEST(ProjectFile, WorksAMotorsAmpsOutByTheSitesVoltage) {
    // 12 A x 480 V x root of 3 = 9976.6 VA, at 0.8 kW a kVA; on one phase 5760 VA.
    for (const auto& [phases, voltAmperes] : {std::pair{0, 9976.612650}, {2, 5760.0}}) {
        Model model;
        model.Read(WithLoads(1, "1,5,\"M\",\"\",1," + std::to_string(phases) +
                                    "\r\n2,\"F\",1,#TRUE#,#FALSE#\r\n12,70\r\n60000,0.4,300\r\n"));
        const auto& motor = dynamic_cast<CMtrLoad&>(model.FirstLoad());
        EXPECT_EQ(motor.RunningAmps(), 12);
        EXPECT_EQ(motor.StartingAmps(), 70);
        EXPECT_NEAR(motor.RunningAppPower(), voltAmperes, 1e-5);
        EXPECT_NEAR(motor.RunningRealPower(), 0.8 * voltAmperes, 1e-5);
    }
}

TEST(ProjectFile, AMotorOfNoKnownMethodHasNoPowerAndIsRefused) {
    Model model;
    model.Read(WithLoads(1, "1,5,\"M\",\"\",1,0\r\n7,\"F\",1,#TRUE#,#FALSE#\r\n60000,0.4,300\r\n"));
    EXPECT_EQ(model.profile.LoadStep(1).NumLoads(), 0);
    EXPECT_THAT(model.observer.items.at(0), HasSubstr("Running real power out of range."));
}

TEST(ProjectFile, RebuildsAnAirConditionerFromItsSize) {
    // 60000 BTU/hr are 9.6 hp: 7.68 kW, 9.6 kVA, start 9.6 x 5.95 = 57.12 kVA; 4.8 tons and 9.6 hp are the
    // same.
    for (const char* size : {"0,60000", "1,4.8", "2,9.6"}) {
        Model model;
        model.Read(WithLoads(1, std::string("1,0,\"AC\",\"\",1,0\r\n") + size + "\r\n"));
        ASSERT_EQ(model.profile.LoadStep(1).NumLoads(), 1) << size;
        const Load& load = model.FirstLoad();
        EXPECT_NEAR(load.RunningRealPower(), 7680, 1e-6) << size;
        EXPECT_NEAR(load.RunningAppPower(), 9600, 1e-6) << size;
        EXPECT_NEAR(load.StartingAppPower(), 57120, 1e-6) << size;
    }
}

TEST(ProjectFile, AnUnknownLoadTypeIsPassedOver) {
    Model model;
    model.Read(WithLoads(1, "1,9,\"M\",\"\",1,0\r\n"));
    EXPECT_EQ(model.profile.LoadStep(1).NumLoads(), 0);
    EXPECT_THAT(model.observer.items.at(0), HasSubstr("a load type from 0 to 8, 9"));
}

TEST(ProjectFile, OpensNothingThatIsNoFileAndChangesNothing) {
    Model model;
    const TemporaryFolder folder;
    EXPECT_THAT([&] { ReadProjectFile(folder / "none.prj", model.All(), model.observer); },
                testing::Throws<RaisedError>(testing::Property("Number", &RaisedError::Number, 53)));
    EXPECT_THAT([&] { ReadProjectFile(folder.Path(), model.All(), model.observer); },
                testing::Throws<RaisedError>(testing::Property("Number", &RaisedError::Number, EISDIR)));
}

TEST(ProjectFile, WaitsForWhatComesThroughAPipe) {
    const TemporaryFolder folder;
    const std::filesystem::path pipe = folder / "pipe.prj";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Model model;
    // Without a writer there is nothing to wait for.
    EXPECT_EQ(ReadProjectFile(pipe, model.All(), model.observer), ReadResult::Incompatible);
    // Held open for both ways, the pipe has a writer before the reader comes, and still has no bytes then.
    const int both = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(both, 0);
    std::jthread writer([both] {
        for (const std::string& half : {kExample.substr(0, 100), kExample.substr(100)}) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            EXPECT_EQ(write(both, half.data(), half.size()), std::ssize(half));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        close(both);
    });
    EXPECT_EQ(ReadProjectFile(pipe, model.All(), model.observer), ReadResult::Done);
    EXPECT_EQ(model.Text(), kExample);
}

TEST(ProjectFile, SavesWholeOrLeavesTheOldFile) {
    Model model;
    model.Read(kExample);
    const TemporaryFolder folder;
    const std::filesystem::path file = folder / "job.prj";
    const Clock clock = [] { return kSaved; };
    EXPECT_EQ(WriteProjectFile(file, model.All(), {8, 0, 0}, clock), 0U);
    EXPECT_EQ(ReadBytes(file), kExample);
    EXPECT_EQ(model.project.LastModified(), kSaved);
    for (int i = 0; i < 200; ++i) {
        model.profile.LoadStep(1).AddLoad(MakeLoad(load_type::kMiscellaneous, model.motors));
    }
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THAT(
        [&] {
            WriteProjectFile(file, model.All(), {8, 0, 0}, clock);
        },
        Raises(EFBIG, "frmMain::WriteProjectFile", "Error writing " + file.string() + "\r\nFile too large"));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(ReadBytes(file), kExample);
    EXPECT_THAT(
        [&] {
            WriteProjectFile(folder / "no/job.prj", model.All(), {8, 0, 0}, clock);
        },
        Raises(53, "frmMain::WriteProjectFile",
               "Error opening " + (folder / "no/job.prj").string() + "\r\nNo such file or directory"));
}

TEST(ProjectFile, EverySampleCutAnywhereOrWithALineLostIsReadToAnEnd) {
    for (const auto& entry : std::filesystem::directory_iterator(SAMPLES_FOLDER)) {
        if (entry.path().extension() != ".prj") {
            continue;
        }
        const std::string bytes = ReadBytes(entry.path());
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            Model model;
            (void)model.Read(bytes.substr(0, length));
        }
        for (std::size_t from = 0; from < bytes.size();) {
            const std::size_t to = std::min(bytes.find('\n', from), bytes.size() - 1) + 1;
            Model lost;
            (void)lost.Read(bytes.substr(0, from) + bytes.substr(to));
            Model doubled;
            (void)doubled.Read(bytes.substr(0, to) + bytes.substr(from));
            from = to;
        }
    }
}

/// A project of loads of all kinds with inputs that their setters take. Motors given by running kW and air
/// conditioners are left to tests of their own: the reader works some of their figures out anew.
void FillAtRandom(Model& model, const std::vector<std::uint32_t>& seeds) {
    model.profile.AddLoadStep("Step, one", 20, 0);
    for (const std::uint32_t seed : seeds) {
        std::unique_ptr<Load> load =
            MakeLoad(static_cast<std::int32_t>(seed % load_type::kCount), model.motors);
        load->name("Load " + std::to_string(seed));
        load->Quantity(1 + static_cast<std::int32_t>(seed % 256));
        load->Phases(static_cast<std::int32_t>(seed / 16 % 4));
        const double power = 1000.0 + seed % 100000;
        if (auto* misc = dynamic_cast<CMiscLoad*>(load.get())) {
            misc->RunningRealPower(power / 7.0);
        } else if (auto* light = dynamic_cast<CLightLoad*>(load.get())) {
            light->RunningRealPower(power / 3.0);
            light->Ballast(static_cast<std::int32_t>(seed / 64 % 4));
        } else if (auto* ups = dynamic_cast<CUPSLoad*>(load.get())) {
            ups->OutputRating(power);
            ups->InputFilterInstalled(seed % 2 == 0);
        } else if (auto* drive = dynamic_cast<CVFDLoad*>(load.get())) {
            drive->MtrRating(1.0 + seed % 999);
        } else if (dynamic_cast<CMtrLoad*>(load.get()) != nullptr ||
                   dynamic_cast<CAirCondLoad*>(load.get()) != nullptr) {
            continue;
        }
        model.profile.LoadStep(1).AddLoad(std::move(load));
    }
}

TEST(ProjectFile, ComesBackAsItWasSaved) {
    EXPECT_TRUE(rc::check("write, read, write", [](const std::vector<std::uint32_t>& seeds) {
        Model model;
        FillAtRandom(model, {seeds.begin(), seeds.begin() + std::min<std::ptrdiff_t>(40, std::ssize(seeds))});
        const std::string text = model.Text();
        Model other;
        RC_ASSERT(other.Read(text) == ReadResult::Done);
        RC_ASSERT(other.observer.items.empty());
        other.project.Created(model.project.Created());
        RC_ASSERT(other.Text() == text);
    }));
}

}  // namespace
}  // namespace genvara
