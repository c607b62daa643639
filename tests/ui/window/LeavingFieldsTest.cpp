// The ways out of a field that holds what it must not: none of them skips its check.

#include <QMenuBar>
#include <QTest>
#include <QToolBar>

#include "EntryField.h"
#include "Globals.h"
#include "WindowFixture.h"
#include "ctlSideBar.h"

namespace genvara {
namespace {

constexpr const char* kComplaint = "Invalid altitude entered";

class LeavingFields : public WindowTest {
  protected:
    void SetUp() override {
        Bar(1);
        EnterBadAltitude();
    }
    EntryField& Altitude() { return Control<EntryField>("panPwrSys", "txtAltitude"); }
    void EnterBadAltitude() {
        Altitude().setFocus();
        Altitude().setText("99999");
        platform.Take();
    }
    /// Presses and releases a key that puts the focus on the menu bar.
    void TapAlt() {
        QTest::keyPress(&Altitude(), Qt::Key_Alt, Qt::AltModifier);
        QTest::keyRelease(&Altitude(), Qt::Key_Alt, Qt::NoModifier);
        Window().menuBar()->setFocus(Qt::MenuBarFocusReason);  // as the desktop does where it has the key
        ASSERT_FALSE(Altitude().hasFocus());
    }
    /// The check has run once, and the user is still in the field.
    void ExpectHeld(const char* way) {
        QCoreApplication::processEvents();
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 1U) << way;
        EXPECT_EQ(asked.front().message.text, kComplaint) << way;
        EXPECT_TRUE(Altitude().hasFocus()) << way;
        EXPECT_TRUE(Altitude().InError()) << way;
        EXPECT_EQ(ShownPanel(), "panPwrSys") << way;
        EXPECT_TRUE(Window().isVisible()) << way;
        EXPECT_TRUE(platform.ends.empty()) << way;
    }
};

TEST_F(LeavingFields, ByTheSideBarBehindTheMenuBar) {
    TapAlt();
    Bar(0);
    ExpectHeld("side bar");
    TapAlt();
    Bar(3);
    ExpectHeld("View Gensets");
}

TEST_F(LeavingFields, ByAnotherFieldBehindTheMenuBar) {
    TapAlt();
    QTest::mouseClick(&Control<EntryField>("panPwrSys", "txtAmbTemp"), Qt::LeftButton);
    ExpectHeld("another field");
    TapAlt();
    QTest::mouseClick(&Altitude(), Qt::LeftButton);
    EXPECT_TRUE(Altitude().hasFocus());
    EXPECT_TRUE(platform.Take().empty()) << "the field itself is no other";
}

TEST_F(LeavingFields, ByEachCommandThatLeadsElsewhere) {
    for (const char* command : {"mnuFileNew", "mnuFileOpen", "mnuFileSave", "mnuFileSaveAs",
                                "mnuFilePrintSetup", "mnuFileSendMail", "mnuFileMRU0", "mnuFileExit",
                                "mnuToolsDefaults", "mnuToolsOptions", "butNew", "butOpen", "butSave"}) {
        EnterBadAltitude();
        Run(command);
        ExpectHeld(command);
        TapAlt();
        Run(command);
        ExpectHeld(command);
    }
}

TEST_F(LeavingFields, ByKeys) {
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_O, Qt::Key_S, Qt::Key_Q, Qt::Key_1, Qt::Key_3, Qt::Key_4}) {
        EnterBadAltitude();
        QTest::keyClick(&Window(), key, Qt::ControlModifier);
        ExpectHeld(QKeySequence(key).toString().toUtf8().constData());
    }
    EnterBadAltitude();
    QTest::keyClick(&Altitude(), Qt::Key_Tab);
    ExpectHeld("Tab");
}

TEST_F(LeavingFields, ByTheToolbar) {
    auto& bar = Find<QToolBar>(Window(), "tbrMain");
    for (const char* name : {"butNew", "butOpen", "butSave"}) {
        EnterBadAltitude();
        QTest::mouseClick(bar.widgetForAction(&Find<QAction>(Window(), name)), Qt::LeftButton);
        ExpectHeld(name);
    }
}

TEST_F(LeavingFields, ByTheWindow) {
    EXPECT_FALSE(Window().close());
    ExpectHeld("close");
    g_ProjectDirty = true;
    EXPECT_FALSE(Window().close());
    ExpectHeld("close, before any other question");
    g_ProjectDirty = false;
    Altitude().setText("500");
    EXPECT_TRUE(Window().close());
}

TEST_F(LeavingFields, ByTheKeyOfACaption) {
    const auto* label = Window().findChild<QWidget*>("panPwrSys")->findChild<QLabel*>("lblAmbTemp");
    const QString key = label->text().section('&', 1, 1).left(1).toUpper();
    ASSERT_FALSE(key.isEmpty());
    QTest::keyClick(&Window(), static_cast<Qt::Key>(key.at(0).unicode()), Qt::AltModifier);
    ExpectHeld("the key of another field");
}

TEST_F(LeavingFields, HelpAndEditingDoNotLeave) {
    for (const char* command : {"mnuEditCopy", "mnuEditPaste", "mnuHelpTopics", "helpContents"}) {
        EnterBadAltitude();
        Run(command);
        for (const auto& asked : platform.Take()) {
            EXPECT_NE(asked.what, "message") << command;
        }
    }
    InNextDialog([](QDialog& dialog) { dialog.reject(); });
    Run("mnuHelpAbout");
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(LeavingFields, AFieldThatIsMendedIsLeft) {
    Bar(0);
    ExpectHeld("side bar");
    Altitude().setText("500");
    TapAlt();
    Bar(0);
    EXPECT_EQ(ShownPanel(), "panProject");
    EXPECT_TRUE(platform.Take().empty());
    Bar(2);
    EXPECT_EQ(ShownPanel(), "panLoadProfile");
    EXPECT_TRUE(platform.Take().empty()) << "what has been left is not asked again";
}

}  // namespace
}  // namespace genvara
