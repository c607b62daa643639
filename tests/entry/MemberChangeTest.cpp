#include "MemberChange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "MotorCalculatorTables.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

using testing::DoubleNear;

constexpr double kRounding = 1e-9;

/// A three-phase site of 480 V with one step. Connection 3 has one phase, all others but 99 have three.
struct Project {
    CDefaults defaults;
    CProject project{defaults, [] { return DateTime{}; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    DesignLimits limits;
    PathRoots roots{project, site, profile, limits};
    EntryRules rules{.motors = {kMotors, kLetters, kMultipliers},
                     .phasesOf = [](std::int32_t code) -> std::optional<std::int32_t> {
                         return code == 99 ? std::nullopt : std::optional(code == 3 ? 1 : 3);
                     }};

    Project() {
        site.Voltage(kVoltage);
        profile.AddLoadStep("one", 20, 0);
    }
    template <typename Kind>
    Kind& Add(std::unique_ptr<Kind> load) {
        Kind& added = *load;
        profile.LoadStep(1).AddLoad(std::move(load));
        return added;
    }
    /// A motor of 50 hp with letter H and figures that nobody would work out.
    CMtrLoad& AddMotor() {
        auto motor = std::make_unique<CMtrLoad>();
        motor->HP(50);
        motor->RunningRealPower(40000);
        motor->RunningAppPower(50000);
        motor->CodeLetter("H");
        motor->StartingAppPower(333000);
        motor->StartingPF(0.44);
        motor->SolidStateCurrentLimit(250);
        return Add(std::move(motor));
    }
    void Set(const std::string& path, const std::string& value) {
        const PathTarget target = FollowPath(path, roots);
        ChangeMember(target, ParseValue(FactsOf(target), value), site, rules);
    }
    void SetLoad(const std::string& member, const std::string& value) {
        Set("Step[1].Load[1]." + member, value);
    }
};

TEST(MemberChange, AnotherSizeTakesItsUsualLetterAndItsStart) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("HP", "100");
    EXPECT_EQ(motor.HP(), 100);
    EXPECT_EQ(motor.CodeLetter(), "F");           // that of large motors, 5.3 kVA/hp
    EXPECT_EQ(motor.StartingAppPower(), 530000);  // 100 hp x 5.3 kVA/hp
    EXPECT_EQ(motor.StartingPF(), 0.4);
    EXPECT_THAT(motor.RunningRealPower(), DoubleNear(80000, kRounding));
    EXPECT_THAT(motor.RunningAppPower(), DoubleNear(100000, kRounding));
}

TEST(MemberChange, ASizeThatStandsChangesNothing) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("HP", "50");
    project.SetLoad("StartingMethod", "1");
    project.SetLoad("StartsLoaded", "true");
    project.SetLoad("CodeLetter", "H");
    EXPECT_EQ(motor.CodeLetter(), "H");
    EXPECT_EQ(motor.StartingAppPower(), 333000);
    EXPECT_EQ(motor.StartingPF(), 0.44);
}

TEST(MemberChange, AnotherLetterOrStarterGivesTheStartOfTheSizeThatStands) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("CodeLetter", "K");
    EXPECT_EQ(motor.StartingAppPower(), 450000);  // 50 hp x 9 kVA/hp
    EXPECT_EQ(motor.StartingPF(), 0.44);
    project.SetLoad("StartingMethod", "Wye-Delta");
    EXPECT_EQ(motor.StartingAppPower(), 148500);  // x 0.33
    EXPECT_EQ(motor.CodeLetter(), "K");
    EXPECT_EQ(motor.HP(), 50);
}

TEST(MemberChange, ASoftStarterHasItsOwnCurrentLimit) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("StartingMethod", "6");
    EXPECT_EQ(motor.StartingAppPower(), 125000);  // 250 % of 50 kVA, and not the 300 % of a new form
    project.SetLoad("SolidStateCurrentLimit", "200");
    EXPECT_EQ(motor.StartingAppPower(), 100000);
    project.SetLoad("CodeLetter", "A");
    EXPECT_EQ(motor.StartingAppPower(), 100000);  // 3 kVA/hp would be 150 kVA
    project.SetLoad("SolidStateCurrentLimit", "400");
    EXPECT_EQ(motor.StartingAppPower(), 150000);  // now the locked rotor is less
}

