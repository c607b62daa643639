#include <gtest/gtest.h>

#include "MotorCalculatorTables.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

TEST(MotorCalculator, ChoosesTheUsualLetterOfTheSize) {
    // Both sides of each edge.
    const std::pair<const char*, const char*> cases[] = {
        {"15", "F"},   {"14.99", "G"}, {"7.5", "G"},  {"7.49", "H"}, {"5", "H"},    {"4.99", "J"}, {"3", "J"},
        {"2.99", "K"}, {"1.5", "K"},   {"1.49", "L"}, {"1", "L"},    {"0.99", "M"}, {"0.5", "M"}};
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

TEST(MotorCalculator, BringsTheFiguresBackWithASizeThatWasTakenOut) {
    for (const std::int32_t method : {motor_entry::kHorsepower, motor_entry::kRunningKW}) {
        MotorCalculator calculator = Calculator();
        calculator.EntryMethodClicked(method);
        calculator.PowerChanged("5");
        const std::string kVA = calculator.State().txtStartingKVA;
        EXPECT_EQ(kVA, method == motor_entry::kHorsepower ? "35.00" : "43.75");  // 5 x 7, 5 / 0.8 x 7
        calculator.PowerChanged("");
        EXPECT_EQ(calculator.State().txtStartingKVA, "");
        calculator.PowerChanged("5");
        EXPECT_EQ(calculator.State().txtStartingKVA, kVA);
        EXPECT_EQ(calculator.State().txtStartingPF, "0.4");
    }
}

TEST(MotorCalculator, SpeaksTheUsersDecimalSeparator) {
    MotorCalculator calculator({kMotors, kLetters, kMultipliers}, kVoltage, 3,
                               EntryNumbers({.decimal = ","}));
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
    calculator.SolidStateCurrentLimit(599);
    EXPECT_EQ(calculator.State().txtStartingKVA, "59.90");
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
    calculator.StartingPFTyped("0.35");
    calculator.UnloadedClicked();
    EXPECT_EQ(calculator.State().txtStartingPF, "0.2275");  // not rounded to two places
    calculator.LoadedClicked();
    EXPECT_EQ(calculator.State().txtStartingPF, "0.35");
    calculator.StartingPFTyped("");
    calculator.UnloadedClicked();
    EXPECT_EQ(calculator.State().txtStartingPF, "");
}

TEST(MotorCalculator, RoundsTheUsualPowerFactorBeforeItIsReduced) {
    const MotorConversions motors{.MotorHP = {1, 1000},
                                  .MotorRunningKW = {1, 1000},
                                  .MotorRunningKVA = {1, 1000},
                                  .MotorStartPF = {0.437, 0.437}};
    MotorCalculator calculator({motors, kLetters, kMultipliers}, kVoltage, 3, kPointed);
    calculator.UnloadedClicked();
    calculator.PowerChanged("10");
    EXPECT_EQ(calculator.State().txtStartingPF, "0.286");  // 0.44 x 0.65; 0.437 x 0.65 is 0.28405
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
    EXPECT_EQ(calculator.State().txtStartingKVA, "39.91");  // 4.988306 hp is a J: x 8
}

TEST(MotorCalculator, LeavesTheStartAloneWhileTheRunningAmpsAreBlank) {
    MotorCalculator calculator = Calculator();
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.StartingKVATyped("55");
    calculator.PowerChanged("70");
    calculator.PowerLeft();
    calculator.CodeLetterClicked(1);
    EXPECT_EQ(calculator.State().txtStartingKVA, "55");
    EXPECT_EQ(calculator.State().txtStartingPF, "");
    // The text was not remembered, and so leaving the field again works the start out.
    calculator.RunAmpsChanged("12");
    calculator.PowerLeft();
    EXPECT_EQ(calculator.State().txtStartingKVA, "59.86");  // as above
    // Now it is remembered: a value typed over the start stays when the field is left.
    calculator.StartingKVATyped("61");
    calculator.PowerLeft();
    EXPECT_EQ(calculator.State().txtStartingKVA, "61");
}

TEST(MotorCalculator, HoldsTheStartingAmpsAgainstTheRememberedRunningAmps) {
    MotorCalculator calculator = Calculator();
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged(" 12 ");
    calculator.RunAmpsLeft();  // the starting amps are still blank
    EXPECT_EQ(calculator.State().txtRunAmps, "12");
    EXPECT_EQ(calculator.State().txtStartingKVA, "");
    calculator.PowerChanged("70");
    EXPECT_EQ(calculator.State().txtStartingKVA, "59.86");
    calculator.RunAmpsLeft();  // remembers the 12
    calculator.PowerChanged("12");
    calculator.RunAmpsChanged("6");
    calculator.RunAmpsLeft();  // starting amps as the remembered running ones: nothing happens
    EXPECT_EQ(calculator.State().txtStartingKVA, "59.86");
    calculator.PowerChanged("13");
    EXPECT_EQ(calculator.State().txtStartingKVA, "39.91");
}

TEST(MotorCalculator, RecomputesATextOnlyOnce) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    calculator.StartingKVATyped("61");
    calculator.StartingPFTyped("0.3");
    calculator.PowerChanged(" 10 ");
    EXPECT_EQ(calculator.State().txtPower, "10");
    EXPECT_EQ(calculator.State().txtStartingKVA, "61");
    calculator.CodeLetterClicked(2);  // the letter that stands
    EXPECT_EQ(calculator.State().txtStartingKVA, "61");
    EXPECT_FALSE(calculator.StartMethodClicked(0));  // the method that stands
    EXPECT_EQ(calculator.State().txtStartingKVA, "61");
    calculator.PowerChanged("-1");  // no band: the letter stays
    EXPECT_EQ(Letter(calculator), "G");
}

