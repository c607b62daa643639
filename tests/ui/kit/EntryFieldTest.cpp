#include "EntryField.h"

#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QPushButton>
#include <QTest>

#include "ScriptedPlatform.h"

namespace genvara {
namespace {

/// A window with a field, a second one, and two buttons.
struct Window {
    ScriptedPlatform platform;
    QWidget widget;
    EntryField* field = new EntryField(platform, "txtFirst");
    EntryField* second = new EntryField(platform, "txtSecond");
    QPushButton* apply = new QPushButton("Apply");
    QPushButton* cancel = new QPushButton("Cancel");

    Window() {
        auto* line = new QHBoxLayout(&widget);
        line->addWidget(field);
        line->addWidget(second);
        line->addWidget(apply);
        line->addWidget(cancel);
        LeavesUnchecked(*cancel);
        widget.show();
        QApplication::setActiveWindow(&widget);
        field->setFocus();
    }
};

QColor Ground(const EntryField& field) {
    return field.palette().color(QPalette::Base);
}

TEST(EntryField, DropsAKeyThatItsFilterRefusesWithABeep) {
    Window window;
    window.field->Filter(key_filters::Digits());
    QTest::keyClicks(window.field, "1a2-3");
    EXPECT_EQ(window.field->Content(), "123");
    EXPECT_EQ(window.platform.beeps, 2);
    QTest::keyClick(window.field, Qt::Key_Backspace);
    EXPECT_EQ(window.field->Content(), "12");
}

TEST(EntryField, TakesNoMoreDigitsThanItMayUnlessSomeAreSelected) {
    Window window;
    window.field->Filter(key_filters::DigitsUpTo(3));
    QTest::keyClicks(window.field, "1234");
    EXPECT_EQ(window.field->Content(), "123");
    EXPECT_EQ(window.platform.beeps, 1);
    window.field->setSelection(0, 1);
    QTest::keyClicks(window.field, "9");
    EXPECT_EQ(window.field->Content(), "923");
}

TEST(EntryField, BoundsTheLengthOfWhatAnyFilterPasses) {
    Window window;
    window.field->Filter(key_filters::UpTo(2, key_filters::NonZeroDigits()));
    QTest::keyClicks(window.field, "0x905");
    EXPECT_EQ(window.field->Content(), "90");
    EXPECT_EQ(window.platform.beeps, 3);
}

TEST(EntryField, ABadTextKeepsTheFocusFromTabAndClick) {
    Window window;
    bool bad = true;
    int clicks = 0;
    window.field->CheckBeforeLeaving([&] { return bad; });
    QObject::connect(window.apply, &QPushButton::clicked, [&] { ++clicks; });
    QTest::keyClick(window.field, Qt::Key_Tab);
    EXPECT_TRUE(window.field->hasFocus());
    QTest::mouseClick(window.second, Qt::LeftButton);
    EXPECT_TRUE(window.field->hasFocus());
    QTest::mouseClick(window.apply, Qt::LeftButton);
    EXPECT_EQ(clicks, 0) << "a button that is not reached is not pressed";
    bad = false;
    QTest::mouseClick(window.apply, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(window.field->hasFocus());
}

TEST(EntryField, ABadTextTakesTheFocusBackFromAShortcut) {
    Window window;
    window.field->CheckBeforeLeaving([] { return true; });
    window.second->setFocus(Qt::ShortcutFocusReason);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.field->hasFocus());
}

TEST(EntryField, CancelIsReachedFromABadText) {
    Window window;
    int checks = 0;
    int clicks = 0;
    window.field->CheckBeforeLeaving([&] { return ++checks > 0; });
    QObject::connect(window.cancel, &QPushButton::clicked, [&] { ++clicks; });
    QTest::mouseClick(window.cancel, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(checks, 0);
}

TEST(EntryField, IsCheckedOnceALeaveAndLeftBehindTheCheck) {
    Window window;
    std::string order;
    window.field->CheckBeforeLeaving([&] {
        order += "check ";
        return false;
    });
    window.field->OnLeft([&] { order += "left "; });
    QTest::keyClick(window.field, Qt::Key_Tab);
    EXPECT_EQ(order, "check left ");
}

TEST(EntryField, ShowsAnErrorByGroundAndSentence) {
    Window window;
    window.field->setText("x");
    EXPECT_TRUE(ValidateNumericText(*window.field));
    EXPECT_TRUE(window.field->InError());
    EXPECT_EQ(Ground(*window.field), QColor(0xFF, 0x80, 0x80));
    EXPECT_EQ(window.field->palette().color(QPalette::Text), QColor(Qt::black));
    EXPECT_FALSE(window.field->statusTip().isEmpty());
    window.field->setText("12");
    EXPECT_FALSE(ValidateNumericText(*window.field));
    EXPECT_FALSE(window.field->InError());
    EXPECT_EQ(Ground(*window.field), QApplication::palette().color(QPalette::Base));
    window.field->setText("");
    EXPECT_FALSE(ValidateNumericText(*window.field));
}

TEST(EntryField, KeepsItsOwnToolTipThroughAnError) {
    Window window;
    window.field->setToolTip("Load Step Number");
    window.field->ShowError("A number must be entered.");
    window.field->ShowError("Out of range.");
    EXPECT_EQ(window.field->toolTip(), "Out of range.");
    window.field->ClearError();
    EXPECT_EQ(window.field->toolTip(), "Load Step Number");
}

TEST(EntryField, ALockedFieldHasTheGroundOfItsWindow) {
    Window window;
    window.field->setReadOnly(true);
    EXPECT_EQ(Ground(*window.field), QApplication::palette().color(QPalette::Window));
    window.field->setReadOnly(false);
    EXPECT_EQ(Ground(*window.field), QApplication::palette().color(QPalette::Base));
}

TEST(EntryField, ADisabledFieldIsGrey) {
    Window window;
    window.field->setEnabled(false);
    EXPECT_EQ(window.field->palette().color(QPalette::Disabled, QPalette::Base), QColor(0xE0, 0xE0, 0xE0));
}

}  // namespace
}  // namespace genvara
