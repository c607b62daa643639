// The recommendation panel: its lists, and the report that each of them and each control brings.

#include <QCheckBox>
#include <QLabel>
#include <QTest>

#include "CMiscLoad.h"
#include "CReports.h"
#include "ChoiceBox.h"
#include "ProgramVersion.h"
#include "ReportFiller.h"
#include "ReportView.h"
#include "WindowFixture.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::int32_t kWye = 1;
constexpr std::int32_t kSinglePhase = 3;  // 120/240 V, for which there is no distortion model
constexpr double kMostPower = 2000000.0;  // W, of one load
constexpr const char* kSearchFailed = "Search Failure Report";
constexpr const char* kSizing = "Generator Set Sizing";
constexpr const char* kUndersized = "Undersized Generator Set";
constexpr const char* kProfile = "Generator Load Profile";
constexpr const char* kUndersizedProfile = "Undersized Generator Load Profile";

class RecommendPanel : public WindowTest {
  protected:
    void SetUp() override {
        AddStepWithLoad();
        platform.Take();
    }

    [[nodiscard]] panRecommend& Panel() { return Find<panRecommend>(Window(), "panRecommend"); }
    [[nodiscard]] ChoiceBox& List(const char* name) { return Control<ChoiceBox>("panRecommend", name); }
    [[nodiscard]] ChoiceBox& Chosen() { return List("cboAvailGensets"); }
    [[nodiscard]] ChoiceBox& Rejected() { return List("cboRejectedGensets"); }
    [[nodiscard]] QCheckBox& Undersized() { return Control<QCheckBox>("panRecommend", "chkRejectedGensets"); }
    [[nodiscard]] ReportView& View() { return Control<ReportView>("panRecommend", "rtfRecommend"); }
    [[nodiscard]] std::string Text() { return View().Layout().Text().toStdString(); }
    [[nodiscard]] CDesigner& Designer() { return App().Designer(); }

    /// The site and load of the next run [W].
    void Site(std::int32_t connection, std::int32_t volts, double watts) {
        CPwrSys& site = App().PowerSystem();
        site.ConnectCode(connection);
        site.Voltage(volts);
        site.Display(Find<panPwrSys>(Window(), "panPwrSys"), App().IsMetric());
        for (Load& load : App().LoadProfile().LoadStep(1)) {
            dynamic_cast<CMiscLoad&>(load).RunningRealPower(watts);
        }
    }
    /// A load that no single set carries, though some come nearest.
    void SiteWithoutChosenSets() {
        Site(kWye, 480, kMostPower);
        App().LoadProfile().LoadStep(1).begin()->Quantity(5);
    }
    /// A voltage that the connection does not have.
    void SiteWithoutCandidates() { Site(kSinglePhase, 480, 50000); }

    void Recommend() {
        Bar(3);
        ASSERT_EQ(ShownPanel(), "panRecommend");
    }
    /// Picks the next or former row of a list, as its user does.
    static void Pick(ChoiceBox& list, Qt::Key direction) {
        list.setFocus();
        QTest::keyClick(&list, direction);
    }
    void ExpectExport(bool enabled) {
        EXPECT_EQ(Enabled("mnuFileExport"), enabled);
        EXPECT_EQ(Enabled("butExport"), enabled);
    }
    void ExpectListShown(bool rejected) {
        EXPECT_EQ(Rejected().isVisible(), rejected);
        EXPECT_EQ(Chosen().isVisible(), !rejected);
        EXPECT_EQ(Undersized().isChecked(), rejected);
    }
    /// The report names the set of the list's row, given as "model (alternator)".
    void ExpectSet(const std::string& row) {
        const std::size_t bracket = row.find(" (");
        EXPECT_THAT(Text(), HasSubstr("Model No.\t" + row.substr(0, bracket) + "\t"));
        EXPECT_THAT(Text(),
                    HasSubstr("Alternator\t" + row.substr(bracket + 2, row.size() - bracket - 3) + "\n"));
    }
};

std::string RowOf(const ChoiceBox& list, int row) {
    return list.itemText(row).toStdString();
}

