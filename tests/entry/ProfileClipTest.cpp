#include "ProfileClip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <utility>

#include "AllKindsOfLoad.h"
#include "MotorPower.h"
#include "RaisedError.h"

namespace genvara {
namespace {

class Clip : public testing::Test {
  protected:
    Clip() { Site().Voltage(400); }
    CLoadStep& Step(const char* description, std::int32_t dip) {
        m_profile.AddLoadStep(description, dip, 0);
        return m_profile.LoadStep(m_profile.NumLoadSteps());
    }
    CPwrSys& Site() { return m_site; }
    CLoadProfile& Profile() { return m_profile; }
    ProfileClip Read(const std::string& text, bool wholeSteps) {
        return ReadClip(text, wholeSteps, m_site, kCopyMotors);
    }
    /// What a read raises, or nothing.
    std::string Refusal(const std::string& text, bool wholeSteps = true) {
        try {
            (void)Read(text, wholeSteps);
            return "";
        } catch (const RaisedError& failure) {
            return failure.Description();
        }
    }

  private:
    CDefaults m_defaults;
    CPwrSys m_site{m_defaults};
    CLoadProfile m_profile;
};

/// A motor of 50 A, the powers of which follow from the site's voltage.
std::unique_ptr<CMtrLoad> MotorOfAmps(double volts) {
    auto motor = std::make_unique<CMtrLoad>();
    motor->name("Amps");
    motor->DataEntryMethod(motor_entry::kAmps);
    motor->RunningAmps(50);
    motor->StartingAmps(300);
    motor->StartingAppPower(90000);
    motor->StartingPF(0.4);
    RebuildPowers(*motor, volts, kCopyMotors);
    return motor;
}

TEST_F(Clip, CarriesAStepWithLoadsOfEveryKind) {
    CLoadStep& step = Step("Pumps & fans", 12);
    AddAllKinds(step);
    step.DeleteLoad(step.begin()->ID());
    for (Load& load : step) {
        RebuildPowers(load, Site().Voltage(), kCopyMotors);
    }
    const ProfileClip clip = ClipOf(step);
    EXPECT_TRUE(clip.wholeSteps);
    EXPECT_TRUE(Survives(clip, Site(), kCopyMotors));
    const ProfileClip read = Read(RenderClip(clip, Site()), true);
    ASSERT_EQ(read.steps.NumLoadSteps(), 1);
    EXPECT_TRUE(read.steps.LoadStep(1).HoldsSame(step));
    EXPECT_EQ(read.steps.LoadStep(1).MaxVoltageDipOverride(), 12);
    EXPECT_EQ(read.steps.LoadStep(1).begin()->ID(), 0) << "IDs are the new step's";
}

TEST_F(Clip, CarriesALoadAlone) {
    CLoadStep& step = Step("Pumps", 12);
    AddAllKinds(step);
    const Load& load = *step.LoadItem(3);
    const ProfileClip read = Read(RenderClip(ClipOf(load), Site()), false);
    EXPECT_FALSE(read.wholeSteps);
    ASSERT_EQ(read.steps.LoadStep(1).NumLoads(), 1);
    EXPECT_TRUE(read.steps.LoadStep(1).begin()->HoldsSame(load));
}

TEST_F(Clip, WorksPowersOutForTheSiteThatItComesTo) {
    const auto motor = MotorOfAmps(400);
    const std::string text = RenderClip(ClipOf(*motor), Site());
    EXPECT_NEAR(Read(text, false).steps.LoadStep(1).begin()->RunningAppPower(), 34641.0, 0.1);
    Site().Voltage(480);
    // 50 A x 480 V x 1.732051
    EXPECT_NEAR(Read(text, false).steps.LoadStep(1).begin()->RunningAppPower(), 41569.2, 0.1);
}

TEST_F(Clip, SaysThatALoadDoesNotSurvive) {
    auto motor = MotorOfAmps(400);
    EXPECT_TRUE(Survives(ClipOf(*motor), Site(), kCopyMotors));
    motor->RunningAppPower(34000.0);  // as of another voltage
    EXPECT_FALSE(Survives(ClipOf(*motor), Site(), kCopyMotors));
}

TEST_F(Clip, RefusesWhatHoldsNoLoads) {
    EXPECT_NE(Refusal(""), "");
    EXPECT_NE(Refusal("Pump\t12\n"), "");
    EXPECT_NE(Refusal("{}"), "");
    EXPECT_NE(Refusal(R"({"Format": "genvara-project", "Version": 2})"), "");
    const std::string nothing = R"({"Format": "genvara-project", "Version": 1, "LoadProfile": [)";
    EXPECT_EQ(Refusal(nothing + "]}"), "The clipboard holds no loads.");
    EXPECT_EQ(Refusal(nothing + "{}]}"), "") << "a step may be empty";
    EXPECT_EQ(Refusal(nothing + "{}]}", false), "The clipboard holds no loads.");
    EXPECT_EQ(Refusal(nothing + "{}, {}]}", false), "The clipboard holds no loads.");
}

TEST_F(Clip, DamagedTextIsRefusedOrRead) {
    CLoadStep& step = Step("Pumps", 12);
    AddAllKinds(step);
    const std::string whole = RenderClip(ClipOf(step), Site());
    std::mt19937 dice(20261122);
    int refused = 0;
    for (int round = 0; round < 400; ++round) {
        std::string text = whole;
        for (unsigned slip = 0; slip < 1 + dice() % 4; ++slip) {
            const std::size_t place = dice() % text.size();
            switch (dice() % 4) {
                case 0:
                    text[place] = static_cast<char>(dice() % 256);
                    break;
                case 1:
                    text.erase(place, dice() % 60);
                    break;
                case 2:
                    text.insert(place, text.substr(dice() % text.size(), dice() % 60));
                    break;
                default:
                    text.resize(place + 1);
                    break;
            }
        }
        refused += Refusal(text, round % 2 == 0).empty() ? 0 : 1;
    }
    EXPECT_GT(refused, 100);
}

TEST_F(Clip, ATableHasAHeadingAndARowForEachLoad) {
    CLoadStep& step = Step("Pumps", 12);
    auto heater = std::make_unique<CMiscLoad>();
    heater->name("Heater\tone");
    heater->Description("two\nlines");
    heater->RunningRealPower(1234.5);
    heater->RunningPowerFactor(0.8);
    heater->Quantity(3);
    heater->Phases(2);
    step.AddLoad(std::move(heater));
    auto bad = MotorOfAmps(400);
    bad->StartingPF(1.4);
    step.AddLoad(std::move(bad));
    // 3 x 1.2345 kW, / 0.8
    EXPECT_EQ(
        ClipTable(ClipOf(step), EntryNumbers(NumberSigns{.decimal = ","})),
        "Step\tKind\tName\tDescription\tQuantity\tPhases\tRunning kW\tRunning kVA\tStarting kW\tStarting "
        "kVA\n"
        "Pumps\tMiscellaneous\tHeater one\ttwo lines\t3\tB\t3,704\t4,629\t3,704\t4,629\n"
        "Pumps\tMotor\tAmps\t\t1\t3\t27,713\t34,641\t126,000\t90,000\n");
}

TEST_F(Clip, ACopyOfAStepComesWhereItBelongs) {
    CLoadStep& first = Step("A", 11);
    AddAllKinds(first);
    Step("B", 13);
    const std::int32_t id = AddCopy(Profile(), Profile().LoadStep(1), 2);
    EXPECT_EQ(id, 2);
    EXPECT_EQ(Profile().LoadStep(2).StepID(), 2);
    EXPECT_TRUE(Profile().LoadStep(2).HoldsSame(Profile().LoadStep(1)));
    EXPECT_EQ(Profile().LoadStep(3).Description(), "B");
}

}  // namespace
}  // namespace genvara
