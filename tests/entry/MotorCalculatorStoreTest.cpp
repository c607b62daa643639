#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "MotorCalculatorTables.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

TEST(MotorCalculator, StoresWhatItShowsAndTellsTheFieldThatFailed) {
    MotorCalculator calculator = Calculator();
    CMtrLoad load;
    MotorCalculator::Field field{};
    EXPECT_THAT([&] { calculator.StoreInLoad(load, field); }, Raises(13, "EntryNumbers", "Type mismatch"));
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

TEST(MotorCalculator, StoresAmpsWithTheKVAThatTheyStandFor) {
    MotorCalculator calculator = Calculator(1);
    CMtrLoad load;
    MotorCalculator::Field field{};
    calculator.EntryMethodClicked(motor_entry::kAmps);
    calculator.PowerChanged("300");
    EXPECT_THAT([&] { calculator.StoreInLoad(load, field); }, Raises(13, "EntryNumbers", "Type mismatch"));
    EXPECT_EQ(field, MotorCalculator::Field::RunAmps);
    calculator.RunAmpsChanged("50");
    calculator.RunAmpsLeft();
    calculator.UnloadedClicked();
    (void)calculator.StartMethodClicked(kSolidState);
    calculator.SolidStateCurrentLimit(250);
    calculator.StoreInLoad(load, field);
    EXPECT_EQ(load.DataEntryMethod(), motor_entry::kAmps);
    EXPECT_EQ(load.StartingAmps(), 300.0);
    EXPECT_EQ(load.RunningAmps(), 50.0);
    EXPECT_EQ(load.HP(), -10.0);
    EXPECT_NEAR(load.RunningAppPower(), 24000, 1e-9);   // 50 A x 480 V
    EXPECT_NEAR(load.RunningRealPower(), 19200, 1e-9);  // x 0.8
    EXPECT_EQ(load.StartingAppPower(), 60000.0);        // 250 % of 24 kVA, below 24 hp x 5.3
    EXPECT_NEAR(load.StartingPF(), 0.26, 1e-12);
    EXPECT_FALSE(load.StartsLoaded());
    EXPECT_EQ(load.StartingMethod(), 6);
    EXPECT_EQ(load.SolidStateCurrentLimit(), 250);
    EXPECT_EQ(load.CodeLetter(), "F");
}

TEST(MotorCalculator, TellsWhichStoredFigureIsOutOfRange) {
    CMtrLoad load;
    MotorCalculator::Field field{};
    MotorCalculator kilowatts = Calculator();
    kilowatts.EntryMethodClicked(motor_entry::kRunningKW);
    kilowatts.PowerChanged("798.5");
    EXPECT_THAT([&] { kilowatts.StoreInLoad(load, field); },
                Raises(17, "CMtrLoad::RunningRealPower", "Running real power out of range."));
    EXPECT_EQ(field, MotorCalculator::Field::Power);
    kilowatts.PowerChanged("750");  // 937.5 kVA by these tables
    EXPECT_THAT([&] { kilowatts.StoreInLoad(load, field); },
                Raises(18, "CMtrLoad::RunningAppPower", "Running apparent power (VA) out of range."));
    EXPECT_EQ(field, MotorCalculator::Field::Power);
    MotorCalculator horsepower = Calculator();
    horsepower.PowerChanged("10");
    horsepower.StartingKVATyped("25000.1");
    EXPECT_THAT([&] { horsepower.StoreInLoad(load, field); },
                Raises(18, "CMtrLoad::StartingAppPower", "Starting apparent power (VA) out of range."));
    EXPECT_EQ(field, MotorCalculator::Field::StartingKVA);
    horsepower.StartingKVATyped("60");
    horsepower.CodeLetterClicked(-1);
    horsepower.StartingKVATyped("60");
    EXPECT_THAT([&] { horsepower.StoreInLoad(load, field); },
                Raises(19, "CMtrLoad::CodeLetter", "Code letter is invalid."));
    EXPECT_EQ(field, MotorCalculator::Field::None);
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

TEST(MotorCalculator, OpensAStoredLoadByItsEntryMethod) {
    CMtrLoad stored;
    stored.DataEntryMethod(motor_entry::kRunningKW);
    stored.RunningRealPower(8500);
    stored.CodeLetter("H");
    stored.StartingAppPower(55500);
    stored.StartingPF(0.33);
    stored.StartsLoaded(false);
    stored.FirePump(true);
    stored.Phases(2);
    MotorCalculator kilowatts({kMotors, kLetters, kMultipliers}, kVoltage, 3, EntryNumbers({.decimal = ","}));
    kilowatts.CurrentLoad(stored);
    EXPECT_EQ(kilowatts.State().entryMethod, motor_entry::kRunningKW);
    EXPECT_EQ(kilowatts.State().txtPower, "8,5");
    EXPECT_EQ(kilowatts.State().phases, 2);
    EXPECT_FALSE(kilowatts.State().loaded);
    EXPECT_TRUE(kilowatts.State().firePump);
    EXPECT_EQ(Letter(kilowatts), "H");
    EXPECT_EQ(kilowatts.State().txtStartingKVA, "55,5");  // across the line: what was stored
    EXPECT_EQ(kilowatts.State().txtStartingPF, "0,33");
    EXPECT_FALSE(kilowatts.StartMethodClicked(1));  // the entry method was changed on the way

    stored.DataEntryMethod(motor_entry::kAmps);
    stored.StartingAmps(70);
    stored.RunningAmps(12.5);
    stored.StartingMethod(2);
    MotorCalculator amps = Calculator();
    amps.CurrentLoad(stored);
    EXPECT_EQ(amps.State().txtPower, "70");
    EXPECT_EQ(amps.State().txtRunAmps, "12.5");
    EXPECT_EQ(amps.State().startMethodIndex, 1);
    EXPECT_EQ(amps.State().txtStartingKVA, "26.88");  // 12.5 A x 480 V = 6 kVA, x 7 of the H x 0.64
    EXPECT_EQ(amps.State().txtStartingPF, "0.33");
}

TEST(MotorCalculator, OpensWhatAForeignFileMayHold) {
    CMtrLoad stored;
    FillStored(stored, 9);
    stored.CodeLetter("V");  // not in the list
    MotorCalculator calculator = Calculator();
    calculator.CurrentLoad(stored);
    EXPECT_EQ(calculator.State().startMethodIndex, 0);
    EXPECT_EQ(calculator.State().codeLetterIndex, -1);
    EXPECT_EQ(calculator.State().txtStartingKVA, "55");
    stored.DataEntryMethod(7);
    MotorCalculator other = Calculator();
    other.CurrentLoad(stored);
    EXPECT_EQ(other.State().entryMethod, motor_entry::kHorsepower);
    EXPECT_EQ(other.State().txtPower, "");
}

TEST(MotorCalculator, LeavesTheMethodThatIsChosenForANumberThatStandsForNone) {
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t number : {kLeast, -1, 0, 7, kMost}) {
        CMtrLoad stored;
        FillStored(stored, number);
        MotorCalculator calculator = Calculator();
        calculator.CurrentLoad(stored);
        EXPECT_EQ(calculator.State().startMethodIndex, 0) << number;
    }
    for (std::int32_t number = 1; number <= 6; ++number) {
        CMtrLoad stored;
        FillStored(stored, number);
        MotorCalculator calculator = Calculator();
        calculator.CurrentLoad(stored);
        EXPECT_EQ(calculator.State().startMethodIndex, number - 1);
    }
}

}  // namespace
}  // namespace genvara
