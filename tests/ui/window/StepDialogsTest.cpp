// The dialogs of the load profile panel: a step is added and edited, the kind of a new load is picked.

#include <QLabel>
#include <QListWidget>
#include <QTest>

#include "EntryField.h"
#include "ProfileFixture.h"
#include "Texts.h"
#include "UpDown.h"
#include "frmAddLoad.h"

namespace genvara {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kDipTooHigh = "Load step voltage dip can not exceed\r\npower system voltage dip limit.";

class StepDialogs : public ProfileTest {
  protected:
    static EntryField& Field(QDialog& dialog, const char* name) { return Find<EntryField>(dialog, name); }
    static std::string Label(QDialog& dialog, const char* name) {
        return FromQt(WithoutMnemonic(Find<QLabel>(dialog, name).text()));
    }
    static UpDown::Range Bounds(QDialog& dialog, const char* name) {
        return Find<UpDown>(dialog, name).Bounds();
    }
    /// Opens the dialog of a button and acts in it; fails if it did not open.
    void In(const char* button, const std::function<void(QDialog&)>& act) {
        bool opened = false;
        InNextDialog([&](QDialog& dialog) {
            opened = true;
            QApplication::setActiveWindow(&dialog);
            act(dialog);
        });
        Click(Window(), button);
        EXPECT_TRUE(opened) << button;
    }
    /// OK is pressed, and refused with a failure's description.
    void ExpectRefused(QDialog& dialog, const std::string& description) {
        platform.Take();
        const EntryField& dip = Field(dialog, "txtDefaultMaxVoltDip");
        platform.during = {[&] { EXPECT_TRUE(dip.InError()) << "before the message opens"; }};
        Click(dialog, "cmdOK");
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, description);
        EXPECT_EQ(message.icon, MessageIcon::Stop);
        EXPECT_EQ(message.title, "ERROR");
        EXPECT_EQ(message.buttons, MessageButtons::Ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(dip.hasFocus());
    }
    /// OK is pressed, and refused by a sentence beside a field.
    void ExpectTold(QDialog& dialog, const char* name, const std::string& sentence) {
        platform.Take();
        Click(dialog, "cmdOK");
        EXPECT_TRUE(platform.Take().empty());
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(Field(dialog, name).InError());
        EXPECT_TRUE(Field(dialog, name).hasFocus());
        EXPECT_EQ(Field(dialog, name).statusTip().toStdString(), sentence);
    }
    /// OK is pressed, and the dip found too high for the system.
    void ExpectDipTooHigh(QDialog& dialog) {
        platform.Take();
        Click(dialog, "cmdOK");
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, kDipTooHigh);
        EXPECT_EQ(message.icon, MessageIcon::Exclamation);
        EXPECT_EQ(message.title, "");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(Field(dialog, "txtDefaultMaxVoltDip").InError());
        EntryField& dip = Field(dialog, "txtDefaultMaxVoltDip");
        EXPECT_TRUE(dip.hasFocus());
        EXPECT_EQ(dip.selectedText(), dip.text());
    }
};

