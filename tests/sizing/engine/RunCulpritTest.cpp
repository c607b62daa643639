#include "RunCulprit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <utility>

#include "CBatChrgLoad.h"
#include "CMedEquipLoad.h"
#include "CMtrLoad.h"
#include "EngineFixture.h"

namespace genvara {
namespace {

/// A medical load by its apparent powers [VA], running and at its peak, at unity power factor.
std::unique_ptr<Load> Medical(const char* name, double running, double peak) {
    auto load = std::make_unique<CMedEquipLoad>();
    load->name(name);
    load->ContVA(running);
    load->ContPowerFactor(1.0);
    load->PeakVA(peak);
    load->PeakPowerFactor(1.0);
    load->MaxPeakDemandVoltDip(99);
    return load;
}

std::unique_ptr<Load> Motor(const char* name, double startingPF) {
    auto load = std::make_unique<CMtrLoad>();
    load->name(name);
    load->RunningRealPower(10000.0);
    load->RunningAppPower(12000.0);
    load->StartingAppPower(50000.0);
    load->StartingPF(startingPF);
    return load;
}

/// A charger whose voltage is typed with the wrong sign.
std::unique_ptr<Load> NegativeCharger(const char* name, std::int32_t input, std::int32_t phases) {
    auto load = std::make_unique<CBatChrgLoad>();
    load->name(name);
    load->BatteryVoltage(-480.0);
    load->ChargeCurrent(100.0);
    load->ChargerInput(input);
    load->Phases(phases);
    return load;
}

/// A run with two sets, of which the second is the one with something else.
class RunCulpritTest : public testing::Test {
  protected:
    RunCulpritTest() {
        fixture.gensets.alternators[1] = MakeAlternator(1, 100.0, 480.0, 0.1);
        fixture.gensets.alternators[2] = MakeAlternator(2, 100.0, 480.0, 0.1);
        fixture.gensets.alternators[2].ModelNum.Assign("TN9-B");
        fixture.gensets.rows = {MakeRow({.model = "FIRST", .rating = 500.0}),
                                MakeRow({.model = "SECOND", .rating = 600.0, .alternator = 2})};
        fixture.AddKilowatts(50.0);
    }

    /// What a run is told to have failed for; "none" if it did not fail or nothing is to blame.
    std::string Culprit() {
        try {
            fixture.Run();
        } catch (const RaisedError& error) {
            const auto culprit =
                FindCulprit(error, fixture.profile, fixture.site, fixture.designer.StoppedAt());
            return culprit ? CulpritText(*culprit) : "none";
        }
        return "none";
    }

    GensetRow& Second() { return fixture.gensets.rows[1]; }

