// The load profile panel: its lists and buttons, and what the commands do to model and tree.

#include <QTest>

#include "EntryField.h"
#include "ProfileFixture.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class LoadProfilePanel : public ProfileTest {
  protected:
    /// Steps A with loads a1 and a2, B with b1, and C without.
    void ThreeSteps() {
        AddStep("A");
        AddStep("B");
        AddStep("C");
        AddLoad(1, "a1");
        AddLoad(1, "a2");
        AddLoad(2, "b1");
    }
    void ExpectSame(const std::vector<std::string>& lines) {
        EXPECT_EQ(Shown(), lines);
        EXPECT_EQ(Stored(), lines);
    }
    /// Each node's hidden cell names its object of the model.
    void ExpectCellsOfTheModel() {
        for (int step = 1; step <= Profile().NumLoadSteps(); ++step) {
            EXPECT_EQ(ProfileTree::StepID(Node(step)), Profile().LoadStep(step).StepID());
            int place = 0;
            for (const Load& load : Profile().LoadStep(step)) {
                EXPECT_EQ(ProfileTree::LoadID(Node(step, ++place)), load.ID()) << load.name();
            }
        }
    }
};

TEST_F(LoadProfilePanel, WithoutASelectionOnlyAStepCanBeAdded) {
    EXPECT_THAT(On(), ElementsAre("AddStep"));
    EXPECT_EQ(Panel().SelectedStep(), 0);
    EXPECT_THAT(Rows(), IsEmpty());
    AddStep("A");
    Tree().clearSelection();
    EXPECT_THAT(On(), ElementsAre("AddStep"));
    EXPECT_EQ(Panel().SelectedStep(), 0);
    EXPECT_THAT(Rows(), IsEmpty());
}

TEST_F(LoadProfilePanel, AStepOffersItsCommandsAndTheMovesThatItsPositionHas) {
    AddStep("A");
    Select(1);
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit"));
    AddStep("B");
    AddStep("C");
    Select(1);
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveDown"));
    Select(2);
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveUp", "MoveDown"));
    Select(3);
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveUp"));
}

TEST_F(LoadProfilePanel, ALoadOffersTheMovesThatItsStepHas) {
    AddStep("A");
    AddLoad(1, "a1");
    AddLoad(1, "a2");
    Select(1, 2);
    EXPECT_THAT(On(), ElementsAre("AddStep", "AddLoad", "DeleteLoad", "Edit"));
    AddStep("B");
    AddStep("C");
    AddLoad(2, "b1");
    AddLoad(3, "c1");
    Select(1, 2);
    EXPECT_THAT(On(), ElementsAre("AddStep", "AddLoad", "DeleteLoad", "Edit", "MoveDown"));
    Select(2, 1);
    EXPECT_THAT(On(), ElementsAre("AddStep", "AddLoad", "DeleteLoad", "Edit", "MoveUp", "MoveDown"));
    Select(3, 1);
    EXPECT_THAT(On(), ElementsAre("AddStep", "AddLoad", "DeleteLoad", "Edit", "MoveUp"));
}

TEST_F(LoadProfilePanel, TheSelectedStepIsThatOfAStepOrOfALoadsParent) {
    ThreeSteps();
    Select(3);
    EXPECT_EQ(Panel().SelectedStep(), 3);
    Select(2, 1);
    EXPECT_EQ(Panel().SelectedStep(), 2);
    EXPECT_EQ(Window().SelectedStep(), 2);
}

TEST_F(LoadProfilePanel, ShowsAStepsPropertiesInTwoColumns) {
    const std::int32_t id = AddStep("Pumps");
    AddLoad(1, "Heater", 50000);
    AddLoad(1, "Lamp", 2500);
    Select(1, 1);
    Select(1);
    // Unity power factor, and a miscellaneous load starts as it runs: 50 + 2.5 kW throughout.
    EXPECT_THAT(Rows(), ElementsAre("Step ID=" + std::to_string(id), "Description=Pumps",
                                    "Voltage Dip Override=20", "Running kW=52.500", "Running kVA=52.500",
                                    "Starting kW=52.500", "Starting kVA=52.500"));
    EXPECT_EQ(Properties().columnCount(), 2);
}

