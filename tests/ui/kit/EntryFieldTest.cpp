#include "EntryField.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <initializer_list>

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

/// The sentence that is shown; null while there is none.
FieldNote* NoteOf(const Window& window) {
    for (auto* note : window.widget.findChildren<FieldNote*>()) {
        if (note->isVisible()) {
            return note;
        }
    }
    return nullptr;
}

void Paste(EntryField& field, const char* text) {
    QApplication::clipboard()->setText(QString::fromUtf8(text));
    QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
}

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

TEST(EntryField, ATextThatIsCorrectedLosesItsRedAtOnce) {
    Window window;
    window.field->setText("x");
    EXPECT_TRUE(ValidateNumericText(*window.field));
    QTest::keyClick(window.field, Qt::Key_Backspace);
    EXPECT_FALSE(window.field->InError());
    EXPECT_EQ(Ground(*window.field), QApplication::palette().color(QPalette::Base));
    EXPECT_EQ(NoteOf(window), nullptr);
}

TEST(EntryField, ShowsTheSentenceBesideIt) {
    Window window;
    window.field->Bounds({.name = "Quantity", .least = 1, .most = 256, .whole = true});
    window.field->setText("300");
    EXPECT_EQ(window.field->Complaint(), "Quantity: 300 is out of range. Enter 1 to 256.");
    EXPECT_TRUE(window.field->RefuseOutOfBounds());
    EXPECT_EQ(window.platform.beeps, 1);
    EXPECT_TRUE(window.field->hasFocus());
    EXPECT_EQ(window.field->selectedText(), "300");
    const FieldNote* note = NoteOf(window);
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->text(), window.field->Complaint());
    EXPECT_EQ(note->Field(), window.field);
    EXPECT_TRUE(window.widget.rect().contains(note->pos()));
    EXPECT_EQ(window.field->accessibleDescription(), window.field->Complaint());
    window.second->setFocus();
    EXPECT_EQ(NoteOf(window), nullptr) << "it would lie over the next entry";
    EXPECT_TRUE(window.field->InError());
    window.field->setFocus();
    ASSERT_NE(NoteOf(window), nullptr);
    window.field->setText("256");
    EXPECT_EQ(NoteOf(window), nullptr);
    EXPECT_FALSE(window.field->RefuseOutOfBounds());
}

TEST(EntryField, ShowsTheSentenceAboveWhereItWouldHideAButton) {
    ScriptedPlatform platform;
    QWidget window;
    window.resize(400, 200);
    auto* high = new EntryField(platform, "txtHigh");
    auto* low = new EntryField(platform, "txtLow");
    auto* ok = new QPushButton("OK");
    for (QWidget* widget : std::initializer_list<QWidget*>{high, low, ok}) {
        widget->setParent(&window);
    }
    high->setGeometry(10, 10, 100, 24);
    low->setGeometry(10, 120, 100, 24);
    ok->setGeometry(10, 150, 100, 24);
    window.show();
    const auto placeOf = [&](EntryField& field) {
        field.ShowError("is out of range");
        const auto* note = window.findChild<FieldNote*>();
        const QRect place = note == nullptr ? QRect() : note->geometry();
        field.ClearError();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return place;
    };
    EXPECT_GT(placeOf(*high).top(), high->geometry().bottom());
    EXPECT_LT(placeOf(*low).bottom(), low->geometry().top());
    ok->move(200, 150);  // beside the sentence
    EXPECT_GT(placeOf(*low).top(), low->geometry().bottom());
}

TEST(EntryField, OneWindowShowsOneSentence) {
    Window window;
    window.field->ShowError("first");
    window.second->ShowError("second");
    ASSERT_NE(NoteOf(window), nullptr);
    EXPECT_EQ(NoteOf(window)->text(), "second");
    QTest::mouseClick(NoteOf(window), Qt::LeftButton);
    EXPECT_EQ(NoteOf(window), nullptr) << "a click takes it away";
    EXPECT_TRUE(window.second->InError());
}