TEST(MemberChange, ALimitWithoutASoftStarterAndAFirePumpChangeNothingElse) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("SolidStateCurrentLimit", "200");
    project.SetLoad("FirePump", "true");
    project.SetLoad("Quantity", "3");
    project.SetLoad("Phases", "2");
    EXPECT_EQ(motor.SolidStateCurrentLimit(), 200);
    EXPECT_TRUE(motor.FirePump());
    EXPECT_EQ(motor.Phases(), 2);
    EXPECT_EQ(motor.StartingAppPower(), 333000);
    EXPECT_EQ(motor.StartingPF(), 0.44);
    EXPECT_EQ(motor.CodeLetter(), "H");
}

TEST(MemberChange, AnUnloadedStartHasALowerPowerFactorAndTheSameKVA) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("StartsLoaded", "false");
    EXPECT_THAT(motor.StartingPF(), DoubleNear(0.286, kRounding));  // 0.44 x 0.65
    EXPECT_EQ(motor.StartingAppPower(), 333000);
    project.SetLoad("StartsLoaded", "true");
    EXPECT_THAT(motor.StartingPF(), DoubleNear(0.44, kRounding));
    EXPECT_TRUE(motor.StartsLoaded());
}

TEST(MemberChange, ASizeOfAnUnloadedMotorHasAnUnloadedStart) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("StartsLoaded", "false");
    project.SetLoad("HP", "20");
    EXPECT_THAT(motor.StartingPF(), DoubleNear(0.26, kRounding));  // 0.4 x 0.65
}

TEST(MemberChange, AnotherEntryMethodBeginsAnewAndTheSizeBringsTheRest) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("StartingMethod", "Wye-Delta");
    project.SetLoad("DataEntryMethod", "1");
    EXPECT_EQ(motor.StartingMethod(), starting_method::kAcrossTheLine);
    project.SetLoad("RunningRealPower", "80000");  // of 100 hp
    EXPECT_EQ(motor.CodeLetter(), "F");
    EXPECT_EQ(motor.StartingAppPower(), 530000);
    project.SetLoad("DataEntryMethod", "0");
    project.SetLoad("StartingMethod", "Wye-Delta");
    project.SetLoad("HP", "200");
    EXPECT_EQ(motor.StartingAppPower(), 349800);  // 200 hp x 5.3 kVA/hp x 0.33
    EXPECT_EQ(motor.HP(), 200);
}

TEST(MemberChange, AmpsGiveASizeOnceBothAreThere) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    project.SetLoad("DataEntryMethod", "2");
    project.SetLoad("StartingAmps", "700");
    EXPECT_EQ(motor.StartingAppPower(), 333000);
    project.SetLoad("RunningAmps", "120");
    // 120 A x 480 V x root 3 = 99.766 kVA, as many hp, at 5.3 kVA/hp
    EXPECT_EQ(motor.CodeLetter(), "F");
    EXPECT_THAT(motor.StartingAppPower(), DoubleNear(528760, 10));
    EXPECT_EQ(motor.RunningAmps(), 120);
    EXPECT_EQ(motor.StartingAmps(), 700);
    project.SetLoad("Phases", "1");  // 57.6 kVA
    EXPECT_THAT(motor.StartingAppPower(), DoubleNear(305280, 10));
    EXPECT_EQ(motor.Phases(), 1);
}

TEST(MemberChange, WhatASetterRefusesLeavesTheLoadAsItWas) {
    Project project;
    CMtrLoad& motor = project.AddMotor();
    motor.CodeLetter("Z");  // which the list lacks, so that the form would have none to store
    EXPECT_THROW(project.SetLoad("StartingMethod", "5"), RaisedError);
    EXPECT_EQ(motor.StartingMethod(), starting_method::kAcrossTheLine);
    EXPECT_EQ(motor.StartingAppPower(), 333000);
}