TEST_F(RecommendPanel, IsEmptyBeforeTheFirstRun) {
    EXPECT_EQ(Chosen().count(), 0);
    EXPECT_EQ(Rejected().count(), 0);
    EXPECT_EQ(View().RichText(), "");
    EXPECT_FALSE(Undersized().isChecked());
    EXPECT_EQ(Undersized().text(), "Undersized Gensets");
    EXPECT_EQ(Control<QLabel>("panRecommend", "lblRecommendGensets").text(), "Recommended Gensets");
    EXPECT_EQ(Control<QLabel>("panRecommend", "lblAvailReports").text(), "Available Reports");
    ChoiceBox& reports = List("cboAvailReports");
    ASSERT_EQ(reports.count(), 2);
    EXPECT_EQ(RowOf(reports, 0), "Genset Sizing");
    EXPECT_EQ(reports.itemData(0), 0);
    EXPECT_EQ(RowOf(reports, 1), "Load Summary");
    EXPECT_EQ(reports.itemData(1), 1);
    EXPECT_EQ(reports.currentIndex(), 0);
}

TEST_F(RecommendPanel, ListsTheSetsInTheDesignersOrder) {
    Recommend();
    ASSERT_GT(Designer().NumChosenSets(), 1);
    ASSERT_EQ(Chosen().count(), Designer().NumChosenSets());
    for (std::int32_t set = 0; set < Designer().NumChosenSets(); ++set) {
        EXPECT_EQ(RowOf(Chosen(), set), Designer().SetModelNum(set) + " (" + Designer().SetAltNum(set) + ")");
    }
    ASSERT_GT(Designer().NumRejectedSets(), 1);
    ASSERT_EQ(Rejected().count(), Designer().NumRejectedSets());
    for (std::int32_t set = 0; set < Designer().NumRejectedSets(); ++set) {
        EXPECT_EQ(RowOf(Rejected(), set),
                  Designer().SetModelNumRej(set) + " (" + Designer().SetAltNumRej(set) + ")");
    }
    EXPECT_EQ(Rejected().currentIndex(), -1);
}

TEST_F(RecommendPanel, ReportsOnTheFirstSetThenOnThePickedOne) {
    Recommend();
    ExpectListShown(false);
    ExpectExport(true);
    EXPECT_EQ(Chosen().currentIndex(), 0);
    EXPECT_THAT(Text(), HasSubstr(kSizing));
    ExpectSet(RowOf(Chosen(), 0));
    Pick(Chosen(), Qt::Key_Down);
    EXPECT_EQ(Chosen().currentIndex(), 1);
    ExpectSet(RowOf(Chosen(), 1));
}

TEST_F(RecommendPanel, UndersizedSetsAreReportedWhileTheirBoxIsOn) {
    Recommend();
    Pick(Chosen(), Qt::Key_Down);
    Undersized().click();
    ExpectListShown(true);
    ExpectExport(true);
    EXPECT_EQ(Rejected().currentIndex(), 0);
    EXPECT_THAT(Text(), HasSubstr(kUndersized));
    EXPECT_THAT(Text(), HasSubstr("Reasons for Rejection"));
    ExpectSet(RowOf(Rejected(), 0));
    Pick(Rejected(), Qt::Key_Down);
    ExpectSet(RowOf(Rejected(), 1));
    Undersized().click();
    ExpectListShown(false);
    ExpectExport(true);
    EXPECT_EQ(Chosen().currentIndex(), 1) << "its own selection is kept";
    EXPECT_THAT(Text(), HasSubstr(kSizing));
    ExpectSet(RowOf(Chosen(), 1));
}

TEST_F(RecommendPanel, TheOtherReportIsOnTheSameSet) {
    Recommend();
    Pick(Chosen(), Qt::Key_Down);
    Pick(List("cboAvailReports"), Qt::Key_Down);
    EXPECT_THAT(Text(), HasSubstr(kProfile));
    EXPECT_THAT(Text(), Not(HasSubstr(kUndersizedProfile)));
    ExpectSet(RowOf(Chosen(), 1));
    Undersized().click();
    EXPECT_THAT(Text(), HasSubstr(kUndersizedProfile));
    Pick(Rejected(), Qt::Key_Down);
    ExpectSet(RowOf(Rejected(), 1));
    Pick(List("cboAvailReports"), Qt::Key_Up);
    EXPECT_THAT(Text(), HasSubstr(kUndersized));
    EXPECT_THAT(Text(), Not(HasSubstr(kUndersizedProfile)));
    ExpectSet(RowOf(Rejected(), 1));
}

