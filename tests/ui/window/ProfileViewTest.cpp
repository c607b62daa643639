// What the load profile's tree shows and keeps in view, and what a full step and an odd load do to its
// commands.

#include <QHeaderView>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include "EntryField.h"
#include "ProfileFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kMostLoads = 257;  // of a step, counting those that were taken from it

class ProfileView : public ProfileTest {
  protected:
    /// The number column, from the top.
    std::vector<std::string> Numbers() {
        std::vector<std::string> numbers;
        numbers.reserve(static_cast<std::size_t>(Tree().topLevelItemCount()));
        for (int step = 0; step < Tree().topLevelItemCount(); ++step) {
            numbers.push_back(Tree().topLevelItem(step)->text(profile_column::kNumber).toStdString());
        }
        return numbers;
    }
    bool InView(const QTreeWidgetItem& node) {
        return Tree().viewport()->rect().contains(Tree().visualItemRect(&node));
    }
    void ManySteps(int count) {
        for (int step = 1; step <= count; ++step) {
            AddStep("Step " + std::to_string(step));
            AddLoad(step, "Load");
        }
        QCoreApplication::processEvents();
    }
    void FillStep(int step) {
        for (int load = 0; load < kMostLoads; ++load) {
            AddLoad(step, "many");
        }
    }
};

TEST_F(ProfileView, NumbersTheStepsInAColumnOfItsOwn) {
    EXPECT_EQ(Tree().headerItem()->text(profile_column::kText), "Steps and loads");
    EXPECT_EQ(Tree().headerItem()->text(profile_column::kNumber), "Step");
    EXPECT_FALSE(Tree().isHeaderHidden());
    for (const char* name : {"A", "B", "C"}) {
        AddStep(name);
    }
    AddLoad(2, "b1");
    EXPECT_THAT(Numbers(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(Node(2).text(profile_column::kText), "B") << "the text is the description alone";
    EXPECT_EQ(Node(2, 1).text(profile_column::kText), "b1");
    EXPECT_EQ(Node(2, 1).text(profile_column::kNumber), "");

    Select(1);
    QTest::mouseClick(&Button("cmdMoveDown"), Qt::LeftButton);
    EXPECT_THAT(Numbers(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(Node(2).text(profile_column::kText), "A");
    const std::int32_t id = Profile().AddLoadStep("first", kSiteDip, 1);
    Panel().DisplayNewStep(1, id);
    EXPECT_THAT(Numbers(), ElementsAre("1", "2", "3", "4"));
    EXPECT_EQ(Node(1).text(profile_column::kText), "first");
    Select(2);
    QTest::mouseClick(&Button("cmdDeleteStep"), Qt::LeftButton);
    EXPECT_THAT(Numbers(), ElementsAre("1", "2", "3"));
}

TEST_F(ProfileView, KeepsTheIdsInThePropertyList) {
    AddStep("A");
    AddLoad(1, "a1");
    Select(1, 1);
    EXPECT_EQ(Rows().front(), "ID=0");
    Select(1);
    EXPECT_EQ(Rows().front(), "Step ID=0");
}

TEST_F(ProfileView, ADeletedStepOrLoadLeavesTheNewSelectionInView) {
    ManySteps(120);
    for (const int step : {60, 1, 118}) {
        Select(step);
        Tree().verticalScrollBar()->setValue(step > 60 ? 0 : Tree().verticalScrollBar()->maximum());
        ASSERT_FALSE(InView(*Tree().Selected()));
        QTest::mouseClick(&Button("cmdDeleteStep"), Qt::LeftButton);
        ASSERT_NE(Tree().Selected(), nullptr);
        EXPECT_TRUE(InView(*Tree().Selected())) << step;
    }
    Select(60, 1);
    Tree().verticalScrollBar()->setValue(0);
    QTest::mouseClick(&Button("cmdDeleteLoad"), Qt::LeftButton);
    ASSERT_NE(Tree().Selected(), nullptr);
    EXPECT_TRUE(InView(*Tree().Selected()));
}

TEST_F(ProfileView, ALoadThatWasAddedIsSelectedAndInView) {
    ManySteps(60);
    Select(30);
    Tree().verticalScrollBar()->setValue(0);
    InNextDialog([](QDialog& pick) {
        Find<QListWidget>(pick, "lstLoads").setCurrentRow(4);
        InNextDialog([](QDialog& form) {
            Find<EntryField>(form, "txtkW").setText("7");
            Find<EntryField>(form, "txtName").setText("Heater");
            Click(form, "cmdOK");
        });
        Click(pick, "cmdOK");
    });
    QTest::mouseClick(&Button("cmdAddLoad"), Qt::LeftButton);
    ASSERT_NE(Tree().Selected(), nullptr);
    EXPECT_EQ(Tree().Selected()->text(0), "Heater");
    EXPECT_EQ(Panel().SelectedStep(), 30);
    EXPECT_TRUE(InView(*Tree().Selected()));
    EXPECT_EQ(Rows()[1], "Name=Heater");
}

TEST_F(ProfileView, AnOpenedProjectShowsItsBeginning) {
    ManySteps(60);
    platform.files = {(folder / "many.prj").string()};
    Run("mnuFileSaveAs");
    Open(folder / "many.prj");
    Bar(2);
    QCoreApplication::processEvents();
    ASSERT_EQ(Tree().topLevelItemCount(), 60);
    EXPECT_TRUE(InView(Node(1)));
    EXPECT_EQ(Tree().Selected(), &Node(1));
    EXPECT_EQ(Panel().SelectedStep(), 1);
    EXPECT_EQ(Rows()[1], "Description=Step 1");
}

TEST_F(ProfileView, AFullStepTakesNoLoadAndSaysSo) {
    AddStep("A");
    AddStep("Full \"one\"");
    AddLoad(1, "Heater");
    FillStep(2);
    Select(1, 1);
    QTest::mouseClick(&Button("cmdMoveDown"), Qt::LeftButton);
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Step 2, \"Full \"one\"\", takes no more loads.");
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    EXPECT_TRUE(platform.ends.empty());
    EXPECT_EQ(Profile().LoadStep(1).NumLoads(), 1);
    EXPECT_EQ(Shown(), Stored());
    EXPECT_EQ(Tree().Selected()->text(0), "Heater");

    Select(2, 1);
    QTest::mouseClick(&Button("cmdDeleteLoad"), Qt::LeftButton);
    Select(1, 1);
    QTest::mouseClick(&Button("cmdMoveDown"), Qt::LeftButton);
    EXPECT_THAT(platform.TakeMessage().text,
                HasSubstr("count too, until the project is saved and opened again."));
    EXPECT_EQ(Profile().LoadStep(2).NumLoads(), kMostLoads - 1);
}

TEST_F(ProfileView, AStepTakesItsLastLoadByAMove) {
    AddStep("A");
    AddStep("B");
    AddLoad(1, "Heater");
    for (int load = 1; load < kMostLoads; ++load) {
        AddLoad(2, "many");
    }
    Select(1, 1);
    QTest::mouseClick(&Button("cmdMoveDown"), Qt::LeftButton);
    EXPECT_THAT(platform.Take(), IsEmpty());
    EXPECT_EQ(Profile().LoadStep(2).NumLoads(), kMostLoads);
}

}  // namespace
}  // namespace genvara
