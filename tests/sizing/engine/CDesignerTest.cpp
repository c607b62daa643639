#include "CDesigner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "EngineFixture.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

using testing::DoubleEq;
using testing::DoubleNear;
using testing::ElementsAre;

TEST(Designer, StartsWithTheFactorySettings) {
    MemoryGensets gensets;
    const CDefaults defaults;
    const CPwrSys site(defaults);
    const CLoadProfile profile;
    const CDesigner designer(gensets, site, profile);
    EXPECT_EQ(designer.MinLoading(), 30);
    EXPECT_EQ(designer.MaxLoading(), 80);
    EXPECT_EQ(designer.MaxSetsRecommended(), 16);
    EXPECT_EQ(designer.MaxSetsUndersized(), 5);
    EXPECT_EQ(designer.NumChosenSets(), 0);
    EXPECT_EQ(designer.TotalRunningKW(), 0.0);
    EXPECT_FALSE(designer.VTHD_CalcsValid());
    EXPECT_EQ(designer.DatabaseVersion(), "4.20");
}

TEST(Designer, ChecksItsLoadingLimitsOnOneSideEach) {
    EngineFixture fixture;
    CDesigner& designer = fixture.designer;
    designer.MinLoading(0);
    designer.MinLoading(150);
    designer.MaxLoading(100);
    designer.MaxLoading(-20);
    EXPECT_THAT([&] { designer.MinLoading(-1); },
                Raises(13, "CDesigner::MinLoading", "Invalid minimum loading level."));
    EXPECT_THAT([&] { designer.MaxLoading(101); },
                Raises(13, "CDesigner::MaxLoading", "Invalid maximum loading level."));
    EXPECT_EQ(designer.MinLoading(), 150);
    EXPECT_EQ(designer.MaxLoading(), -20);
}

TEST(Designer, TrimsModelNumbersAtTheFirstDash) {
    EXPECT_EQ(CDesigner::TrimModelNum("TN450-B-2"), "TN450");
    EXPECT_EQ(CDesigner::TrimModelNum("TN450"), "TN450");
    EXPECT_EQ(CDesigner::TrimModelNum("-B"), "");
}

TEST(Designer, WithoutCandidatesKeepsTheTotalsOfTheRunBefore) {
    EngineFixture fixture;
    fixture.AddKilowatts(80);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    EXPECT_EQ(fixture.Run(), 1);
    fixture.gensets.rows.clear();
    EXPECT_EQ(fixture.Run(), 0);
    EXPECT_EQ(fixture.designer.NumChosenSets(), 0);
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 80.0);
    EXPECT_EQ(fixture.designer.PeakStartingKVA(), 80.0);
    EXPECT_TRUE(fixture.designer.VTHD_CalcsValid());  // connection 1
}

TEST(Designer, BringsBackTheResultsOfAnEarlierRun) {
    EngineFixture fixture;
    fixture.AddKilowatts(90);
    fixture.gensets.rows = {MakeRow({.rating = 300}), MakeRow({.rating = 80})};
    ASSERT_EQ(fixture.Run(), 1);
    const CDesigner::Results before = fixture.designer.LastRun();
    fixture.AddKilowatts(900);
    fixture.gensets.rows = {MakeRow({.rating = 2000}), MakeRow({.rating = 2500}), MakeRow({.rating = 100})};
    fixture.site.ConnectCode(8);
    ASSERT_EQ(fixture.Run(), 2);
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 990.0);
    ASSERT_FALSE(fixture.designer.VTHD_CalcsValid());
    fixture.designer.LastRun(before);
    EXPECT_EQ(fixture.designer.NumChosenSets(), 1);
    EXPECT_EQ(fixture.designer.SetNominalRating(0), 300.0);
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.SetNominalRatingRej(0), 80.0);
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 90.0);
    EXPECT_EQ(fixture.designer.PeakStartingKVA(), 90.0);
    EXPECT_TRUE(fixture.designer.VTHD_CalcsValid());  // connection 1
    EXPECT_EQ(fixture.designer.Counts().Candidates(), 2);
    EXPECT_EQ(fixture.designer.Verdicts(0).size(), 1U) << "of the one step that there was";
}