TEST_F(StepDialogs, ANewStepStartsAtTheEndWithTheSystemsDip) {
    AddStep("A");
    AddStep("B");
    App().PowerSystem().MaxVoltageDip(18);
    In("cmdAddStep", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmAddStep");
        EXPECT_EQ(dialog.parentWidget(), &Window());
        EXPECT_EQ(dialog.windowTitle(), "Add Load Step");
        EXPECT_EQ(Label(dialog, "lblStepNumber"), "Step No.");
        EXPECT_EQ(Label(dialog, "lblMaxVoltDip"), "Max. Voltage Dip  (%)");
        EXPECT_EQ(Label(dialog, "lblDescription"), "Description");
        EXPECT_EQ(Label(dialog, "lblRange"), "( 5% - 18% )");
        EXPECT_EQ(Field(dialog, "txtStepNum").text(), "3");
        EXPECT_EQ(Bounds(dialog, "updStepNum").most, 3);
        EXPECT_EQ(Field(dialog, "txtDecription").text(), "Load Step #3");
        EXPECT_EQ(Field(dialog, "txtDefaultMaxVoltDip").text(), "18");
        EXPECT_EQ(Bounds(dialog, "updDefaultMaxVoltDip").least, 5);
        EXPECT_EQ(Bounds(dialog, "updDefaultMaxVoltDip").most, 18);
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdOK").text(), "OK");
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdCancel").text(), "Cancel");
        EXPECT_TRUE(Find<QPushButton>(dialog, "cmdOK").isDefault());
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_THAT(Shown(), ElementsAre("A:", "B:", "Load Step #3:"));
    EXPECT_EQ(Profile().LoadStep(3).MaxVoltageDipOverride(), 18);
    EXPECT_EQ(ProfileTree::StepID(Node(3)), Profile().LoadStep(3).StepID());
    EXPECT_EQ(Panel().SelectedStep(), 3);
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(StepDialogs, ANewStepTakesItsPlaceAmongTheOthers) {
    AddStep("A");
    AddStep("B");
    AddLoad(1, "a1");
    In("cmdAddStep", [&](QDialog& dialog) {
        Field(dialog, "txtStepNum").setText("1");
        Field(dialog, "txtDecription").setText("First");
        Field(dialog, "txtDefaultMaxVoltDip").setText("7");
        QTest::keyClick(&Field(dialog, "txtDefaultMaxVoltDip"), Qt::Key_Return);
    });
    EXPECT_THAT(Shown(), ElementsAre("First:", "A: a1", "B:"));
    EXPECT_EQ(Stored(), Shown());
    EXPECT_EQ(Profile().LoadStep(1).MaxVoltageDipOverride(), 7);
    Select(2, 1);
    EXPECT_EQ(Panel().SelectedStep(), 2);
}

TEST_F(StepDialogs, StepNumberZeroIsTheEnd) {
    AddStep("A");
    In("cmdAddStep", [&](QDialog& dialog) {
        Field(dialog, "txtStepNum").setText("0");
        Click(dialog, "cmdOK");
    });
    EXPECT_THAT(Shown(), ElementsAre("A:", "Load Step #2:"));
    EXPECT_EQ(Stored(), Shown());
    EXPECT_EQ(ProfileTree::StepID(Node(2)), Profile().LoadStep(2).StepID());
}

TEST_F(StepDialogs, AFailureToAddIsShownAndTheDialogStays) {
    AddStep("A");
    In("cmdAddStep", [&](QDialog& dialog) {
        for (const char* number : {"3", "99", "99999999999"}) {
            Field(dialog, "txtStepNum").setText(number);
            ExpectTold(dialog, "txtStepNum",
                       std::string("Step No.: ") + number + " is out of range. Enter 1 to 2.");
        }
        Field(dialog, "txtStepNum").setText("");
        ExpectTold(dialog, "txtStepNum", "Step No. is blank. Enter 1 to 2.");
        Field(dialog, "txtStepNum").setText("2");
        Field(dialog, "txtDefaultMaxVoltDip").setText("4");
        ExpectRefused(dialog, "Voltage dip override out of range.");
        Field(dialog, "txtDefaultMaxVoltDip").setText("");
        ExpectTold(dialog, "txtDefaultMaxVoltDip", "Max. Voltage Dip is blank. Enter 5 to 20 %.");
        Field(dialog, "txtDefaultMaxVoltDip").setText("99999999999");
        ExpectTold(dialog, "txtDefaultMaxVoltDip",
                   "Max. Voltage Dip: 99999999999 is out of range. Enter 5 to 20 %.");
        EXPECT_EQ(Profile().NumLoadSteps(), 1);
        EXPECT_THAT(Shown(), ElementsAre("A:"));
        Field(dialog, "txtDefaultMaxVoltDip").setText("5");
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Profile().NumLoadSteps(), 2);
    EXPECT_TRUE(platform.ends.empty());
}

TEST_F(StepDialogs, ADipAboveTheSystemsIsRefusedAndSelected) {
    In("cmdAddStep", [&](QDialog& dialog) {
        Field(dialog, "txtDefaultMaxVoltDip").setText("21");
        ExpectDipTooHigh(dialog);
        EXPECT_EQ(Profile().NumLoadSteps(), 0);
        Field(dialog, "txtDefaultMaxVoltDip").setText("20");
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Profile().NumLoadSteps(), 1);
}

TEST_F(StepDialogs, NumbersTakeDigitsOnly) {
    In("cmdAddStep", [&](QDialog& dialog) {
        for (const char* name : {"txtStepNum", "txtDefaultMaxVoltDip"}) {
            EntryField& field = Field(dialog, name);
            field.clear();
            platform.beeps = 0;
            QTest::keyClicks(&field, "1-.a,2");
            EXPECT_EQ(field.text(), "12") << name;
            EXPECT_EQ(platform.beeps, 4) << name;
        }
    });
}

TEST_F(StepDialogs, ArrowsStopAtTheBounds) {
    AddStep("A");
    In("cmdAddStep", [&](QDialog& dialog) {
        EntryField& number = Field(dialog, "txtStepNum");
        QTest::keyClick(&number, Qt::Key_Up);
        EXPECT_EQ(number.text(), "2");
        QTest::keyClick(&number, Qt::Key_Down);
        EXPECT_EQ(number.text(), "1");
        EntryField& dip = Field(dialog, "txtDefaultMaxVoltDip");
        QTest::keyClick(&dip, Qt::Key_Up);
        EXPECT_EQ(dip.text(), "20");
        dip.setText("5");
        QTest::keyClick(&dip, Qt::Key_Down);
        EXPECT_EQ(dip.text(), "5");
    });
}

TEST_F(StepDialogs, ACancelledStepIsNotAdded) {
    In("cmdAddStep", [&](QDialog& dialog) {
        Field(dialog, "txtDefaultMaxVoltDip").setText("99");
        Click(dialog, "cmdCancel");
        EXPECT_FALSE(dialog.isVisible());
    });
    In("cmdAddStep", [&](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(Profile().NumLoadSteps(), 0);
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(StepDialogs, AStepIsEditedInPlace) {
    AddStep("A");
    AddStep("B");
    Profile().LoadStep(2).MaxVoltageDipOverride(15);
    Select(2);
    In("cmdEdit", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Edit Load Step");
        EXPECT_EQ(dialog.parentWidget(), &Window());
        EXPECT_EQ(dialog.findChild<QWidget*>("txtStepNum"), nullptr);
        EXPECT_EQ(Label(dialog, "lblMaxVoltDip"), "Max. Voltage Dip  (%)");
        EXPECT_EQ(Label(dialog, "lblDescription"), "Description");
        EXPECT_EQ(Label(dialog, "lblRange"), "( 5% - 20% )");
        EXPECT_EQ(Field(dialog, "txtDefaultMaxVoltDip").selectedText(), "15");
        EXPECT_EQ(Bounds(dialog, "updDefaultMaxVoltDip").most, 20);
        EXPECT_EQ(Field(dialog, "txtDescription").text(), "B");
        Field(dialog, "txtDescription").setText("Pumps");
        Field(dialog, "txtDefaultMaxVoltDip").setText("10");
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_THAT(Shown(), ElementsAre("A:", "Pumps:"));
    EXPECT_EQ(Stored(), Shown());
    EXPECT_EQ(Profile().LoadStep(2).MaxVoltageDipOverride(), 10);
    EXPECT_THAT(Rows(), Contains("Voltage Dip Override=10"));
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(StepDialogs, AnEditThatIsRefusedChangesNothing) {
    AddStep("A");
    Select(1);
    In("cmdEdit", [&](QDialog& dialog) {
        Field(dialog, "txtDescription").setText("Pumps");
        Field(dialog, "txtDefaultMaxVoltDip").setText("21");
        ExpectDipTooHigh(dialog);
        Field(dialog, "txtDefaultMaxVoltDip").setText("4");
        ExpectRefused(dialog, "Voltage dip override out of range.");
        Click(dialog, "cmdCancel");
    });
    EXPECT_THAT(Stored(), ElementsAre("A:"));
    EXPECT_THAT(Shown(), ElementsAre("A:"));
    EXPECT_EQ(Profile().LoadStep(1).MaxVoltageDipOverride(), kSiteDip);
}

TEST_F(StepDialogs, KindsAreListedByTheirCodes) {
    AddStep("A");
    In("cmdAddLoad", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmAddLoad");
        EXPECT_EQ(dialog.parentWidget(), &Window());
        EXPECT_EQ(dialog.windowTitle(), "Add Load");
        EXPECT_EQ(Label(dialog, "lblAvailLoads"), "Available Loads");
        std::vector<std::string> kinds;
        auto& list = Find<QListWidget>(dialog, "lstLoads");
        for (int row = 0; row < list.count(); ++row) {
            kinds.push_back(list.item(row)->text().toStdString());
        }
        EXPECT_THAT(kinds, ElementsAre("Air Conditioning", "Battery Charger", "Lighting", "Medical Equipment",
                                       "Misc. Linear Load", "Motor", "Office Equipment", "UPS", "VFD"));
        EXPECT_FALSE(Find<QPushButton>(dialog, "cmdOK").isEnabled());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(4)).center());
        EXPECT_TRUE(Find<QPushButton>(dialog, "cmdOK").isEnabled());
    });
}

TEST_F(StepDialogs, TheFormOfThePickedKindAddsTheLoad) {
    AddStep("A");
    AddStep("B");
    Select(1);
    In("cmdAddLoad", [&](QDialog& dialog) {
        Find<QListWidget>(dialog, "lstLoads").setCurrentRow(load_type::kMiscellaneous);
        InNextDialog([&](QDialog& form) {
            EXPECT_EQ(form.objectName(), "frmMiscLoad");
            EXPECT_EQ(Find<EntryField>(form, "txtStepNum").text(), "1");
            Find<EntryField>(form, "txtName").setText("Heater");
            Find<EntryField>(form, "txtkW").setText("12");
            Click(form, "cmdOK");
            EXPECT_FALSE(form.isVisible());
        });
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_THAT(Shown(), ElementsAre("A: Heater", "B:"));
    EXPECT_EQ(Stored(), Shown());
    EXPECT_THAT(Rows(), Contains("Running kW=12.000"));
    EXPECT_TRUE(g_ProjectDirty);
}

TEST_F(StepDialogs, EachKindHasItsForm) {
    AddStep("A");
    const char* const forms[] = {"frmAirCondLoad", "frmChargerLoad", "frmLightLoad",
                                 "frmMedLoad",     "frmMiscLoad",    "frmMtrLoad",
                                 "frmOfficeLoad",  "frmUPSLoad",     "frmVFDLoad"};
    int row = 0;
    for (const char* name : forms) {
        In("cmdAddLoad", [&](QDialog& dialog) {
            Find<QListWidget>(dialog, "lstLoads").setCurrentRow(row);
            std::string opened;
            InNextDialog([&](QDialog& form) {
                opened = form.objectName().toStdString();
                Click(form, "cmdCancel");
            });
            Click(dialog, "cmdOK");
            EXPECT_EQ(opened, name);
        });
        ++row;
    }
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(StepDialogs, AFormThatIsCancelledClosesTheListWithoutALoad) {
    AddStep("A");
    In("cmdAddLoad", [&](QDialog& dialog) {
        Find<QListWidget>(dialog, "lstLoads").setCurrentRow(load_type::kMiscellaneous);
        InNextDialog([](QDialog& form) { Click(form, "cmdCancel"); });
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_THAT(Stored(), ElementsAre("A:"));
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(StepDialogs, AFormThatFailsAsksWhetherToGoOn) {
    frmAddLoad dialog(
        platform,
        [](std::int32_t loadType, QWidget*) {
            EXPECT_EQ(loadType, load_type::kMiscellaneous);
            throw RaisedError(91, "form", "Object variable not set");
        },
        &Window());
    dialog.show();
    Find<QListWidget>(dialog, "lstLoads").setCurrentRow(load_type::kMiscellaneous);
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
        platform.answers = {answer};
        Click(dialog, "cmdOK");
        const Message message = platform.TakeMessage();
        EXPECT_EQ(
            message.text,
            "Error #91\r\nCan not create the load.\r\nDo you want to try again or add a different load?");
        EXPECT_EQ(message.icon, MessageIcon::Question);
        EXPECT_EQ(message.buttons, MessageButtons::YesNo);
        EXPECT_EQ(message.title, "");
        EXPECT_EQ(dialog.isVisible(), answer == MessageAnswer::Yes);
    }
    EXPECT_TRUE(platform.ends.empty());
}

}  // namespace
}  // namespace genvara
