// Figures of which no two are the same, so that none can stand in another's place.

#include "ReportFiller.h"

#include <gtest/gtest.h>

#include <memory>

#include "ErrorLog.h"

namespace genvara {
namespace {

using Steps = std::vector<double>;

/// A database that has a version and nothing else.
class VersionAlone final : public GensetSource {
  public:
    [[nodiscard]] PropertiesRecord Properties() override {
        return {.ID = 1, .Version = "7.3", .Date = "", .Initials = ""};
    }
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& /*filter*/) override {
        return nullptr;
    }
    [[nodiscard]] DerateRow DerateCode(std::int32_t /*id*/) override { return {}; }
    [[nodiscard]] AlternatorRow Alternator(std::int32_t /*id*/) override { return {}; }
};

/// A set whose figures begin with a number of its own.
template <typename Set>
Set MadeUp(double first) {
    Set set;
    const auto text = std::to_string(static_cast<int>(first));
    set.ModelNum = "model" + text;
    set.AltNum = "alternator" + text;
    set.EngineNum = "engine" + text;
    set.FuelType = 2;
    set.NominalRating = first + 1;
    set.DeratedRating = first + 2;
    set.StartingPower = first + 3;
    set.StartKVA35 = first + 4;
    set.MaxStepVoltDip = first + 5;
    set.MaxStepFreqDip = first + 6;
    set.MaxStepVTHD = first + 7;
    set.VoltageDips = {first + 8, first + 9};
    set.FreqDips = {first + 10, first + 11};
    set.StepVTHD_A = {first + 12, first + 13};
    set.StepVTHD_B = {first + 14, first + 15};
    set.StepVTHD_C = {first + 16, first + 17};
    set.FreqDipAvail = true;
    return set;
}

class ReportFiller : public testing::Test {
  protected:
    ReportFiller() {
        CDesigner::Results run;
        run.chosen = {MadeUp<ChosenSet>(100), MadeUp<ChosenSet>(200)};
        run.rejected = {MadeUp<RejectedSet>(300), MadeUp<RejectedSet>(400)};
        run.rejected[1].RejectionReason = 5;
        run.rejected[1].FreqDipAvail = false;
        run.figures.totalRunningKW = 71;
        run.figures.peakStartingKVA = 72;
        run.vthdCalcsValid = true;
        designer.LastRun(run);
    }
    /// The figures of a report, as those of a set that begin with a number.
    void ExpectSet(double first, const std::string& text) {
        const ReportData& data = reports.Data();
        EXPECT_EQ(data.ModelNum, "model" + text);
        EXPECT_EQ(data.AlternatorNum, "alternator" + text);
        EXPECT_EQ(data.EngineNum, "engine" + text);
        EXPECT_EQ(data.RatedKW, first + 1);
        EXPECT_EQ(data.DeratedKW, first + 2);
        EXPECT_EQ(data.AvailKVA35, first + 4);
        EXPECT_EQ(data.MaxVoltDip, first + 5);
        EXPECT_EQ(data.MaxFreqDip, first + 6);
        EXPECT_EQ(data.MaxVTHD, first + 7);
        EXPECT_EQ(data.StepVoltDips, (Steps{first + 8, first + 9}));
        EXPECT_EQ(data.StepFreqDips, (Steps{first + 10, first + 11}));
        EXPECT_EQ(data.StepVTHDs_A, (Steps{first + 12, first + 13}));
        EXPECT_EQ(data.StepVTHDs_B, (Steps{first + 14, first + 15}));
        EXPECT_EQ(data.StepVTHDs_C, (Steps{first + 16, first + 17}));
        EXPECT_EQ(data.TotalRunKW, 71);
        EXPECT_EQ(data.PeakStartingKVA, 72);
        EXPECT_EQ(data.DBVersion, "7.3");
    }

