// Taking back and making again in the window: what is said, what is shown, and who gets the key.

#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStatusBar>
#include <QTest>
#include <array>
#include <random>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "ProfileFixture.h"
#include "ProjectFile.h"
#include "UpDown.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class UndoInTheWindow : public ProfileTest {
  protected:
    std::string Caption(const char* command) { return Find<QAction>(Window(), command).text().toStdString(); }
    std::string StatusLine() { return Find<QStatusBar>(Window(), "sbrMain").currentMessage().toStdString(); }
    std::string FileLabel() { return Find<QLabel>(Window(), "lblFile").text().toStdString(); }
    EntryField& Field(const char* panel, const char* name) { return Control<EntryField>(panel, name); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QWidget* at = QApplication::focusWidget();
        QTest::keyClick(at == nullptr ? &Window() : at, key, modifiers);
    }
    void CtrlZ() { Key(Qt::Key_Z, Qt::ControlModifier); }
    void CtrlShiftZ() { Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    /// Two steps with loads, as a file brings them: nothing to take back.
    void OpenTwoSteps() {
        AddStep("Pumps");
        AddLoad(1, "A");
        AddLoad(1, "B");
        AddStep("Fans");
        AddLoad(2, "C");
        platform.files = {(folder / "two.prj").string()};
        Run("mnuFileSaveAs");
        Open(folder / "two.prj");
        Bar(2);
    }
    std::string Bytes() {
        return RenderProject({App().Project(), App().PowerSystem(), App().LoadProfile()}, {8, 0, 0}, {})
            .bytes;
    }
};

TEST_F(UndoInTheWindow, TheEditMenuNamesWhatCanBeTakenBackBehindItsOldItems) {
    QStringList names;
    for (const QAction* action : Find<QMenu>(Window(), "mnuEdit").actions()) {
        names << action->objectName();
    }
    EXPECT_EQ(names.mid(0, 3), (QStringList{"mnuEditCut", "mnuEditCopy", "mnuEditPaste"}));
    EXPECT_EQ(names.mid(4, 2), (QStringList{"mnuEditUndo", "mnuEditRedo"}));
    OpenTwoSteps();
    EXPECT_FALSE(Enabled("mnuEditUndo"));
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo");
    Select(2);
    Button("cmdDeleteStep").click();
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Delete Step 2");
    EXPECT_FALSE(Enabled("mnuEditRedo"));
    Run("mnuEditUndo");
    EXPECT_EQ(Caption("mnuEditRedo"), "&Redo Delete Step 2");
    EXPECT_TRUE(Enabled("mnuEditRedo"));
    EXPECT_FALSE(Enabled("mnuEditUndo"));
}

TEST_F(UndoInTheWindow, AnAmpersandInANameMarksNoKey) {
    OpenTwoSteps();
    AddLoad(2, "R&D");
    Select(2, 2);
    Button("cmdDeleteLoad").click();
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Delete Load R&&D");
}

TEST_F(UndoInTheWindow, ADeletionIsSaidAndComesBackByItsKeyWithTheSameNodeSelected) {
    OpenTwoSteps();
    Select(1, 2);
    Tree().setFocus();
    Button("cmdDeleteLoad").click();
    EXPECT_EQ(StatusLine(), "Deleted load \"B\". Ctrl+Z brings it back.");
    EXPECT_THAT(Shown(), ElementsAre("Pumps: A", "Fans: C"));
    CtrlZ();
    EXPECT_EQ(StatusLine(), "Undone: Delete Load B.");
    EXPECT_THAT(Shown(), ElementsAre("Pumps: A B", "Fans: C"));
    EXPECT_EQ(Shown(), Stored());
    EXPECT_EQ(Tree().Selected(), &Node(1, 2));
    CtrlShiftZ();
    EXPECT_EQ(StatusLine(), "Redone: Delete Load B.");
    EXPECT_THAT(Shown(), ElementsAre("Pumps: A", "Fans: C"));
    Select(1);
    Button("cmdDeleteStep").click();
    EXPECT_EQ(StatusLine(), "Deleted step 1, \"Pumps\". Ctrl+Z brings it back.");
    CtrlZ();
    EXPECT_THAT(Shown(), ElementsAre("Pumps: A", "Fans: C"));
    EXPECT_EQ(Tree().Selected(), &Node(1));
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_THAT(Shown(), ElementsAre("Fans: C"));
}

TEST_F(UndoInTheWindow, DeletingStillSetsTheFlagAndTakingBackLeavesIt) {
    OpenTwoSteps();
    g_ProjectDirty = false;
    Select(1, 1);
    Button("cmdDeleteLoad").click();
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_EQ(FileLabel(), "\u25CF two.prj");
    CtrlZ();
    EXPECT_TRUE(g_ProjectDirty) << "it decides the questions, as ever";
    EXPECT_EQ(FileLabel(), "two.prj") << "the mark is true to the content";
    g_ProjectDirty = false;
    CtrlShiftZ();
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_EQ(FileLabel(), "\u25CF two.prj");
}