TEST(Designer, ForgetsARunButNotItsSettings) {
    EngineFixture fixture;
    fixture.AddKilowatts(90);
    fixture.gensets.rows = {MakeRow({.rating = 300}), MakeRow({.rating = 100})};
    fixture.designer.MaxLoading(85);
    EXPECT_EQ(fixture.Run(), 1);  // 90 of 100 kW are beyond the limit
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    fixture.designer.SelectGensets();
    fixture.designer.ForgetRun();
    EXPECT_EQ(fixture.designer.NumChosenSets(), 0);
    EXPECT_EQ(fixture.designer.NumRejectedSets(), 0);
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 0.0);
    EXPECT_EQ(fixture.designer.PeakStartingKVA(), 0.0);
    EXPECT_FALSE(fixture.designer.VTHD_CalcsValid());
    EXPECT_EQ(fixture.designer.Counts().Candidates(), 0);
    EXPECT_EQ(fixture.designer.MaxLoading(), 85);
    EXPECT_EQ(fixture.designer.ChooseSets(), 0) << "the candidates are forgotten too";
    EXPECT_EQ(fixture.Run(), 1);
}

struct LoadingCase {
    double kilowatts;
    std::int32_t minLoading;
    std::int32_t maxLoading;
    std::int32_t reason;  // 0 recommended, -1 dropped
};

TEST(Designer, JudgesOneSetByRatingAndLoading) {
    const std::vector<LoadingCase> cases{
        {100, 0, 100, 0},  // equal passes
        {100.001, 0, 100, rejection::kRating | rejection::kMaxLoading | rejection::kPhaseLoading},
        {81, 0, 80, rejection::kMaxLoading},
        {80, 0, 80, 0},
        {29, 30, 80, -1},
        {30, 30, 80, 0},
        {150, 200, 100, rejection::kRating | rejection::kMaxLoading | rejection::kPhaseLoading},  // no bit 64
    };
    for (const LoadingCase& row : cases) {
        EngineFixture fixture;
        fixture.AddKilowatts(row.kilowatts);
        fixture.gensets.rows = {MakeRow({.rating = 100})};
        fixture.designer.MinLoading(row.minLoading);
        fixture.designer.MaxLoading(row.maxLoading);
        EXPECT_EQ(fixture.Run(), row.reason == 0 ? 1 : 0) << row.kilowatts;
        ASSERT_EQ(fixture.designer.NumRejectedSets(), row.reason > 0 ? 1 : 0) << row.kilowatts;
        if (row.reason > 0) {
            EXPECT_EQ(fixture.designer.RejectionReason(0), row.reason) << row.kilowatts;
        }
    }
}

TEST(Designer, ComparesEachPhaseWithItsShareOfTheRating) {
    // 40 kW on phase B: a third of 100 kW is 33.3, all of it is 100.
    EngineFixture fixture;
    fixture.AddKilowatts(40, 2);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    fixture.Run();
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kPhaseLoading);
    fixture.site.Phases(1);
    EXPECT_EQ(fixture.Run(), 1);
}

TEST(Designer, DeratesForTemperatureAndAltitudeByProducts) {
    // 10 °C above 40 at 2 % per 10 °C leaves 0.98; 500 m above 1000 at 1 % per 100 m leaves 0.95;
    // 100 x 0.98 x 0.95 = 93.1.
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    fixture.site.AmbTemp(50);
    fixture.site.Altitude(1500);
    fixture.Run();
    EXPECT_THAT(fixture.designer.SetDeratedRating(0), DoubleNear(93.1, 1e-12));
    EXPECT_EQ(fixture.designer.SetNominalRating(0), 100.0);
    fixture.site.AmbTemp(40);  // exactly at the base
    fixture.site.Altitude(1000);
    fixture.Run();
    EXPECT_EQ(fixture.designer.SetDeratedRating(0), 100.0);
}

TEST(Designer, GivesNoRatingToAnUnknownDuty) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    fixture.site.RiseDutyCode(5);
    EXPECT_EQ(fixture.Run(), 0);
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.SetNominalRatingRej(0), 0.0);
}

