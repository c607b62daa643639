// What the load profile's rows show beside their names, and which columns there is room for.

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSplitter>
#include <QTest>

#include "CMtrLoad.h"
#include "ProfileFixture.h"
#include "ProfileTotals.h"

namespace genvara {
namespace {

using testing::ElementsAre;

constexpr int kRunningKW = profile_column::ColumnOf(PowerKind::RunningReal);
constexpr int kRunningKVA = profile_column::ColumnOf(PowerKind::RunningApparent);
constexpr int kStartingKW = profile_column::ColumnOf(PowerKind::StartingReal);
constexpr int kStartingKVA = profile_column::ColumnOf(PowerKind::StartingApparent);

class ProfileColumns : public ProfileTest {
  protected:
    /// 8 kW and 10 kVA (6 kvar) running; 60 kVA at a starting power factor.
    std::int32_t AddMotor(std::int32_t step, const std::string& name, double startingPF = 0.5,
                          std::int32_t quantity = 1) {
        auto motor = std::make_unique<CMtrLoad>();
        motor->name(name);
        motor->HP(10);
        motor->RunningRealPower(8000);
        motor->RunningAppPower(10000);
        motor->StartingAppPower(60000);
        motor->StartingPF(startingPF);
        motor->Quantity(quantity);
        const std::int32_t id = Profile().LoadStep(step).AddLoad(std::move(motor));
        Panel().DisplayNewLoad(step, id);
        return id;
    }
    /// All cells of a row behind its name.
    static std::vector<std::string> Cells(const QTreeWidgetItem& node) {
        std::vector<std::string> cells;
        for (int column = profile_column::kQuantity; column < profile_column::kCount; ++column) {
            cells.push_back(node.text(column).toStdString());
        }
        return cells;
    }
    std::vector<std::string> Totals() {
        std::vector<std::string> texts;
        for (const char* name :
             {"lblTotalRunningKW", "lblTotalRunningKVA", "lblTotalStartingKW", "lblTotalStartingKVA"}) {
            texts.push_back(Total(name).text().toStdString());
        }
        return texts;
    }
    QLabel& Total(const char* name) { return Control<QLabel>("panLoadProfile", name); }
    /// Columns that are shown, in the order of their numbers.
    std::vector<int> Shown() {
        std::vector<int> columns;
        for (int column = 0; column < profile_column::kCount; ++column) {
            if (!Tree().isColumnHidden(column)) {
                columns.push_back(column);
            }
        }
        return columns;
    }
    /// Gives the tree a width.
    void Widen(int width) { Tree().resize(width, Tree().height()); }
};

TEST_F(ProfileColumns, ShowWhatALoadDrawsWithAllItsUnits) {
    AddStep("A");
    AddMotor(1, "Pump", 0.5, 3);
    Profile().LoadStep(1).LoadItem(AddMotor(1, "Fan"))->Phases(2);
    // 3 x 8, 3 x 10, 3 x 60 x 0.5, 3 x 60
    EXPECT_THAT(Cells(Node(1, 1)), ElementsAre("3", "3", "24.00", "30.00", "90.00", "180.00"));
    EXPECT_THAT(Cells(Node(1, 2)), ElementsAre("1", "B", "8.00", "10.00", "30.00", "60.00"));
}

TEST_F(ProfileColumns, ShowTheTotalsOfAStepAndOfTheSite) {
    AddStep("A");
    AddMotor(1, "Pump");
    AddLoad(1, "Heater", 4000);
    AddStep("B");
    AddLoad(2, "Oven", 12000);
    // 12 kW with 6 kvar; 34 kW with the motor's 51.9615 kvar
    EXPECT_THAT(Cells(Node(1)), ElementsAre("", "", "12.00", "13.42", "34.00", "62.10"));
    EXPECT_THAT(Cells(Node(2)), ElementsAre("", "", "12.00", "12.00", "12.00", "12.00"));
    // 24 kW with 6 kvar; 46 kW with 51.9615 kvar
    EXPECT_THAT(Totals(), ElementsAre("24.00", "24.74", "46.00", "69.40"));
    EXPECT_EQ(Total("lblTotals").text(), "All steps");
}

TEST_F(ProfileColumns, FollowEveryCommand) {
    AddStep("A");
    AddStep("B");
    AddLoad(1, "Heater", 4000);
    AddLoad(2, "Oven", 12000);
    EXPECT_EQ(Totals().front(), "16.00");
    Select(1, 1);
    QTest::mouseClick(&Button("cmdMoveDown"), Qt::LeftButton);
    EXPECT_EQ(Node(1).text(kRunningKW), "0.00");
    EXPECT_EQ(Node(2).text(kRunningKW), "16.00");
    EXPECT_EQ(Totals().front(), "16.00");
    Select(2, 1);
    QTest::mouseClick(&Button("cmdDeleteLoad"), Qt::LeftButton);
    EXPECT_EQ(Totals().front(), "4.00");
    Run("mnuEditUndo");
    EXPECT_EQ(Totals().front(), "16.00");
    Select(2);
    QTest::mouseClick(&Button("cmdDeleteStep"), Qt::LeftButton);
    EXPECT_EQ(Totals().front(), "0.00");
    Window().ChangeProject("Test", [this] { Profile().AddLoadStep("C", kSiteDip, 0); });
    Run("mnuEditUndo");
    Run("mnuEditUndo");
    EXPECT_EQ(Totals().front(), "16.00");
    Select(2, 1);
    InNextDialog([](QDialog& form) {
        Find<QLineEdit>(form, "txtkW").setText("20");
        Click(form, "cmdOK");
    });
    QTest::mouseClick(&Button("cmdEdit"), Qt::LeftButton);
    EXPECT_EQ(Totals().front(), "24.00");
    Panel().ClearAllLoads();
    Profile().DeleteAllLoadSteps();
    AddStep("D");
    EXPECT_EQ(Totals().front(), "0.00");
}

TEST_F(ProfileColumns, AFigureThatCannotBeWorkedOutSaysWhy) {
    AddStep("A");
    AddStep("B");
    AddLoad(1, "Heater", 4000);
    AddMotor(2, "Chiller", 1.38);
    const QString cause = "Invalid procedure call or argument";
    EXPECT_EQ(Node(2, 1).text(kRunningKVA), "10.00");
    EXPECT_EQ(Node(2, 1).text(kStartingKVA), "60.00") << "this one can be";
    EXPECT_EQ(Node(2).text(kRunningKVA), "10.00");
    EXPECT_EQ(Node(2).text(kStartingKVA), "?");
    EXPECT_EQ(Node(2).toolTip(kStartingKVA), "Load \"Chiller\": " + cause);
    EXPECT_EQ(Node(2).toolTip(kRunningKVA), "");
    EXPECT_EQ(Node(1).text(kStartingKVA), "4.00");
    EXPECT_EQ(Totals()[1], "13.42") << "12 kW and 6 kvar";
    EXPECT_EQ(Totals()[3], "?");
    EXPECT_EQ(Total("lblTotalStartingKVA").toolTip(), "Step 2, \"B\": Load \"Chiller\": " + cause);
    EXPECT_TRUE(platform.ends.empty());
}

TEST_F(ProfileColumns, StandRightWithOneHeaderEach) {
    AddStep("A");
    AddLoad(1, "Heater");
    EXPECT_EQ(Tree().columnCount(), 8);
    for (int column = profile_column::kNumber; column < profile_column::kCount; ++column) {
        for (const QTreeWidgetItem* row : {&Node(1), &Node(1, 1)}) {
            EXPECT_EQ(row->data(column, Qt::TextAlignmentRole).toInt(),
                      int(Qt::AlignRight | Qt::AlignVCenter));
        }
    }
    EXPECT_EQ(Tree().headerItem()->text(kStartingKVA), "Starting\nkVA");
    EXPECT_EQ(Tree().headerItem()->data(kStartingKVA, Qt::AccessibleTextRole).toString(), "Starting kVA");
}

TEST_F(ProfileColumns, TheLeastImportantGoFirst) {
    AddStep("A");
    Widen(900);
    EXPECT_EQ(Shown().size(), 8U);
    const std::vector<int> order{profile_column::kPhases,   kStartingKW,  kRunningKVA,
                                 profile_column::kQuantity, kStartingKVA, kRunningKW};
    std::vector<int> gone;
    for (int width = 900; width > 100; width -= 4) {
        Widen(width);
        for (const int column : order) {
            if (Tree().isColumnHidden(column) && std::ranges::find(gone, column) == gone.end()) {
                gone.push_back(column);
            }
        }
        EXPECT_EQ(Tree().horizontalScrollBar()->maximum(), 0) << width;
        EXPECT_FALSE(Tree().isColumnHidden(profile_column::kText));
        EXPECT_FALSE(Tree().isColumnHidden(profile_column::kNumber));
    }
    EXPECT_EQ(gone, order);
    Widen(900);
    EXPECT_EQ(Shown().size(), 8U) << "and they come back";
}

TEST_F(ProfileColumns, TheFirstSizeOfTheWindowHasRoomForThree) {
    Window().resize(800, 567);
    AddStep("A");
    QCoreApplication::processEvents();
    EXPECT_THAT(Shown(), testing::IsSupersetOf({profile_column::kQuantity, kRunningKW, kStartingKVA}));
    Window().resize(1000, 567);
    QCoreApplication::processEvents();
    EXPECT_THAT(Shown(), testing::IsSupersetOf({kRunningKW, kRunningKVA, kStartingKW, kStartingKVA}));
}

TEST_F(ProfileColumns, NoFigureIsCut) {
    AddStep("A");
    Widen(900);
    const int before = Tree().columnWidth(kRunningKW);
    for (int load = 0; load < 200; ++load) {
        Profile().LoadStep(1).LoadItem(AddLoad(1, "Works", 2000000))->Quantity(256);
    }
    AddLoad(1, "Lamp");
    // 200 x 256 x 2000 kW and one of 1 kW
    EXPECT_EQ(Totals().front(), "102400001.00");
    EXPECT_GT(Tree().columnWidth(kRunningKW), before);
    for (const PowerKind kind : kPowerKinds) {
        const int column = profile_column::ColumnOf(kind);
        QFont bold = Tree().font();
        bold.setBold(true);
        EXPECT_TRUE(Tree().isColumnHidden(column) ||
                    Tree().columnWidth(column) > QFontMetrics(bold).horizontalAdvance("102400001.00"));
    }
}

TEST_F(ProfileColumns, TheTotalsStandUnderTheirColumns) {
    AddStep("A");
    Window().resize(1280, 800);
    QCoreApplication::processEvents();
    auto& totals = Control<ProfileTotals>("panLoadProfile", "fraTotals");
    for (const auto& [name, column] :
         {std::pair{"lblTotalRunningKW", kRunningKW}, std::pair{"lblTotalStartingKVA", kStartingKVA}}) {
        const int cell =
            Tree().viewport()->mapTo(&Window(), QPoint(Tree().columnViewportPosition(column), 0)).x();
        const int label = Total(name).mapTo(&Window(), QPoint(0, 0)).x();
        EXPECT_LE(std::abs(label - cell), 6) << name;
        EXPECT_TRUE(Total(name).isVisible());
    }
    Window().resize(800, 567);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Total("lblTotalRunningKVA").isVisible());
    EXPECT_TRUE(totals.isVisible());
}

TEST_F(ProfileColumns, ARowIsReadAsAWhole) {
    AddStep("A");
    AddMotor(1, "Pump", 0.5, 2);
    const QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&Tree());
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(Node(1, 1).data(0, Qt::AccessibleDescriptionRole).toString(),
              "quantity 2, phases 3, running 16.00 kW, 20.00 kVA, starting 60.00 kW, 120.00 kVA");
    EXPECT_EQ(Node(1).data(0, Qt::AccessibleDescriptionRole).toString(),
              "step 1, running 16.00 kW, 20.00 kVA, starting 60.00 kW, 120.00 kVA");
    EXPECT_EQ(Control<QWidget>("panLoadProfile", "fraTotals").accessibleName(),
              "All steps: running 16.00 kW, 20.00 kVA, starting 60.00 kW, 120.00 kVA");
    EXPECT_EQ(Total("lblTotalRunningKVA").accessibleName(), "Running kVA of all steps: 20.00");
}

}  // namespace
}  // namespace genvara
