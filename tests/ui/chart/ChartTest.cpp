// What charts draw, and where: positions are worked out from the axes that are told, colours are looked up in
// the picture.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <cmath>

#include "BarChart.h"
#include "ChartAxis.h"
#include "MapChart.h"
#include "StairChart.h"
#include "Theme.h"

namespace genvara {
namespace {

using testing::ElementsAre;

constexpr QSize kSize(600, 320);

struct Drawn {
    QImage picture;
    std::vector<QRectF> places;
};

Drawn Draw(const Chart& chart, int selected = -1) {
    Drawn drawn{QImage(kSize, QImage::Format_RGB32), {}};
    drawn.picture.fill(Qt::white);
    QPainter painter(&drawn.picture);
    QFont font;
    font.setPixelSize(12);
    painter.setFont(font);
    drawn.places = chart.Draw(painter, QRectF(QPointF(), QSizeF(kSize)), ColoursOnPaper(), selected);
    return drawn;
}

int Count(const QImage& picture, const QRectF& where, const QColor& colour) {
    int count = 0;
    const QRect area = where.toAlignedRect().intersected(picture.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += picture.pixelColor(x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

/// Highest row of a part that has a colour; -1 for none.
int TopOf(const QImage& picture, const QRectF& where, const QColor& colour) {
    const QRect area = where.toAlignedRect().intersected(picture.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.pixelColor(x, y) == colour) {
                return y;
            }
        }
    }
    return -1;
}

TextGrid Rows(std::size_t count) {
    TextGrid grid{.title = "Dip by step: limit 10 %", .columns = {{.caption = "Step"}}};
    for (std::size_t row = 0; row < count; ++row) {
        grid.rows.push_back({TextCell(QString::number(row + 1))});
    }
    return grid;
}

BarChart::Figures TwoBars() {
    return {.unit = "%",
            .decimals = 1,
            .bars = {{.number = "1", .value = 4.0}, {.number = "2", .value = 12.0, .fails = true}},
            .limits = {{.label = "limit 10 %", .heights = {10.0, 10.0}}}};
}

TEST(ChartAxis, TicksAreRoundAndHoldTheRange) {
    const AxisTicks ticks = TicksFromZero(13.0, 6);
    EXPECT_THAT(ticks.values, ElementsAre(0.0, 5.0, 10.0, 15.0));
    EXPECT_EQ(ticks.decimals, 0);
}

TEST(ChartAxis, LabelsAreLeftOutWhereTheyWouldTouch) {
    EXPECT_EQ(LabelStride(10, 20.0, 15.0), 1);
    EXPECT_EQ(LabelStride(10, 20.0, 20.0), 1);
    EXPECT_EQ(LabelStride(10, 20.0, 20.5), 2);
    EXPECT_EQ(LabelStride(10, 4.0, 20.0), 5);
    EXPECT_EQ(LabelStride(3, 0.0, 20.0), 3);
}

TEST(BarChart, BarsStandOnZeroAndAreAsHighAsTheirFigures) {
    BarChart::Figures figures = TwoBars();
    figures.bars[1].fails = false;
    const Drawn drawn = Draw(BarChart(Rows(2), figures));
    const QColor blue = ColoursOnPaper().value;
    const int first = TopOf(drawn.picture, drawn.places[0], blue);
    const int second = TopOf(drawn.picture, drawn.places[1], blue);
    const double bottom = drawn.places[0].bottom();
    // Bars of 4 and 12 percent from a common zero: heights are as 1 to 3.
    EXPECT_NEAR((bottom - second) / (bottom - first), 3.0, 0.1);
}

TEST(BarChart, WhatFailsIsHatchedAndOfAnotherColour) {
    const Drawn drawn = Draw(BarChart(Rows(2), TwoBars()));
    const ChartColours colours = ColoursOnPaper();
    EXPECT_GT(Count(drawn.picture, drawn.places[0], colours.value), 500);
    EXPECT_EQ(Count(drawn.picture, drawn.places[0], colours.fails), 0);
    EXPECT_EQ(Count(drawn.picture, drawn.places[1], colours.value), 0);
    const QRectF bar = drawn.places[1].adjusted(drawn.places[1].width() * 0.4, drawn.places[1].height() * 0.5,
                                                -drawn.places[1].width() * 0.4, -4.0);
    EXPECT_GT(Count(drawn.picture, bar, colours.fails), 20);
    EXPECT_GT(Count(drawn.picture, bar, Qt::white), 20) << "the hatching lets the ground through";
}

TEST(BarChart, TheLimitIsALineAtItsHeight) {
    const Drawn drawn = Draw(BarChart(Rows(2), TwoBars()));
    const ChartColours colours = ColoursOnPaper();
    const double bottom = drawn.places[0].bottom();
    const int limit = TopOf(drawn.picture, drawn.places[0], colours.limit);
    const int bar = TopOf(drawn.picture, drawn.places[0], colours.value);
    ASSERT_GT(limit, 0);
    EXPECT_NEAR((bottom - limit) / (bottom - bar), 10.0 / 4.0, 0.1);
}

TEST(BarChart, ALimitsFigureIsReadInANarrowChart) {
    BarChart::Figures figures = TwoBars();
    figures.limits = {{.label = "within the dip 1395 kVA", .heights = {10.0, 10.0}},
                      {.label = "rating 12 kVA", .heights = {10.2, 10.2}}};
    QBuffer drawing;
    drawing.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&drawing);
    svg.setSize({260, 170});
    {
        QPainter painter(&svg);
        QFont font;
        font.setPixelSize(12);
        painter.setFont(font);
        BarChart(Rows(2), figures).Draw(painter, QRectF(0, 0, 260, 170), ColoursOnPaper(), -1);
    }
    for (const char* text : {">within the dip</text>", ">1395 kVA</text>", ">rating 12 kVA</text>"}) {
        EXPECT_TRUE(drawing.data().contains(text)) << text;
    }
}

TEST(BarChart, ANoteStandsInPlaceOfBars) {
    BarChart::Figures figures = TwoBars();
    figures.note = "no data";
    const Drawn drawn = Draw(BarChart(Rows(2), figures));
    EXPECT_EQ(Count(drawn.picture, drawn.picture.rect(), ColoursOnPaper().value), 0);
    EXPECT_THAT(drawn.places, ElementsAre(QRectF(), QRectF()));
}

TEST(BarChart, EveryStepOf256IsDrawn) {
    BarChart::Figures figures{.unit = "kW", .decimals = 0, .bars = {}};
    for (int step = 1; step <= 256; ++step) {
        figures.bars.push_back({.number = QString::number(step), .value = 50.0 + step});
    }
    const Drawn drawn = Draw(BarChart(Rows(256), figures));
    ASSERT_EQ(drawn.places.size(), 256U);
    EXPECT_LT(drawn.places[0].right(), drawn.places[1].right());
    EXPECT_NEAR(drawn.places[255].right(), drawn.places[0].left() + 256 * drawn.places[0].width(), 0.01);
}

TEST(BarChart, OddFiguresAreSurvived) {
    for (const double value : {0.0, -5.0, 1e300, std::nan(""), HUGE_VAL}) {
        BarChart::Figures figures = TwoBars();
        figures.bars[0].value = value;
        figures.limits[0].heights[1] = value;
        EXPECT_EQ(Draw(BarChart(Rows(2), figures)).places.size(), 2U) << value;
    }
    EXPECT_TRUE(Draw(BarChart(Rows(0), {})).places.empty());
}

TEST(StairChart, StretchesLieSideBySideOverTheirRange) {
    const StairChart chart(Rows(2),
                           {.across = "Altitude [m]",
                            .unit = "kW",
                            .stretches = {{.from = 0.0, .to = 2000.0, .height = 900.0, .label = "A"},
                                          {.from = 2000.0, .to = 3000.0, .height = 1000.0, .label = "B"}},
                            .marks = {2000.0}});
    const Drawn drawn = Draw(chart);
    ASSERT_EQ(drawn.places.size(), 2U);
    // Two thirds of the range against one.
    EXPECT_NEAR(drawn.places[0].width() / drawn.places[1].width(), 2.0, 0.01);
    EXPECT_DOUBLE_EQ(drawn.places[0].right(), drawn.places[1].left());
    const QRectF mark(drawn.places[0].right() - 2.0, drawn.places[0].top(), 4.0, drawn.places[0].height());
    EXPECT_GT(Count(drawn.picture, mark, ColoursOnPaper().limit), 30);
}

TEST(StairChart, AStretchWithoutAnAnswerIsHatched) {
    const StairChart chart(Rows(2),
                           {.across = "x",
                            .unit = "kW",
                            .stretches = {{.from = 0.0, .to = 1.0, .height = 5.0, .label = "A"},
                                          {.from = 1.0, .to = 2.0, .label = "error", .fails = true}}});
    const Drawn drawn = Draw(chart);
    EXPECT_GT(Count(drawn.picture, drawn.places[1], ColoursOnPaper().fails), 100);
    EXPECT_EQ(Count(drawn.picture, drawn.places[0].adjusted(2, 0, -2, 0), ColoursOnPaper().fails), 0);
}

TEST(MapChart, CellsStandColumnByColumnFromTheBottom) {
    const MapChart chart(Rows(4), {.across = "x",
                                   .up = "y",
                                   .columns = {"1", "2"},
                                   .rows = {"10", "20"},
                                   .cells = {{.value = 100.0, .label = "A"},
                                             {.value = 300.0, .label = "C"},
                                             {.value = 200.0, .label = "B"},
                                             {.value = std::nullopt, .label = "error", .fails = true}}});
    const Drawn drawn = Draw(chart);
    ASSERT_EQ(drawn.places.size(), 4U);
    EXPECT_GT(drawn.places[0].top(), drawn.places[1].top());
    EXPECT_LT(drawn.places[0].left(), drawn.places[2].left());
    const ChartColours colours = ColoursOnPaper();
    // Ranks 0, 1 and 2 of three: shares 0, 0.5 and 1.
    EXPECT_GT(Count(drawn.picture, drawn.places[0], MapColour(colours, 0.0)), 1000);
    EXPECT_GT(Count(drawn.picture, drawn.places[2], MapColour(colours, 0.5)), 1000);
    EXPECT_GT(Count(drawn.picture, drawn.places[1], MapColour(colours, 1.0)), 1000);
    EXPECT_GT(Count(drawn.picture, drawn.places[3], colours.fails), 200);
}

TEST(ChartColours, StandOutFromTheirGroundInBothThemes) {
    QPalette dark(QColor(0x3A, 0x3A, 0x3A), QColor(0x2B, 0x2B, 0x2B));
    dark.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    dark.setColor(QPalette::Text, QColor(0xE6, 0xE6, 0xE6));
    ASSERT_TRUE(ColoursOf(dark).isDark);
    for (const ChartColours& colours : {ColoursOnPaper(), ColoursOf(dark)}) {
        // 3 for what is drawn and 4.5 for text, as the Web Content Accessibility Guidelines 2.1 ask.
        EXPECT_GE(theme::Contrast(colours.value, colours.ground), 3.0);
        EXPECT_GE(theme::Contrast(colours.fails.darker(), colours.ground), colours.isDark ? 2.0 : 3.0);
        EXPECT_GE(theme::Contrast(colours.limit, colours.ground), 4.5) << "it labels its lines, too";
        EXPECT_GE(theme::Contrast(colours.faint, colours.ground), 4.5);
        for (int percent = 0; percent <= 100; percent += 5) {
            const QColor cell = MapColour(colours, percent / 100.0);
            EXPECT_GE(theme::Contrast(TextOn(cell), cell), 4.5) << percent;
        }
    }
}

}  // namespace
}  // namespace genvara