TEST(EntryField, TakesAPastedNumberWithoutWhatStandsAroundIt) {
    Window window;
    window.field->Filter(key_filters::Digits());
    const std::pair<const char*, const char*> texts[] = {
        {"15\r\n", "15"}, {"\t15", "15"}, {"\u00A015\u00A0", "15"}, {"15.0", "15"}, {"1E+03", "1000"}};
    for (const auto& [pasted, taken] : texts) {
        window.field->clear();
        Paste(*window.field, pasted);
        EXPECT_EQ(window.field->Content(), taken) << pasted;
        EXPECT_FALSE(window.field->InError());
    }
    EXPECT_EQ(window.platform.beeps, 0);
    window.field->setText("1999");
    window.field->setSelection(1, 2);
    Paste(*window.field, "0\r\n");
    EXPECT_EQ(window.field->Content(), "109") << "in place of what is selected";
}

TEST(EntryField, SaysWhyItDoesNotTakeWhatIsPasted) {
    Window window;
    window.field->Filter(key_filters::DigitsUpTo(3));
    window.field->Bounds({.name = "Sets", .least = 1, .most = 32, .whole = true});
    window.field->setText("16");
    const std::pair<const char*, const char*> texts[] = {
        {"a lot", "Sets: a lot is no number. Enter 1 to 32."},
        {"1234", "Sets: 1234 is out of range. Enter 1 to 32."},
        {"2.5", "Sets: 2.5 is no whole number. Enter 1 to 32."},
        {"-5", "Sets: -5 is out of range. Enter 1 to 32."},
        {" \r\n", "Sets is blank. Enter 1 to 32."}};
    for (const auto& [pasted, sentence] : texts) {
        window.platform.beeps = 0;
        window.field->selectAll();
        Paste(*window.field, pasted);
        EXPECT_EQ(window.field->Content(), "16") << pasted;
        EXPECT_FALSE(window.field->InError()) << "what stands there is right";
        ASSERT_NE(NoteOf(window), nullptr) << pasted;
        EXPECT_EQ(NoteOf(window)->text(), sentence);
        EXPECT_EQ(window.platform.beeps, 1);
    }
    QTest::keyClicks(window.field, "8");
    EXPECT_EQ(window.field->Content(), "8");
    EXPECT_EQ(NoteOf(window), nullptr);
}

TEST(EntryField, TakesAPastedNumberWhicheverWayItComes) {
    Window window;
    window.field->Filter(key_filters::Numeric());
    QApplication::clipboard()->setText("12.5\r\n");
    const auto expectTaken = [&](const char* way) {
        EXPECT_EQ(window.field->Content(), "12.5") << way;
        window.field->clear();
    };
    QTest::keyClick(window.field, Qt::Key_V, Qt::ControlModifier);
    expectTaken("Ctrl+V");
    QTest::keyClick(window.field, Qt::Key_Insert, Qt::ShiftModifier);
    expectTaken("Shift+Insert");
    EXPECT_TRUE(QMetaObject::invokeMethod(window.field, "paste"));
    expectTaken("the Edit menu");
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        const auto items = menu->actions();
        const auto paste = std::ranges::find_if(
            items, [](const QAction* item) { return item->text().startsWith("&Paste"); });
        ASSERT_NE(paste, items.end());
        (*paste)->trigger();
        menu->close();
    });
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(3, 3), window.field->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(window.field, &menu);
    expectTaken("the field's own menu");
    QMimeData dragged;
    dragged.setText("12.5\t");
    QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.field, &enter);
    QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.field, &drop);
    expectTaken("the mouse");
}

TEST(EntryField, ATextOfOneLineTakesOneLine) {
    Window window;
    Paste(*window.field, " Pump 1\r\ncellar\t2 \n");
    EXPECT_EQ(window.field->Content(), "Pump 1 cellar 2");
    window.field->setText("locked");
    window.field->setReadOnly(true);
    window.field->selectAll();
    Paste(*window.field, "changed");
    EXPECT_EQ(window.field->Content(), "locked");
}

TEST(EntryField, AltDoesNotType) {
    Window window;
    window.field->Filter(key_filters::Digits());
    QTest::keyClick(window.field, Qt::Key_K, Qt::AltModifier);
    QTest::keyClick(window.field, Qt::Key_7, Qt::AltModifier);
    EXPECT_EQ(window.field->Content(), "");
    QTest::keyClick(window.field, Qt::Key_7);
    EXPECT_EQ(window.field->Content(), "7");
    QPlainTextEdit lines;
    QTest::keyClick(&lines, Qt::Key_K, Qt::AltModifier);
    EXPECT_EQ(lines.toPlainText(), "");
}

