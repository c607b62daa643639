#include "MotorCalculator.h"

#include <gtest/gtest.h>

#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

// Tables with round figures: a motor of h hp runs at h x 0.8 kW and h x 1 kVA and starts at 0.4.
const MotorConversions kMotors{.MotorHP = {1, 10, 1000},
                               .MotorRunningKW = {0.8, 8, 800},
                               .MotorRunningKVA = {1, 10, 1000},
                               .MotorStartPF = {0.4, 0.4, 0.4}};
const std::vector<CodeLetterRecord> kLetters{{"A", 3}, {"F", 5.3}, {"G", 6},  {"H", 7},
                                             {"J", 8}, {"K", 9},   {"L", 10}, {"M", 11}};
const std::vector<double> kMultipliers{1, 0.64, 0.4225, 0.7, 0.33, 0.33};
constexpr std::int32_t kSolidState = 5;
constexpr std::int32_t kVoltage = 480;

MotorCalculator Calculator(std::int32_t systemPhases = 3) {
    return {MotorTables{kMotors, kLetters, kMultipliers}, kVoltage, systemPhases};
}

std::string Letter(const MotorCalculator& calculator) {
    const std::int32_t index = calculator.State().codeLetterIndex;
    return index < 0 ? "" : kLetters[static_cast<std::size_t>(index)].CodeLetter;
}

TEST(MotorCalculator, ChoosesTheUsualLetterOfTheSize) {
    const std::pair<const char*, const char*> cases[] = {{"15", "F"}, {"14.99", "G"}, {"7.5", "G"},
                                                         {"5", "H"},  {"3", "J"},     {"1.5", "K"},
                                                         {"1", "L"},  {"0.5", "M"}};
    for (const auto& [hp, letter] : cases) {
        MotorCalculator calculator = Calculator();
        calculator.PowerChanged(hp);
        EXPECT_EQ(Letter(calculator), letter) << hp;
    }
}

TEST(MotorCalculator, WorksTheStartOutWhileTheUserTypes) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    EXPECT_EQ(calculator.State().txtStartingKVA, "60.00");  // 10 hp x 6
    EXPECT_EQ(calculator.State().txtStartingPF, "0.4");
    calculator.CodeLetterClicked(3);
    EXPECT_EQ(calculator.State().txtStartingKVA, "70.00");
    calculator.PowerChanged("abc");
    EXPECT_EQ(calculator.State().txtStartingKVA, "70.00");
    calculator.PowerChanged(" ");
    EXPECT_EQ(calculator.State().txtStartingKVA, "");
    EXPECT_EQ(calculator.State().txtStartingPF, "");
}

TEST(MotorCalculator, SpeaksTheUsersDecimalSeparator) {
    MotorCalculator calculator({kMotors, kLetters, kMultipliers}, kVoltage, 3, ",");
    calculator.PowerChanged("7,5");
    EXPECT_EQ(calculator.State().txtStartingKVA, "45,00");
    EXPECT_EQ(calculator.State().txtStartingPF, "0,4");
}

TEST(MotorCalculator, ReducesTheStartByTheMethod) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    EXPECT_TRUE(calculator.StartMethodClicked(1));          // the first reduced-voltage starter warns
    EXPECT_EQ(calculator.State().txtStartingKVA, "38.40");  // 60 x 0.64
    EXPECT_FALSE(calculator.StartMethodClicked(2));
    EXPECT_EQ(calculator.State().txtStartingKVA, "25.35");  // 60 x 0.4225
    EXPECT_FALSE(calculator.State().advancedEnabled);
    EXPECT_FALSE(calculator.StartMethodClicked(kSolidState));
    EXPECT_TRUE(calculator.State().advancedEnabled);
    EXPECT_EQ(calculator.State().txtStartingKVA, "30.00");  // 300 % of 10 kVA, below 60
    calculator.SolidStateCurrentLimit(600);
    EXPECT_EQ(calculator.State().txtStartingKVA, "60.00");  // equal to the locked-rotor kVA
    calculator.CodeLetterClicked(0);
    EXPECT_EQ(calculator.State().txtStartingKVA, "30.00");  // 10 x 3 is the smaller
}