TEST(Designer, TakesATenthOffTheEnginesStartForNaturalGasSitesOnly) {
    EngineFixture fixture;
    fixture.AddKilowatts(95);
    fixture.gensets.rows = {MakeRow({.rating = 200, .startingPower = 100, .fuel = fuel::kNaturalGas})};
    fixture.site.Fuel(fuel::kAny);
    EXPECT_EQ(fixture.Run(), 1);
    fixture.site.Fuel(fuel::kNaturalGas);  // 90 kW are left
    EXPECT_EQ(fixture.Run(), 0);
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kEngineStart);
}

TEST(Designer, ParallelSetsAddRatingAndStartButNotOneStepCapability) {
    // Two sets of 100 kW and 500 kVA against 150 kW: dip 150 / 1000 x 35 = 5.25 %, and 10 % x 150 / 100 of
    // frequency dip = 15 %, which adds 0.4 x 15 = 6 points of voltage dip.
    EngineFixture fixture;
    fixture.AddKilowatts(150);
    fixture.site.GensetsInParallel(2);
    fixture.gensets.rows = {MakeRow({.rating = 100, .startKVA35 = 500, .baseFreqDipKW = 100})};
    fixture.Run();
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kOneStepCapability);
    EXPECT_THAT(fixture.designer.FreqDipsRej(0), ElementsAre(DoubleEq(15.0)));
    EXPECT_THAT(fixture.designer.VoltageDipsRej(0), ElementsAre(DoubleEq(11.25)));
    EXPECT_EQ(fixture.designer.SetStartKVA35Rej(0), 500.0);
    EXPECT_EQ(fixture.designer.SetDeratedRatingRej(0), 100.0);
}

TEST(Designer, ASetMayStartTheStepAndStillDipTooFar) {
    // Start 100 kVA on 350 kVA: 10 % of dip, and 0.4 x 20 % of frequency dip = 8 points: 18 % against 15 %.
    // Within 15 % the alternator starts 15 / 35 x 350 = 150 kVA.
    EngineFixture fixture;
    fixture.AddKilowatts(100);
    fixture.site.MaxVoltageDip(15);
    fixture.gensets.rows = {
        MakeRow({.rating = 200, .startKVA35 = 350, .baseFreqDipKW = 100, .baseFreqDip = 20})};
    fixture.Run();
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kVoltageDip);
    EXPECT_THAT(fixture.designer.MaxStepVoltDipRej(0), DoubleNear(18.0, 1e-12));
}

TEST(Designer, LimitsTheFrequencyDipOnlyWhereTheSiteAsks) {
    EngineFixture fixture;
    fixture.AddKilowatts(100);
    fixture.gensets.rows = {MakeRow({.rating = 200, .baseFreqDipKW = 100, .baseFreqDip = 11})};
    fixture.site.MaxFreqDip(10);
    EXPECT_EQ(fixture.Run(), 1);
    fixture.site.MaxFreqDipEnabled(true);
    EXPECT_EQ(fixture.Run(), 0);
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kFrequencyDip);
}

TEST(Designer, TreatsARowThatLacksOneFrequencyFieldAsLackingAll) {
    EngineFixture fixture;
    fixture.AddKilowatts(100);
    fixture.site.MaxFreqDipEnabled(true);
    GensetRow row = MakeRow({.rating = 200, .baseFreqDipKW = 1, .baseFreqDip = 99});
    row.ExpC = DbNumber();
    fixture.gensets.rows = {row};
    EXPECT_EQ(fixture.Run(), 1);
    EXPECT_FALSE(fixture.designer.FreqDipAvail(0));
    EXPECT_THAT(fixture.designer.FreqDips(0), ElementsAre(0.0));
    EXPECT_THAT(fixture.designer.VoltageDips(0), ElementsAre(DoubleEq(3.5)));  // 100 / 1000 x 35
}

TEST(Designer, ASetThatStartsNothingDipsToAHundredAndKeepsItsWorstDip) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 100, .startKVA35 = 0})};
    fixture.Run();
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kAlternatorStart | rejection::kVoltageDip);
    EXPECT_THAT(fixture.designer.VoltageDipsRej(0), ElementsAre(100.0));
    EXPECT_EQ(fixture.designer.MaxStepVoltDipRej(0), 0.0);
}

