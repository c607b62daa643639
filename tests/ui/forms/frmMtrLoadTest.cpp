#include "frmMtrLoad.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "ChoiceBox.h"
#include "FormsFixture.h"

/// The motors of the fixture run at 0.8 kW and 1 kVA a horsepower and start at 0.4; letter F is 5.3 kVA a
/// horsepower, G 6; the site has 480 V.
namespace genvara {
namespace {

constexpr const char* kWarning =
    "The genset voltage dip adds to the reduced voltage of the motor starter to reduce starting torque.";

class MotorForm : public FormsTest {
  protected:
    static std::string Letter(const QWidget& form) {
        return Find<ChoiceBox>(form, "cboCodeLetter").currentText().toStdString();
    }
    /// Chooses a row by hand.
    static void Choose(const QWidget& form, const char* name, int row) {
        auto& list = Find<ChoiceBox>(form, name);
        list.setCurrentIndex(row);
        emit list.activated(row);
    }
    static void Leave(const QWidget& form, const char* name) {
        QTest::keyClick(&Field(form, name), Qt::Key_Tab);
    }
    static std::string Caption(const QWidget& form, const char* name) {
        return Find<QLabel>(form, name).text().remove('&').toStdString();
    }
    std::unique_ptr<frmMtrLoad> NewOf(const char* horsepower) {
        auto form = New<frmMtrLoad>();
        Type(*form, "txtPower", horsepower);
        return form;
    }
};

TEST_F(MotorForm, OpensForHorsepowerAcrossTheLine) {
    const auto form = New<frmMtrLoad>();
    EXPECT_EQ(form->windowTitle(), "Motor Load");
    EXPECT_TRUE(IsOn(*form, "optHorsepower"));
    EXPECT_TRUE(IsOn(*form, "optLoaded"));
    EXPECT_FALSE(IsOn(*form, "chkFirePump"));
    EXPECT_FALSE(IsEnabled(*form, "cmdAdvanced"));
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboStartMethod").currentText(), "Across the Line");
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboStartMethod").count(), 6);
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboCodeLetter").count(), 8);
    EXPECT_EQ(Letter(*form), "");
    EXPECT_EQ(Caption(*form, "lblPower"), "Horsepower");
    EXPECT_FALSE(Field(*form, "txtRunAmps").isVisible());
    for (const char* name : {"txtPower", "txtRunAmps", "txtStartingKVA", "txtStartingPF"}) {
        EXPECT_EQ(TextOf(*form, name), "");
    }
    EXPECT_EQ(form->SolidStateCurrentLimit(), 300);
    EXPECT_TRUE(platform.asked.empty());
}

TEST_F(MotorForm, TheSizeGivesTheCodeLetterWhileItIsTyped) {
    const struct {
        const char* horsepower;
        const char* letter;
        const char* startingKVA;
    } rows[] = {{"15", "F", "79.50"},     // 15 x 5.3
                {"14.99", "G", "89.94"},  // 14.99 x 6
                {"1", "L", "10.00"},      // 1 x 10
                {"0.5", "M", "5.50"}};    // 0.5 x 11
    for (const auto& row : rows) {
        const auto form = NewOf(row.horsepower);
        EXPECT_EQ(Letter(*form), row.letter) << row.horsepower;
        EXPECT_EQ(TextOf(*form, "txtStartingKVA"), row.startingKVA) << row.horsepower;
        EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0.4") << row.horsepower;
    }
}

TEST_F(MotorForm, StoresAMotorByHorsepower) {
    const auto form = NewOf("25");
    Type(*form, "txtQty", "2");
    Click(*form, "optUnloaded");
    Click(*form, "chkFirePump");
    Click(*form, "cmdOK");
    EXPECT_TRUE(platform.asked.empty());
    const CMtrLoad* load = Added<CMtrLoad>();
    ASSERT_NE(load, nullptr);
    EXPECT_EQ(load->name(), "<Motor>");
    EXPECT_EQ(load->Quantity(), 2);
    EXPECT_EQ(load->Phases(), 0);
    EXPECT_EQ(load->DataEntryMethod(), motor_entry::kHorsepower);
    EXPECT_EQ(load->HP(), 25.0);
    EXPECT_DOUBLE_EQ(load->RunningRealPower(), 20000.0);   // 25 x 0.8 kW
    EXPECT_DOUBLE_EQ(load->RunningAppPower(), 25000.0);    // 25 x 1 kVA
    EXPECT_DOUBLE_EQ(load->StartingAppPower(), 132500.0);  // 25 x 5.3 kVA
    EXPECT_DOUBLE_EQ(load->StartingPF(), 0.26);            // 0.4 x 0.65
    EXPECT_EQ(load->CodeLetter(), "F");
    EXPECT_FALSE(load->StartsLoaded());
    EXPECT_TRUE(load->FirePump());
    EXPECT_EQ(load->StartingMethod(), starting_method::kAcrossTheLine);
    EXPECT_EQ(load->SolidStateCurrentLimit(), 300);
    EXPECT_EQ(load->RunningAmps(), kNotGiven);
}

TEST_F(MotorForm, StoresAMotorByRunningKilowatts) {
    const auto form = New<frmMtrLoad>();
    Click(*form, "optRunningKW");
    EXPECT_EQ(Caption(*form, "lblPower"), "Running kW");
    Type(*form, "txtPower", "8");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "60.00");  // 8 / 0.8 = 10 hp, x 6 of the G
    Click(*form, "cmdOK");
    const CMtrLoad* load = Added<CMtrLoad>();
    ASSERT_NE(load, nullptr);
    EXPECT_EQ(load->DataEntryMethod(), motor_entry::kRunningKW);
    EXPECT_DOUBLE_EQ(load->RunningRealPower(), 8000.0);
    EXPECT_DOUBLE_EQ(load->RunningAppPower(), 10000.0);
    EXPECT_EQ(load->HP(), kNotGiven);
}

TEST_F(MotorForm, StoresAMotorByAmps) {
    const struct {
        const char* phase;
        double runningVA;
        const char* startingKVA;
    } rows[] = {{"opt3Phase", 14549.226783, "87.30"},  // 17.5 A x 480 V x 1.7320508; x 6 of the G
                {"optPhaseB", 8400.0, "50.40"}};       // 17.5 A x 480 V; x 6
    for (const auto& row : rows) {
        const auto form = New<frmMtrLoad>();
        Click(*form, row.phase);
        Click(*form, "optAmps");
        EXPECT_EQ(Caption(*form, "lblPower"), "Starting Amps");
        EXPECT_TRUE(Field(*form, "txtRunAmps").isVisible());
        Type(*form, "txtPower", "105");
        EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "") << "the running amps are blank";
        Type(*form, "txtRunAmps", "17.5");
        Leave(*form, "txtRunAmps");
        EXPECT_EQ(TextOf(*form, "txtStartingKVA"), row.startingKVA);
        Click(*form, "cmdOK");
        const auto& load = dynamic_cast<const CMtrLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.DataEntryMethod(), motor_entry::kAmps);
        EXPECT_EQ(load.StartingAmps(), 105.0);
        EXPECT_EQ(load.RunningAmps(), 17.5);
        EXPECT_NEAR(load.RunningAppPower(), row.runningVA, 1e-5);
        EXPECT_NEAR(load.RunningRealPower(), row.runningVA * 0.8, 1e-5);
    }
}

