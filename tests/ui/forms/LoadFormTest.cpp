#include "LoadForm.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "CMiscLoad.h"
#include "ErrorNumbers.h"
#include "FormsFixture.h"
#include "frmMiscLoad.h"

namespace genvara {
namespace {

/// What the forms of all kinds share, at the plainest of them.
class LoadFormSkeleton : public FormsTest {
  protected:
    std::unique_ptr<frmMiscLoad> NewFilled() {
        auto form = New<frmMiscLoad>();
        Type(*form, "txtkW", "12.5");
        return form;
    }
};

TEST_F(LoadFormSkeleton, OpensForANewLoadOfTheSelectedStep) {
    host.step = 2;
    const auto form = New<frmMiscLoad>();
    EXPECT_EQ(form->windowTitle(), "Misc. Linear Load");
    EXPECT_EQ(form->objectName(), "frmMiscLoad");
    EXPECT_EQ(TextOf(*form, "txtStepNum"), "2");
    EXPECT_EQ(TextOf(*form, "txtQty"), "1");
    EXPECT_EQ(TextOf(*form, "txtName"), "");
    EXPECT_EQ(TextOf(*form, "txtDecription"), "");
    EXPECT_FALSE(Field(*form, "txtStepNum").isReadOnly());
    EXPECT_TRUE(Field(*form, "txtQty").hasFocus());
    EXPECT_EQ(Field(*form, "txtQty").selectedText(), "1");
    EXPECT_EQ(Field(*form, "txtStepNum").toolTip(), "Load Step Number");
    EXPECT_EQ(Field(*form, "txtQty").toolTip(), "Number of Identical Loads");
    EXPECT_EQ(Field(*form, "txtName").toolTip(), "Brief Name of Load");
    EXPECT_EQ(Field(*form, "txtDecription").toolTip(), "Detailed Description of Load");
    EXPECT_FALSE(host.changed);
}

TEST_F(LoadFormSkeleton, AWindowThatTellsNoStepLeavesBothNumbersBlank) {
    host.stepFails = RaisedError(91, "panLoadProfile", "No selection");
    const auto form = New<frmMiscLoad>();
    EXPECT_EQ(TextOf(*form, "txtStepNum"), "");
    EXPECT_EQ(TextOf(*form, "txtQty"), "");
    EXPECT_TRUE(Field(*form, "txtStepNum").hasFocus());
    EXPECT_TRUE(IsOn(*form, "opt3Phase"));
    EXPECT_EQ(TextOf(*form, "txtPF"), "1.00");
}

TEST_F(LoadFormSkeleton, OffersThePhasesThatTheSiteHas) {
    const struct {
        std::int32_t phases;
        bool three;
    } rows[] = {{3, true}, {1, false}, {0, false}};
    for (const auto& row : rows) {
        host.phases = row.phases;
        const auto form = New<frmMiscLoad>();
        EXPECT_EQ(IsEnabled(*form, "opt3Phase"), row.three);
        EXPECT_TRUE(IsEnabled(*form, "optPhaseA"));
        EXPECT_EQ(IsEnabled(*form, "optPhaseB"), row.three);
        EXPECT_EQ(IsEnabled(*form, "optPhaseC"), row.three);
        EXPECT_EQ(IsOn(*form, "opt3Phase"), row.three);
        EXPECT_EQ(IsOn(*form, "optPhaseA"), !row.three);
    }
}

TEST_F(LoadFormSkeleton, OkAddsTheLoadShowsItAndMarksTheProject) {
    host.step = 2;
    const auto form = NewFilled();
    Click(*form, "cmdOK");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Step(1).NumLoads(), 0);
    ASSERT_EQ(Step(2).NumLoads(), 1);
    const Load& load = *Step(2).begin();
    EXPECT_EQ(host.displayed, (std::vector<std::pair<std::int32_t, std::int32_t>>{{2, load.ID()}}));
    EXPECT_TRUE(host.changed);
    EXPECT_TRUE(platform.asked.empty());
}

TEST_F(LoadFormSkeleton, TrimsTheNameAndNamesWhatHasNone) {
    auto form = NewFilled();
    Type(*form, "txtName", "  Pump ");
    Type(*form, "txtDecription", " in the cellar ");
    Click(*form, "cmdOK");
    EXPECT_EQ(Added<CMiscLoad>()->name(), "Pump");
    EXPECT_EQ(Added<CMiscLoad>()->Description(), " in the cellar ");
    host.step = 2;
    form = NewFilled();
    Type(*form, "txtName", "   ");
    Click(*form, "cmdOK");
    EXPECT_EQ(Step(2).begin()->name(), "<Misc. Load>");
}

TEST_F(LoadFormSkeleton, StoresTheSelectedPhases) {
    const char* buttons[] = {"opt3Phase", "optPhaseA", "optPhaseB", "optPhaseC"};
    for (std::int32_t code = 0; code < 4; ++code) {
        const auto form = NewFilled();
        Click(*form, buttons[code]);
        Click(*form, "cmdOK");
        EXPECT_EQ(std::prev(Step().end())->Phases(), code);
    }
}

TEST_F(LoadFormSkeleton, ABlankQuantityKeepsTheFormOpen) {
    const auto form = NewFilled();
    Type(*form, "txtQty", "");
    Click(*form, "cmdOK");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "A numeric value must be entered.");
    EXPECT_EQ(message.title, "ERROR");
    EXPECT_EQ(message.icon, MessageIcon::Stop);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(Field(*form, "txtQty").InError());
    EXPECT_TRUE(Field(*form, "txtQty").hasFocus());
    EXPECT_EQ(Step().NumLoads(), 0);
    EXPECT_FALSE(host.changed);
    Type(*form, "txtQty", "3");
    Click(*form, "cmdOK");
    EXPECT_EQ(Added<CMiscLoad>()->Quantity(), 3);
}

