// A chart in a window: marks, tips, keys, and the table that a screen reader finds behind it.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <memory>

#include "BarChart.h"
#include "ChartView.h"

namespace genvara {
namespace {

ChartPtr ThreeBars(const QString& title = "Dip by step: limit 10 %") {
    TextGrid table{.title = title,
                   .columns = {{.caption = "Step"}, {.caption = "Needed [%]", .isNumber = true}}};
    BarChart::Figures figures{.unit = "%", .bars = {}};
    for (int step = 1; step <= 3; ++step) {
        figures.bars.push_back({.number = QString::number(step), .value = 2.5 * step});
        table.rows.push_back({TextCell(QString::number(step)), NumberCell(2.5 * step, 1)});
    }
    return std::make_shared<const BarChart>(std::move(table), std::move(figures));
}

class ChartViewTest : public testing::Test {
  protected:
    ChartViewTest() {
        view.resize(420, 260);
        view.Show(ThreeBars());
        view.show();
        QApplication::setActiveWindow(&view);
        view.setFocus();
        QCoreApplication::processEvents();
        view.grab();
    }
    ChartView view{"chaTest"};
};

TEST_F(ChartViewTest, KeysWalkThroughTheBars) {
    const QSignalSpy marked(&view, &ChartView::Marked);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_End);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(view.MarkedRow(), 1);
    ASSERT_FALSE(marked.isEmpty());
    EXPECT_EQ(marked.last().at(0).toInt(), 1);
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_EQ(view.MarkedRow(), 0);
}

TEST_F(ChartViewTest, AClickMarksTheBarUnderIt) {
    const QModelIndex second = view.model()->index(1, 0);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(second).center());
    EXPECT_EQ(view.MarkedRow(), 1);
    EXPECT_EQ(view.indexAt(view.visualRect(view.model()->index(2, 0)).center()).row(), 2);
    EXPECT_FALSE(view.indexAt(QPoint(1, 1)).isValid());
}

TEST_F(ChartViewTest, AnotherChartKeepsTheMark) {
    view.MarkRow(2);
    view.Show(ThreeBars("Another"));
    EXPECT_EQ(view.MarkedRow(), 2);
    EXPECT_EQ(view.accessibleName(), "Another");
    view.Show(nullptr);
    EXPECT_EQ(view.MarkedRow(), -1);
    view.grab();
}

TEST_F(ChartViewTest, AScreenReaderFindsTheTable) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Dip by step: limit 10 %");
    QAccessibleTableInterface* table = accessible->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnCount(), 2);
    EXPECT_EQ(table->columnDescription(1), "Needed [%]");
    EXPECT_EQ(table->cellAt(2, 1)->text(QAccessible::Name), NumberCell(7.5, 1).text);
    // Keys stand on the first cell of a row, so that it tells the figures of its bar.
    EXPECT_EQ(table->cellAt(2, 0)->text(QAccessible::Description), "Needed [%]: " + NumberCell(7.5, 1).text);
}

TEST_F(ChartViewTest, SaysWhatItWillShowBeforeThereIsAChart) {
    ChartView empty("chaEmpty");
    empty.resize(420, 260);
    const QImage bare = empty.grab().toImage();
    empty.Hint("Choose what to vary.");
    EXPECT_NE(empty.grab().toImage(), bare);
    EXPECT_EQ(empty.accessibleName(), "Choose what to vary.");
    empty.Show(ThreeBars());
    EXPECT_EQ(empty.accessibleName(), "Dip by step: limit 10 %");
    view.grab();
    empty.show();
    EXPECT_EQ(empty.grab().toImage(), [] {
        ChartView plain("chaPlain");
        plain.resize(420, 260);
        plain.Show(ThreeBars());
        plain.show();
        return plain.grab().toImage();
    }()) << "a chart hides the hint";
}

TEST_F(ChartViewTest, WhatNoLongerHoldsIsPaler) {
    const QImage fresh = view.grab().toImage();
    view.Stale(true);
    const QImage stale = view.grab().toImage();
    const QPoint middle = view.visualRect(view.model()->index(2, 0)).center();
    EXPECT_GT(stale.pixelColor(middle).lightness(), fresh.pixelColor(middle).lightness());
    view.Stale(false);
    EXPECT_EQ(view.grab().toImage(), fresh);
}

TEST_F(ChartViewTest, IsSharpAtTwiceItsSize) {
    QPixmap picture(view.size() * 2);
    picture.setDevicePixelRatio(2.0);
    view.render(&picture);
    // A bar's edge takes at most two pixels of the device, where a picture that is blown up takes four.
    const QImage image = picture.toImage();
    const int y = view.visualRect(view.model()->index(2, 0)).center().y() * 2;
    int between = 0;
    for (int x = 0; x < image.width(); ++x) {
        const QColor colour = image.pixelColor(x, y);
        const QColor value = ColoursOf(view.palette()).value;
        between += colour.saturation() > 20 && colour != value ? 1 : 0;
    }
    EXPECT_LE(between, 12);
}

}  // namespace
}  // namespace genvara