TEST_F(MotorForm, EnterWorksOutTheRunningAmpsThatItDoesNotLeave) {
    const auto form = New<frmMtrLoad>();
    Click(*form, "optPhaseA");
    Click(*form, "optAmps");
    Type(*form, "txtPower", "105");
    Type(*form, "txtRunAmps", "17.5");
    QTest::keyClick(&Field(*form, "txtRunAmps"), Qt::Key_Return);
    ASSERT_NE(Added<CMtrLoad>(), nullptr);
    EXPECT_DOUBLE_EQ(Added<CMtrLoad>()->StartingAppPower(), 50400.0);  // as above
}

TEST_F(MotorForm, AMotorOfASinglePhaseSystemCountsItsAmpsOnce) {
    host.phases = 1;
    const auto form = New<frmMtrLoad>();
    Click(*form, "optAmps");
    Type(*form, "txtPower", "105");
    Type(*form, "txtRunAmps", "17.5");
    Leave(*form, "txtRunAmps");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "50.40");  // 17.5 A x 480 V = 8.4 hp, x 6
}

TEST_F(MotorForm, APhaseClickCountsTheAmpsAnew) {
    const auto form = New<frmMtrLoad>();
    Click(*form, "optAmps");
    Type(*form, "txtRunAmps", "17.5");
    Type(*form, "txtPower", "105");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "87.30");
    Click(*form, "optPhaseC");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "50.40");
    Click(*form, "opt3Phase");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "87.30");
}