    EngineFixture fixture;
};

TEST_F(RunCulpritTest, IsNobodyWhereNothingFails) {
    EXPECT_EQ(Culprit(), "none");
    EXPECT_EQ(fixture.designer.StoppedAt(), std::nullopt);
}

TEST_F(RunCulpritTest, IsTheLoadWhoseFigureCannotBeWorkedOut) {
    fixture.AddStep().AddLoad(Motor("sound", 0.4));
    CLoadStep& third = fixture.AddStep();
    third.AddLoad(Motor("at the edge", 1.0));
    third.AddLoad(Motor("Pump", 1.2));
    third.AddLoad(Motor("another", 1.3));
    EXPECT_EQ(Culprit(), "the starting power factor of load 2 of step 3, \"Pump\"");
    EXPECT_EQ(fixture.designer.StoppedAt(), std::nullopt) << "no set had been tried";
}

TEST_F(RunCulpritTest, IsTheLoadThatRaisedThisErrorAndNoOther) {
    // The second load fails at its running power, which a run asks for first.
    CLoadStep& step = fixture.AddStep();
    step.AddLoad(Motor("Pump", 1.2));
    step.AddLoad(Medical("X-ray", 1e308, 1000.0));
    auto* medical = dynamic_cast<CMedEquipLoad*>(step.LoadItem(1));
    medical->ContPowerFactor(10.0);
    EXPECT_EQ(Culprit(), "the continuous demand and continuous power factor of load 2 of step 2, \"X-ray\"");
}

TEST_F(RunCulpritTest, HasNoNameWhereTheUserGaveNone) {
    fixture.AddStep().AddLoad(Motor("", 1.2));
    EXPECT_EQ(Culprit(), "the starting power factor of load 1 of step 2");
}

TEST_F(RunCulpritTest, IsALoneLoadOrTheLoadsTogetherWhereTheirSumIsNoNumber) {
    CLoadStep& step = fixture.AddStep();
    step.AddLoad(Medical("X-ray", 1.5e308, 1000.0));
    step.LoadItem(0)->Quantity(2);
    EXPECT_EQ(Culprit(), "the continuous demand of load 1 of step 2, \"X-ray\"");
    step.LoadItem(0)->Quantity(1);
    step.AddLoad(Medical("CT", 1.5e308, 1000.0));
    EXPECT_EQ(Culprit(), "the loads of step 2 together");
}

TEST_F(RunCulpritTest, IsTheLargestLoadThatStandsWhereAStartOnTopOfItIsNoNumber) {
    // The X-ray starts with little and runs with 1e160 VA, whose square is beyond all numbers.
    fixture.AddStep().AddLoad(Medical("X-ray", 1e160, 1000.0));
    fixture.AddStep().AddLoad(Motor("Pump", 0.4));
    EXPECT_EQ(Culprit(), "the continuous demand of load 1 of step 2, \"X-ray\"");
}

TEST_F(RunCulpritTest, IsTheNegativeLoadThatTheDistortionModelRefuses) {
    fixture.AddStep().AddLoad(NegativeCharger("three phases", charger_input::kSCR, 0));
    EXPECT_EQ(Culprit(), "the battery voltage of load 1 of step 2, \"three phases\"");
    fixture.profile.DeleteAllLoadSteps();
    fixture.AddKilowatts(50.0);
    fixture.AddStep().AddLoad(NegativeCharger("phase B", charger_input::kSCR, 2));
    EXPECT_EQ(Culprit(), "the battery voltage of load 1 of step 2, \"phase B\"");
}

TEST_F(RunCulpritTest, IsTheNegativeLoadWhoseDipHasNoValue) {
    fixture.AddStep().AddLoad(NegativeCharger("charger", charger_input::kFerroResonant, 0));
    EXPECT_EQ(Culprit(), "none") << "neither set has a curve";
    Second() = MakeRow({.baseFreqDipKW = 80.0, .expC = 1.5});
    EXPECT_EQ(Culprit(), "the battery voltage of load 1 of step 2, \"charger\"");
}

TEST_F(RunCulpritTest, IsTheSetThatTheRunStoppedAt) {
    const char* kSecond = "the set SECOND with the alternator TN9-B, row 20 of [Gensets]";
    Second().LRkVA = DbNumber::Unreadable();
    EXPECT_EQ(Culprit(), kSecond);
    Second().LRkVA = DbNumber(1000.0);
    EXPECT_EQ(Culprit(), "none");
    Second().DerateCode = DbNumber(77);
    EXPECT_EQ(Culprit(), kSecond);
    Second().DerateCode = DbNumber(1);
    fixture.gensets.alternators[2].SubtransReact = DbNumber(0.0);
    EXPECT_EQ(Culprit(), kSecond);
    fixture.gensets.rowsAreNumbered = false;
    EXPECT_EQ(Culprit(), "the set SECOND with the alternator TN9-B");
}

TEST_F(RunCulpritTest, NamesOfASetWhatCanBeRead) {
    Second().AltModel = DbNumber(99);
    EXPECT_EQ(Culprit(), "the set SECOND with the alternator 99, row 20 of [Gensets]");
    Second().AltModel = DbNumber();
    EXPECT_EQ(Culprit(), "the set SECOND, row 20 of [Gensets]");
    Second().GensetModel.AssignNull();
    EXPECT_EQ(Culprit(), "the set without a model, row 20 of [Gensets]");
}

TEST_F(RunCulpritTest, IsNoSetWhereATableCannotBeRead) {
    Second().AltModel = DbNumber(99);
    EXPECT_NE(Culprit(), "none");
    const SetAtFault second{.model = "SECOND", .alternator = "99", .row = 20};
    const auto blamed = [&](std::int32_t number, const char* source) {
        return FindCulprit(RaisedError(number, source, ""), fixture.profile, fixture.site, second)
            .has_value();
    };
    EXPECT_TRUE(blamed(3021, "GensetDatabase")) << "a key without a row";
    EXPECT_FALSE(blamed(1, "GensetDatabase")) << "no such table";
    EXPECT_TRUE(blamed(1, "CDesigner::ReadAlternator"));
}

TEST_F(RunCulpritTest, IsForgottenByTheNextRun) {
    Second().LRkVA = DbNumber::Unreadable();
    EXPECT_NE(Culprit(), "none");
    Second().LRkVA = DbNumber(1000.0);
    fixture.designer.SelectGensets();
    EXPECT_EQ(fixture.designer.StoppedAt(), std::nullopt);
}

TEST_F(RunCulpritTest, IsTheMotorWhoseTorqueAReportCannotWorkOut) {
    auto motor = Motor("Pump", 0.4);
    auto& soft = dynamic_cast<CMtrLoad&>(*motor);
    soft.StartingMethod(starting_method::kSolidState);
    soft.SolidStateCurrentLimit(0);
    fixture.AddStep().AddLoad(std::move(motor));
    EXPECT_EQ(Culprit(), "none") << "a run does not ask for it";
    const auto culprit = FindCulprit(RaisedError(11, "CMtrLoad::StartingTorque", "Division by zero"),
                                     fixture.profile, fixture.site);
    ASSERT_TRUE(culprit);
    EXPECT_EQ(CulpritText(*culprit),
              "the current limit of the solid-state starter of load 1 of step 2, \"Pump\"");
}

TEST_F(RunCulpritTest, IsNobodyOfThoseForAFailureOfTheDatabase) {
    EXPECT_EQ(FindCulprit(RaisedError(11, "GensetDatabase", "database disk image is malformed"),
                          fixture.profile, fixture.site),
              std::nullopt);
}

TEST(RunCounts, TellWhatBecameOfEachCandidate) {
    EngineFixture fixture;
    fixture.AddKilowatts(50.0);
    fixture.designer.MinLoading(30);
    fixture.designer.MaxSetsRecommended(1);
    // 50 kW load 100 and 150 kW with 50 and 33 %, and 200, 300 and 400 kW below 30 %; 40 kW are too small.
    for (const double rating : {40.0, 100.0, 150.0, 200.0, 300.0, 400.0}) {
        fixture.gensets.rows.push_back(MakeRow({.rating = rating}));
    }
    fixture.Run();
    const RunCounts& counts = fixture.designer.Counts();
    EXPECT_EQ(counts.Candidates(), 6);
    EXPECT_EQ(counts.undersized, 1);
    EXPECT_EQ(counts.recommended, 2) << "before the list is cut";
    EXPECT_EQ(counts.underloaded, 3);
    fixture.gensets.rows.clear();
    fixture.Run();
    EXPECT_EQ(fixture.designer.Counts().Candidates(), 0);
}

}  // namespace
}  // namespace genvara