TEST(Designer, StartsEachStepOnTopOfWhatRuns) {
    // 60 kW run when 30 kW start: 90 kW and 90 kVA; the peak is the last step's.
    EngineFixture fixture;
    fixture.AddKilowatts(60);
    fixture.AddKilowatts(30);
    fixture.gensets.rows = {MakeRow({.rating = 100, .startKVA35 = 900})};
    fixture.Run();
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 90.0);
    EXPECT_EQ(fixture.designer.PeakStartingKVA(), 90.0);
    EXPECT_THAT(fixture.designer.VoltageDips(0), ElementsAre(DoubleEq(60.0 / 900.0 * 35.0), DoubleEq(3.5)));
}

/// A misc. load [kW] of power factor 0.6, whose imaginary power is 4/3 of the real one.
std::unique_ptr<CMiscLoad> Inductive(double kilowatts) {
    auto load = std::make_unique<CMiscLoad>();
    load->RunningRealPower(kilowatts * 1000.0);
    load->RunningPowerFactor(0.6);
    return load;
}

TEST(Designer, AStartTakesTheImaginaryPowerThatRunsAlready) {
    // 60 kW and 80 kVAR run when 30 kW and 40 kVAR start: the root of 90 and 120 squared is 150.
    EngineFixture fixture;
    fixture.AddStep().AddLoad(Inductive(60));
    fixture.AddStep().AddLoad(Inductive(30));
    const ProfileFigures figures = FiguresOf(fixture.profile, fixture.site);
    EXPECT_THAT(figures.steps[1].startKVAR, DoubleNear(120.0, 1e-9));
    EXPECT_THAT(figures.steps[1].startKVA, DoubleNear(150.0, 1e-9));
    EXPECT_THAT(figures.peakStartingKVA, DoubleNear(150.0, 1e-9));
}

std::unique_ptr<CLightLoad> Lights(double kilowatts, std::int32_t phase, std::int32_t ballastCode) {
    auto lights = std::make_unique<CLightLoad>();
    lights->RunningRealPower(kilowatts * 1000.0);
    lights->Phases(phase);
    lights->Ballast(ballastCode);
    return lights;
}

TEST(ProfileFigures, CountNonLinearLoadOnThePhaseThatItHangsOn) {
    // Ten computers of 300 W on B, lamps on A and C, and computers on A in a second step.
    EngineFixture fixture;
    auto computers = std::make_unique<COfficeLoad>();
    computers->NumPCs(10);
    computers->Phases(2);
    CLoadStep& first = fixture.AddStep();
    first.AddLoad(std::move(computers));
    first.AddLoad(Lights(1.0, 1, ballast::kHighEffMagnetic));
    first.AddLoad(Lights(2.0, 3, ballast::kElectronic));
    auto more = std::make_unique<COfficeLoad>();
    more->NumPCs(20);
    more->Phases(1);
    fixture.AddStep().AddLoad(std::move(more));
    const ProfileFigures figures = FiguresOf(fixture.profile, fixture.site);
    EXPECT_THAT(figures.steps[0].rect1P, ElementsAre(0.0, 3.0, 0.0));
    EXPECT_THAT(figures.steps[0].ballastMag, ElementsAre(1.0, 0.0, 0.0));
    EXPECT_THAT(figures.steps[0].ballastElec, ElementsAre(0.0, 0.0, 2.0));
    EXPECT_THAT(figures.steps[1].rect1P, ElementsAre(6.0, 3.0, 0.0));
    EXPECT_THAT(figures.steps[1].nonLinear, ElementsAre(7.0, 3.0, 2.0));
}