TEST_F(MotorForm, WarnsOnceOfAReducedVoltage) {
    const auto form = NewOf("10");
    Choose(*form, "cboStartMethod", 0);
    EXPECT_TRUE(platform.Take().empty());
    Choose(*form, "cboStartMethod", 1);
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "38.40");  // 10 x 6 x 0.64
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, kWarning);
    EXPECT_EQ(message.title, "WARNING");
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    EXPECT_EQ(message.buttons, MessageButtons::Ok);
    Choose(*form, "cboStartMethod", 4);
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "19.80");  // 10 x 6 x 0.33
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(MotorForm, AChangeOfTheEntryMethodSilencesTheWarningAndEmptiesTheFields) {
    const auto form = NewOf("10");
    Click(*form, "optRunningKW");
    for (const char* name : {"txtPower", "txtRunAmps", "txtStartingKVA", "txtStartingPF"}) {
        EXPECT_EQ(TextOf(*form, name), "");
    }
    EXPECT_EQ(Letter(*form), "");
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboStartMethod").currentIndex(), 0);
    Choose(*form, "cboStartMethod", 3);
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(MotorForm, TheCodeLetterChangesTheStart) {
    const auto form = NewOf("10");
    Choose(*form, "cboCodeLetter", 0);
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "30.00");  // 10 x 3 of the A
}

TEST_F(MotorForm, LoadedAndUnloadedScaleTheStartingPowerFactor) {
    const auto form = NewOf("10");
    Click(*form, "optUnloaded");
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0.26");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "60.00");
    Click(*form, "optLoaded");
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0.4");
    Click(*form, "optLoaded");
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0.4") << "what is selected is not clicked again";
}

TEST_F(MotorForm, TypingOverTheSelectedPowerFactorDoesNotCountItsOldSeparator) {
    const auto form = NewOf("10");
    EntryField& factor = Field(*form, "txtStartingPF");
    factor.SelectAllText();
    QTest::keyClicks(&factor, ".35");
    EXPECT_EQ(factor.Content(), ".35");
    EXPECT_EQ(platform.beeps, 0);
    QTest::keyClicks(&factor, ".");
    EXPECT_EQ(factor.Content(), ".35");
    EXPECT_EQ(platform.beeps, 1);
    Type(*form, "txtStartingKVA", "77");
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CMtrLoad>(), nullptr);
    EXPECT_EQ(Added<CMtrLoad>()->StartingPF(), 0.35);
    EXPECT_EQ(Added<CMtrLoad>()->StartingAppPower(), 77000.0);
}

TEST_F(MotorForm, AKeyOverTheSelectedPowerFactorEmptiesItEvenIfItIsRefused) {
    const auto form = NewOf("10");
    EntryField& factor = Field(*form, "txtStartingPF");
    factor.SelectAllText();
    QTest::keyClicks(&factor, "x");
    EXPECT_EQ(factor.Content(), "");
    EXPECT_EQ(platform.beeps, 1);
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Value can not be blank.");
    EXPECT_TRUE(factor.InError());
}

TEST_F(MotorForm, AnEmptiedSizeEmptiesTheStart) {
    const auto form = NewOf("10");
    QTest::keyClick(&Field(*form, "txtPower"), Qt::Key_Backspace);
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "10.00");  // 1 hp x 10 of the L
    QTest::keyClick(&Field(*form, "txtPower"), Qt::Key_Backspace);
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "");
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "");
}

TEST_F(MotorForm, ANumberTooLargeToWorkWithEndsNothing) {
    const auto form = NewOf(std::string(308, '9').c_str());  // x 5.3 is beyond a double's range
    EXPECT_TRUE(platform.ends.empty());
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #15\r\nHorsepower out of range.");
    EXPECT_TRUE(form->isVisible());
}