TEST_F(LoadFormSkeleton, ASettersRefusalShowsItsNumberAndSelectsTheField) {
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {{"txtQty", "0", "Error #2\r\nLoad quantity out of range"},
                {"txtQty", "257", "Error #2\r\nLoad quantity out of range"},
                {"txtQty", "99999999999", "Error #6\r\nOverflow"},
                {"txtkW", "2000.0005", "Error #17\r\nRunning real power out of range"},
                {"txtPF", "0.59", "Error #16\r\nRunning power factor out of range"},
                {"txtPF", "", "A numeric value must be entered."}};
    for (const auto& row : rows) {
        const auto form = NewFilled();
        Type(*form, row.field, row.text);
        Find<QPushButton>(*form, "cmdOK").setFocus();
        Click(*form, "cmdOK");
        EXPECT_EQ(platform.TakeMessage().text, row.message);
        EXPECT_TRUE(Field(*form, row.field).InError());
        EXPECT_TRUE(Field(*form, row.field).hasFocus());
        EXPECT_EQ(Field(*form, row.field).selectedText().toStdString(), TextOf(*form, row.field));
        EXPECT_EQ(Step().NumLoads(), 0);
    }
}

TEST_F(LoadFormSkeleton, AStepThatIsNotThereIsReported) {
    const auto form = NewFilled();
    Type(*form, "txtStepNum", "3");
    Click(*form, "cmdOK");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Error #100\r\nInvalid load step number.");  // 0x80040064 less the base
    EXPECT_EQ(message.title, "ERROR");
    EXPECT_EQ(message.icon, MessageIcon::Stop);
    EXPECT_EQ(TextOf(*form, "txtkW"), "12.5");
    Type(*form, "txtStepNum", "");
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #2147221517\r\nType mismatch");  // 13 + 2147221504
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(host.changed);
    EXPECT_TRUE(host.displayed.empty());
}

TEST_F(LoadFormSkeleton, AFullStepIsReported) {
    for (int i = 0; i < 257; ++i) {
        Step().AddLoad(std::make_unique<CMiscLoad>());
    }
    const auto form = NewFilled();
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #3\r\nMaximum number of loads per step exceeded.");
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(host.changed);
}

TEST_F(LoadFormSkeleton, ALoadThatCannotBeShownStaysInItsStep) {
    host.displayFails = RaisedError(35600, "TList", "Index out of bounds");
    const auto form = NewFilled();
    Click(*form, "cmdOK");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text,
              "Error #35600\r\nIndex out of bounds\r\nCan not display the last load added. Try saving and "
              "reloading the project.");
    EXPECT_EQ(message.icon, MessageIcon::Stop);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Step().NumLoads(), 1);
    EXPECT_TRUE(host.changed);
}