TEST(MemberChange, ALampBringsItsBallastAndStartsWithWhatItRunsWith) {
    Project project;
    auto owned = std::make_unique<CLightLoad>();
    owned->RunningRealPower(4000);
    owned->StartingRealPower(5000);
    CLightLoad& lamp = project.Add(std::move(owned));
    project.SetLoad("LightType", "1");
    EXPECT_EQ(lamp.Ballast(), ballast::kHighEffMagnetic);
    project.SetLoad("RunningPowerFactor", "0.9");
    EXPECT_EQ(lamp.StartingPowerFactor(), 0.9);
    EXPECT_EQ(lamp.StartingRealPower(), 5000);
    project.SetLoad("RunningRealPower", "3000");
    EXPECT_EQ(lamp.StartingRealPower(), 3000);
    project.SetLoad("LightType", "0");
    EXPECT_EQ(lamp.Ballast(), ballast::kNone);
    EXPECT_EQ(lamp.RunningPowerFactor(), 1);
    EXPECT_EQ(lamp.StartingPowerFactor(), 1);
}

TEST(MemberChange, RectifiersFollowTheirConnection) {
    Project project;
    auto owned = std::make_unique<CUPSLoad>();
    owned->Family(ups_family::kOnLine);
    owned->InputType(input_type::kTwelvePulse);
    CUPSLoad& ups = project.Add(std::move(owned));
    project.SetLoad("Phases", "2");
    EXPECT_EQ(ups.Phases(), 2);
    EXPECT_EQ(ups.InputType(), input_type::kSinglePhase);
    project.SetLoad("Family", std::to_string(ups_family::kFastTransfer));
    EXPECT_EQ(ups.Phases(), 0);
    EXPECT_EQ(ups.InputType(), input_type::kSixPulse);
    project.SetLoad("Phases", "1");  // for which there is no fast transfer
    EXPECT_EQ(ups.Family(), ups_family::kOffLine);
}

TEST(MemberChange, DrivesAndChargersFollowTheirConnection) {
    Project project;
    project.profile.LoadStep(1).AddLoad(std::make_unique<CVFDLoad>(kMotors));
    project.profile.LoadStep(1).AddLoad(std::make_unique<CBatChrgLoad>());
    CLoadStep& step = project.profile.LoadStep(1);
    const auto& drive = dynamic_cast<const CVFDLoad&>(*step.begin());
    const auto& charger = dynamic_cast<const CBatChrgLoad&>(*std::next(step.begin()));
    project.SetLoad("Phases", "3");
    EXPECT_EQ(drive.InputType(), input_type::kSinglePhase);
    project.Set("Step[1].Load[2].ChargerType", "Industrial");
    project.Set("Step[1].Load[2].ChargerType", "Residential");
    EXPECT_EQ(charger.Phases(), 1);
    project.Set("Step[1].Load[2].Phases", "0");
    EXPECT_EQ(charger.ChargerType(), charger_type::kIndustrial);
}

TEST(MemberChange, AnAirConditionersNumberStandsForTheNextUnitWhereItMay) {
    Project project;
    auto owned = std::make_unique<CAirCondLoad>();
    owned->DataEntryMethod(aircond_entry::kTonnage);
    owned->Tonnage(30);
    CAirCondLoad& cooler = project.Add(std::move(owned));
    project.SetLoad("DataEntryMethod", "Compressor HP");
    EXPECT_EQ(cooler.HP(), 30);
    project.SetLoad("HP", "0.5");
    project.SetLoad("name", " ");
    EXPECT_EQ(cooler.name(), "<Air Conditioner>");
}

TEST(MemberChange, AConnectionBringsItsPhases) {
    Project project;
    project.Set("PowerSystem.ConnectCode", "3");
    EXPECT_EQ(project.site.Phases(), 1);
    project.Set("PowerSystem.ConnectCode", "99");
    EXPECT_EQ(project.site.Phases(), 1);
    project.Set("PowerSystem.ConnectCode", "1");
    EXPECT_EQ(project.site.Phases(), 3);
    project.site.Phases(1);
    project.Set("PowerSystem.Altitude", "100");
    EXPECT_EQ(project.site.Phases(), 1);
    project.Set("PowerSystem.Voltage", "416");
    EXPECT_EQ(project.site.Phases(), 3);
}

}  // namespace
}  // namespace genvara