TEST_F(MotorForm, TellsTheFieldThatFailed) {
    const struct {
        const char* method;
        const char* power;
        const char* runAmps;
        const char* startingKVA;
        const char* startingPF;
        const char* message;
        const char* field;
    } rows[] = {
        {"optHorsepower", "", "", "1", "1", "Value can not be blank.", "txtPower"},
        {"optHorsepower", "1000.5", "", "1", "1", "Error #15\r\nHorsepower out of range.", "txtPower"},
        {"optHorsepower", "0", "", "1", "1", "Error #15\r\nHorsepower out of range.", "txtPower"},
        {"optRunningKW", "798.1", "", "1", "1", "Error #17\r\nRunning real power out of range.", "txtPower"},
        {"optAmps", "1", "", "1", "1", "Value can not be blank.", "txtRunAmps"},
        // 1100 A x 480 V x 1.7320508 = 914.5 kVA of 731.6 kW
        {"optAmps", "1", "1100", "1", "1", "Error #18\r\nRunning apparent power (VA) out of range.",
         "txtPower"},
        {"optHorsepower", "10", "", "", "1", "Value can not be blank.", "txtStartingKVA"},
        {"optHorsepower", "10", "", "0", "1", "Error #18\r\nStarting apparent power (VA) out of range.",
         "txtStartingKVA"},
        {"optHorsepower", "10", "", "25000.1", "1", "Error #18\r\nStarting apparent power (VA) out of range.",
         "txtStartingKVA"},
        {"optHorsepower", "10", "", "1", "", "Value can not be blank.", "txtStartingPF"}};
    for (const auto& row : rows) {
        const auto form = New<frmMtrLoad>();
        Click(*form, row.method);
        Type(*form, "txtPower", row.power);
        Type(*form, "txtRunAmps", row.runAmps);
        Type(*form, "txtStartingKVA", row.startingKVA);
        Type(*form, "txtStartingPF", row.startingPF);
        Find<QPushButton>(*form, "cmdOK").setFocus();
        Type(*form, "txtStartingKVA", row.startingKVA);  // leaving the amps has worked them out
        Type(*form, "txtStartingPF", row.startingPF);
        Click(*form, "cmdOK");
        EXPECT_EQ(platform.TakeMessage().text, row.message) << row.field;
        EXPECT_TRUE(Field(*form, row.field).InError()) << row.message;
        EXPECT_TRUE(Field(*form, row.field).hasFocus()) << row.message;
        EXPECT_EQ(Step().NumLoads(), 0);
    }
}

TEST_F(MotorForm, AMissingCodeLetterLeadsToTheList) {
    const auto form = New<frmMtrLoad>();
    Type(*form, "txtPower", "10");
    Choose(*form, "cboCodeLetter", -1);
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #19\r\nCode letter is invalid.");
    EXPECT_TRUE(Find<ChoiceBox>(*form, "cboCodeLetter").hasFocus());
}

TEST_F(MotorForm, AChangeOfTheEntryMethodTakesTheErrorsAway) {
    const auto form = New<frmMtrLoad>();
    Click(*form, "cmdOK");
    EXPECT_TRUE(Field(*form, "txtPower").InError());
    Click(*form, "optAmps");
    EXPECT_FALSE(Field(*form, "txtPower").InError());
}

TEST_F(MotorForm, ShowsAStoredMotorOfEachEntryMethod) {
    CMtrLoad load;
    load.Phases(1);
    load.StartsLoaded(false);
    load.CodeLetter("K");
    load.FirePump(true);
    load.StartingAppPower(123456.0);
    load.StartingPF(0.333);
    load.HP(12.25);
    auto form = Edit<frmMtrLoad>(load);
    EXPECT_TRUE(IsOn(*form, "optPhaseA"));
    EXPECT_TRUE(IsOn(*form, "optUnloaded"));
    EXPECT_TRUE(IsOn(*form, "chkFirePump"));
    EXPECT_EQ(TextOf(*form, "txtPower"), "12.25");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "123.456");
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0.333");
    EXPECT_EQ(Letter(*form), "K");
    load.DataEntryMethod(motor_entry::kRunningKW);
    load.RunningRealPower(7654.0);
    form = Edit<frmMtrLoad>(load);
    EXPECT_TRUE(IsOn(*form, "optRunningKW"));
    EXPECT_EQ(TextOf(*form, "txtPower"), "7.654");
    load.DataEntryMethod(motor_entry::kAmps);
    load.StartingAmps(60.5);
    load.RunningAmps(11.0);
    form = Edit<frmMtrLoad>(load);
    EXPECT_TRUE(IsOn(*form, "optAmps"));
    EXPECT_EQ(TextOf(*form, "txtPower"), "60.5");
    EXPECT_EQ(TextOf(*form, "txtRunAmps"), "11");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "123.456");
    EXPECT_TRUE(platform.asked.empty());
}