TEST(MotorCalculator, WarnsOnceAnOpeningAndNeverAfterAnotherEntryMethod) {
    MotorCalculator calculator = Calculator();
    EXPECT_FALSE(calculator.StartMethodClicked(0));
    EXPECT_TRUE(calculator.StartMethodClicked(4));
    EXPECT_FALSE(calculator.StartMethodClicked(0));
    EXPECT_FALSE(calculator.StartMethodClicked(4));
    MotorCalculator other = Calculator();
    other.EntryMethodClicked(motor_entry::kRunningKW);
    EXPECT_FALSE(other.StartMethodClicked(4));
}

TEST(MotorCalculator, ScalesThePowerFactorByTheLoadedChoice) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    calculator.UnloadedClicked();
    EXPECT_EQ(calculator.State().txtStartingPF, "0.26");  // 0.4 x 0.65
    EXPECT_EQ(calculator.State().txtStartingKVA, "60.00");
    calculator.LoadedClicked();
    EXPECT_EQ(calculator.State().txtStartingPF, "0.4");
    calculator.UnloadedClicked();
    calculator.PowerChanged("11");
    EXPECT_EQ(calculator.State().txtStartingPF, "0.26");
}

TEST(MotorCalculator, TakesRunningKilowatts) {
    MotorCalculator calculator = Calculator();
    calculator.EntryMethodClicked(motor_entry::kRunningKW);
    calculator.PowerChanged("8");  // 10 hp
    EXPECT_EQ(calculator.State().txtStartingKVA, "60.00");
    CMtrLoad load;
    MotorCalculator::Field field{};
    calculator.StoreInLoad(load, field);
    EXPECT_EQ(load.DataEntryMethod(), motor_entry::kRunningKW);
    EXPECT_NEAR(load.RunningRealPower(), 8000, 1e-9);
    EXPECT_NEAR(load.RunningAppPower(), 10000, 1e-9);
    EXPECT_EQ(load.CodeLetter(), "G");
}

TEST(MotorCalculator, WaitsForTheRunningAmps) {
    MotorCalculator calculator = Calculator();
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.PowerChanged("70");
    EXPECT_EQ(calculator.State().txtStartingKVA, "");
    calculator.RunAmpsChanged("12");
    calculator.RunAmpsLeft();
    // 12 A x 480 V x root of 3 / 1000 = 9.976613 kVA, hence hp, x 6.
    EXPECT_EQ(calculator.State().txtStartingKVA, "59.86");
    calculator.RunAmpsChanged("6");
    calculator.RunAmpsLeft();
    EXPECT_EQ(calculator.State().txtStartingKVA,
              "39.91");  // 4.988306 hp is a J: x 8
}

TEST(MotorCalculator, UsesAFixedRootOfThreeInTheClickOnly) {
    MotorCalculator calculator = Calculator(1);
    EXPECT_EQ(calculator.State().phases, 1);
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged("1000");
    calculator.PowerChanged("7000");
    // 1000 A x 480 V / 1000 = 480 kVA and hp, x 5.3.
    EXPECT_EQ(calculator.State().txtStartingKVA, "2544.00");
    calculator.ThreePhaseClicked();
    // The click decides the letter by 1.73205; the starting kVA takes the root: 480 x 1.7320508 x 5.3.
    EXPECT_EQ(calculator.State().txtStartingKVA, "4406.34");
    calculator.SinglePhaseClicked(2);
    EXPECT_EQ(calculator.State().phases, 2);
    EXPECT_EQ(calculator.State().txtStartingKVA, "2544.00");
}

TEST(MotorCalculator, TheClickDecidesTheLetterByItsOwnRootOfThree) {
    // 18.0422 A x 480 V: by 1.73205 that is 14.9999964 hp and the letter G, by the root of 3 15.0000034 hp,
    // which would be an F. The starting kVA takes the root: 15.0000034 x 6.
    MotorCalculator calculator = Calculator(1);
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged("18.0422");
    calculator.PowerChanged("100");
    calculator.ThreePhaseClicked();
    EXPECT_EQ(Letter(calculator), "G");
    EXPECT_EQ(calculator.State().txtStartingKVA, "90.00");
}

TEST(MotorCalculator, DoesNotRememberAStartingCurrentThatItCouldNotUse) {
    MotorCalculator calculator = Calculator();
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.PowerChanged("70");
    calculator.RunAmpsChanged("12");
    calculator.PowerLeft();
    EXPECT_EQ(calculator.State().txtStartingKVA, "59.86");  // as worked out above
}