TEST_F(LoadProfilePanel, ShowsALoadsProperties) {
    AddStep("Pumps");
    AddLoad(1, "Heater", 50000);
    Select(1, 1);
    EXPECT_THAT(Rows(), ElementsAre("ID=0", "Name=Heater", "Qty=1", "Phases=3", "Running kW=50.000",
                                    "Running PF=1.00"));
    Select(1);
    EXPECT_EQ(Rows().front(), "Step ID=0") << "refilled, not added to";
    EXPECT_EQ(Rows().size(), 7U);
}

TEST_F(LoadProfilePanel, AValueWithATabIsShownWhole) {
    AddStep("left\tright");
    EXPECT_THAT(Rows(), Contains("Description=left\tright"));
}

TEST_F(LoadProfilePanel, PropertiesFollowALoadThatIsAddedToTheSelectedStep) {
    AddStep("Pumps");
    AddLoad(1, "Heater", 50000);
    EXPECT_THAT(Rows(), Contains("Running kW=50.000"));
}

TEST_F(LoadProfilePanel, AnOpenedProjectShowsThePropertiesOfItsSelectedStep) {
    Open(Sample("workshop.prj"));
    ASSERT_GT(Profile().NumLoadSteps(), 0);
    ASSERT_GT(Profile().LoadStep(1).NumLoads(), 0);
    EXPECT_EQ(Panel().SelectedStep(), 1);
    std::vector<std::string> expected = Profile().LoadStep(1).GetProps();
    for (std::string& row : expected) {
        row[row.find('\t')] = '=';
    }
    EXPECT_EQ(Rows(), expected);
    EXPECT_EQ(Shown(), Stored());
    ExpectCellsOfTheModel();
}

TEST_F(LoadProfilePanel, AStepThatIsShownAtAPositionShiftsTheOthers) {
    ThreeSteps();
    const std::int32_t id = Profile().AddLoadStep("New", 20, 2);
    Panel().DisplayNewStep(2, id);
    ExpectSame({"A: a1 a2", "New:", "B: b1", "C:"});
    EXPECT_EQ(ProfileTree::StepID(Node(2)), id);
    EXPECT_TRUE(Node(2).isExpanded());
    EXPECT_TRUE(Node(2).isSelected());
    EXPECT_THAT(Rows(), Contains("Description=New"));
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveUp", "MoveDown"));
    EXPECT_FALSE(g_ProjectDirty);
}

TEST_F(LoadProfilePanel, AnInsertedStepShiftsThePositionOfTheSelection) {
    ThreeSteps();
    Panel().DisplayNewStep(1, Profile().AddLoadStep("New", 20, 1));
    Select(3, 1);
    EXPECT_EQ(Panel().SelectedStep(), 3);
    EXPECT_THAT(Rows(), Contains("Name=b1"));
    Click(Window(), "cmdDeleteLoad");
    ExpectSame({"New:", "A: a1 a2", "B:", "C:"});
}

TEST_F(LoadProfilePanel, ALoadIsShownLastAndItsStepStaysOpen) {
    AddStep("A");
    EXPECT_EQ(AddLoad(1, "a1"), 0);
    EXPECT_EQ(AddLoad(1, "a2"), 1);
    ExpectSame({"A: a1 a2"});
    ExpectCellsOfTheModel();
    EXPECT_TRUE(Node(1).isExpanded());
    EXPECT_FALSE(g_ProjectDirty) << "the entry form raises the flag";
}

