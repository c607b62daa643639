// Cut, copy and paste in the main window: by keyboard, through the menu, and what menu and toolbar allow.

#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeWidget>

#include "EntryField.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

class EditMenuOfTheWindow : public WindowTest {
  protected:
    void SetUp() override {
        platform.Take();
        QApplication::clipboard()->setText("pasted");
        Name().setText("some text");
        Name().setFocus();
    }
    EntryField& Name() { return Control<EntryField>("panProject", "txtName"); }

    /// Opens the Edit menu by the keyboard and presses a key of one of its items.
    void ByKeyboard(Qt::Key item) {
        Window().menuBar()->setFocus(Qt::MenuBarFocusReason);
        QTest::keyClick(Window().menuBar(), Qt::Key_E, Qt::AltModifier);
        auto& menu = Find<QMenu>(Window(), "mnuEdit");
        if (!menu.isVisible()) {
            Window().menuBar()->setActiveAction(menu.menuAction());
            QTest::keyClick(Window().menuBar(), Qt::Key_Down);
        }
        ASSERT_TRUE(menu.isVisible());
        QTest::keyClick(&menu, item);
        QCoreApplication::processEvents();
        ASSERT_FALSE(menu.isVisible());
        Name().setFocus(Qt::MenuBarFocusReason);
    }
    void ExpectEnabled(bool cut, bool copy, bool paste) {
        const std::pair<std::pair<const char*, const char*>, bool> rows[] = {
            {{"mnuEditCut", "butCut"}, cut},
            {{"mnuEditCopy", "butCopy"}, copy},
            {{"mnuEditPaste", "butPaste"}, paste}};
        for (const auto& [names, enabled] : rows) {
            EXPECT_EQ(Enabled(names.first), enabled) << names.first;
            EXPECT_EQ(Enabled(names.second), enabled) << names.second;
        }
    }
};

TEST_F(EditMenuOfTheWindow, CutsCopiesAndPastesTheSelectionOfAField) {
    Name().setSelection(0, 4);
    ByKeyboard(Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text(), "some");
    EXPECT_EQ(Name().selectedText(), "some");
    ByKeyboard(Qt::Key_T);
    EXPECT_EQ(Name().text(), " text");
    QApplication::clipboard()->setText("new");
    Name().setSelection(1, 4);
    ByKeyboard(Qt::Key_P);
    EXPECT_EQ(Name().text(), " new") << "in place of the selection, and not behind the text";
}

TEST_F(EditMenuOfTheWindow, MenuAndToolbarAgree) {
    Name().deselect();
    ExpectEnabled(false, false, true);
    Name().setSelection(0, 4);
    ExpectEnabled(true, true, true);
    platform.clipboardHoldsText = false;
    QApplication::clipboard()->clear();
    ExpectEnabled(true, true, false);
    Name().setReadOnly(true);
    Name().setSelection(0, 2);
    ExpectEnabled(false, true, false);
    Name().setReadOnly(false);
    platform.clipboardHoldsText = true;
    auto& description = Control<QPlainTextEdit>("panProject", "txtDescription");
    description.setPlainText("lines");
    description.setFocus();
    ExpectEnabled(false, false, true);
    description.selectAll();
    ExpectEnabled(true, true, true);
    Bar(2);
    Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay").setFocus();
    ExpectEnabled(false, false, false);
    Bar(0);
    Name().setFocus();
    ExpectEnabled(false, false, true);
}

TEST_F(EditMenuOfTheWindow, AReportCanBeCopied) {
    AddStepWithLoad();
    Bar(3);
    auto& report = Control<QWidget>("panRecommend", "rtfRecommend");
    report.setFocus();
    ExpectEnabled(false, false, true);
    QTest::keyClick(&report, Qt::Key_A, Qt::ControlModifier);
    ExpectEnabled(false, true, true);
}

TEST_F(EditMenuOfTheWindow, ATableCellIsPastedAsANumber) {
    Bar(1);
    auto& sets = Control<EntryField>("panPwrSys", "txtParallelSets");
    sets.setFocus();
    sets.selectAll();
    QApplication::clipboard()->setText("15\r\n");
    Run("mnuEditPaste");
    EXPECT_EQ(sets.text(), "15");
    QTest::keyClick(&sets, Qt::Key_Tab);
    EXPECT_EQ(App().PowerSystem().GensetsInParallel(), 15);
    EXPECT_TRUE(platform.Take().empty());
}

}  // namespace
}  // namespace genvara