TEST_F(RecommendPanel, EveryRunStartsFromClearedLists) {
    Recommend();
    const int before = Chosen().count();
    Pick(Chosen(), Qt::Key_Down);
    Pick(List("cboAvailReports"), Qt::Key_Down);
    Undersized().click();
    Pick(Rejected(), Qt::Key_Down);
    Bar(2);
    Recommend();
    ExpectListShown(false);
    EXPECT_EQ(Chosen().count(), before);
    EXPECT_EQ(Chosen().currentIndex(), 0);
    EXPECT_EQ(Rejected().currentIndex(), -1);
    EXPECT_THAT(Text(), HasSubstr(kProfile)) << "the kind of report is no part of a run";
    ExpectSet(RowOf(Chosen(), 0));
}

TEST_F(RecommendPanel, WithoutAnySetTheSearchFailureIsReported) {
    SiteWithoutCandidates();
    Recommend();
    ASSERT_EQ(Designer().NumChosenSets(), 0);
    ASSERT_EQ(Designer().NumRejectedSets(), 0);
    EXPECT_EQ(Chosen().count(), 0);
    EXPECT_EQ(Rejected().count(), 0);
    EXPECT_THAT(Text(), HasSubstr(kSearchFailed));
    ExpectExport(false);
    EXPECT_TRUE(Enabled("mnuFileSaveReport"));
    EXPECT_TRUE(Enabled("mnuFilePrint"));
    const std::string bytes = View().RichText();
    Undersized().click();
    EXPECT_EQ(View().RichText(), bytes) << "an empty list leaves the view";
    ExpectExport(false);
    Pick(List("cboAvailReports"), Qt::Key_Down);
    EXPECT_EQ(View().RichText(), bytes);
    Undersized().click();
    EXPECT_THAT(Text(), HasSubstr(kSearchFailed));
    ExpectExport(false);
}

TEST_F(RecommendPanel, WithUndersizedSetsOnlyTheBoxBringsThemAndTheExport) {
    SiteWithoutChosenSets();
    App().Project().ProjName("Mill");
    Recommend();
    ASSERT_EQ(Designer().NumChosenSets(), 0);
    ASSERT_GT(Designer().NumRejectedSets(), 0);
    EXPECT_THAT(Text(), HasSubstr(kSearchFailed));
    ExpectExport(false);
    Undersized().click();
    ExpectExport(true);
    EXPECT_THAT(Text(), HasSubstr(kUndersized));
    ExpectSet(RowOf(Rejected(), 0));
    Undersized().click();
    ExpectExport(false);
    ExpectListShown(false);
    EXPECT_THAT(Text(), HasSubstr(kSearchFailed));
}

TEST_F(RecommendPanel, TheFocusOnAnEmptyListBringsTheSearchFailureBack) {
    SiteWithoutChosenSets();
    Recommend();
    List("cboAvailReports").setFocus();
    Find<QAction>(Window(), "mnuFileExport").setEnabled(true);
    View().Clear();
    Chosen().setFocus();
    EXPECT_THAT(Text(), HasSubstr(kSearchFailed));
    EXPECT_FALSE(Enabled("mnuFileExport"));
}

TEST_F(RecommendPanel, TheFocusOnAListWithSetsDoesNothing) {
    Recommend();
    List("cboAvailReports").setFocus();
    View().Clear();
    Chosen().setFocus();
    EXPECT_EQ(View().RichText(), "");
    ExpectExport(true);
}

TEST_F(RecommendPanel, ANewRunAfterAFailedSearchEnablesTheExport) {
    SiteWithoutCandidates();
    Recommend();
    ExpectExport(false);
    Bar(2);
    Site(kWye, 480, 50000);
    Recommend();
    ExpectExport(true);
    EXPECT_THAT(Text(), HasSubstr(kSizing));
}

TEST_F(RecommendPanel, AnUndersizedReportKeepsWhetherDistortionWasValid) {
    Site(kSinglePhase, 240, 20000);
    Recommend();
    ASSERT_GT(Designer().NumChosenSets(), 0);
    ASSERT_GT(Designer().NumRejectedSets(), 0);
    EXPECT_THAT(Text(), HasSubstr("Voltage THD\tN/A\n"));
    Undersized().click();
    EXPECT_THAT(Text(), HasSubstr("Voltage THD\tN/A\n"));
    // A run that has figures, but no chosen set that would tell so.
    Bar(2);
    SiteWithoutChosenSets();
    Recommend();
    ASSERT_TRUE(Designer().VTHD_CalcsValid());
    ASSERT_EQ(Designer().NumChosenSets(), 0);
    Undersized().click();
    EXPECT_THAT(Text(), HasSubstr("Voltage THD\tN/A\n"));
}