    CDefaults defaults;
    CProject project{defaults, [] { return DateTime{}; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    VersionAlone database;
    CDesigner designer{database, site, profile};
    ErrorLog log{"."};
    CReports reports{0, profile, [] { return DateTime{}; }, log};
    ReportSources sources{.project = project, .site = site, .designer = designer};
};

TEST_F(ReportFiller, GivesEachFigureOfARecommendedSetItsPlace) {
    FillChosenSet(reports, sources, 1);
    ExpectSet(200, "200");
    EXPECT_TRUE(reports.Data().CalcVTHD);
    FillChosenSet(reports, sources, 0);
    ExpectSet(100, "100");
}

TEST_F(ReportFiller, GivesEachFigureOfAnUndersizedSetItsPlace) {
    FillRejectedSet(reports, sources, 0);
    ExpectSet(300, "300");
    EXPECT_EQ(reports.Data().RejectionReason, 0);
    FillRejectedSet(reports, sources, 1);
    ExpectSet(400, "400");
    EXPECT_EQ(reports.Data().RejectionReason, 5);
}

TEST_F(ReportFiller, AnUndersizedSetHasTheDistortionOfTheSetShownBeforeIt) {
    reports.Data().CalcVTHD = false;
    FillRejectedSet(reports, sources, 1);
    EXPECT_FALSE(reports.Data().CalcVTHD) << "nobody knows what was shown";
    FillRejectedSetAfterRun(reports, sources, 1);
    ExpectSet(400, "400");
    EXPECT_TRUE(reports.Data().CalcVTHD) << "as of the first recommended set";
    CDesigner::Results run = designer.LastRun();
    run.vthdCalcsValid = false;
    designer.LastRun(run);
    FillRejectedSetAfterRun(reports, sources, 1);
    EXPECT_FALSE(reports.Data().CalcVTHD);
    run.chosen.clear();
    designer.LastRun(run);
    FillRejectedSetAfterRun(reports, sources, 1);
    EXPECT_TRUE(reports.Data().CalcVTHD) << "as it begins, since no set was shown";
}

TEST_F(ReportFiller, TheDesignersReadersGiveTheSame) {
    EXPECT_EQ(designer.SetModelNum(1), "model200");
    EXPECT_EQ(designer.SetAltNum(1), "alternator200");
    EXPECT_EQ(designer.SetEngineNum(1), "engine200");
    EXPECT_EQ(designer.SetNominalRating(1), 201);
    EXPECT_EQ(designer.SetDeratedRating(1), 202);
    EXPECT_EQ(designer.SetStartKVA35(1), 204);
    EXPECT_EQ(designer.MaxStepVoltDip(1), 205);
    EXPECT_EQ(designer.MaxStepFreqDip(1), 206);
    EXPECT_EQ(designer.MaxStepVTHD(1), 207);
    EXPECT_EQ(designer.VoltageDips(1), (Steps{208, 209}));
    EXPECT_EQ(designer.FreqDips(1), (Steps{210, 211}));
    EXPECT_EQ(designer.StepVTHD_A(1), (Steps{212, 213}));
    EXPECT_EQ(designer.StepVTHD_B(1), (Steps{214, 215}));
    EXPECT_EQ(designer.StepVTHD_C(1), (Steps{216, 217}));
    EXPECT_TRUE(designer.FreqDipAvail(1));
    EXPECT_EQ(designer.SetModelNumRej(1), "model400");
    EXPECT_EQ(designer.SetAltNumRej(1), "alternator400");
    EXPECT_EQ(designer.SetEngineNumRej(1), "engine400");
    EXPECT_EQ(designer.SetNominalRatingRej(1), 401);
    EXPECT_EQ(designer.SetDeratedRatingRej(1), 402);
    EXPECT_EQ(designer.SetStartKVA35Rej(1), 404);
    EXPECT_EQ(designer.MaxStepVoltDipRej(1), 405);
    EXPECT_EQ(designer.MaxStepFreqDipRej(1), 406);
    EXPECT_EQ(designer.MaxStepVTHDRej(1), 407);
    EXPECT_EQ(designer.VoltageDipsRej(1), (Steps{408, 409}));
    EXPECT_EQ(designer.FreqDipsRej(1), (Steps{410, 411}));
    EXPECT_EQ(designer.StepVTHD_A_Rej(1), (Steps{412, 413}));
    EXPECT_EQ(designer.StepVTHD_B_Rej(1), (Steps{414, 415}));
    EXPECT_EQ(designer.StepVTHD_C_Rej(1), (Steps{416, 417}));
    EXPECT_FALSE(designer.FreqDipAvailRej(1));
    EXPECT_TRUE(designer.FreqDipAvailRej(0));
}

}  // namespace
}  // namespace genvara