TEST_F(UndoInTheWindow, MovesAndDialogsCanBeTakenBack) {
    OpenTwoSteps();
    const std::vector<std::string> before = Shown();
    const auto expectOne = [&](const std::string& name, const std::vector<std::string>& after) {
        EXPECT_EQ(Shown(), after);
        EXPECT_EQ(Caption("mnuEditUndo"), "&Undo " + name);
        Run("mnuEditUndo");
        EXPECT_EQ(Shown(), before) << name;
        EXPECT_EQ(Shown(), Stored()) << name;
        EXPECT_FALSE(Enabled("mnuEditUndo")) << name;
        Run("mnuEditRedo");
        EXPECT_EQ(Shown(), after) << name;
        EXPECT_EQ(Shown(), Stored()) << name;
        Run("mnuEditUndo");
    };
    Select(1);
    Button("cmdMoveDown").click();
    expectOne("Move Step 1", {"Fans: C", "Pumps: A B"});
    Select(1, 1);
    Button("cmdMoveDown").click();
    expectOne("Move Load A", {"Pumps: B", "Fans: C A"});
    InNextDialog([](QDialog& dialog) {
        Find<EntryField>(dialog, "txtDecription").setText("New");
        Click(dialog, "cmdOK");
    });
    Button("cmdAddStep").click();
    expectOne("Add Step 3", {"Pumps: A B", "Fans: C", "New:"});
    Select(2);
    InNextDialog([](QDialog& dialog) {
        Find<EntryField>(dialog, "txtDescription").setText("Blowers");
        Click(dialog, "cmdOK");
    });
    Button("cmdEdit").click();
    expectOne("Edit Step 2", {"Pumps: A B", "Blowers: C"});
    Select(2, 1);
    InNextDialog([](QDialog& dialog) {
        Find<EntryField>(dialog, "txtName").setText("Z");
        Click(dialog, "cmdOK");
    });
    Button("cmdEdit").click();
    expectOne("Edit Load Z", {"Pumps: A B", "Fans: Z"});
    InNextDialog([](QDialog& dialog) {
        Find<QListWidget>(dialog, "lstLoads").setCurrentRow(4);
        InNextDialog([](QDialog& form) {
            Find<EntryField>(form, "txtName").setText("Heater");
            Find<EntryField>(form, "txtkW").setText("12");
            Click(form, "cmdOK");
        });
        Click(dialog, "cmdOK");
    });
    Button("cmdAddLoad").click();
    expectOne("Add Load Heater", {"Pumps: A B", "Fans: C Heater"});
}

TEST_F(UndoInTheWindow, ADialogThatIsLeftByCancelOrChangesNothingIsNoChange) {
    OpenTwoSteps();
    for (const char* way : {"cmdCancel", "cmdOK"}) {
        Select(1);
        InNextDialog([way](QDialog& dialog) { Click(dialog, way); });
        Button("cmdEdit").click();
        EXPECT_FALSE(Enabled("mnuEditUndo")) << way;
        EXPECT_EQ(FileLabel(), "two.prj") << way;
    }
}