TEST_F(RecommendPanel, AnUndersizedReportTakesDistortionAsValidBeforeAnyChosenSet) {
    Site(kSinglePhase, 240, kMostPower);
    Recommend();
    ASSERT_FALSE(Designer().VTHD_CalcsValid());
    ASSERT_EQ(Designer().NumChosenSets(), 0);
    ASSERT_GT(Designer().NumRejectedSets(), 0);
    Undersized().click();
    EXPECT_THAT(Text(), HasSubstr("Voltage THD\t0.00 %"));
}

TEST_F(RecommendPanel, ReportsInTheUsersUnits) {
    CPwrSys& site = App().PowerSystem();
    site.Altitude(250);  // 250 * 3.28084 = 820.21 ft
    site.AmbTemp(30);    // 30 * 9 / 5 + 32 = 86 F
    App().IsMetric(false);
    site.Display(Find<panPwrSys>(Window(), "panPwrSys"), false);
    Recommend();
    EXPECT_THAT(Text(), HasSubstr("Altitude\t\t820\tfeet"));
    EXPECT_THAT(Text(), HasSubstr("Ambient Temp.\t86\tF"));
    App().IsMetric(true);
    site.Display(Find<panPwrSys>(Window(), "panPwrSys"), true);
    Recommend();
    EXPECT_THAT(Text(), HasSubstr("Altitude\t\t250\tmeters"));
    EXPECT_THAT(Text(), HasSubstr("Ambient Temp.\t30\tC"));
}

TEST_F(RecommendPanel, SavesTheVeryBytesThatAreShown) {
    Recommend();
    const std::filesystem::path file = folder / "report.rtf";
    platform.files.push_back(file.string());
    Run("mnuFileSaveReport");
    EXPECT_EQ(ReadBytes(file), View().RichText());
    EXPECT_THAT(ReadBytes(file), HasSubstr("{\\rtf1"));
    // What is shown counts, not what a report would be now.
    App().LoadProfile().DeleteAllLoadSteps();
    const std::string shown = View().RichText();
    platform.files.push_back(file.string());
    Run("mnuFileSaveReport");
    EXPECT_EQ(ReadBytes(file), shown);
}

TEST_F(RecommendPanel, PrintsTheWholeReport) {
    Recommend();
    View().Select(3, 5);
    platform.Take();
    platform.printFile = folder / "report.pdf";
    Run("mnuFilePrint");
    EXPECT_EQ(platform.Take().at(0).what, "print");
    const std::string document = ReadBytes(folder / "report.pdf");
    EXPECT_TRUE(document.starts_with("%PDF"));
    EXPECT_GT(document.size(), 5000U) << "a report's fonts and text";
    EXPECT_EQ(View().SelLength(), 2) << "the selection has no part in it";
}

TEST_F(RecommendPanel, ExportsTheSetThatIsShown) {
    Recommend();
    Undersized().click();
    const std::filesystem::path file = folder / "set.gvx";
    platform.files.push_back(file.string());
    Run("mnuFileExport");
    EXPECT_THAT(ReadBytes(file), HasSubstr("model=" + Designer().SetModelNumRej(0) + "\r\n"));
    EXPECT_THAT(ReadBytes(file), HasSubstr("alternator=" + Designer().SetAltNumRej(0) + "\r\n"));
}

TEST_F(RecommendPanel, ClearedItIsAsAtTheStart) {
    Recommend();
    Undersized().click();
    Panel().ClearReport();
    ExpectListShown(false);
    EXPECT_EQ(Chosen().count(), 0);
    EXPECT_EQ(Rejected().count(), 0);
    EXPECT_EQ(View().RichText(), "");
}

TEST_F(RecommendPanel, TheFocusStaysOnTheListsWhenTheyChangePlaces) {
    Recommend();
    Undersized().click();
    Rejected().setFocus();
    Bar(2);
    Recommend();
    EXPECT_TRUE(Chosen().hasFocus());
}

