#include <gtest/gtest.h>

#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "ChoiceBox.h"
#include "FormGrid.h"
#include "GenvaraStyle.h"
#include "LastChance.h"
#include "ScriptedPlatform.h"
#include "UpDown.h"

namespace genvara {
namespace {

TEST(UpDown, StepsWithinItsBoundsAndFromTheLeastWhereThereIsNoNumber) {
    ScriptedPlatform platform;
    EntryField field(platform, "txtDip");
    UpDown arrows("updDip", field, {.least = 5, .most = 35, .step = 5});
    field.setText("33");
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(field.Content(), "35");
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(field.Content(), "35");
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_EQ(field.Content(), "30");
    field.setText("");
    const auto buttons = arrows.findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    buttons[0]->click();
    EXPECT_EQ(field.Content(), "5");
    field.setText("99999999999");
    buttons[1]->click();
    EXPECT_EQ(field.Content(), "35");
}

TEST(UpDown, ADisabledOneDoesNothing) {
    ScriptedPlatform platform;
    EntryField field(platform, "txtDip");
    UpDown arrows("updDip", field, {.least = 5, .most = 35, .step = 5});
    field.setText("20");
    arrows.setEnabled(false);
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(field.Content(), "20");
}

TEST(ChoiceBox, ASelectionByTheProgramCountsAsAClick) {
    ChoiceBox list("cboConn");
    std::vector<int> clicks;
    QObject::connect(&list, &ChoiceBox::Clicked, [&](int row) { clicks.push_back(row); });
    list.AddRow("first", 3);
    list.AddRow("second", 7);
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(list.Code(), std::nullopt);
    list.SelectCode(7);
    list.SelectCode(99);
    EXPECT_EQ(list.Code(), 7);
    list.SelectRow(-1);
    EXPECT_EQ(list.Code(), std::nullopt);
    EXPECT_EQ(clicks, std::vector<int>{1});
}

TEST(ChoiceBox, TheWheelChangesNothingWithoutTheFocus) {
    ChoiceBox list("cboConn");
    list.AddRow("first");
    list.AddRow("second");
    list.SelectRow(0);
    QWheelEvent wheel(QPointF(2, 2), QPointF(2, 2), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(list.currentIndex(), 0);
}

TEST(ChoiceBox, ADisabledListIsGreyInALightThemeAlone) {
    ChoiceBox list("cboConn");
    list.setEnabled(false);
    EXPECT_EQ(list.palette().color(QPalette::Disabled, QPalette::Button), QColor(0xE0, 0xE0, 0xE0));
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Disabled, QPalette::Button, Qt::darkBlue);
    QApplication::setPalette(dark);
    EXPECT_EQ(ChoiceBox("cboDark").palette().color(QPalette::Disabled, QPalette::Button), Qt::darkBlue);
    QApplication::setPalette(light);
}

/// A desktop that has its own order of a dialog's buttons.
class ButtonOrder final : public QProxyStyle {
  public:
    explicit ButtonOrder(QDialogButtonBox::ButtonLayout order) : m_order(order) {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override {
        return hint == SH_DialogButtonLayout ? m_order : QProxyStyle::styleHint(hint, option, widget, answer);
    }

  private:
    QDialogButtonBox::ButtonLayout m_order;
};

TEST(OkCancel, EnterPressesOkWhateverTheDesktopPutsFirst) {
    for (const auto order : {QDialogButtonBox::WinLayout, QDialogButtonBox::MacLayout,
                             QDialogButtonBox::KdeLayout, QDialogButtonBox::GnomeLayout}) {
        QApplication::setStyle(new ButtonOrder(order));
        QDialog dialog;
        auto* field = new QLineEdit;
        const OkCancel buttons = MakeOkCancel();
        auto* lines = new QVBoxLayout(&dialog);
        lines->addWidget(field);
        lines->addWidget(buttons.box);
        if (order == QDialogButtonBox::MacLayout || order == QDialogButtonBox::GnomeLayout) {
            // As dialogs do, whose keys follow what is seen.
            QWidget::setTabOrder(field, buttons.cancel);
            QWidget::setTabOrder(buttons.cancel, buttons.ok);
        }
        std::vector<std::string> pressed;
        for (QPushButton* button : {buttons.ok, buttons.cancel}) {
            QObject::connect(button, &QPushButton::clicked,
                             [&pressed, button] { pressed.push_back(button->objectName().toStdString()); });
        }
        dialog.show();
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Return);
        buttons.cancel->setFocus();
        QTest::keyClick(buttons.cancel, Qt::Key_Return);
        EXPECT_EQ(pressed, (std::vector<std::string>{"cmdOK", "cmdCancel"})) << "order " << order;
    }
    QApplication::setStyle(new GenvaraStyle);
}

TEST(LastChance, RescuesTheProjectBeforeItReportsAndEnds) {
    ScriptedPlatform platform;
    SetLastChance(platform, [] { return std::filesystem::path("/state/rescued.prj"); });
    RunEvent([] { throw RaisedError(11, "CPwrSys::MaxVoltageDip", "Invalid maximum voltage dip"); });
    ClearLastChance();
    ASSERT_EQ(platform.ends.size(), 1U);
    EXPECT_EQ(platform.ends.front().Number(), 11);
    EXPECT_EQ(platform.asked.front().text, "/state/rescued.prj");
}

TEST(LastChance, AFailedRescueDoesNotHideTheFailure) {
    ScriptedPlatform platform;
    SetLastChance(platform,
                  []() -> std::filesystem::path { throw RaisedError(28, "AtomicFile", "No space"); });
    RunEvent([] { throw std::runtime_error("a bug"); });
    ClearLastChance();
    ASSERT_EQ(platform.ends.size(), 1U);
    EXPECT_EQ(platform.ends.front().Description(), "a bug");
    EXPECT_EQ(platform.asked.front().text, "");
}

TEST(LastChance, AFailureWithoutAHandlerPasses) {
    EXPECT_THROW(RunEvent([] { throw RaisedError(5, "x", "y"); }), RaisedError);
}

}  // namespace
}  // namespace genvara
