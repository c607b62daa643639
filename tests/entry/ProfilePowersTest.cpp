#include "ProfilePowers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "CDefaults.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"

namespace genvara {
namespace {

/// 8 kW and 10 kVA running (6 kvar), 60 kVA starting at 0.5: 30 kW.
std::unique_ptr<CMtrLoad> Motor(const char* name, double startingPF = 0.5) {
    auto motor = std::make_unique<CMtrLoad>();
    motor->name(name);
    motor->HP(10.0);
    motor->RunningRealPower(8000.0);
    motor->RunningAppPower(10000.0);
    motor->StartingAppPower(60000.0);
    motor->StartingPF(startingPF);
    return motor;
}

std::unique_ptr<CMiscLoad> Heater(const char* name, double watts, double factor = 1.0) {
    auto heater = std::make_unique<CMiscLoad>();
    heater->name(name);
    heater->RunningRealPower(watts);
    heater->RunningPowerFactor(factor);
    return heater;
}

class ProfilePowers : public testing::Test {
  protected:
    CLoadStep& Step(const char* description) {
        m_profile.AddLoadStep(description, 20, 0);
        return m_profile.LoadStep(m_profile.NumLoadSteps());
    }
    CLoadProfile& Profile() { return m_profile; }
    CPwrSys& Site() { return m_site; }