class ReportFields : public RecommendPanel {
  protected:
    void SetUp() override {
        RecommendPanel::SetUp();
        AddStepWithLoad();  // two steps, as one set has to take each of them
        CPwrSys& site = App().PowerSystem();
        site.GensetsInParallel(2);
        site.RiseDutyCode(3);
        site.Altitude(250);
        site.AmbTemp(30);
        site.MaxVoltageDip(19);
        site.MaxFreqDip(9);
        site.MaxFreqDipEnabled(false);
        site.MaxHarmonics(7);
        site.MaxHarmonicsEnabled(true);
        site.Freq(60);
        site.Phases(3);
        site.Fuel(1);
        Site(kWye, 480, 50000);
        CProject& project = App().Project();
        project.ProjName("Mill");
        project.Customer("Client");
        project.UserName("Engineer");
        project.Created({2020, 1, 2, 3, 4, 5});
        project.LastModified({2021, 2, 3, 4, 5, 6});
        Designer().SelectGensets();
        Designer().ChooseSets();
        ASSERT_GT(Designer().NumChosenSets(), 1);
        ASSERT_GT(Designer().NumRejectedSets(), 1);
    }
    [[nodiscard]] ReportSources Sources(bool metric) {
        return {App().Project(), App().PowerSystem(), Designer(), metric};
    }

    ErrorLog log{folder / "program"};
    CReports reports{0, App().LoadProfile(), App().Now(), log};
};

TEST_F(ReportFields, CommonOnesComeFromProjectSiteAndDesigner) {
    FillReportCommon(reports, Sources(false));
    const ReportData& data = reports.Data();
    EXPECT_EQ(data.ProjectName, "Mill");
    EXPECT_EQ(data.Customer, "Client");
    EXPECT_EQ(data.UserName, "Engineer");
    EXPECT_EQ(data.ParallelSets, 2);
    EXPECT_EQ(data.LLVoltage, 480);
    EXPECT_EQ(data.ConnCode, kWye);
    EXPECT_EQ(data.Phases, 3);
    EXPECT_EQ(data.Frequency, 60);
    EXPECT_FALSE(data.MetricUnits);
    EXPECT_DOUBLE_EQ(data.AmbTemp, 86.0);
    EXPECT_DOUBLE_EQ(data.Altitude, 820.21);
    EXPECT_DOUBLE_EQ(data.TotalRunKW, 100.0) << "two loads of 50 kW";
    EXPECT_DOUBLE_EQ(data.PeakStartingKVA, 100.0) << "50 kVA start where 50 run";
    EXPECT_EQ(data.ProgVersion, kProgramVersionText);
    EXPECT_EQ(data.CreatedDate, (DateTime{2020, 1, 2, 3, 4, 5}));
    EXPECT_EQ(data.ModifiedDate, (DateTime{2021, 2, 3, 4, 5, 6}));
    EXPECT_EQ(data.AllowedVoltDip, 19);
    EXPECT_EQ(data.AllowedFreqDip, 9);
    EXPECT_EQ(data.AllowedVTHD, 7);
    EXPECT_FALSE(data.FreqDipEnabled);
    EXPECT_TRUE(data.VTHDEnabled);
    EXPECT_EQ(data.DBVersion, Designer().DatabaseVersion());
    EXPECT_THAT(reports.CreateReport(report_type::kSizing, false), HasSubstr("130C Rise"));
    FillReportCommon(reports, Sources(true));
    EXPECT_TRUE(data.MetricUnits);
    EXPECT_EQ(data.AmbTemp, 30);
    EXPECT_EQ(data.Altitude, 250);
}

TEST_F(ReportFields, CommonOnesLeaveThoseOfTheSet) {
    ReportData& data = reports.Data();
    data.ModelNum = "kept";
    data.MaxVoltDip = 1.5;
    data.StepVoltDips = {1.0, 2.0};
    data.RejectionReason = 64;
    data.CalcVTHD = false;
    FillReportCommon(reports, Sources(false));
    EXPECT_EQ(data.ModelNum, "kept");
    EXPECT_EQ(data.MaxVoltDip, 1.5);
    EXPECT_EQ(data.StepVoltDips.size(), 2U);
    EXPECT_EQ(data.RejectionReason, 64);
    EXPECT_FALSE(data.CalcVTHD);
    EXPECT_EQ(reports.FuelType(), "");
}