TEST_F(LoadProfilePanel, FailuresToShowArePassedOn) {
    AddStep("A");
    EXPECT_THAT([this] { Panel().DisplayNewStep(2, 7); },
                Raises(errors::FromBase(0x64), "CLoadProfile::LoadStep", "Invalid load step number."));
    EXPECT_THAT([this] { Panel().DisplayNewLoad(2, 0); },
                Raises(errors::FromBase(0x64), "CLoadProfile::LoadStep", "Invalid load step number."));
    EXPECT_THAT([this] { Panel().DisplayNewLoad(1, 5); },
                Raises(errors::FromBase(2), "panLoadProfile::DisplayNewLoad",
                       "The load requested could not be found."));
    EXPECT_THAT(Shown(), ElementsAre("A:"));
    EXPECT_TRUE(Tree().updatesEnabled());
}

TEST_F(LoadProfilePanel, ClearedItOffersOnlyToAddAStep) {
    ThreeSteps();
    Button("cmdAddStep").setEnabled(false);
    Profile().DeleteAllLoadSteps();
    Panel().ClearAllLoads();
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(Panel().SelectedStep(), 0);
    EXPECT_THAT(On(), ElementsAre("AddStep"));
}

TEST_F(LoadProfilePanel, With256StepsNoneIsAddedUntilOneIsDeleted) {
    for (int step = 1; step <= 255; ++step) {
        AddStep("Step");
    }
    EXPECT_THAT(On(), Contains("AddStep"));
    InNextDialog([](QDialog& dialog) { Click(dialog, "cmdOK"); });
    Click(Window(), "cmdAddStep");
    ASSERT_EQ(Profile().NumLoadSteps(), 256);
    EXPECT_FALSE(Button("cmdAddStep").isEnabled());
    Select(1);
    EXPECT_FALSE(Button("cmdAddStep").isEnabled());
    Click(Window(), "cmdDeleteStep");
    ASSERT_EQ(Profile().NumLoadSteps(), 255);
    EXPECT_TRUE(Button("cmdAddStep").isEnabled());
}