/// A form whose loads cannot be made.
class FormWithoutLoads : public LoadFormOf<CMiscLoad> {
  public:
    explicit FormWithoutLoads(const LoadFormServices& services)
        : LoadFormOf(load_type::kMiscellaneous, services) {
        OpenForNewLoad();
    }

    bool outOfMemory = false;

  private:
    void ShowKind(const CMiscLoad& /*load*/) override {}
    bool StoreKind(CMiscLoad& /*load*/) override { return true; }
    [[nodiscard]] std::unique_ptr<Load> NewLoad() const override {
        if (outOfMemory) {
            throw std::bad_alloc();
        }
        throw RaisedError(429, "Load", "Can't create object");
    }
};

TEST_F(LoadFormSkeleton, ALoadThatCannotBeMadeMayBeTriedAgain) {
    const auto form = New<FormWithoutLoads>();
    platform.answers = {MessageAnswer::Yes, MessageAnswer::No};
    Click(*form, "cmdOK");
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Error #429\r\nUnable to create load.\r\nDo you want to try again?");
    EXPECT_EQ(message.title, "ERROR");
    EXPECT_EQ(message.icon, MessageIcon::Stop);
    EXPECT_EQ(message.buttons, MessageButtons::YesNo);
    EXPECT_TRUE(form->isVisible());
    form->outOfMemory = true;
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #7\r\nUnable to create load.\r\nDo you want to try again?");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Step().NumLoads(), 0);
    EXPECT_FALSE(host.changed);
}

