// Steps and loads dragged to where the commands would move them.

#include <QDropEvent>
#include <QMimeData>
#include <QStatusBar>

#include "ProfileFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;

class ProfileDrag : public ProfileTest {
  protected:
    void SetUp() override {
        ProfileTest::SetUp();
        AddStep("A");
        AddLoad(1, "a1");
        AddLoad(1, "a2");
        AddStep("B");
        AddLoad(2, "b1");
        AddStep("C");
        Window().resize(1280, 800);
        QCoreApplication::processEvents();
        g_ProjectDirty = false;
    }
    /// Drops what a node is dragged as.
    /// @return whether the drop was taken.
    bool Drop(const QMimeData& data, QPoint point) {
        QDragEnterEvent enter(point, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &enter);
        QDragMoveEvent move(point, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &move);
        QDropEvent drop(point, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &drop);
        EXPECT_EQ(move.isAccepted(), drop.isAccepted());
        QCoreApplication::processEvents();
        return drop.isAccepted();
    }
    bool Drop(const QTreeWidgetItem& node, QPoint point) { return Drop(*ProfileTree::DragData(node), point); }
    QPoint Upper(const QTreeWidgetItem& node) { return Tree().visualItemRect(&node).center() - QPoint(0, 6); }
    QPoint Lower(const QTreeWidgetItem& node) { return Tree().visualItemRect(&node).center() + QPoint(0, 6); }
    QPoint Below() { return {30, Tree().viewport()->height() - 40}; }
    std::string UndoName() { return App().Document().UndoName().value_or(""); }
};

TEST_F(ProfileDrag, ALoadGoesToTheEndOfTheStepThatItIsDroppedOn) {
    EXPECT_TRUE(Drop(Node(1, 1), Upper(Node(2))));
    EXPECT_THAT(Stored(), ElementsAre("A: a2", "B: b1 a1", "C:"));
    EXPECT_EQ(Shown(), Stored());
    EXPECT_EQ(ProfileTree::LoadID(Node(2, 2)), 1) << "a new ID";
    EXPECT_EQ(Tree().Selected(), &Node(2, 2));
    EXPECT_EQ(UndoName(), "Move Load a1");
    EXPECT_FALSE(g_ProjectDirty) << "a move leaves it";
    // On a load: into that load's step. Two steps on: one change.
    EXPECT_TRUE(Drop(Node(1, 1), Lower(Node(2, 1))));
    EXPECT_TRUE(Drop(Node(2, 1), Below()));
    EXPECT_THAT(Stored(), ElementsAre("A:", "B: a1 a2", "C: b1"));
    EXPECT_EQ(Shown(), Stored());
    for (int change = 0; change < 3; ++change) {
        Run("mnuEditUndo");
    }
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1", "C:"));
    EXPECT_EQ(Shown(), Stored());
}

TEST_F(ProfileDrag, AStepGoesWhereItIsDropped) {
    const std::int32_t id = Profile().LoadStep(1).StepID();
    EXPECT_TRUE(Drop(Node(1), Lower(Node(3))));
    EXPECT_THAT(Stored(), ElementsAre("B: b1", "C:", "A: a1 a2"));
    EXPECT_EQ(Shown(), Stored());
    EXPECT_EQ(Profile().LoadStep(3).StepID(), id);
    EXPECT_EQ(Tree().Selected(), &Node(3));
    EXPECT_TRUE(Node(3).isExpanded());
    EXPECT_EQ(UndoName(), "Move Step 1");
    EXPECT_FALSE(g_ProjectDirty);
    EXPECT_TRUE(Drop(Node(3), Upper(Node(1))));
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1", "C:"));
    EXPECT_TRUE(Drop(Node(1), Upper(Node(3)))) << "before C";
    EXPECT_THAT(Stored(), ElementsAre("B: b1", "A: a1 a2", "C:"));
    EXPECT_TRUE(Drop(Node(3), Upper(Node(2)))) << "before A";
    EXPECT_THAT(Stored(), ElementsAre("B: b1", "C:", "A: a1 a2"));
    EXPECT_TRUE(Drop(Node(3), Upper(Node(1, 1)))) << "on a load: behind its step";
    EXPECT_THAT(Stored(), ElementsAre("B: b1", "A: a1 a2", "C:"));
    EXPECT_EQ(Shown(), Stored());
    Run("mnuEditUndo");
    EXPECT_THAT(Stored(), ElementsAre("B: b1", "C:", "A: a1 a2"));
}

TEST_F(ProfileDrag, NothingIsDoneWhereNothingWouldMove) {
    const std::string undo = UndoName();
    EXPECT_FALSE(Drop(Node(1, 1), Upper(Node(1))));
    EXPECT_FALSE(Drop(Node(1, 1), Upper(Node(1, 2))));
    EXPECT_FALSE(Drop(Node(1), Upper(Node(1))));
    EXPECT_FALSE(Drop(Node(1), Upper(Node(2)))) << "before B is where A stands";
    EXPECT_FALSE(Drop(Node(2), Lower(Node(1, 2))));
    EXPECT_FALSE(Drop(Node(3), Below()));
    EXPECT_THAT(Stored(), ElementsAre("A: a1 a2", "B: b1", "C:"));
    EXPECT_EQ(UndoName(), undo);
}

TEST_F(ProfileDrag, GarbageIsIgnored) {
    for (const char* text : {"", " ", "1 0 0", "1 2 3", "x y z", "99999999999999999999 0 0"}) {
        QMimeData data;
        data.setText("Pump");
        data.setData("application/x-genvara-node", text);
        EXPECT_FALSE(Drop(data, Upper(Node(2)))) << text;
    }
    QMimeData other;
    other.setText("Pump");
    other.setData("application/x-qabstractitemmodeldatalist", "\x01\x02");
    EXPECT_FALSE(Drop(other, Upper(Node(2))));
    const auto gone = ProfileTree::DragData(Node(1, 1));
    Profile().LoadStep(1).DeleteLoad(ProfileTree::LoadID(Node(1, 1)));
    Panel().ShowProfile({});
    EXPECT_FALSE(Drop(*gone, Upper(Node(2)))) << "the load is gone, and its step is not meant";
    EXPECT_THAT(Stored(), ElementsAre("A: a2", "B: b1", "C:"));
    EXPECT_EQ(Shown(), Stored());
}

TEST_F(ProfileDrag, AFullStepSaysSo) {
    for (int load = 1; load < 257; ++load) {
        AddLoad(2, "many");
    }
    Tree().topLevelItem(1)->setExpanded(false);
    QCoreApplication::processEvents();
    Drop(Node(1, 1), Upper(Node(2)));
    EXPECT_EQ(Window().statusBar()->currentMessage(), "Step 2, \"B\", takes no more loads.");
    EXPECT_EQ(Profile().LoadStep(2).NumLoads(), 257);
    EXPECT_EQ(Profile().LoadStep(1).NumLoads(), 2);
    EXPECT_TRUE(platform.Take().empty());
}

}  // namespace
}  // namespace genvara
