// What a screen reader finds in the analysis.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QHeaderView>
#include <QTreeWidget>

#include "AnalysisFixture.h"
#include "ChartView.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class AnalysisReader : public AnalysisTest {
  protected:
    template <typename Kind>
    std::string Said(const char* name, QAccessible::Text what, int row = 0) {
        QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&Page<Kind>(name));
        const QAccessibleInterface* cell = view->tableInterface()->cellAt(row, 0);
        return cell == nullptr ? std::string() : cell->text(what).toStdString();
    }
};

TEST_F(AnalysisReader, FindsAWindowAndNotAPartOfOne) {
    Analyse("quarry.prj");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&Analysis())->role(), QAccessible::Window);
}

TEST_F(AnalysisReader, IsToldTheFiguresOfABar) {
    Analyse("quarry.prj");
    ShowPage("pagSteps");
    const auto charts = Analysis().findChildren<ChartView*>();
    ASSERT_THAT(charts, Not(IsEmpty()));
    for (ChartView* chart : charts) {
        EXPECT_FALSE(chart->accessibleName().isEmpty());
    }
    const ChartView& dip = Page<ChartView>("chaStep0");
    const QModelIndex crusher = dip.model()->index(2, 0);
    EXPECT_EQ(crusher.data(Qt::AccessibleTextRole).toString().toStdString(), "Step 3");
    const std::string words = crusher.data(Qt::AccessibleDescriptionRole).toString().toStdString();
    EXPECT_THAT(words, HasSubstr("Crusher"));
    EXPECT_THAT(words, HasSubstr("18.5"));
    EXPECT_THAT(words, HasSubstr("15.0"));
    EXPECT_THAT(words, HasSubstr("fails"));
}

TEST_F(AnalysisReader, IsToldWhatAnAdviceComesTo) {
    Analyse("quarry.prj");
    ShowPage("pagAdvice");
    EXPECT_THAT(Said<GridView>("tblAdvice", QAccessible::Name), HasSubstr("Primary crusher"));
    EXPECT_THAT(Said<GridView>("tblAdvice", QAccessible::Description), HasSubstr("Set: MV1750D"));
    EXPECT_THAT(Said<GridView>("tblAdvice", QAccessible::Description), HasSubstr("In all [kW]: 1750"));
}

TEST_F(AnalysisReader, FindsAHeadingOverEveryColumn) {
    Analyse("quarry.prj");
    ShowPage("pagAdvice");
    for (const auto* table : Analysis().findChildren<GridView*>()) {
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            EXPECT_FALSE(table->model()->headerData(column, Qt::Horizontal).toString().isEmpty())
                << table->objectName().toStdString() << " " << column;
        }
    }
    for (const char* name : {"treNow", "treBest"}) {
        const auto& tree = Page<QTreeWidget>(name);
        for (int column = 0; column < tree.columnCount(); ++column) {
            EXPECT_TRUE(tree.isColumnHidden(column) || !tree.headerItem()->text(column).isEmpty()) << name;
        }
    }
}

TEST_F(AnalysisReader, IsToldWhatStandsWhereThereIsNoChartYet) {
    Analyse("quarry.prj");
    ShowPage("pagWhatIf");
    EXPECT_THAT(Page<ChartView>("chaWhatIf").accessibleName().toStdString(), HasSubstr("Work Out"));
    EXPECT_FALSE(Page<GridView>("tblPoints").isVisible());
    Click(Analysis(), "cmdWorkOut");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return Page<WhatIfPage>("pagWhatIf").Answer() != nullptr; }, kPatience));
    EXPECT_TRUE(Page<GridView>("tblPoints").isVisible());
    EXPECT_THAT(Page<ChartView>("chaWhatIf").accessibleName().toStdString(), Not(HasSubstr("Work Out")));
}

}  // namespace
}  // namespace genvara
