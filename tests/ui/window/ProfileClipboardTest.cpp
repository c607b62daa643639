// Steps and loads through the clipboard: cut, copied, pasted and doubled.

#include <QClipboard>
#include <QMimeData>
#include <QStatusBar>
#include <QTest>

#include "CMtrLoad.h"
#include "EntryField.h"
#include "ProfileFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;

class ProfileClipboard : public ProfileTest {
  protected:
    void SetUp() override {
        ProfileTest::SetUp();
        QApplication::clipboard()->clear();
        AddStep("A");
        AddLoad(1, "a1", 1000);
        AddLoad(1, "a2", 2000);
        AddStep("B");
        AddLoad(2, "b1", 4000);
        Tree().setFocus();
    }
    void Press(Qt::Key key) {
        QTest::keyClick(&Tree(), key, Qt::ControlModifier);
        QCoreApplication::processEvents();
    }
    std::string Said() { return Window().statusBar()->currentMessage().toStdString(); }
    std::string UndoName() { return App().Document().UndoName().value_or(""); }
    void ExpectSame() { EXPECT_EQ(Shown(), Stored()); }
};

TEST_F(ProfileClipboard, CopiesALoadAndPastesItBehindTheLastOfTheStep) {
    Select(1, 1);
    g_ProjectDirty = false;
    Press(Qt::Key_C);
    EXPECT_EQ(Said(), "Copied load \"a1\".");
    EXPECT_FALSE(g_ProjectDirty);
    Select(2);
    Press(Qt::Key_V);
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1 a1"));
    ExpectSame();
    EXPECT_EQ(Tree().Selected(), &Node(2, 2));
    EXPECT_EQ(ProfileTree::LoadID(Node(2, 2)), 1) << "the next of its step";
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_EQ(UndoName(), "Paste Load a1");
    EXPECT_EQ(Said(), "Pasted load \"a1\" into step 2.");
    // Behind a load it goes to that load's step.
    Select(1, 1);
    Press(Qt::Key_V);
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2 a1", "B: b1 a1"));
    Run("mnuEditUndo");
    Run("mnuEditUndo");
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1"));
    ExpectSame();
    Run("mnuEditRedo");
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1 a1"));
}

TEST_F(ProfileClipboard, CutsALoad) {
    Select(1, 1);
    g_ProjectDirty = false;
    Press(Qt::Key_X);
    EXPECT_THAT(Stored(), ElementsAre("A: a2", "B: b1"));
    ExpectSame();
    EXPECT_EQ(UndoName(), "Cut Load a1");
    EXPECT_EQ(Said(), "Cut load \"a1\". Ctrl+Z brings it back.");
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_EQ(Tree().Selected(), &Node(1, 1));
    Press(Qt::Key_V);
    EXPECT_THAT(Stored(), ElementsAre("A: a2 a1", "B: b1"));
}

TEST_F(ProfileClipboard, CopiesAndPastesAStepBehindTheSelectedOne) {
    Profile().LoadStep(1).MaxVoltageDipOverride(13);
    Select(1);
    Press(Qt::Key_C);
    EXPECT_EQ(Said(), "Copied step 1, \"A\".");
    Select(1, 2);
    Press(Qt::Key_V);
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "A: a1 a2", "B: b1"));
    ExpectSame();
    EXPECT_EQ(Profile().LoadStep(2).MaxVoltageDipOverride(), 13);
    EXPECT_EQ(Profile().LoadStep(2).StepID(), 2) << "no ID is given twice";
    EXPECT_EQ(ProfileTree::StepID(Node(2)), 2);
    EXPECT_EQ(Tree().Selected(), &Node(2));
    EXPECT_TRUE(Node(2).isExpanded());
    EXPECT_EQ(UndoName(), "Paste Step 2");
    EXPECT_EQ(Said(), "Pasted step 2.");
    Run("mnuEditUndo");
    ExpectSame();
    EXPECT_EQ(Profile().NumLoadSteps(), 2);
}

TEST_F(ProfileClipboard, CutsAStepAndPastesItIntoAnEmptyProfile) {
    Select(1);
    Press(Qt::Key_X);
    EXPECT_EQ(UndoName(), "Cut Step 1");
    EXPECT_THAT(Stored(), ElementsAre("B: b1"));
    Select(1);
    QTest::mouseClick(&Button("cmdDeleteStep"), Qt::LeftButton);
    EXPECT_EQ(Profile().NumLoadSteps(), 0);
    Tree().setFocus();
    EXPECT_FALSE(Enabled("mnuEditCutLoads"));
    EXPECT_TRUE(Enabled("mnuEditPasteLoads"));
    Run("mnuEditPasteLoads");
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2"));
    ExpectSame();
    EXPECT_THAT(On(), testing::Contains("DeleteStep"));
}

TEST_F(ProfileClipboard, Duplicates) {
    Select(1, 1);
    Press(Qt::Key_D);
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2 a1", "B: b1"));
    EXPECT_EQ(UndoName(), "Duplicate Load a1");
    EXPECT_EQ(Said(), "Duplicated load \"a1\".");
    EXPECT_EQ(Tree().Selected(), &Node(1, 3));
    Select(1);
    Press(Qt::Key_D);
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2 a1", "A: a1 a2 a1", "B: b1"));
    ExpectSame();
    EXPECT_EQ(UndoName(), "Duplicate Step 1");
    EXPECT_EQ(Tree().Selected(), &Node(2));
    EXPECT_EQ(QApplication::clipboard()->text(), "") << "the clipboard is left alone";
}

