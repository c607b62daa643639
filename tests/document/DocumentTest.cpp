#include "Document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <vector>

#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "RaisedErrorMatcher.h"
#include "SmallCatalogue.h"

namespace genvara {
namespace {

using testing::ElementsAre;

/// Writes down what it is told.
class Order final : public ProjectReadObserver {
  public:
    void ProjectRead() override { told.emplace_back("project"); }
    void PowerSystemRead() override { told.emplace_back("site"); }
    void StepsCleared() override { told.emplace_back("steps"); }
    std::vector<std::string> told;
};

class DocumentTest : public testing::Test {
  protected:
    DocumentTest() {
        BuildSmallCatalogue(folder, {{"Connections", "ID,Connection Type,Phases\n1,Wye,3\n4,Series,1\n"}});
        catalogue.emplace(folder / "Genvara.db");
        catalogue->RequireFit();
        defaults.CustomerName("A customer");
        defaults.VoltageLL(416);
        document.emplace(defaults, *catalogue, [this] { return now; });
    }

    void AddLoad(std::int32_t step, double watts) {
        auto load = std::make_unique<CMiscLoad>();
        load->RunningRealPower(watts);
        document->LoadProfile().LoadStep(step).AddLoad(std::move(load));
    }

    TemporaryFolder folder;
    CDefaults defaults;
    std::optional<Catalogue> catalogue;
    DateTime now{2026, 3, 4, 5, 6, 7};
    std::optional<Document> document;
    Order order;
};

TEST_F(DocumentTest, BeginsFromTheUsersDefaults) {
    EXPECT_EQ(document->Project().Customer(), "A customer");
    EXPECT_EQ(document->PowerSystem().Voltage(), 416);
    EXPECT_EQ(document->ProjectFile(), "");
    EXPECT_FALSE(document->HasLoads());
}

TEST_F(DocumentTest, NewForgetsTheProjectAndItsFile) {
    document->ProjectFile("/some/file.prj");
    document->Project().ProjName("Old");
    document->PowerSystem().Voltage(240);
    document->LoadProfile().AddLoadStep("old", 20, 0);
    document->New(order);
    EXPECT_EQ(document->ProjectFile(), "");
    EXPECT_EQ(document->Project().ProjName(), "");
    EXPECT_EQ(document->Project().Created(), now);
    EXPECT_EQ(document->PowerSystem().Voltage(), 416);
    EXPECT_EQ(document->LoadProfile().NumLoadSteps(), 0);
    EXPECT_THAT(order.told, ElementsAre("site", "project", "steps"));
}

TEST_F(DocumentTest, ComesBackFromItsFileWithThePhasesOfItsConnection) {
    document->ProjectFile((folder / "a.prj").string());
    document->PowerSystem().ConnectCode(4);
    document->PowerSystem().Phases(3);  // not what the catalogue says: the file's figure must play no part
    document->LoadProfile().AddLoadStep("first", 17, 0);
    AddLoad(1, 1234.5);
    EXPECT_EQ(document->Write(), 0U);
    Document other(defaults, *catalogue);
    EXPECT_EQ(other.Read(folder / "a.prj", order), ReadResult::Done);
    EXPECT_EQ(other.PowerSystem().Phases(), 1);
    EXPECT_NO_THROW(other.RequireConnection(""));
    EXPECT_EQ(other.LoadProfile().LoadStep(1).TotalRunningRealPower(0), 1234.5);
    EXPECT_EQ(other.ProjectFile(), "");  // the caller names it
    EXPECT_EQ(other.Project().LastModified(), now);
}

TEST_F(DocumentTest, KeepsItsPhasesForAConnectionThatTheCatalogueLacks) {
    document->PowerSystem().ConnectCode(4);
    document->FollowConnection();
    EXPECT_EQ(document->PowerSystem().Phases(), 1);
    document->PowerSystem().ConnectCode(9);
    document->FollowConnection();
    EXPECT_EQ(document->PowerSystem().Phases(), 1);
    EXPECT_THAT([&] { document->RequireConnection(" of the site"); },
                Raises(0, "", "The connection code 9 of the site is not in the genset database."));
}

TEST_F(DocumentTest, IsReadWithoutAListOfConnectionsToo) {
    document->ProjectFile((folder / "a.prj").string());
    document->Project().ProjName("Mine");
    document->Write();
    DropTable(folder, "Connections");
    Catalogue bare(folder / "Genvara.db");
    Document other(defaults, bare);
    other.PowerSystem().Phases(1);
    EXPECT_EQ(other.Read(folder / "a.prj", order), ReadResult::Done);
    EXPECT_EQ(other.Project().ProjName(), "Mine");
    EXPECT_EQ(other.PowerSystem().Phases(), 1);
}

TEST_F(DocumentTest, LeavesItsRecordsWhenAFileCannotBeRead) {
    document->Project().ProjName("Mine");
    document->PowerSystem().Phases(1);
    EXPECT_THROW(document->Read(folder / "none.prj", order), RaisedError);
    WriteBytes(folder / "garbage.prj", "this is no project");
    EXPECT_EQ(document->Read(folder / "garbage.prj", order), ReadResult::Incompatible);
    EXPECT_EQ(document->Project().ProjName(), "Mine");
    EXPECT_EQ(document->PowerSystem().Phases(), 1);
    EXPECT_THAT(order.told, testing::IsEmpty());
}

TEST_F(DocumentTest, CannotBeSavedOverTheCatalogueNorWhereNothingCanBeWritten) {
    std::filesystem::create_symlink(folder / "Genvara.db", folder / "link.prj");
    EXPECT_EQ(document->SaveObstacle(folder / "Genvara.db"), "this is the genset catalogue");
    EXPECT_EQ(document->SaveObstacle(folder / "link.prj"), "this is the genset catalogue");
    EXPECT_EQ(document->SaveObstacle(folder / "missing/a.prj"), "its folder does not exist");
    EXPECT_EQ(document->SaveObstacle(folder / "a.prj"), std::nullopt);
    document->ProjectFile((folder / "a.prj").string());
    document->Write();
    EXPECT_EQ(document->SaveObstacle(folder / "a.prj"), std::nullopt);
}

TEST_F(DocumentTest, ReportsAreNotWrittenOverWhatTheyAreMadeFrom) {
    EXPECT_EQ(document->OutputObstacle(folder / "a.prj"), std::nullopt) << "a document without a file";
    document->ProjectFile((folder / "a.prj").string());
    document->Write();
    std::filesystem::create_hard_link(folder / "a.prj", folder / "hard.rtf");
    EXPECT_EQ(document->OutputObstacle(folder / "a.prj"), "this is the file of the project");
    EXPECT_EQ(document->OutputObstacle(folder / "./a.prj"), "this is the file of the project");
    EXPECT_EQ(document->OutputObstacle(folder / "hard.rtf"), "this is the file of the project");
    EXPECT_EQ(document->OutputObstacle(folder / "Genvara.db"), "this is the genset catalogue");
    EXPECT_EQ(document->OutputObstacle(folder / "r.rtf"), std::nullopt);
}

TEST_F(DocumentTest, KnowsTheFilesThatItCouldNotReadUntilItIsSavedOverThem) {
    WriteBytes(folder / "garbage.prj", "no project");
    WriteBytes(folder / "other.prj", "none either");
    EXPECT_FALSE(document->ReplacesUnread(folder / "garbage.prj")) << "nobody asked for it";
    EXPECT_THROW(document->Read(folder / "none.prj", order), RaisedError);
    document->Read(folder / "garbage.prj", order);
    document->Read(folder / "other.prj", order);
    EXPECT_FALSE(document->ReplacesUnread(folder / "none.prj")) << "there is nothing to replace";
    EXPECT_TRUE(document->ReplacesUnread(folder / "garbage.prj"));
    document->New(order);
    EXPECT_TRUE(document->ReplacesUnread(folder / "other.prj"));
    document->ProjectFile((folder / "garbage.prj").string());
    document->Write();
    EXPECT_FALSE(document->ReplacesUnread(folder / "garbage.prj"));
    EXPECT_TRUE(document->ReplacesUnread(folder / "other.prj"));
    std::filesystem::copy_file(folder / "garbage.prj", folder / "other.prj",
                               std::filesystem::copy_options::overwrite_existing);
    document->Read(folder / "other.prj", order);
    EXPECT_FALSE(document->ReplacesUnread(folder / "other.prj")) << "it holds a project by now";
}

TEST_F(DocumentTest, IsChangedUntilItIsSavedReadOrBegunAnew) {
    EXPECT_FALSE(document->IsChanged());
    document->ProjectFile((folder / "a.prj").string());
    const std::vector<std::function<void()>> ends{[this] { document->Write(); },
                                                  [this] { document->Read(folder / "a.prj", order); },
                                                  [this] { document->New(order); }};
    for (const auto& end : ends) {
        document->Touch();
        EXPECT_TRUE(document->IsChanged());
        end();
        EXPECT_FALSE(document->IsChanged());
    }
    document->Touch();
    document->ProjectFile((folder / "missing/a.prj").string());
    EXPECT_THROW(document->Write(), RaisedError);
    EXPECT_THROW(document->Read(folder / "none.prj", order), RaisedError);
    EXPECT_TRUE(document->IsChanged());
}

TEST_F(DocumentTest, TellsWhatNoListOffers) {
    BuildSmallCatalogue(
        folder,
        {{"Connections", "ID,Connection Type,Phases\n1,Wye,3\n4,Series,1\n"},
         {"Gensets",
          "Frequency,WindingConnection,VoltageLL,Fuel,DerateCode,AltModel,GensetModel,EngineModel,Rating80C,"
          "Rating105C,Rating125C,Rating130C,Rating150C,LRkVA,StartingPower,BaseFreqDipKW,BaseFreqDip,ExpC\n"
          "60,1,416,1,1,1,A,E,1,2,3,4,5,6,7,8,9,1\n"},
         {"Derate Codes", "ID,AltDerateBase,AltDerateSlope,TempDerateBase,TempDerateSlope\n1,1,1,1,1\n"},
         {"Alternators", "ID,ModelNum,BasekW,BaseVolts,SubtransReact\n1,AA,1,1,1\n"}});
    Catalogue offered(folder / "Genvara.db");
    Document other(defaults, offered);
    CPwrSys& site = other.PowerSystem();
    EXPECT_THAT(other.UnofferedChoices(), testing::IsEmpty()) << "416 V, connection 1";
    site.Voltage(347);
    site.ConnectCode(9);
    site.Freq(55);
    site.Fuel(7);
    site.RiseDutyCode(-1);
    EXPECT_THAT(
        other.UnofferedChoices(),
        ElementsAre(UnofferedChoice{SiteChoice::Voltage, 347}, UnofferedChoice{SiteChoice::Connection, 9},
                    UnofferedChoice{SiteChoice::Frequency, 55}, UnofferedChoice{SiteChoice::Fuel, 7},
                    UnofferedChoice{SiteChoice::RiseDuty, -1}));
    // Both ends of what is offered, and what lies beyond.
    site.Voltage(416);
    site.ConnectCode(4);
    for (const auto& [hertz, fuel, rise, unoffered] :
         {std::tuple{50, 0, 0, 0U}, std::tuple{60, 4, 4, 0U}, std::tuple{49, -1, -1, 3U},
          std::tuple{61, 5, 5, 3U}}) {
        site.Freq(hertz);
        site.Fuel(fuel);
        site.RiseDutyCode(rise);
        EXPECT_THAT(other.UnofferedChoices(), testing::SizeIs(unoffered)) << hertz;
    }
}

TEST_F(DocumentTest, ListsThatTheCatalogueCannotGiveOfferEverything) {
    DropTable(folder, "Connections");
    DropTable(folder, "Gensets");
    Catalogue bare(folder / "Genvara.db");
    Document other(defaults, bare);
    other.PowerSystem().Fuel(9);
    EXPECT_THAT(other.UnofferedChoices(), ElementsAre(UnofferedChoice{SiteChoice::Fuel, 9}));
}

TEST_F(DocumentTest, HasLoadsOnlyIfItsFirstStepDoes) {
    document->LoadProfile().AddLoadStep("first", 20, 0);
    document->LoadProfile().AddLoadStep("second", 20, 0);
    AddLoad(2, 1000);
    EXPECT_FALSE(document->HasLoads());
    AddLoad(1, 1000);
    EXPECT_TRUE(document->HasLoads());
}

TEST_F(DocumentTest, AsksForTheRecordsOnlyOnceItsFileIsOpen) {
    document->ProjectFile((folder / "no folder/a.prj").string());
    bool asked = false;
    EXPECT_THROW(document->Write([&] { asked = true; }), RaisedError);
    EXPECT_FALSE(asked);
    document->ProjectFile((folder / "a.prj").string());
    document->Write([&] { document->Project().ProjName("late"); });
    Document other(defaults, *catalogue);
    other.Read(folder / "a.prj", order);
    EXPECT_EQ(other.Project().ProjName(), "late");
}

TEST_F(DocumentTest, HandsReportsItsOwnRecords) {
    const ReportSources sources = document->Sources(true);
    EXPECT_EQ(&sources.project, &document->Project());
    EXPECT_EQ(&sources.site, &document->PowerSystem());
    EXPECT_EQ(&sources.designer, &document->Designer());
    EXPECT_TRUE(sources.metricUnits);
    EXPECT_FALSE(document->Sources(false).metricUnits);
}

TEST_F(DocumentTest, NamesTheLoadThatARunCannotWorkOut) {
    document->LoadProfile().AddLoadStep("first", 20, 0);
    document->LoadProfile().AddLoadStep("second", 20, 0);
    AddLoad(1, 1000.0);
    AddLoad(2, 1000.0);
    auto motor = std::make_unique<CMtrLoad>();
    motor->name("Pump");
    motor->RunningAppPower(12000.0);
    motor->StartingAppPower(50000.0);
    motor->StartingPF(1.2);
    document->LoadProfile().LoadStep(2).AddLoad(std::move(motor));
    try {
        (void)document->LoadProfile().LoadStep(2).TotalStartingImgPower(0);
        FAIL() << "a power factor above 1 has no imaginary part";
    } catch (const RaisedError& error) {
        const std::optional<RunCulprit> culprit = document->Culprit(error);
        ASSERT_TRUE(culprit);
        EXPECT_EQ(CulpritText(*culprit), "the starting power factor of load 2 of step 2, \"Pump\"");
    }
    EXPECT_EQ(document->Culprit(RaisedError(5, "somebody else", "")), std::nullopt);
}

TEST_F(DocumentTest, AFailedRunLeavesTheResultsOfTheOneBefore) {
    document->LoadProfile().AddLoadStep("first", 20, 0);
    AddLoad(1, 1000);
    CDesigner::Results results;
    results.chosen.resize(2);
    results.rejected.resize(3);
    results.figures.totalRunningKW = 17.0;
    document->Designer().LastRun(results);
    DropTable(folder, "Gensets");
    EXPECT_THROW(document->Size(), RaisedError);
    EXPECT_EQ(document->Designer().NumChosenSets(), 2);
    EXPECT_EQ(document->Designer().NumRejectedSets(), 3);
    EXPECT_EQ(document->Designer().TotalRunningKW(), 17.0);
}

TEST_F(DocumentTest, SaysInWordsWhatIsToBlameAndWhatToDo) {
    document->LoadProfile().AddLoadStep("first", 20, 0);
    auto motor = std::make_unique<CMtrLoad>();
    motor->name("Pump");
    motor->StartingAppPower(50000.0);
    motor->StartingPF(1.2);  // whose sine is no number
    document->LoadProfile().LoadStep(1).AddLoad(std::move(motor));
    const RaisedError failure(5, "CMtrLoad::StartingImgPower", "Invalid procedure call or argument");
    EXPECT_EQ(document->WhyNotSized(failure),
              "The gensets cannot be worked out because of the starting power factor of load 1 of step 1, "
              "\"Pump\": "
              "Invalid procedure call or argument\r\nEdit it, or delete it and add it anew.");
    EXPECT_EQ(
        document->WhyNotReported(failure),
        "The report cannot be worked out because of the starting power factor of load 1 of step 1, \"Pump\": "
        "Invalid procedure call or argument\r\nEdit it, or delete it and add it anew.");
    EXPECT_EQ(document->WhyNotSized(RaisedError(17, "GensetDatabase", "no such table")),
              "The gensets cannot be worked out: no such table");
}

}  // namespace
}  // namespace genvara