  private:
    CDefaults m_defaults;
    CPwrSys m_site{m_defaults};
    CLoadProfile m_profile;
};

template <typename Row>
std::array<double, 4> Kilo(const Row& row) {
    std::array<double, 4> kilo{};
    for (const PowerKind kind : kPowerKinds) {
        kilo.at(static_cast<std::size_t>(kind)) = FigureOf(row, kind).power.value() / 1000.0;
    }
    return kilo;
}

TEST_F(ProfilePowers, ALoadCountsWithAllItsUnits) {
    auto motor = Motor("Pump");
    motor->Quantity(3);
    // 3 x 8, 3 x 10, 3 x 60 x 0.5, 3 x 60
    EXPECT_THAT(Kilo(static_cast<const Load&>(*motor)), testing::ElementsAre(24.0, 30.0, 90.0, 180.0));
}

TEST_F(ProfilePowers, AStepShowsItsTotals) {
    CLoadStep& step = Step("A");
    step.AddLoad(Motor("Pump"));
    step.AddLoad(Heater("Heater", 4000.0));
    const auto kilo = Kilo(step);
    EXPECT_DOUBLE_EQ(kilo[0], 12.0);
    // 12 kW and 6 kvar; and 34 kW beside the motor's 60 sqrt(3)/2 kvar
    EXPECT_DOUBLE_EQ(kilo[1], std::sqrt(180.0));
    EXPECT_DOUBLE_EQ(kilo[2], 34.0);
    EXPECT_NEAR(kilo[3], std::sqrt(34.0 * 34.0 + 2700.0), 1e-9);
}

TEST_F(ProfilePowers, TheSiteAddsUpRealAndImaginaryPowers) {
    Step("A").AddLoad(Motor("Pump"));
    Step("B").AddLoad(Heater("Heater", 16000.0));
    Step("empty");
    const auto kilo = Kilo(Profile());
    EXPECT_DOUBLE_EQ(kilo[0], 24.0);
    EXPECT_DOUBLE_EQ(kilo[1], std::sqrt(24.0 * 24.0 + 6.0 * 6.0)) << "and not 10 + 16";
    EXPECT_DOUBLE_EQ(kilo[2], 46.0);
    EXPECT_NEAR(kilo[3], std::sqrt(46.0 * 46.0 + 2700.0), 1e-9);
}

TEST_F(ProfilePowers, NothingDrawsNothing) {
    EXPECT_THAT(Kilo(Profile()), testing::Each(0.0));
    EXPECT_THAT(Kilo(Step("empty")), testing::Each(0.0));
    EXPECT_FALSE(LargestStartOf(Profile(), Site()));
}

TEST_F(ProfilePowers, WhatCannotBeWorkedOutNamesTheLoadAndTheStep) {
    Step("A").AddLoad(Heater("Heater", 2000.0));
    CLoadStep& step = Step("B");
    step.AddLoad(Motor("Pump"));
    const std::int32_t id = step.AddLoad(Motor("Chiller", 1.38));
    const Load& chiller = *step.LoadItem(id);
    for (const PowerKind kind : {PowerKind::RunningReal, PowerKind::RunningApparent}) {
        EXPECT_TRUE(FigureOf(chiller, kind).power);
        EXPECT_TRUE(FigureOf(step, kind).power);
        EXPECT_TRUE(FigureOf(Profile(), kind).power);
    }
    EXPECT_DOUBLE_EQ(FigureOf(chiller, PowerKind::StartingApparent).power.value(), 60000.0);
    EXPECT_FALSE(FigureOf(step, PowerKind::StartingApparent).power);
    EXPECT_EQ(FigureOf(step, PowerKind::StartingApparent).why,
              "Load \"Chiller\": Invalid procedure call or argument");
    EXPECT_EQ(FigureOf(Profile(), PowerKind::StartingApparent).why,
              "Step 2, \"B\": Load \"Chiller\": Invalid procedure call or argument");
    EXPECT_TRUE(FigureOf(Profile().LoadStep(1), PowerKind::StartingApparent).power);
}

TEST_F(ProfilePowers, APowerThatWasNotGivenIsNone) {
    CLoadStep& step = Step("A");
    auto motor = std::make_unique<CMtrLoad>();
    motor->name("Fan");
    motor->RunningAppPower(6250.0);
    motor->StartingAppPower(40000.0);
    motor->StartingPF(0.5);
    const std::int32_t id = step.AddLoad(std::move(motor));
    EXPECT_EQ(FigureOf(*step.LoadItem(id), PowerKind::RunningReal).why, "A power was not given.");
    EXPECT_DOUBLE_EQ(FigureOf(*step.LoadItem(id), PowerKind::RunningApparent).power.value(), 6250.0);
    for (const PowerKind kind : {PowerKind::RunningReal, PowerKind::RunningApparent}) {
        EXPECT_EQ(FigureOf(step, kind).why, "Load \"Fan\": A power was not given.");
        EXPECT_EQ(FigureOf(Profile(), kind).why, "Step 1, \"A\": Load \"Fan\": A power was not given.");
    }
    EXPECT_DOUBLE_EQ(FigureOf(step, PowerKind::StartingReal).power.value(), 20000.0);
}

TEST_F(ProfilePowers, FindsTheLargestStartOfALoad) {
    Site().Voltage(400);
    Step("A").AddLoad(Heater("Heater", 70000.0));
    CLoadStep& step = Step("B");
    auto pumps = Motor("Pumps");
    pumps->Quantity(2);
    step.AddLoad(std::move(pumps));
    step.AddLoad(Motor("Bad", 1.38));
    auto start = LargestStartOf(Profile(), Site());
    ASSERT_TRUE(start);
    EXPECT_EQ(start->name, "Pumps");
    EXPECT_DOUBLE_EQ(start->voltAmperes, 120000.0);
    EXPECT_NEAR(start->amperes, 173.205, 0.001);  // 120000 / (400 x 1.732051)

    auto lamp = Heater("Lamp", 150000.0);
    lamp->Phases(2);
    step.AddLoad(std::move(lamp));
    start = LargestStartOf(Profile(), Site());
    EXPECT_EQ(start->name, "Lamp");
    EXPECT_DOUBLE_EQ(start->amperes, 375.0);  // 150000 / 400
}

TEST_F(ProfilePowers, AreShownInKiloOrAsAQuestion) {
    const EntryNumbers numbers(NumberSigns{.decimal = "."});
    EXPECT_EQ(PowerText({.power = 1234.5}, 2, numbers), "1.23");
    EXPECT_EQ(PowerText({.power = 1234.5}, 3, numbers), "1.235") << "half away from zero";
    EXPECT_EQ(PowerText({.power = std::nullopt, .why = "Overflow"}, 2, numbers), "?");
}

TEST_F(ProfilePowers, PhasesAreThreeOrALetter) {
    CMiscLoad heater;
    for (const auto& [phases, text] :
         {std::pair{0, "3"}, std::pair{1, "A"}, std::pair{2, "B"}, std::pair{3, "C"}}) {
        heater.Phases(phases);
        EXPECT_EQ(PhasesText(heater), text);
    }
}

}  // namespace
}  // namespace genvara
