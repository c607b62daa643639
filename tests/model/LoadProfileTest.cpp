#include "CLoadProfile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

#include "CBatChrgLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "CUPSLoad.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

std::unique_ptr<CMiscLoad> Misc(double watts, std::int32_t quantity = 1, std::int32_t phases = 0) {
    auto load = std::make_unique<CMiscLoad>();
    load->RunningRealPower(watts);
    load->Quantity(quantity);
    load->Phases(phases);
    return load;
}

std::vector<std::int32_t> IDs(const CLoadProfile& profile) {
    std::vector<std::int32_t> ids;
    for (const CLoadStep& step : profile) {
        ids.push_back(step.StepID());
    }
    return ids;
}

TEST(LoadProfile, InsertsAtPositionsAndNeverGivesAnIDTwice) {
    CLoadProfile profile;
    EXPECT_EQ(profile.AddLoadStep("a", 20, 0), 0);
    EXPECT_EQ(profile.AddLoadStep("b", 20, 1), 1);
    EXPECT_EQ(profile.AddLoadStep("c", 20, 3), 2);  // one beyond the last
    EXPECT_THAT(IDs(profile), testing::ElementsAre(1, 0, 2));
    EXPECT_EQ(profile.LoadStep(2).Description(), "a");
    for (const std::int32_t position : {-1, 5}) {
        EXPECT_THAT([&] { profile.AddLoadStep("d", 20, position); }, Raises(0x80040064, "", ""));
    }
    EXPECT_THAT([&] { profile.AddLoadStep("d", 4, 0); },
                Raises(0x80040001, "CLoadStep::MaxVoltageDipOverride", "Voltage dip override out of range."));
    EXPECT_EQ(profile.NumLoadSteps(), 3);
    profile.DeleteLoadStep(77);
    profile.DeleteLoadStep(0);
    EXPECT_THAT(IDs(profile), testing::ElementsAre(1, 2));
    profile.DeleteAllLoadSteps();
    EXPECT_EQ(profile.AddLoadStep("e", 20, 0), 3);
}

TEST(LoadProfile, FindsStepsByPositionAndID) {
    CLoadProfile profile;
    EXPECT_EQ(profile.LoadStepByID(0), nullptr);
    EXPECT_THAT([&] { (void)profile.LoadStepByID(-1); },
                Raises(0x80040064, "CLoadProfile::LoadStepByID", "Invalid load step ID."));
    for (const std::int32_t number : {0, 1}) {
        EXPECT_THAT([&] { (void)profile.LoadStep(number); },
                    Raises(0x80040064, "CLoadProfile::LoadStep", "Invalid load step number."));
    }
    const std::int32_t id = profile.AddLoadStep("a", 20, 0);
    EXPECT_EQ(profile.LoadStepByID(id), &profile.LoadStep(1));
}

TEST(LoadProfile, MovesSteps) {
    CLoadProfile profile;
    for (const char* text : {"a", "b", "c"}) {
        profile.AddLoadStep(text, 20, 0);
    }
    profile.RaiseLoadStep(1);
    EXPECT_THAT(IDs(profile), testing::ElementsAre(1, 0, 2));
    profile.LowerLoadStep(3);
    EXPECT_THAT(IDs(profile), testing::ElementsAre(1, 2, 0));
    profile.LowerLoadStep(1);
    EXPECT_THAT(IDs(profile), testing::ElementsAre(1, 2, 0));
    for (const std::int32_t number : {0, 4}) {
        EXPECT_THAT([&] { profile.RaiseLoadStep(number); },
                    Raises(0x80040064, "CLoadProfile::DeleteLoadStep", "Invalid load step number."));
        EXPECT_THAT([&] { profile.LowerLoadStep(number); },
                    Raises(0x80040064, "CLoadProfile::DeleteLoadStep", "Invalid load step number."));
    }
    EXPECT_THROW(profile.RaiseLoadStep(3), RaisedError);  // the last one has nowhere to go, and is lost
    EXPECT_THAT(IDs(profile), testing::ElementsAre(1, 2));
}

TEST(LoadStep, CountsAdditionsAndNotLoads) {
    CLoadStep step;
    for (std::int32_t i = 0; i < 257; ++i) {
        EXPECT_EQ(step.AddLoad(Misc(1)), i);
        if (i > 0) {
            step.DeleteLoad(i);
        }
    }
    EXPECT_EQ(step.NumLoads(), 1);
    EXPECT_THAT([&] { step.AddLoad(Misc(1)); },
                Raises(0x80040003, "CLoadStep::AddLoad", "Maximum number of loads per step exceeded."));
    EXPECT_THAT([&] { step.DeleteLoad(5); },
                Raises(0x80040002, "CLoadStep::DeleteLoad", "The load requested could not be found."));
    EXPECT_EQ(step.LoadItem(5), nullptr);
    EXPECT_EQ(step.LoadItem(0)->ID(), 0);
}