TEST_F(LoadProfilePanel, ADeletedStepGoesWithoutAQuestionAndItsNeighbourIsSelected) {
    ThreeSteps();
    Select(1);
    Click(Window(), "cmdDeleteStep");
    ExpectSame({"B: b1", "C:"});
    EXPECT_EQ(Panel().SelectedStep(), 1);
    EXPECT_THAT(Rows(), Contains("Description=B"));
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveDown"));
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(LoadProfilePanel, TheMiddleAndTheLastStepGoWithTheirOwnNodes) {
    ThreeSteps();
    AddStep("D");
    Select(3);
    Click(Window(), "cmdDeleteStep");
    ExpectSame({"A: a1 a2", "B: b1", "D:"});
    EXPECT_EQ(Panel().SelectedStep(), 3);
    EXPECT_THAT(Rows(), Contains("Description=D"));
    Click(Window(), "cmdDeleteStep");
    ExpectSame({"A: a1 a2", "B: b1"});
    EXPECT_EQ(Panel().SelectedStep(), 2);
    EXPECT_THAT(Rows(), Contains("Description=B"));
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(LoadProfilePanel, WithoutItsOnlyStepNothingIsLeftToDo) {
    AddStep("A");
    AddLoad(1, "a1");
    Select(1);
    Click(Window(), "cmdDeleteStep");
    ExpectSame({});
    EXPECT_THAT(On(), ElementsAre("AddStep"));
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(Panel().SelectedStep(), 0);
    EXPECT_TRUE(g_ProjectDirty);
}

TEST_F(LoadProfilePanel, ADeletedLoadGoesWithoutAQuestion) {
    ThreeSteps();
    Select(1, 1);
    Click(Window(), "cmdDeleteLoad");
    ExpectSame({"A: a2", "B: b1", "C:"});
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_THAT(Rows(), Contains("Name=a2"));
    Click(Window(), "cmdDeleteLoad");
    ExpectSame({"A:", "B: b1", "C:"});
    EXPECT_EQ(Panel().SelectedStep(), 1);
    EXPECT_THAT(Rows(), Contains("Description=A"));
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveDown"));
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(LoadProfilePanel, ALoadThatCannotBeDeletedStaysShown) {
    ThreeSteps();
    Select(1, 1);
    Profile().LoadStep(1).DeleteLoad(0);
    Click(Window(), "cmdDeleteLoad");
    EXPECT_THAT(Shown(), ElementsAre("A: a1 a2", "B: b1", "C:"));
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_THAT(platform.Take(), IsEmpty());
}

TEST_F(LoadProfilePanel, TheDeleteKeyDeletesWhatIsSelected) {
    ThreeSteps();
    Select(1, 2);
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    ExpectSame({"A: a1", "B: b1", "C:"});
    Select(2);
    QTest::keyClick(&Tree(), Qt::Key_Delete, Qt::KeypadModifier);
    ExpectSame({"A: a1", "C:"});
    Tree().clearSelection();
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    ExpectSame({"A: a1", "C:"});
}

TEST_F(LoadProfilePanel, AButtonThatGoesOffHandsTheFocusToTheTree) {
    AddStep("A");
    AddStep("B");
    AddLoad(1, "a1");
    Select(1, 1);
    Button("cmdDeleteLoad").setFocus();
    QTest::keyClick(&Button("cmdDeleteLoad"), Qt::Key_Space);
    ExpectSame({"A:", "B:"});
    EXPECT_TRUE(Tree().hasFocus()) << "a second press must not delete the step";
    Select(2);
    Button("cmdMoveUp").setFocus();
    QTest::keyClick(&Button("cmdMoveUp"), Qt::Key_Space);
    ExpectSame({"B:", "A:"});
    EXPECT_TRUE(Tree().hasFocus()) << "a second press must not move it back";
}

TEST_F(LoadProfilePanel, AMovedStepKeepsItsLoadsItsIDAndTheSelection) {
    ThreeSteps();
    const std::int32_t id = Profile().LoadStep(1).StepID();
    Select(1);
    Click(Window(), "cmdMoveDown");
    ExpectSame({"B: b1", "A: a1 a2", "C:"});
    EXPECT_EQ(Profile().LoadStep(2).StepID(), id);
    EXPECT_TRUE(Node(2).isSelected());
    EXPECT_TRUE(Node(2).isExpanded());
    EXPECT_EQ(Panel().SelectedStep(), 2);
    Click(Window(), "cmdMoveDown");
    ExpectSame({"B: b1", "C:", "A: a1 a2"});
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveUp"));
    Click(Window(), "cmdMoveUp");
    Click(Window(), "cmdMoveUp");
    ExpectSame({"A: a1 a2", "B: b1", "C:"});
    EXPECT_THAT(On(), ElementsAre("AddStep", "DeleteStep", "AddLoad", "Edit", "MoveDown"));
    ExpectCellsOfTheModel();
    EXPECT_THAT(Rows(), Contains("Description=A"));
}

TEST_F(LoadProfilePanel, AStepThatWasClosedStaysClosedWhereItIsMoved) {
    ThreeSteps();
    Node(1).setExpanded(false);
    Select(1);
    Click(Window(), "cmdMoveDown");
    EXPECT_FALSE(Node(2).isExpanded());
    EXPECT_TRUE(Node(1).isExpanded());
}

TEST_F(LoadProfilePanel, AMovedLoadHasANewIDAndComesLast) {
    ThreeSteps();
    AddLoad(2, "b2");
    Load* moved = Profile().LoadStep(1).LoadItem(0);
    Select(1, 1);
    Click(Window(), "cmdMoveDown");
    ExpectSame({"A: a2", "B: b1 b2 a1", "C:"});
    EXPECT_EQ(moved->ID(), 2) << "0 and 1 are taken";
    EXPECT_EQ(Profile().LoadStep(2).LoadItem(2), moved);
    ExpectCellsOfTheModel();
    EXPECT_TRUE(Node(2, 3).isSelected());
    EXPECT_EQ(Panel().SelectedStep(), 2);
    EXPECT_THAT(Rows(), Contains("ID=2"));
    Click(Window(), "cmdMoveUp");
    ExpectSame({"A: a2 a1", "B: b1 b2", "C:"});
    EXPECT_EQ(moved->ID(), 2) << "IDs are not given twice: A has had 0 and 1";
    ExpectCellsOfTheModel();
}

TEST_F(LoadProfilePanel, ALoadMovedToAClosedStepIsSeenThere) {
    ThreeSteps();
    Node(2).setExpanded(false);
    Select(1, 1);
    Click(Window(), "cmdMoveDown");
    EXPECT_TRUE(Node(2).isExpanded());
}

TEST_F(LoadProfilePanel, MovesAndNewStepsLeaveTheDirtyFlagAndRaiseNoPrompt) {
    ThreeSteps();
    const auto change = [this] {
        Select(1);
        Click(Window(), "cmdMoveDown");
        Click(Window(), "cmdMoveUp");
        Select(1, 1);
        Click(Window(), "cmdMoveDown");
        InNextDialog([](QDialog& dialog) { Click(dialog, "cmdOK"); });
        Click(Window(), "cmdAddStep");
    };
    g_ProjectDirty = true;
    change();
    EXPECT_TRUE(g_ProjectDirty);
    g_ProjectDirty = false;
    change();
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(platform.Take().at(0).what, "closehelp");
}

TEST_F(LoadProfilePanel, AStepIsEditedByButtonEnterAndDoubleClick) {
    ThreeSteps();
    Select(2);
    int times = 0;
    const auto rename = [&times](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmEditStep");
        Find<EntryField>(dialog, "txtDescription").setText("B" + QString::number(++times));
        Click(dialog, "cmdOK");
    };
    InNextDialog(rename);
    Click(Window(), "cmdEdit");
    ExpectSame({"A: a1 a2", "B1: b1", "C:"});
    EXPECT_THAT(Rows(), Contains("Description=B1"));
    InNextDialog(rename);
    QTest::keyClick(&Tree(), Qt::Key_Return);
    InNextDialog(rename);
    QTest::keyClick(&Tree(), Qt::Key_Enter, Qt::KeypadModifier);
    ExpectSame({"A: a1 a2", "B3: b1", "C:"});
    InNextDialog(rename);
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualItemRect(&Node(2)).center());
    ExpectSame({"A: a1 a2", "B4: b1", "C:"});
    EXPECT_TRUE(Node(2).isExpanded());
    EXPECT_FALSE(g_ProjectDirty) << "editing a step leaves the flag";
}

TEST_F(LoadProfilePanel, ALoadIsEditedInTheFormOfItsKind) {
    ThreeSteps();
    Select(2, 1);
    InNextDialog([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmMiscLoad");
        EXPECT_EQ(Find<EntryField>(dialog, "txtName").text(), "b1");
        EXPECT_EQ(Find<EntryField>(dialog, "txtStepNum").text(), "2");
        Find<EntryField>(dialog, "txtName").setText("fan");
        Find<EntryField>(dialog, "txtkW").setText("7.5");
        Click(dialog, "cmdOK");
    });
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualItemRect(&Node(2, 1)).center());
    ExpectSame({"A: a1 a2", "B: fan", "C:"});
    EXPECT_THAT(Rows(), Contains("Running kW=7.500"));
}

TEST_F(LoadProfilePanel, NothingIsEditedWithoutASelection) {
    ThreeSteps();
    Tree().clearSelection();
    QTest::keyClick(&Tree(), Qt::Key_Return);
    QTest::mouseDClick(Tree().viewport(), Qt::LeftButton, {},
                       QPoint(Tree().viewport()->width() / 2, Tree().viewport()->height() - 2));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(LoadProfilePanel, KnowsWhichOfItsControlsHasTheFocus) {
    AddStep("A");
    Tree().setFocus();
    EXPECT_EQ(Panel().ActiveCtrl(), &Tree());
    Panel().ProjectName("Mill");
    EXPECT_EQ(Panel().ProjectName(), "Mill");
}

}  // namespace
}  // namespace genvara