/// A load of 6 kW behind a six-pulse phase control, which none of the nine kinds has.
class PhaseControlled final : public Load {
  public:
    PhaseControlled() : Load({"test", "test"}) {}
    [[nodiscard]] std::unique_ptr<Load> Clone() const override {
        return std::make_unique<PhaseControlled>(*this);
    }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return 0; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override { return this == &other; }
    [[nodiscard]] std::string Summary() const override { return {}; }
    [[nodiscard]] double RunningRealPower() const override { return 6000.0; }
    [[nodiscard]] double RunningAppPower() const override { return 6000.0; }
    [[nodiscard]] double RunningImgPower() const override { return 0.0; }
    [[nodiscard]] double StartingRealPower() const override { return 6000.0; }
    [[nodiscard]] double StartingAppPower() const override { return 6000.0; }
    [[nodiscard]] double StartingImgPower() const override { return 0.0; }
    [[nodiscard]] double ThreePhaseSixPulsePPCRectPower() const override { return 6000.0; }
    [[nodiscard]] std::vector<std::string> GetProps() const override { return {}; }
};

TEST(ProfileFigures, ShareAPhaseControlAmongThePhases) {
    EngineFixture fixture;
    fixture.AddStep().AddLoad(std::make_unique<PhaseControlled>());
    const ProfileFigures figures = FiguresOf(fixture.profile, fixture.site);
    EXPECT_EQ(figures.steps[0].phaseCtrl6P, 6.0);
    EXPECT_THAT(figures.steps[0].nonLinear, ElementsAre(2.0, 2.0, 2.0));
}

std::vector<std::string> Models(const CDesigner& designer, bool rejected) {
    std::vector<std::string> models;
    const std::int32_t count = rejected ? designer.NumRejectedSets() : designer.NumChosenSets();
    models.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        models.push_back(rejected ? designer.SetModelNumRej(i) : designer.SetModelNum(i));
    }
    return models;
}

TEST(Designer, SortsSmallestFirstAndLargestFirstWithTiesInTheOrderOfTheDatabase) {
    EngineFixture fixture;
    fixture.AddKilowatts(100);
    fixture.gensets.rows = {
        MakeRow({.model = "A300", .rating = 300}), MakeRow({.model = "a50", .rating = 50}),
        MakeRow({.model = "B200", .rating = 200}), MakeRow({.model = "b70", .rating = 70}),
        MakeRow({.model = "C200", .rating = 200}), MakeRow({.model = "c70", .rating = 70}),
    };
    fixture.Run();
    EXPECT_THAT(Models(fixture.designer, false), ElementsAre("B200", "C200", "A300"));
    EXPECT_THAT(Models(fixture.designer, true), ElementsAre("b70", "c70", "a50"));
}

TEST(Designer, CutsTheListsToTheirLimits) {
    EngineFixture fixture;
    fixture.AddKilowatts(100);
    for (int i = 0; i < 17; ++i) {
        fixture.gensets.rows.push_back(MakeRow({.rating = 200.0 - i}));
    }
    for (int i = 0; i < 6; ++i) {
        fixture.gensets.rows.push_back(MakeRow({.rating = 10.0 + i}));
    }
    EXPECT_EQ(fixture.Run(), 16);
    EXPECT_EQ(fixture.designer.SetDeratedRating(15), 199.0);
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 5);
    EXPECT_EQ(fixture.designer.SetDeratedRatingRej(0), 15.0);
    EXPECT_EQ(fixture.designer.SetDeratedRatingRej(4), 11.0);
    fixture.designer.MaxSetsRecommended(0);
    EXPECT_EQ(fixture.Run(), 0);
    EXPECT_EQ(fixture.designer.NumRejectedSets(), 5);
}