TEST(EntryField, KeepsItsSelectionWhileAMenuHasTheFocus) {
    Window window;
    window.field->setText("some text");
    for (const bool backwards : {false, true}) {
        window.field->setFocus();
        window.field->setSelection(backwards ? 4 : 0, backwards ? -4 : 4);
        window.apply->setFocus(Qt::MenuBarFocusReason);
        EXPECT_EQ(window.field->selectedText(), "some");
        EXPECT_EQ(window.field->cursorPosition(), backwards ? 0 : 4);
        window.field->setFocus(Qt::MenuBarFocusReason);
        EXPECT_EQ(window.field->selectedText(), "some");
    }
    window.second->setFocus(Qt::TabFocusReason);
    EXPECT_FALSE(window.field->hasSelectedText());
}

TEST(EntryField, StaysAtHandWhileAMenuHasTheFocus) {
    Window window;
    bool bad = true;
    int left = 0;
    int clicks = 0;
    window.field->CheckBeforeLeaving([&] { return bad; });
    window.field->OnLeft([&] { ++left; });
    QObject::connect(window.apply, &QPushButton::clicked, [&] { ++clicks; });
    window.cancel->setFocus(Qt::MenuBarFocusReason);  // stands for the menu bar
    EXPECT_EQ(FieldAtHand(window.widget), window.field);
    QTest::mouseClick(window.second, Qt::LeftButton);
    EXPECT_TRUE(window.field->hasFocus()) << "the click is held back";
    window.cancel->setFocus(Qt::MenuBarFocusReason);
    QTest::mouseClick(window.apply, Qt::LeftButton);
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(window.field->hasFocus());
    window.cancel->setFocus(Qt::MenuBarFocusReason);
    EXPECT_TRUE(FocusIsHeld(window.widget)) << "so is a command";
    EXPECT_EQ(left, 0);
    bad = false;
    window.cancel->setFocus(Qt::MenuBarFocusReason);
    QTest::mouseClick(window.apply, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(left, 1);
    EXPECT_EQ(FieldAtHand(window.widget), nullptr);
    QTest::mouseClick(window.second, Qt::LeftButton);
    EXPECT_EQ(left, 1) << "left once";
}

TEST(EntryField, TheKeyOfACaptionIsHeldBackToo) {
    Window window;
    bool bad = true;
    int clicks = 0;
    window.apply->setText("&Apply");
    QObject::connect(window.apply, &QPushButton::clicked, [&] { ++clicks; });
    window.field->CheckBeforeLeaving([&] { return bad; });
    QTest::keyClick(&window.widget, Qt::Key_A, Qt::AltModifier);
    QTest::qWait(150);  // longer than a button stays down
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(window.field->hasFocus());
    bad = false;
    QTest::keyClick(&window.widget, Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }));
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

TEST(EntryField, TakesTypographicQuotesInPlaceOfDoubleQuotes) {
    Window window;
    QTest::keyClicks(window.field, "12\" pump (\"B\")");
    EXPECT_EQ(window.field->Content(), "12\u201D pump (\u201CB\u201D)");
    window.field->setCursorPosition(2);
    Paste(*window.field, "\"x\"");
    EXPECT_EQ(window.field->Content(), "12\u201Dx\u201D\u201D pump (\u201CB\u201D)");
    window.field->clear();
    QInputMethodEvent composed;
    composed.setCommitString("\"");
    QCoreApplication::sendEvent(window.field, &composed);
    EXPECT_EQ(window.field->Content(), "\u201C");
    window.field->setText("\"of a file\"");
    EXPECT_EQ(window.field->Content(), "\"of a file\"") << "not entered";
    window.field->selectAll();
    QTest::keyClicks(window.field, "\"");
    EXPECT_EQ(window.field->Content(), "\u201C") << "nothing stands before what is replaced";
}

}  // namespace
}  // namespace genvara