TEST(MotorCalculator, ForgetsEverythingWithTheEntryMethod) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    (void)calculator.StartMethodClicked(kSolidState);
    calculator.EntryMethodClicked(motor_entry::kAmps);
    EXPECT_EQ(calculator.State().txtPower, "");
    EXPECT_EQ(calculator.State().txtStartingKVA, "");
    EXPECT_EQ(calculator.State().txtStartingPF, "");
    EXPECT_EQ(calculator.State().codeLetterIndex, -1);
    EXPECT_EQ(calculator.State().startMethodIndex, 0);
    EXPECT_FALSE(calculator.State().advancedEnabled);
}

TEST(MotorCalculator, StoresWhatItShowsAndTellsTheFieldThatFailed) {
    MotorCalculator calculator = Calculator();
    CMtrLoad load;
    MotorCalculator::Field field{};
    EXPECT_THAT([&] { calculator.StoreInLoad(load, field); },
                Raises(13, "MotorCalculator::StoreInLoad", "Type mismatch"));
    EXPECT_EQ(field, MotorCalculator::Field::Power);
    calculator.PowerChanged("10");
    calculator.StartingKVATyped("");
    EXPECT_THROW(calculator.StoreInLoad(load, field), RaisedError);
    EXPECT_EQ(field, MotorCalculator::Field::StartingKVA);
    calculator.StartingKVATyped("62.5");
    calculator.StartingPFTyped("x");
    EXPECT_THROW(calculator.StoreInLoad(load, field), RaisedError);
    EXPECT_EQ(field, MotorCalculator::Field::StartingPF);
    calculator.StartingPFTyped("0.5");
    calculator.FirePumpChecked(true);
    (void)calculator.StartMethodClicked(0);
    calculator.StoreInLoad(load, field);
    EXPECT_EQ(load.HP(), 10);
    EXPECT_NEAR(load.RunningRealPower(), 8000, 1e-9);
    EXPECT_NEAR(load.RunningAppPower(), 10000, 1e-9);
    EXPECT_EQ(load.StartingAppPower(), 62500);
    EXPECT_EQ(load.StartingPF(), 0.5);
    EXPECT_TRUE(load.FirePump());
    EXPECT_EQ(load.StartingMethod(), 1);
    EXPECT_EQ(load.SolidStateCurrentLimit(), 300);
    calculator.PowerChanged("2000");
    EXPECT_THAT([&] { calculator.StoreInLoad(load, field); },
                Raises(15, "CMtrLoad::HP", "Horsepower out of range."));
}

void FillStored(CMtrLoad& load, std::int32_t method) {
    load.HP(10);
    load.CodeLetter("H");
    load.StartingAppPower(55000);
    load.StartingPF(0.33);
    load.StartingMethod(method);
    load.SolidStateCurrentLimit(500);
}

TEST(MotorCalculator, OpensAStoredLoadAsItIs) {
    MotorCalculator calculator = Calculator();
    CMtrLoad stored;
    FillStored(stored, 1);
    calculator.CurrentLoad(stored);
    EXPECT_EQ(calculator.State().txtPower, "10");
    EXPECT_EQ(Letter(calculator), "H");
    EXPECT_EQ(calculator.State().txtStartingKVA, "55");
    EXPECT_EQ(calculator.State().txtStartingPF, "0.33");
    EXPECT_EQ(calculator.SolidStateCurrentLimit(), 500);
}

TEST(MotorCalculator, WorksTheStartOutAnewForAStoredReducedStarter) {
    MotorCalculator calculator = Calculator();
    CMtrLoad stored;
    FillStored(stored, 6);
    calculator.CurrentLoad(stored);
    EXPECT_EQ(calculator.State().txtStartingKVA, "30.00");  // by 300 %, not by the load's 500
    EXPECT_EQ(calculator.SolidStateCurrentLimit(), 500);
    EXPECT_TRUE(calculator.State().advancedEnabled);
    EXPECT_TRUE(calculator.StartMethodClicked(1));  // opening did not use the warning up
}

TEST(SolidStateLimit, KeepsToItsBounds) {
    EXPECT_EQ(ParseCurrentLimit("100"), 100);
    EXPECT_EQ(ParseCurrentLimit("600"), 600);
    for (const char* text : {"99", "601", "", "abc"}) {
        EXPECT_EQ(ParseCurrentLimit(text), std::nullopt) << text;
    }
    EXPECT_EQ(CurrentLimitBounds(), "( 100% - 600% )");
}

}  // namespace
}  // namespace genvara