TEST_F(ReportFields, AChosenSetsFiguresAreTheDesignersAtItsPosition) {
    ReportData& data = reports.Data();
    data.RejectionReason = 64;
    data.CalcVTHD = false;
    const CDesigner& designer = Designer();
    FillChosenSet(reports, Sources(false), 1);
    EXPECT_EQ(data.ProjectName, "Mill");
    EXPECT_EQ(data.ModelNum, designer.SetModelNum(1));
    EXPECT_EQ(data.AlternatorNum, designer.SetAltNum(1));
    EXPECT_EQ(data.EngineNum, designer.SetEngineNum(1));
    EXPECT_EQ(designer.SetFuelType(1), 1);
    EXPECT_EQ(reports.FuelType(), "Diesel");
    EXPECT_EQ(data.AvailKVA35, designer.SetStartKVA35(1));
    EXPECT_EQ(data.RatedKW, designer.SetNominalRating(1));
    EXPECT_EQ(data.DeratedKW, designer.SetDeratedRating(1));
    EXPECT_EQ(data.MaxVoltDip, designer.MaxStepVoltDip(1));
    EXPECT_EQ(data.MaxFreqDip, designer.MaxStepFreqDip(1));
    EXPECT_EQ(data.MaxVTHD, designer.MaxStepVTHD(1));
    EXPECT_EQ(data.StepVoltDips, designer.VoltageDips(1));
    EXPECT_EQ(data.StepFreqDips, designer.FreqDips(1));
    EXPECT_EQ(data.StepVTHDs_A, designer.StepVTHD_A(1));
    EXPECT_EQ(data.StepVTHDs_B, designer.StepVTHD_B(1));
    EXPECT_EQ(data.StepVTHDs_C, designer.StepVTHD_C(1));
    EXPECT_TRUE(data.CalcVTHD);
    EXPECT_EQ(data.RejectionReason, 64) << "harmless, since its report does not print it";
}

TEST_F(ReportFields, ARejectedSetsFiguresAreTheDesignersAtItsPosition) {
    ReportData& data = reports.Data();
    data.CalcVTHD = false;
    const CDesigner& designer = Designer();
    FillRejectedSet(reports, Sources(false), 1);
    EXPECT_EQ(data.ProjectName, "Mill");
    EXPECT_EQ(data.ModelNum, designer.SetModelNumRej(1));
    EXPECT_EQ(data.AlternatorNum, designer.SetAltNumRej(1));
    EXPECT_EQ(data.EngineNum, designer.SetEngineNumRej(1));
    EXPECT_EQ(reports.FuelType(), "Diesel");
    EXPECT_EQ(data.AvailKVA35, designer.SetStartKVA35Rej(1));
    EXPECT_EQ(data.RatedKW, designer.SetNominalRatingRej(1));
    EXPECT_EQ(data.DeratedKW, designer.SetDeratedRatingRej(1));
    EXPECT_EQ(data.MaxVoltDip, designer.MaxStepVoltDipRej(1));
    EXPECT_EQ(data.MaxFreqDip, designer.MaxStepFreqDipRej(1));
    EXPECT_EQ(data.MaxVTHD, designer.MaxStepVTHDRej(1));
    EXPECT_EQ(data.StepVoltDips, designer.VoltageDipsRej(1));
    EXPECT_EQ(data.StepFreqDips, designer.FreqDipsRej(1));
    EXPECT_EQ(data.StepVTHDs_A, designer.StepVTHD_A_Rej(1));
    EXPECT_EQ(data.StepVTHDs_B, designer.StepVTHD_B_Rej(1));
    EXPECT_EQ(data.StepVTHDs_C, designer.StepVTHD_C_Rej(1));
    EXPECT_EQ(data.RejectionReason, designer.RejectionReason(1));
    EXPECT_NE(data.RejectionReason, 0);
    EXPECT_FALSE(data.CalcVTHD) << "keeps its last value";
}

TEST_F(ReportFields, APositionBeyondTheListIsRefused) {
    EXPECT_THROW(FillChosenSet(reports, Sources(false), Designer().NumChosenSets()), RaisedError);
    EXPECT_THROW(FillRejectedSet(reports, Sources(false), -1), RaisedError);
}

}  // namespace
}  // namespace genvara