TEST_F(ProfileClipboard, LeavesTextFieldsTheirKeys) {
    Bar(0);
    auto& name = Control<EntryField>("panProject", "txtName");
    name.setText("some");
    name.setFocus();
    name.selectAll();
    for (const char* command :
         {"mnuEditCutLoads", "mnuEditCopyLoads", "mnuEditPasteLoads", "mnuEditDuplicate"}) {
        EXPECT_FALSE(Enabled(command)) << command;
    }
    QTest::keyClick(&name, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(name.text(), "");
    EXPECT_EQ(QApplication::clipboard()->text(), "some");
    QTest::keyClick(&name, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(name.text(), "some");
    Bar(2);
    Properties().setFocus();
    EXPECT_FALSE(Enabled("mnuEditPasteLoads"));
    Tree().setFocus();
    EXPECT_TRUE(Enabled("mnuEditPasteLoads"));
    EXPECT_FALSE(Enabled("mnuEditPaste")) << "this one is for texts";
}

TEST_F(ProfileClipboard, ASpreadsheetGetsATable) {
    Select(2);
    Press(Qt::Key_C);
    EXPECT_EQ(
        QApplication::clipboard()->text().toStdString(),
        "Step\tKind\tName\tDescription\tQuantity\tPhases\tRunning kW\tRunning kVA\tStarting kW\tStarting "
        "kVA\nB\tMiscellaneous\tb1\t\t1\t3\t4.000\t4.000\t4.000\t4.000\n");
}

TEST_F(ProfileClipboard, WhatHoldsNoLoadsIsTold) {
    const auto before = Stored();
    const std::string undo = UndoName();
    for (const char* text : {"", "Pump\t12", "{\"Format\": 1}"}) {
        QApplication::clipboard()->setText(text);
        Window().statusBar()->clearMessage();
        Press(Qt::Key_V);
        EXPECT_EQ(Said(), "The clipboard holds no loads.") << text;
    }
    for (const char* format : {"application/x-genvara-loads+json", "application/x-genvara-steps+json"}) {
        for (const char* bytes : {"", "{", "\xff\xfe", "{\"Format\": \"genvara-project\", \"Version\": 1}"}) {
            auto* data = new QMimeData;
            data->setData(format, bytes);
            QApplication::clipboard()->setMimeData(data);
            Window().statusBar()->clearMessage();
            Press(Qt::Key_V);
            EXPECT_EQ(Said(), "The clipboard holds no loads that can be used.") << bytes;
        }
    }
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(UndoName(), undo);
    EXPECT_TRUE(platform.Take().empty()) << "no box";
}

TEST_F(ProfileClipboard, LimitsAreToldAndKept) {
    for (int load = 2; load < 256; ++load) {
        AddLoad(1, "many");
    }
    Select(1, 1);
    Press(Qt::Key_D);
    EXPECT_EQ(Profile().LoadStep(1).NumLoads(), 257);
    Press(Qt::Key_D);
    EXPECT_EQ(Profile().LoadStep(1).NumLoads(), 257);
    EXPECT_EQ(Said(), "Step 1, \"A\", takes no more loads.");
    Press(Qt::Key_C);
    Press(Qt::Key_V);
    EXPECT_EQ(Profile().LoadStep(1).NumLoads(), 257);
    EXPECT_EQ(Said(), "Step 1, \"A\", takes no more loads.");
    ExpectSame();

    for (int step = Profile().NumLoadSteps(); step < 255; ++step) {
        Profile().AddLoadStep("s", kSiteDip, 0);
    }
    Panel().ShowProfile({});
    Select(2);
    Press(Qt::Key_C);
    Press(Qt::Key_V);
    EXPECT_EQ(Profile().NumLoadSteps(), 256);
    EXPECT_FALSE(Button("cmdAddStep").isEnabled());
    Press(Qt::Key_V);
    EXPECT_EQ(Said(), "A load profile takes no more than 256 steps; this one has 256.");
    Press(Qt::Key_D);
    EXPECT_EQ(Profile().NumLoadSteps(), 256);
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(ProfileClipboard, WhatTheClipboardCannotHoldStays) {
    auto motor = std::make_unique<CMtrLoad>();
    motor->name("Odd");
    motor->HP(10);
    motor->RunningRealPower(123);  // not what 10 hp draw
    motor->RunningAppPower(456);
    motor->StartingAppPower(60000);
    motor->StartingPF(0.4);
    const std::int32_t id = Profile().LoadStep(2).AddLoad(std::move(motor));
    Panel().DisplayNewLoad(2, id);
    Select(2, 2);
    Press(Qt::Key_X);
    EXPECT_EQ(Said(), "The clipboard cannot hold load \"Odd\" as it is. Edit it, or use Duplicate.");
    ASSERT_EQ(Profile().LoadStep(2).NumLoads(), 2);
    Press(Qt::Key_D);
    ASSERT_EQ(Profile().LoadStep(2).NumLoads(), 3);
    EXPECT_TRUE(Profile().LoadStep(2).LoadItem(2)->HoldsSame(*Profile().LoadStep(2).LoadItem(1)));
}

TEST_F(ProfileClipboard, ALoadNeedsAStep) {
    Select(1, 1);
    Press(Qt::Key_C);
    Tree().setCurrentItem(nullptr);
    Tree().clearSelection();
    Run("mnuEditPasteLoads");
    EXPECT_EQ(Said(), "Select the step that the loads go into.");
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1"));
}

}  // namespace
}  // namespace genvara