TEST(Designer, ListsAreThoseThatSortingAllAndCuttingWouldGive) {
    EXPECT_TRUE(rc::check("bounded lists", [](const std::vector<std::uint8_t>& ratings, std::uint8_t limit) {
        EngineFixture fixture;
        fixture.AddKilowatts(100);
        std::vector<std::pair<double, std::string>> chosen;
        std::vector<std::pair<double, std::string>> rejected;
        std::vector<std::string> names(ratings.size());
        for (std::size_t i = 0; i < ratings.size(); ++i) {
            const double rating = 60.0 + ratings[i] % 80;  // many ties on both sides of 100
            names[i] = std::to_string(i);
            fixture.gensets.rows.push_back(MakeRow({.model = names[i].c_str(), .rating = rating}));
            (rating >= 100.0 ? chosen : rejected).emplace_back(rating, names[i]);
        }
        std::ranges::stable_sort(chosen, {}, &std::pair<double, std::string>::first);
        std::ranges::stable_sort(rejected, std::greater<>{}, &std::pair<double, std::string>::first);
        const auto cut = [&](const auto& all) {
            std::vector<std::string> models;
            for (std::size_t i = 0; i < std::min<std::size_t>(all.size(), limit % 8); ++i) {
                models.push_back(all[i].second);
            }
            return models;
        };
        fixture.designer.MaxSetsRecommended(limit % 8);
        fixture.designer.MaxSetsUndersized(limit % 8);
        fixture.Run();
        RC_ASSERT(Models(fixture.designer, false) == cut(chosen));
        RC_ASSERT(Models(fixture.designer, true) == cut(rejected));
    }));
}

TEST(Designer, ReadsEachDerateCodeAndAlternatorOnceARun) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows.assign(100, MakeRow({.rating = 100}));
    fixture.Run();
    EXPECT_EQ(fixture.gensets.derateQuestions, 1);
    EXPECT_EQ(fixture.gensets.alternatorQuestions, 1);
}

TEST(Designer, EndsTheRunAtAFieldThatCannotBeRead) {
    struct Case {
        const char* source;
        std::function<void(GensetRow&)> damage;
    };
    const std::vector<Case> cases{
        {"CDesigner::ChooseSets", [](GensetRow& row) { row.DerateCode = DbNumber(); }},
        {"CDesigner::NominalRating", [](GensetRow& row) { row.Ratings[3] = DbNumber::Unreadable(); }},
        {"CDesigner::ChooseSets", [](GensetRow& row) { row.LRkVA = DbNumber(); }},
        {"CDesigner::EngineStartingPower", [](GensetRow& row) { row.StartingPower = DbNumber(); }},
        {"CDesigner::ChooseSets", [](GensetRow& row) { row.AltModel = DbNumber(); }},
        {"CDesigner::ChooseSets", [](GensetRow& row) { row.GensetModel.AssignNull(); }},
        {"CDesigner::ChooseSets", [](GensetRow& row) { row.Fuel = DbNumber(); }},
    };
    for (const Case& row : cases) {
        EngineFixture fixture;
        fixture.AddKilowatts(50);
        fixture.gensets.rows = {MakeRow({.rating = 100})};
        row.damage(fixture.gensets.rows[0]);
        EXPECT_THAT([&] { fixture.Run(); }, Raises(13, row.source, "Type mismatch"));
    }
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    fixture.gensets.rows[0].Ratings[0] = DbNumber();  // not the column of the site's duty
    EXPECT_EQ(fixture.Run(), 1);
}

TEST(Designer, EndsTheRunAtAKeyThatLeadsNowhere) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 100, .alternator = 7})};
    EXPECT_THAT([&] { fixture.Run(); }, Raises(3021, "GensetDatabase", "no row"));
}

TEST(Designer, ReadersRefuseAPositionBeyondTheirListAndGiveCopies) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    fixture.Run();
    const CDesigner& designer = fixture.designer;
    designer.VoltageDips(0)[0] = 77.0;
    EXPECT_NE(designer.VoltageDips(0)[0], 77.0);
    EXPECT_EQ(designer.SetAltNum(0), "ALT");
    EXPECT_THAT([&] { (void)designer.SetModelNum(1); },
                Raises(9, "CDesigner::SetModelNum", "Subscript out of range"));
    EXPECT_THAT([&] { (void)designer.SetFuelType(-1); },
                Raises(9, "CDesigner::SetFuelType", "Subscript out of range"));
    EXPECT_THAT([&] { (void)designer.RejectionReason(0); },
                Raises(9, "CDesigner::RejectionReason", "Subscript out of range"));
}