TEST(MotorCalculator, WorksTheStartOutAnewWhenTheStartersDialogCloses) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    (void)calculator.StartMethodClicked(kSolidState);
    calculator.StartingKVATyped("44");
    calculator.AdvancedClosed();  // as by Cancel: the limit is the old one
    EXPECT_EQ(calculator.SolidStateCurrentLimit(), 300);
    EXPECT_EQ(calculator.State().txtStartingKVA, "30.00");
}

TEST(MotorCalculator, RefusesFiguresBeyondTheRange) {
    MotorCalculator calculator = Calculator();
    calculator.PowerChanged("10");
    const std::string huge = "1" + std::string(308, '0');  // 1E+308: a number, but six times it is none
    EXPECT_THAT([&] { calculator.PowerChanged(huge); },
                Raises(6, "MotorCalculator::UpdateStartingKVA", "Overflow"));
    EXPECT_EQ(calculator.State().txtStartingKVA, "60.00");
    calculator.StartingPFTyped("1.7E308");
    EXPECT_THAT([&] { calculator.LoadedClicked(); },
                Raises(6, "MotorCalculator::ChangeStartingPF", "Overflow"));
    EXPECT_EQ(calculator.State().txtStartingPF, "1.7E308");
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged(huge);
    EXPECT_THAT([&] { calculator.PowerChanged("70"); }, Raises(6, "MotorCalculator::KVAOfAmps", "Overflow"));
    EXPECT_EQ(calculator.State().txtStartingKVA, "");
}

TEST(MotorCalculator, TakesMultipliersByTheListAndLettersByTheTable) {
    const std::vector<double> few{1, 0.64};
    MotorCalculator calculator({kMotors, kLetters, few}, kVoltage, 3, kPointed);
    calculator.PowerChanged("10");
    EXPECT_THAT([&] { (void)calculator.StartMethodClicked(4); },
                Raises(9, "MotorCalculator::UpdateStartingKVA", "Subscript out of range"));
    EXPECT_FALSE(calculator.StartMethodClicked(0));
    const std::vector<CodeLetterRecord> noLetters;
    MotorCalculator empty({kMotors, noLetters, kMultipliers}, kVoltage, 3, kPointed);
    empty.PowerChanged("10");
    EXPECT_EQ(empty.State().codeLetterIndex, -1);
    EXPECT_EQ(empty.State().txtStartingKVA, "");
    EXPECT_EQ(empty.State().txtStartingPF, "0.4");
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
    EXPECT_EQ(calculator.State().phases, 0);
    EXPECT_EQ(calculator.State().txtStartingKVA, "4406.34");  // 480 x 1.7320508 x 5.3
    calculator.SinglePhaseClicked(2);
    EXPECT_EQ(calculator.State().phases, 2);
    EXPECT_EQ(calculator.State().txtStartingKVA, "2544.00");
    calculator.StartingKVATyped("2500");
    calculator.SinglePhaseClicked(3);  // another phase, the same factor
    EXPECT_EQ(calculator.State().phases, 3);
    EXPECT_EQ(calculator.State().txtStartingKVA, "2500");
}

TEST(MotorCalculator, TellsTheTwoRootsOfThreeApart) {
    MotorCalculator calculator = Calculator(1);
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged("18.0422");
    calculator.PowerChanged("100");
    calculator.ThreePhaseClicked();
    // By 1.73205 the click finds 14.9999964 hp, just short of an F; by the root the start is that of
    // 15.0000034 hp, x 6 of the G.
    EXPECT_EQ(Letter(calculator), "G");
    EXPECT_EQ(calculator.State().txtStartingKVA, "90.00");
    calculator.RunAmpsChanged("10000");
    calculator.PowerChanged("101");
    // 10000 A x 480 V x 1.7320508 / 1000 x 5.3 = 44063.373; by 1.73205 it would be 44063.352.
    EXPECT_EQ(calculator.State().txtStartingKVA, "44063.37");
}

TEST(MotorCalculator, LetsThePhasesAloneOutsideTheAmps) {
    MotorCalculator calculator = Calculator(1);
    calculator.PowerChanged("10");
    calculator.StartingKVATyped("61");
    calculator.ThreePhaseClicked();
    EXPECT_EQ(calculator.State().phases, 0);
    EXPECT_EQ(calculator.State().txtStartingKVA, "61");
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged("12");
    calculator.SinglePhaseClicked(1);  // the starting amps are blank
    EXPECT_EQ(calculator.State().txtStartingKVA, "");
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

TEST(MotorCalculator, TheClicksRootOfThreeIsNoSmallerThanItSays) {
    // 18.0423 A x 480 V x 1.73205 / 1000 = 15.0000795 hp, just an F; 5.3 x 15.0000865 by the root is 79.50.
    MotorCalculator calculator = Calculator(1);
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.RunAmpsChanged("18.0423");
    calculator.PowerChanged("100");
    calculator.ThreePhaseClicked();
    EXPECT_EQ(Letter(calculator), "F");
    EXPECT_EQ(calculator.State().txtStartingKVA, "79.50");
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

TEST(SolidStateLimit, KeepsToItsBounds) {
    EXPECT_EQ(ParseCurrentLimit("100", kPointed), 100);
    EXPECT_EQ(ParseCurrentLimit("600", kPointed), 600);
    EXPECT_EQ(ParseCurrentLimit("250,4", EntryNumbers({.decimal = ","})), 250);
    EXPECT_EQ(ParseCurrentLimit("250.4", EntryNumbers({.decimal = ","})), std::nullopt);
    for (const char* text : {"99", "601", "", " ", "abc", "-300", "99999999999"}) {
        EXPECT_EQ(ParseCurrentLimit(text, kPointed), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace genvara