TEST_F(MotorForm, OpeningAStoredStarterWorksTheStartOutByALimitOf300) {
    CMtrLoad load;
    load.HP(10.0);
    load.CodeLetter("G");
    load.StartingAppPower(50000.0);
    load.StartingMethod(starting_method::kSolidState);
    load.SolidStateCurrentLimit(500);
    const auto form = Edit<frmMtrLoad>(load);
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboStartMethod").currentText(), "Solid State");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "30.00");  // 300 % of 10 kVA, and not 50 kVA
    EXPECT_EQ(form->SolidStateCurrentLimit(), 500);
    EXPECT_TRUE(IsEnabled(*form, "cmdAdvanced"));
    EXPECT_TRUE(platform.asked.empty()) << "no warning of what is stored";
    Choose(*form, "cboStartMethod", 1);
    EXPECT_EQ(platform.TakeMessage().text, kWarning) << "the warning of this opening is still due";
}

/// A motor as the form stores it.
void Fill(CMtrLoad& load, std::int32_t method, double horsepower) {
    load.name("Pump");
    load.Quantity(3);
    load.DataEntryMethod(method);
    const double phaseFactor = load.Phases() == 0 ? std::sqrt(3.0) : 1.0;
    switch (method) {
        case motor_entry::kHorsepower:
            load.HP(horsepower);
            break;
        case motor_entry::kAmps:
            load.StartingAmps(horsepower * 6);
            load.RunningAmps(horsepower * 1000.0 / (480.0 * phaseFactor));
            break;
        default:
            break;
    }
    load.RunningRealPower(horsepower * 800.0);
    load.RunningAppPower(horsepower * 1000.0);
    load.CodeLetter("J");
    load.StartingAppPower(12345.0);
    load.StartingPF(0.31);
    load.SolidStateCurrentLimit(250);
}

TEST_F(MotorForm, OkAtOnceChangesNothing) {
    // Except the starting power of a method other than the first, which is worked out anew on opening; and
    // running powers that follow from the amps only to 15 digits, the figures being shown with as many.
    for (const std::int32_t phases : {0, 2}) {
        for (const std::int32_t method : {motor_entry::kHorsepower, motor_entry::kRunningKW}) {
            for (const double horsepower : {0.5, 1.0, 12.5, 1000.0 * 0.75}) {
                CMtrLoad load;
                load.Phases(phases);
                Fill(load, method, horsepower);
                ExpectOkChangesNothing<frmMtrLoad>(load);
            }
        }
        CMtrLoad load;
        load.Phases(phases);
        Fill(load, motor_entry::kAmps, 12.0);
        const auto form = Edit<frmMtrLoad>(load);
        Click(*form, "cmdOK");
        EXPECT_NEAR(load.RunningRealPower(), 9600.0, 1e-9);
        EXPECT_NEAR(load.RunningAppPower(), 12000.0, 1e-9);
        EXPECT_EQ(load.StartingAmps(), 72.0);
        EXPECT_EQ(load.StartingAppPower(), 12345.0);
    }
}

TEST_F(MotorForm, OkAtOnceWorksTheStartOfAStarterOutAnew) {
    CMtrLoad load;
    Fill(load, motor_entry::kHorsepower, 10.0);
    load.StartingMethod(starting_method::kAutotransformer65);
    const auto form = Edit<frmMtrLoad>(load);
    Click(*form, "cmdOK");
    EXPECT_EQ(load.StartingMethod(), starting_method::kAutotransformer65);
    EXPECT_DOUBLE_EQ(load.StartingAppPower(), 33800.0);  // 10 hp x 8 of the J x 0.4225
    EXPECT_EQ(load.SolidStateCurrentLimit(), 250);
}

}  // namespace
}  // namespace genvara