TEST(Designer, VerdictsShowTheFiguresThatDecided) {
    EngineFixture fixture;
    fixture.AddKilowatts(120);
    fixture.gensets.rows = {MakeRow({.rating = 100})};
    fixture.Run();
    const auto verdicts = fixture.designer.VerdictsRej(0);
    ASSERT_EQ(verdicts.size(), 1U);
    std::int32_t reason = 0;
    for (std::size_t t = 0; t < kStepTests.size(); ++t) {
        reason |= verdicts[0][t].Fails() ? kStepTests[t].bit : 0;
        if (kStepTests[t].bit == rejection::kRating) {
            EXPECT_EQ(verdicts[0][t].needed, 120.0);
            EXPECT_EQ(verdicts[0][t].available, 100.0);
        }
    }
    EXPECT_EQ(reason, fixture.designer.RejectionReason(0));
}

struct DipCase {
    const char* what;
    std::int32_t siteDip;
    std::int32_t stepDip;
    std::function<void(CLoadStep&)> fill;
    std::int32_t allowed;
};

std::unique_ptr<CMtrLoad> Motor(bool firePump, bool loaded, std::int32_t method) {
    auto motor = std::make_unique<CMtrLoad>();
    motor->FirePump(firePump);
    motor->StartsLoaded(loaded);
    motor->StartingMethod(method);
    return motor;
}

TEST(StepMaxVoltageDip, IsLoweredByEachRuleInTurn) {
    const auto medical = [](std::int32_t dip) {
        auto load = std::make_unique<CMedEquipLoad>();
        load->MaxPeakDemandVoltDip(dip);
        return load;
    };
    const std::vector<DipCase> cases{
        {"nothing delicate", 35, 35, [](CLoadStep&) {}, 35},
        {"fire pump", 30, 35, [](CLoadStep& s) { s.AddLoad(Motor(true, false, 1)); }, 15},
        {"fire pump, step stricter", 30, 10, [](CLoadStep& s) { s.AddLoad(Motor(true, false, 1)); }, 10},
        {"loaded motor", 35, 35, [](CLoadStep& s) { s.AddLoad(Motor(false, true, 1)); }, 25},
        {"loaded motor on the 65 % tap", 35, 35, [](CLoadStep& s) { s.AddLoad(Motor(false, true, 3)); }, 15},
        {"unloaded motor on the 65 % tap", 35, 35, [](CLoadStep& s) { s.AddLoad(Motor(false, false, 3)); },
         35},
        {"site stricter", 20, 35, [](CLoadStep& s) { s.AddLoad(Motor(false, true, 1)); }, 20},
        {"medical", 35, 35,
         [&](CLoadStep& s) {
             s.AddLoad(medical(6));
             s.AddLoad(medical(4));
         },
         4},
        {"lax medical", 20, 35, [&](CLoadStep& s) { s.AddLoad(medical(30)); }, 20},
    };
    for (const DipCase& row : cases) {
        EngineFixture fixture;
        fixture.site.MaxVoltageDip(row.siteDip);
        CLoadStep& step = fixture.AddStep(row.stepDip);
        row.fill(step);
        EXPECT_EQ(StepMaxVoltageDip(step, fixture.site), row.allowed) << row.what;
    }
}

TEST(Designer, MoreKilovoltamperesNeverDipFurther) {
    EXPECT_TRUE(rc::check("dips fall with locked-rotor kVA", [](std::uint16_t kva, std::uint16_t more) {
        EngineFixture fixture;
        fixture.AddKilowatts(77);
        const double small = 1.0 + kva;
        fixture.gensets.rows = {MakeRow({.rating = 500, .startKVA35 = small}),
                                MakeRow({.rating = 501, .startKVA35 = small + more})};
        fixture.site.MaxVoltageDip(35);
        fixture.designer.MaxSetsUndersized(2);
        fixture.Run();
        std::vector<ChosenSet> all(fixture.designer.RejectedSets().begin(),
                                   fixture.designer.RejectedSets().end());
        all.insert(all.end(), fixture.designer.ChosenSets().begin(), fixture.designer.ChosenSets().end());
        RC_ASSERT(all.size() == 2U);
        std::ranges::sort(all, {}, &ChosenSet::StartKVA35);
        RC_ASSERT(all[1].MaxStepVoltDip <= all[0].MaxStepVoltDip);
    }));
}

}  // namespace
}  // namespace genvara