TEST_F(UndoInTheWindow, AFieldIsOneChangeAndItsOwnUndoComesFirst) {
    Bar(0);
    EntryField& customer = Field("panProject", "txtCustomer");
    customer.setFocus();
    const std::string before = customer.Content();
    QTest::keyClicks(&customer, "Mill");
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Edit Customer");
    QTest::keyClick(&customer, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(customer.Content(), before) << "the field's own";
    EXPECT_EQ(App().Document().UndoName(), std::nullopt);
    QTest::keyClicks(&customer, "Mill");
    QTest::keyClick(&customer, Qt::Key_Tab);
    EXPECT_EQ(App().Project().Customer(), before + "Mill") << "kept as it is left";
    Field("panProject", "txtName").setFocus();
    CtrlZ();
    EXPECT_EQ(customer.Content(), before);
    EXPECT_EQ(App().Project().Customer(), before);
    CtrlShiftZ();
    EXPECT_EQ(customer.Content(), before + "Mill");
}

TEST_F(UndoInTheWindow, TheDescriptionToo) {
    Bar(0);
    auto& text = Control<QPlainTextEdit>("panProject", "txtDescription");
    text.setFocus();
    QTest::keyClicks(&text, "two");
    QTest::keyClick(&text, Qt::Key_Return);
    QTest::keyClicks(&text, "lines");
    Field("panProject", "txtName").setFocus();
    EXPECT_EQ(App().Project().Description(), "two\r\nlines");
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Edit Description");
    CtrlZ();
    EXPECT_EQ(text.toPlainText(), "");
    EXPECT_EQ(App().Project().Description(), "");
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(text.toPlainText(), "two\nlines");
}

TEST_F(UndoInTheWindow, ChoicesAreChangesAtOnceAndArrowsWhenTheFieldIsLeft) {
    Bar(1);
    const std::int32_t fuel = App().PowerSystem().Fuel();
    QTest::mouseClick(&Control<QRadioButton>("panPwrSys", "optLP"), Qt::LeftButton);
    EXPECT_EQ(App().PowerSystem().Fuel(), 3);
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Edit Fuel");
    EntryField& dip = Field("panPwrSys", "txtMaxVoltDip");
    dip.setFocus();
    QTest::keyClick(&dip, Qt::Key_Up);
    QTest::keyClick(&dip, Qt::Key_Up);
    const std::string raised = dip.Content();
    EXPECT_NE(raised, "20");
    Field("panPwrSys", "txtAltitude").setFocus();
    EXPECT_EQ(App().PowerSystem().MaxVoltageDip(), std::stoi(raised));
    CtrlZ();
    EXPECT_EQ(dip.Content(), "20");
    EXPECT_EQ(App().PowerSystem().MaxVoltageDip(), 20);
    EXPECT_EQ(App().PowerSystem().Fuel(), 3);
    CtrlZ();
    EXPECT_EQ(App().PowerSystem().Fuel(), fuel);
    EXPECT_FALSE(Control<QRadioButton>("panPwrSys", "optLP").isChecked());
    CtrlShiftZ();
    EXPECT_TRUE(Control<QRadioButton>("panPwrSys", "optLP").isChecked());
}

TEST_F(UndoInTheWindow, ABadTextIsGivenUpForWhatTheRecordHolds) {
    Bar(1);
    EntryField& altitude = Field("panPwrSys", "txtAltitude");
    altitude.setFocus();
    altitude.selectAll();
    QTest::keyClicks(&altitude, "99999");
    QTest::keyClick(&altitude, Qt::Key_Tab);
    ASSERT_TRUE(altitude.InError());
    Run("mnuEditUndo");
    EXPECT_FALSE(altitude.InError());
    EXPECT_EQ(altitude.Content(), "500");  // feet
    EXPECT_EQ(App().PowerSystem().Altitude(), 152.4);
}

TEST_F(UndoInTheWindow, GoesToThePanelWhereTheChangeIsToBeSeen) {
    OpenTwoSteps();
    Select(1, 1);
    Button("cmdDeleteLoad").click();
    Bar(0);
    Run("mnuEditUndo");
    EXPECT_EQ(ShownPanel(), "panLoadProfile");
    Bar(1);
    QTest::mouseClick(&Control<QRadioButton>("panPwrSys", "optLP"), Qt::LeftButton);
    Bar(0);
    Run("mnuEditUndo");
    EXPECT_EQ(ShownPanel(), "panPwrSys");
}

TEST_F(UndoInTheWindow, OnTheRecommendationItIsWorkedOutAnew) {
    AddStepWithLoad();
    Bar(3);
    ASSERT_EQ(ShownPanel(), "panRecommend");
    const auto smallest = [this] { return App().Designer().TotalRunningKW(); };
    EXPECT_EQ(smallest(), 50.0);
    Window().ChangeProject("Double", [this] { App().LoadProfile().LoadStep(1).begin()->Quantity(2); });
    EXPECT_EQ(ShownPanel(), "panRecommend");
    EXPECT_EQ(smallest(), 100.0);
    Run("mnuEditUndo");
    EXPECT_EQ(smallest(), 50.0);
    Run("mnuEditRedo");
    EXPECT_EQ(smallest(), 100.0);
    Window().ChangeProject("Clear", [this] { App().LoadProfile().DeleteAllLoadSteps(); });
    EXPECT_EQ(ShownPanel(), "panLoadProfile") << "there is nothing to size any more";
    EXPECT_FALSE(Enabled("mnuFilePrint"));
}

TEST_F(UndoInTheWindow, AStoreWithoutAnEntryIsNoChangeAndLeavesWhatCanBeMadeAgain) {
    App().PowerSystem().Altitude(100.04);  // shown as 328.2 ft
    App().Document().Settle();
    Open(Sample("hospital.prj"));
    Bar(2);
    Select(1);
    Button("cmdDeleteStep").click();
    CtrlZ();
    for (const int panel : {0, 1, 3, 2}) {
        Bar(panel);
        EXPECT_FALSE(Enabled("mnuEditUndo")) << panel;
        EXPECT_TRUE(Enabled("mnuEditRedo")) << panel;
    }
}

TEST_F(UndoInTheWindow, ChangesOfOthersAreShownAndCanBeTakenBack) {
    OpenTwoSteps();
    Bar(1);
    const std::string before = Bytes();
    Window().ChangeProject("Apply Advice", [this] {
        App().PowerSystem().Altitude(1000);
        App().Project().ProjName("Advised");
        App().LoadProfile().AddLoadStep("Third", 20, 1);
    });
    EXPECT_EQ(Field("panPwrSys", "txtAltitude").Content(), "3280.8");
    EXPECT_EQ(Field("panProject", "txtName").Content(), "Advised");
    EXPECT_THAT(Shown(), ElementsAre("Third:", "Pumps: A B", "Fans: C"));
    EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Apply Advice");
    Run("mnuEditUndo");
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(Field("panPwrSys", "txtAltitude").Content(), "500");
    EXPECT_THAT(Shown(), ElementsAre("Pumps: A B", "Fans: C"));
}

TEST_F(UndoInTheWindow, WhatABadFieldHoldsKeepsOthersFromChangingTheProject) {
    OpenTwoSteps();
    Bar(1);
    Field("panPwrSys", "txtAltitude").setText("99999");
    Bar(0);  // shows the field and stays
    platform.Take();
    bool ran = false;
    Window().ChangeProject("Apply Advice", [&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_THAT(platform.TakeMessage().text, HasSubstr("Invalid altitude entered"));
}

TEST_F(UndoInTheWindow, WhateverIsPressedLeadsBackToTheFirstProjectAndOnToTheLast) {
    constexpr int kDeeds = 150;
    constexpr std::array<const char*, 4> kButtons{"cmdDeleteStep", "cmdDeleteLoad", "cmdMoveUp",
                                                  "cmdMoveDown"};
    constexpr std::array<const char*, 4> kCommands{"mnuEditCutLoads", "mnuEditCopyLoads", "mnuEditPasteLoads",
                                                   "mnuEditDuplicate"};
    for (const unsigned seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        std::mt19937 dice(seed);
        const auto below = [&](int count) { return std::uniform_int_distribution<int>(0, count - 1)(dice); };
        g_ProjectDirty = false;
        Open(Sample(seed == 1 ? "hospital.prj" : "datacentre.prj"));
        for (const int panel : {1, 2}) {
            Bar(panel);  // figures are from here on as they are shown
        }
        const std::string first = Bytes();
        const std::vector<std::function<void()>> deeds{
            [&] {
                if (Tree().topLevelItemCount() > 0) {
                    const int step = 1 + below(Tree().topLevelItemCount());
                    Select(step, below(Node(step).childCount() + 1));
                }
            },
            [&] { Button(kButtons.at(static_cast<std::size_t>(below(4)))).click(); },
            [&] {
                Bar(2);
                Tree().setFocus();
                Run(kCommands.at(static_cast<std::size_t>(below(4))));
            },
            [&] {
                if (const QTreeWidgetItem* node = Tree().Selected()) {
                    emit Tree().Dropped(ProfileTree::PlaceOf(*node), 1 + below(Tree().topLevelItemCount()));
                }
            },
            [&] {
                InNextDialog([](QDialog& dialog) { Click(dialog, "cmdOK"); });
                Button("cmdAddStep").click();
            },
            [&] {
                Bar(1);
                EntryField& altitude = Field("panPwrSys", "txtAltitude");
                altitude.setFocus();
                altitude.selectAll();
                QTest::keyClicks(&altitude, QString::number(below(9) * 1000));
            },
            [&] {
                Bar(1);
                Control<ChoiceBox>("panPwrSys", "cboConn").setFocus();
                Key(below(2) == 0 ? Qt::Key_Up : Qt::Key_Down, {});
            },
            [&] {
                Bar(0);
                QTest::keyClicks(&Control<QPlainTextEdit>("panProject", "txtDescription"), "x");
            },
            [&] { Run("mnuEditUndo"); },
            [&] { Run("mnuEditRedo"); },
            [&] { Bar(below(3)); },
        };
        for (int deed = 0; deed < kDeeds; ++deed) {
            deeds.at(static_cast<std::size_t>(below(static_cast<int>(deeds.size()))))();
            ASSERT_EQ(Shown(), Stored()) << deed;
        }
        Bar(2);
        while (Enabled("mnuEditRedo")) {
            Run("mnuEditRedo");
        }
        const std::string last = Bytes();
        int changes = 0;
        while (Enabled("mnuEditUndo")) {
            Run("mnuEditUndo");
            ASSERT_EQ(Shown(), Stored());
            ++changes;
        }
        EXPECT_GT(changes, 10);
        EXPECT_EQ(Bytes(), first);
        while (Enabled("mnuEditRedo")) {
            Run("mnuEditRedo");
        }
        EXPECT_EQ(Bytes(), last);
        EXPECT_EQ(Shown(), Stored());
        platform.Take();
    }
}

}  // namespace
}  // namespace genvara