TEST(LoadStep, ChecksItsDip) {
    CLoadStep step;
    EXPECT_EQ(step.MaxVoltageDipOverride(), 0);
    step.MaxVoltageDipOverride(35);
    step.MaxVoltageDipOverride(5);
    for (const std::int32_t percent : {4, 36}) {
        EXPECT_THAT(
            [&] { step.MaxVoltageDipOverride(percent); },
            Raises(0x80040001, "CLoadStep::MaxVoltageDipOverride", "Voltage dip override out of range."));
    }
    EXPECT_EQ(step.MaxVoltageDipOverride(), 5);
}

TEST(LoadStep, TotalsByPhase) {
    CLoadStep step;
    step.AddLoad(Misc(3000, 2));
    EXPECT_EQ(step.TotalRunningRealPower(0), 6000);
    EXPECT_EQ(step.TotalRunningRealPower(1), 2000);
    step.AddLoad(Misc(500, 3, 2));
    EXPECT_EQ(step.TotalRunningRealPower(0), 7500);
    EXPECT_EQ(step.TotalRunningRealPower(1), 2000);
    EXPECT_EQ(step.TotalRunningRealPower(2), 3500);
    EXPECT_EQ(step.TotalStartingRealPower(3), 2000);
    EXPECT_EQ(step.TotalRunningImgPower(0), 0);
    EXPECT_EQ(step.TotalRunningApparentPower(0), 7500);
}

TEST(LoadStep, AddsHarmonicsWithoutTheQuantity) {
    CLoadStep step;
    auto ups = std::make_unique<CUPSLoad>();
    ups->OutputRating(100000);
    ups->Family(ups_family::kOnLine);
    ups->InputType(input_type::kSixPulse);
    ups->Quantity(4);
    const double power = ups->RunningRealPower();
    step.AddLoad(std::move(ups));
    EXPECT_EQ(step.TotalSixPulseRectPower(), power);
    EXPECT_EQ(step.TotalRunningRealPower(0), 4 * power);
}

TEST(LoadStep, AnswersItsQuestions) {
    CLoadStep step;
    EXPECT_FALSE(step.HasFirePump() || step.HasLoadedMotor() || step.HasMedicalImageLoad() ||
                 step.HasLoadedMotorWithTap65());
    EXPECT_EQ(step.GetSmallestMedicalDip(), 100);
    auto motor = std::make_unique<CMtrLoad>();
    motor->StartsLoaded(false);
    motor->StartingMethod(3);
    CMtrLoad& asked = *motor;
    step.AddLoad(std::move(motor));
    EXPECT_FALSE(step.HasLoadedMotorWithTap65());
    asked.StartsLoaded(true);
    EXPECT_TRUE(step.HasLoadedMotorWithTap65());
    EXPECT_TRUE(step.HasLoadedMotor());
    EXPECT_FALSE(step.HasFirePump());
    asked.FirePump(true);
    EXPECT_TRUE(step.HasFirePump());
    for (const std::int32_t dip : {15, 10, 12}) {
        auto medical = std::make_unique<CMedEquipLoad>();
        medical->MaxPeakDemandVoltDip(dip);
        step.AddLoad(std::move(medical));
    }
    EXPECT_TRUE(step.HasMedicalImageLoad());
    EXPECT_EQ(step.GetSmallestMedicalDip(), 10);
}

TEST(LoadStep, ListsItsProperties) {
    CLoadProfile profile;
    profile.AddLoadStep("Lights", 15, 0);
    CLoadStep& step = profile.LoadStep(1);
    auto load = std::make_unique<CMiscLoad>();
    load->RunningRealPower(8000);
    load->RunningPowerFactor(0.8);
    step.AddLoad(std::move(load));
    EXPECT_THAT(step.GetProps(),
                testing::ElementsAre("Step ID\t0", "Description\tLights", "Voltage Dip Override\t15",
                                     "Running kW\t8.000", "Running kVA\t10.000", "Starting kW\t8.000",
                                     "Starting kVA\t10.000"));
}

TEST(LoadStep, AFigureThatFailsTakesTheTotalWithIt) {
    CLoadStep step;
    step.AddLoad(Misc(1000));
    auto charger = std::make_unique<CBatChrgLoad>();
    charger->BatteryVoltage(1e300);
    charger->ChargeCurrent(1e300);
    step.AddLoad(std::move(charger));
    EXPECT_THAT([&] { (void)step.TotalRunningRealPower(0); },
                Raises(6, "CBatChrgLoad::RunningAppPower", "Overflow"));
}

TEST(LoadStep, PhasesAddUpToTheTotal) {
    EXPECT_TRUE(rc::check(
        "sum over the phases", [](const std::vector<std::pair<std::uint16_t, std::uint8_t>>& loads) {
            CLoadStep step;
            for (std::size_t i = 0; i < std::min<std::size_t>(loads.size(), 50); ++i) {
                step.AddLoad(Misc(loads[i].first, 1 + loads[i].second / 8, loads[i].second % 4));
            }
            const double total = step.TotalRunningRealPower(0);
            const double sum =
                step.TotalRunningRealPower(1) + step.TotalRunningRealPower(2) + step.TotalRunningRealPower(3);
            RC_ASSERT(std::abs(total - sum) <= 1e-9 * (1.0 + total));
        }));
}

}  // namespace
}  // namespace genvara
