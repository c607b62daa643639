#include "frmSSCurrentLimit.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "ChoiceBox.h"
#include "FormsFixture.h"
#include "frmMtrLoad.h"

namespace genvara {
namespace {

constexpr int kSolidStateRow = 5;

class CurrentLimitForm : public FormsTest {
  protected:
    /// A motor of 10 hp and 10 kVA with a solid-state starter; locked, it draws 60 kVA by the letter G.
    std::unique_ptr<frmMtrLoad> Motor() {
        auto form = New<frmMtrLoad>();
        Type(*form, "txtPower", "10");
        Find<ChoiceBox>(*form, "cboStartMethod").SelectRow(kSolidStateRow);
        platform.Take();
        return form;
    }
    /// Presses "Advanced" and drives the dialog that opens.
    static void Advanced(const QWidget& motor, const std::function<void(QWidget&)>& drive) {
        bool driven = false;
        QTimer::singleShot(0, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            ASSERT_EQ(dialog->objectName(), "frmSSCurrentLimit");
            QApplication::setActiveWindow(dialog);
            drive(*dialog);
            driven = true;
        });
        Click(motor, "cmdAdvanced");
        EXPECT_TRUE(driven);
    }
};

TEST_F(CurrentLimitForm, ShowsTheQuestionTheBoundsAndTheMotorsLimit) {
    const auto motor = Motor();
    frmSSCurrentLimit dialog(motor.get(), platform);
    dialog.ParentForm(*motor);
    dialog.open();
    EXPECT_EQ(dialog.windowTitle(), "Solid State Starter");
    EXPECT_EQ(Find<QLabel>(dialog, "lblQuery").text().remove('&'),
              "What percentage of running current is the starting current?");
    EXPECT_EQ(Find<QLabel>(dialog, "lblLimits").text(), "( 100% - 600% )");
    EXPECT_EQ(TextOf(dialog, "txtCurrentLimit"), "300");
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdOK").text(), "OK");
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdCancel").text(), "Cancel");
}

TEST_F(CurrentLimitForm, TheStartIsTheSmallerOfLimitAndLockedRotor) {
    const auto motor = Motor();
    EXPECT_EQ(TextOf(*motor, "txtStartingKVA"), "30.00");  // 300 % of 10 kVA
    const struct {
        const char* limit;
        const char* startingKVA;
    } rows[] = {{"100", "10.00"}, {"450", "45.00"}, {"599", "59.90"}, {"600", "60.00"}};
    for (const auto& row : rows) {
        Advanced(*motor, [&](QWidget& dialog) {
            Type(dialog, "txtCurrentLimit", row.limit);
            Click(dialog, "cmdOK");
        });
        EXPECT_EQ(TextOf(*motor, "txtStartingKVA"), row.startingKVA);
    }
    EXPECT_EQ(motor->SolidStateCurrentLimit(), 600);
    Click(*motor, "cmdOK");
    ASSERT_NE(Added<CMtrLoad>(), nullptr);
    EXPECT_EQ(Added<CMtrLoad>()->SolidStateCurrentLimit(), 600);
    EXPECT_EQ(Added<CMtrLoad>()->StartingMethod(), starting_method::kSolidState);
}

TEST_F(CurrentLimitForm, CancelKeepsTheLimitAndWorksTheStartOutAnew) {
    const auto motor = Motor();
    Type(*motor, "txtStartingKVA", "12");
    Advanced(*motor, [](QWidget& dialog) {
        Type(dialog, "txtCurrentLimit", "450");
        Click(dialog, "cmdCancel");
    });
    EXPECT_EQ(motor->SolidStateCurrentLimit(), 300);
    EXPECT_EQ(TextOf(*motor, "txtStartingKVA"), "30.00");
}

TEST_F(CurrentLimitForm, RefusesALimitBeyondItsBounds) {
    const auto motor = Motor();
    for (const char* limit : {"99", "601", "", "99999999999"}) {
        Advanced(*motor, [&](QWidget& dialog) {
            EntryField& field = Field(dialog, "txtCurrentLimit");
            Type(dialog, "txtCurrentLimit", limit);
            EXPECT_FALSE(field.InError());
            Click(dialog, "cmdOK");
            EXPECT_TRUE(dialog.isVisible()) << limit;
            EXPECT_TRUE(field.InError()) << limit;
            EXPECT_TRUE(field.hasFocus()) << limit;
            QTest::keyClick(&field, Qt::Key_Tab);
            EXPECT_TRUE(field.hasFocus()) << limit;
            field.setText("1");
            EXPECT_FALSE(field.InError()) << "a change takes the error away";
            Click(dialog, "cmdCancel");
        });
    }
    EXPECT_EQ(motor->SolidStateCurrentLimit(), 300);
}

TEST_F(CurrentLimitForm, IsThereForASolidStateStarterAlone) {
    const auto motor = Motor();
    EXPECT_TRUE(IsEnabled(*motor, "cmdAdvanced"));
    Find<ChoiceBox>(*motor, "cboStartMethod").SelectRow(2);
    EXPECT_FALSE(IsEnabled(*motor, "cmdAdvanced"));
}

}  // namespace
}  // namespace genvara
