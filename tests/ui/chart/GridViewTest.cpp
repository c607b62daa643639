// A table in a window: what it shows, sorts, chooses and gives away.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include "GridView.h"

namespace genvara {
namespace {

TextGrid Sets() {
    return {.title = "Listed sets",
            .columns = {{.caption = "Set"}, {.caption = "Rated\nkW", .isNumber = true}},
            .rows = {{TextCell("MV90"), NumberCell(90.0, 0)},
                     {TextCell("MV1000"), NumberCell(1000.0, 0)},
                     {TextCell("MV,\"200\"\tD"), NumberCell(200.25, 1)}}};
}

QStringList FirstColumn(const GridView& view) {
    QStringList texts;
    for (const auto& row : view.Shown().rows) {
        texts += row.front().text;
    }
    return texts;
}

TEST(GridView, SortsNumbersAsNumbersAndKeepsTheRowThatWasChosen) {
    GridView view("tbl", GridView::Choose::Rows);
    view.Show(Sets());
    EXPECT_EQ(FirstColumn(view), QStringList({"MV90", "MV1000", "MV,\"200\"\tD"}));
    view.ChooseRow(1);
    view.sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(FirstColumn(view), QStringList({"MV90", "MV,\"200\"\tD", "MV1000"}));
    EXPECT_EQ(view.ChosenRow(), 1) << "as the table was given";
    EXPECT_EQ(view.currentIndex().row(), 2) << "as it is shown";
    view.sortByColumn(-1, Qt::AscendingOrder);
    EXPECT_EQ(FirstColumn(view), QStringList({"MV90", "MV1000", "MV,\"200\"\tD"}))
        << "and back to its own order";
}

TEST(GridView, TellsOfARowThatTheUserChoosesAndOpens) {
    GridView view("tbl", GridView::Choose::Rows);
    view.Show(Sets());
    view.show();
    const QSignalSpy chosen(&view, &GridView::Chosen);
    const QSignalSpy opened(&view, &GridView::Opened);
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Down);
    ASSERT_FALSE(chosen.isEmpty());
    EXPECT_EQ(chosen.last().at(0).toInt(), view.ChosenRow());
    QTest::keyClick(&view, Qt::Key_Return);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.last().at(0).toInt(), view.ChosenRow());
    const auto told = chosen.size();
    view.Show(Sets());
    EXPECT_EQ(chosen.size(), told) << "another table of the same rows is no choice";
}

TEST(GridView, ARowThatIsChosenTellsAllItsCells) {
    TextGrid grid = Sets();
    grid.columns.push_back({});
    for (auto& row : grid.rows) {
        row.push_back(TextCell("follows"));
    }
    grid.rows[1][1] = {};
    GridView view("tbl", GridView::Choose::Rows);
    view.Show(grid);
    const auto words = [&](int row) {
        return view.model()->index(row, 0).data(Qt::AccessibleDescriptionRole).toString();
    };
    EXPECT_EQ(words(0), "Rated kW: 90, follows");
    EXPECT_EQ(words(1), "follows");
    grid.columns[0].isNumber = true;
    view.Show(grid);
    EXPECT_EQ(view.model()->index(0, 0).data(Qt::AccessibleTextRole), "Set MV90") << "as in \"Step 3\"";
}

TEST(GridView, RowsAreAllOfOneHeightHoweverLongTheirTexts) {
    TextGrid grid = Sets();
    const QString sentence = "Start the loads in four steps instead of the present two. ";
    grid.rows[1][0] = TextCell(sentence.repeated(2));
    grid.rows[2][0] = TextCell(sentence.repeated(9));
    GridView view("tbl", GridView::Choose::Rows);
    view.Stretch(0);
    view.resize(460, 300);
    view.show();
    view.Show(grid);
    QCoreApplication::processEvents();
    const int line = view.fontMetrics().lineSpacing();
    EXPECT_GE(view.rowHeight(0), 2 * line);
    EXPECT_LT(view.rowHeight(0), 3 * line) << "a longer text has its tip";
    EXPECT_EQ(view.rowHeight(1), view.rowHeight(0));
    EXPECT_EQ(view.rowHeight(2), view.rowHeight(0));
    view.Show(Sets());
    QCoreApplication::processEvents();
    EXPECT_LT(view.rowHeight(0), 2 * line) << "and no higher than they need";
}

TEST(GridView, NamesAsideAreTheRowsHeaders) {
    GridView view("tbl", GridView::Choose::Cells);
    view.Show(Sets());
    EXPECT_EQ(view.model()->columnCount(), 1);
    EXPECT_EQ(view.model()->headerData(1, Qt::Vertical, Qt::DisplayRole).toString(), "MV1000");
    EXPECT_EQ(view.model()->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), "Rated\nkW");
    EXPECT_EQ(view.Shown().columns.size(), 2U) << "what is taken along has them again";
}

TEST(TextGrid, CopiesAsTabsAndLines) {
    EXPECT_EQ(TabText(Sets()),
              "Set\tRated kW\nMV90\t90\nMV1000\t1000\nMV,\"200\" D\t" + ShownNumber(200.3, 1) + "\n")
        << "200.25 rounds half away from zero, and a tab in a cell is a blank";
}

TEST(TextGrid, NoTextIsTakenForAFormula) {
    TextGrid grid{.title = {}, .columns = {{.caption = "Load"}, {.caption = "Left"}}, .rows = {}};
    grid.rows.push_back({TextCell("=1+1"), NumberCell(-1.5, 1, " %")});
    EXPECT_EQ(TabText(grid), "Load\tLeft\n'=1+1\t" + ShownNumber(-1.5, 1) + " %\n");
    EXPECT_EQ(CsvText(grid), QByteArray("Load,Left\n'=1+1,-1.5\n"));
}

TEST(TextGrid, SavesAsCsvWithPointsQuotesAndAllDigits) {
    EXPECT_EQ(CsvText(Sets()),
              QByteArray("Set,Rated kW\nMV90,90\nMV1000,1000\n\"MV,\"\"200\"\"\tD\",200.25\n"));
}

}  // namespace
}  // namespace genvara