TEST_F(LoadFormSkeleton, EditingLocksTheStepAndWritesTheSameLoad) {
    CMiscLoad load;
    load.name("Heater");
    load.Description("first floor");
    load.Quantity(4);
    load.Phases(2);
    load.RunningRealPower(1500.0);
    const auto form = Edit<frmMiscLoad>(load, 7);
    EXPECT_EQ(TextOf(*form, "txtStepNum"), "7");
    EXPECT_EQ(TextOf(*form, "txtQty"), "4");
    EXPECT_EQ(TextOf(*form, "txtName"), "Heater");
    EXPECT_EQ(TextOf(*form, "txtDecription"), "first floor");
    EXPECT_TRUE(IsOn(*form, "optPhaseB"));
    EXPECT_TRUE(Field(*form, "txtStepNum").isReadOnly());
    EXPECT_EQ(Field(*form, "txtStepNum").focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(Field(*form, "txtStepNum").palette().color(QPalette::Base),
              form->palette().color(QPalette::Window));
    EXPECT_TRUE(Field(*form, "txtQty").hasFocus());
    Type(*form, "txtQty", "5");
    Click(*form, "cmdOK");
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(load.Quantity(), 5);
    EXPECT_EQ(load.name(), "Heater");
    EXPECT_TRUE(host.changed);
    EXPECT_TRUE(host.displayed.empty());
    EXPECT_EQ(Step().NumLoads(), 0);
}

TEST_F(LoadFormSkeleton, CancelAndEscapeLetAnEditedLoadAlone) {
    CMiscLoad load;
    load.name("Heater");
    const std::string before = Members(load);
    for (const bool escape : {false, true}) {
        const auto form = Edit<frmMiscLoad>(load);
        Type(*form, "txtName", "Cooler");
        Type(*form, "txtkW", "99");
        Click(*form, "optPhaseC");
        if (escape) {
            QTest::keyClick(form.get(), Qt::Key_Escape);
        } else {
            QTest::mouseClick(&Find<QPushButton>(*form, "cmdCancel"), Qt::LeftButton);
        }
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(Members(load), before);
        EXPECT_FALSE(host.changed);
    }
}

TEST_F(LoadFormSkeleton, AnOkThatFailedHalfWayLeavesNothingBehindForCancel) {
    CMiscLoad load;
    load.name("Heater");
    const std::string before = Members(load);
    const auto form = Edit<frmMiscLoad>(load);
    Type(*form, "txtName", "Cooler");
    Type(*form, "txtQty", "9");
    Type(*form, "txtPF", "0.2");
    Click(*form, "cmdOK");
    EXPECT_EQ(platform.TakeMessage().text, "Error #16\r\nRunning power factor out of range");
    EXPECT_TRUE(form->isVisible());
    Click(*form, "cmdCancel");
    EXPECT_EQ(Members(load), before);
    EXPECT_FALSE(host.changed);
}

TEST_F(LoadFormSkeleton, CancelIsReachedFromABadText) {
    const auto form = New<frmMiscLoad>();
    Field(*form, "txtQty").setText("many");
    Find<QPushButton>(*form, "cmdCancel").setFocus();
    QTest::mouseClick(&Find<QPushButton>(*form, "cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(LoadFormSkeleton, EnterIsOk) {
    const auto form = NewFilled();
    QTest::keyClick(&Field(*form, "txtkW"), Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(Added<CMiscLoad>()->RunningRealPower(), 12500.0);
}

TEST_F(LoadFormSkeleton, CountsTakeDigitsAndLoseTheirZerosWhenLeft) {
    const auto form = New<frmMiscLoad>();
    for (const char* name : {"txtStepNum", "txtQty"}) {
        platform.beeps = 0;
        Type(*form, name, "0-0.7x");
        EXPECT_EQ(TextOf(*form, name), "007");
        EXPECT_EQ(platform.beeps, 3);
        QTest::keyClick(&Field(*form, name), Qt::Key_Tab);
        EXPECT_EQ(TextOf(*form, name), "7");
        Type(*form, name, "");
        QTest::keyClick(&Field(*form, name), Qt::Key_Tab);
        EXPECT_EQ(TextOf(*form, name), "");
        EXPECT_FALSE(Field(*form, name).hasFocus()) << "a blank passes";
    }
}

TEST_F(LoadFormSkeleton, ABadTextKeepsTheFocusUntilItIsMended) {
    const auto form = New<frmMiscLoad>();
    for (const char* name : {"txtStepNum", "txtQty", "txtkW", "txtPF"}) {
        EntryField& field = Field(*form, name);
        field.setText("abc");  // as pasted
        field.setFocus();
        QTest::keyClick(&field, Qt::Key_Tab);
        EXPECT_TRUE(field.hasFocus()) << name;
        EXPECT_TRUE(field.InError()) << name;
        field.setText("1");
        QTest::keyClick(&field, Qt::Key_Tab);
        EXPECT_FALSE(field.hasFocus()) << name;
        EXPECT_FALSE(field.InError()) << name;
    }
}

TEST_F(LoadFormSkeleton, AFieldSelectsItsTextForTheMouseToo) {
    const auto form = NewFilled();
    EntryField& name = Field(*form, "txtName");
    name.setText("Pump");
    QTest::mouseClick(&name, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(name.selectedText(), "Pump");
}

TEST_F(LoadFormSkeleton, AnUnknownKindHasNoForm) {
    DisplayNewLoadInputForm(9, Services());
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Load not implemented.");
    EXPECT_EQ(message.title, "DEBUG");
    EXPECT_EQ(message.icon, MessageIcon::Information);
    DisplayNewLoadInputForm(-1, Services());
    EXPECT_EQ(platform.TakeMessage().text, "Load not implemented.");
}

TEST_F(LoadFormSkeleton, IsModalFromTheOutside) {
    QTimer::singleShot(0, [] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        Type(*form, "txtkW", "4");
        Click(*form, "cmdOK");
    });
    DisplayNewLoadInputForm(load_type::kMiscellaneous, Services());
    ASSERT_NE(Added<CMiscLoad>(), nullptr);
    EXPECT_EQ(Added<CMiscLoad>()->RunningRealPower(), 4000.0);
    QTimer::singleShot(0, [] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        EXPECT_EQ(TextOf(*form, "txtkW"), "4");
        Type(*form, "txtkW", "5");
        Click(*form, "cmdOK");
    });
    EditLoad(*Added<CMiscLoad>(), 1, Services());
    EXPECT_EQ(Added<CMiscLoad>()->RunningRealPower(), 5000.0);
}

}  // namespace
}  // namespace genvara
