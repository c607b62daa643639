#include "ReportLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QFontInfo>

#include "ReportFonts.h"
#include "ReportTexts.h"

namespace genvara {
namespace {

/// The text engine counts in 1/64 twip, each letter rounded by itself.
constexpr double kExact = 0.5;
constexpr double kTextWidth = 10080.0;

ReportLayout LayoutOf(const std::string& body) {
    return ReportLayout(ReadRichText(ReportText(body)));
}

/// Where a text begins or ends, in twips from the left margin, and on which row.
struct Place {
    std::size_t row = 0;
    double from = 0.0;
    double to = 0.0;
};

Place PlaceOf(const ReportLayout& layout, const QString& text) {
    const auto at = static_cast<int>(layout.Text().indexOf(text));
    EXPECT_GE(at, 0) << text.toStdString();
    const std::size_t row = layout.RowOf(at);
    const auto end = at + static_cast<int>(text.size());
    return {row, layout.XOf(row, at) - layout.Page().left, layout.XOf(row, end) - layout.Page().left};
}

struct StopCase {
    const char* name;
    const char* body;
    const char* text;
    double from;  // where the text begins, or below 0 where that is not what is asked
    double to;    // where it ends, likewise
};

/// The case's name in messages and in the list of tests.
void PrintTo(const StopCase& stop, std::ostream* out) {
    *out << stop.name;
}

class TabStops : public testing::TestWithParam<StopCase> {};

TEST_P(TabStops, HoldTheirText) {
    const ReportLayout layout = LayoutOf(GetParam().body);
    const Place place = PlaceOf(layout, GetParam().text);
    if (GetParam().from >= 0.0) {
        EXPECT_NEAR(place.from, GetParam().from, kExact);
    }
    if (GetParam().to >= 0.0) {
        EXPECT_NEAR(place.to, GetParam().to, kExact);
    }
    EXPECT_EQ(layout.Rows().size(), 1U);
}

/// The stops of a report's performance section.
#define SECTION "\\tqr\\tx2966\\tx3067\\tx4320\\tqdec\\tx6307\\tx6480 "

INSTANTIATE_TEST_SUITE_P(
    Layout, TabStops,
    testing::Values(
        StopCase{"Left", "\\tx2000 a\\tab b\\par", "b", 2000, -1},
        StopCase{"LeftWithoutText", "\\tx2000\\tab b\\par", "b", 2000, -1},
        StopCase{"Right", "\\tqr\\tx2966 Volts\\tab 277/480\\par", "277/480", -1, 2966},
        StopCase{"Centre", "\\tqc\\tx3000 a\\tab 1111\\par", "11", -1, 3000},
        StopCase{"DecimalPoint", "\\tqdec\\tx3787 a\\tab 3255.00 kVA @ 35.5% dip\\par", "3255", -1, 3787},
        StopCase{"DecimalOfAShortFigure", "\\tqdec\\tx3787 a\\tab 0.00 %\\par", "0", -1, 3787},
        StopCase{"NumberWithoutAPoint", "\\tqdec\\tx3787 a\\tab 500\\par", "500", -1, 3787},
        StopCase{"WordAtADecimalStop", "\\tqdec\\tx3787 a\\tab N/A\\par", "N/A", -1, 3787},
        StopCase{"PointInAnotherFormat", "\\tqdec\\tx3787 a\\tab 12{\\b\\fs40 .5}\\par", "12", -1, 3787},
        // 900 is the distance beyond the last stop: the first multiple behind 3787 and the text is 4500.
        StopCase{"BeyondTheLastStop", "\\tqdec\\tx3787 a\\tab 0.00 %\\tab (15% allowed)\\par", "(15%", 4500,
                 -1},
        StopCase{"DefaultStop", "a\\tab b\\par", "b", 900, -1},
        StopCase{"SecondDefaultStop", "a\\tab\\tab b\\par", "b", 1800, -1},
        StopCase{"NextStopForALongText", "\\tx300\\tx2000\\tx4000 A long text\\tab b\\par", "b", 2000, -1},
        // The text ends at its stop, which is then behind it.
        StopCase{"SameStopTwice", "\\tqr\\tx1000\\tx2000 a\\tab 11\\tab b\\par", "b", 2000, -1},
        StopCase{"SectionRight",
                 SECTION
                 "LN / LL Voltage\\tab 277/480\\tab volts\\tab Altitude\\tab \\tab 500\\tab feet\\par",
                 "277/480", -1, 2966},
        StopCase{"SectionLeft",
                 SECTION
                 "LN / LL Voltage\\tab 277/480\\tab volts\\tab Altitude\\tab \\tab 500\\tab feet\\par",
                 "volts", 3067, -1},
        StopCase{"SectionFirstTabOfTwo",
                 SECTION
                 "LN / LL Voltage\\tab 277/480\\tab volts\\tab Altitude\\tab \\tab 500\\tab feet\\par",
                 "500", 6480, -1},
        // Behind 6480 and three digits of 120 twips: 7200 = 8 * 900.
        StopCase{"SectionDefault",
                 SECTION
                 "LN / LL Voltage\\tab 277/480\\tab volts\\tab Altitude\\tab \\tab 500\\tab feet\\par",
                 "feet", 7200, -1},
        StopCase{"SectionNumber",
                 SECTION "Frequency\\tab 60\\tab hertz\\tab Ambient Temp.\\tab 95\\tab C\\par", "95", -1,
                 6307},
        StopCase{"SectionBehindTheNumber",
                 SECTION "Frequency\\tab 60\\tab hertz\\tab Ambient Temp.\\tab 95\\tab C\\par", "C", 6480,
                 -1},
        StopCase{"RightAlignedText", "\\qr abc\\par", "abc", -1, kTextWidth}),
    [](const testing::TestParamInfo<StopCase>& tested) { return std::string(tested.param.name); });

#undef SECTION

TEST(ReportLayout, LetsALongTextRunOverItsStop) {
    const ReportLayout layout =
        LayoutOf("\\tqr\\tx1500\\tx1600\\tx4000 Heading\\tab a long text at a right stop\\tab b\\par");
    EXPECT_NEAR(PlaceOf(layout, "a long").from, PlaceOf(layout, "Heading").to, kExact);
    EXPECT_NEAR(PlaceOf(layout, "b").from, 4000, kExact);
}

TEST(ReportLayout, CentresOnTheTextsWidth) {
    const Place place = PlaceOf(LayoutOf("\\qc\\fs40 Genvara\\par"), "Genvara");
    EXPECT_NEAR((place.from + place.to) / 2, kTextWidth / 2, kExact);
    EXPECT_GT(place.from, 1000);
}

TEST(ReportLayout, BeginsALineForATabWithoutStop) {
    const ReportLayout layout = LayoutOf("\\tx9900 a\\tab b\\tab c\\par");
    EXPECT_EQ(PlaceOf(layout, "b").row, 0U);
    EXPECT_EQ(PlaceOf(layout, "c").row, 1U);
    EXPECT_NEAR(PlaceOf(layout, "c").from, 9900, kExact);
}

TEST(ReportLayout, GivesDigitsTheirWidth) {
    const RichDocument document =
        ReadRichText(ReportText("\\expndtw2\\f1\\fs24 11111\\line\\f0\\fs20 00000\\par"));
    const QString serif = QFontInfo(ReportFont({.face = "Times New Roman"})).family();
    const QString sans = QFontInfo(ReportFont({.face = "Arial"})).family();
    if (!(serif == "Times New Roman" || serif == "Liberation Serif") ||
        !(sans == "Arial" || sans == "Liberation Sans")) {
        GTEST_SKIP() << "no fonts whose letters are as wide as the reports'";
    }
    const ReportLayout layout(document);
    // A digit of Times is half an em, one of Arial 1139/2048 em; two twips behind each.
    EXPECT_NEAR(PlaceOf(layout, "11111").to, 5 * (240 * 0.5 + 2), kExact);
    EXPECT_NEAR(PlaceOf(layout, "00000").to, 5 * (200 * 1139.0 / 2048.0 + 2), kExact);
}

TEST(ReportLayout, WrapsLongTextsBetweenWords) {
    std::string words;
    for (int i = 0; i < 100; ++i) {
        words += "word" + std::to_string(i) + " ";
    }
    const ReportLayout layout = LayoutOf("\\tx3000 Label\\tab " + words + "\\par");
    ASSERT_GT(layout.Rows().size(), 3U);
    for (std::size_t row = 0; row < layout.Rows().size(); ++row) {
        const ReportRow& line = layout.Rows()[row];
        const QString text = layout.Text().mid(line.from, line.to - line.from).trimmed();
        EXPECT_LE(layout.XOf(row, line.from + static_cast<int>(text.size())),
                  layout.Page().left + kTextWidth + 1);
        EXPECT_TRUE(text.startsWith(row == 0 ? "Label\tword" : "word")) << text.toStdString();
    }
}

TEST(ReportLayout, PutsAWordThatDoesNotFitBehindATabOnTheNextLine) {
    const ReportLayout layout = LayoutOf("\\tx9500 a\\tab unbreakable\\par");
    EXPECT_EQ(PlaceOf(layout, "unbreakable").row, 1U);
    EXPECT_NEAR(PlaceOf(layout, "unbreakable").from, 0, kExact);
}

TEST(ReportLayout, BreaksWordsThatNoLineHolds) {
    const ReportLayout layout = LayoutOf(std::string(2000, 'm') + "\\par");
    // An m of Times is 1593/2048 em, 187 twips: 53 a line, 38 lines.
    EXPECT_GT(layout.Rows().size(), 20U);
    EXPECT_EQ(layout.Rows().back().to, 2000);
}

TEST(ReportLayout, GivesEmptyLinesTheHeightOfTheirEnd) {
    const ReportLayout layout = LayoutOf("\\fs40 a\\par\\par\\fs20\\par b\\line\\line c\\par");
    const auto& rows = layout.Rows();
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_DOUBLE_EQ(rows[1].height, rows[0].height);
    EXPECT_NEAR(rows[2].height, rows[0].height / 2, 2.0);  // heights are whole twips
    for (std::size_t row = 3; row < rows.size(); ++row) {
        EXPECT_DOUBLE_EQ(rows[row].height, rows[2].height);
        EXPECT_NEAR(rows[row].top, rows[row - 1].top + rows[row - 1].height, 1e-6);
    }
}

TEST(ReportLayout, FillsPagesFromMarginToMargin) {
    const ReportLayout layout = LayoutOf(NumberedLines(120));
    const ReportRow& first = layout.Rows().front();
    const auto linesAPage = static_cast<std::size_t>(14400 / first.height);  // Letter less half an inch twice
    EXPECT_EQ(layout.PageCount(), static_cast<int>((120 + linesAPage - 1) / linesAPage));
    for (std::size_t row = 0; row < layout.Rows().size(); ++row) {
        const ReportRow& line = layout.Rows()[row];
        EXPECT_EQ(line.page, static_cast<int>(row / linesAPage));
        EXPECT_GE(line.top, 720 - 1e-6);
        EXPECT_LE(line.top + line.height, 15840 - 720 + 1e-6);
    }
}

/// The page of a text's first line.
int PageOf(const ReportLayout& layout, const QString& text) {
    return layout.Rows()[layout.RowOf(static_cast<int>(layout.Text().indexOf(text)))].page;
}

TEST(ReportLayout, KeepsParagraphsThatBelongTogetherOnOnePage) {
    // A line of 12 points is 276 twips high: 52 fill a page.
    const std::string block = "\\keepn Heading\\par Text\\par\\pard Last\\par After\\par";
    ReportLayout layout = LayoutOf(NumberedLines(49) + block);
    EXPECT_EQ(PageOf(layout, "Last"), 0);
    EXPECT_EQ(PageOf(layout, "After"), 1);
    layout = LayoutOf(NumberedLines(50) + block);
    EXPECT_EQ(PageOf(layout, "Line50"), 0);
    EXPECT_EQ(PageOf(layout, "Heading"), 1);
    EXPECT_EQ(PageOf(layout, "After"), 1);
    EXPECT_DOUBLE_EQ(layout.Rows()[50].top, 720);
    EXPECT_NEAR(layout.Rows()[50].baseline, layout.Rows()[0].baseline, 1e-6);
}

TEST(ReportLayout, KeepsALongParagraphInOnePieceWhereItIsToldTo) {
    const std::string words = std::string(300, 'x') + "\\par";  // more than two lines, less than five
    const ReportLayout free = LayoutOf(NumberedLines(50) + std::string(10, 'a') + words);
    const ReportLayout whole = LayoutOf(NumberedLines(50) + "\\keep " + std::string(10, 'a') + words);
    EXPECT_EQ(free.Rows()[50].page, 0);
    EXPECT_EQ(free.Rows().back().page, 1);
    EXPECT_EQ(whole.Rows()[50].page, 1);
}

TEST(ReportLayout, CountsTheHeightsOfLinesAsWordProcessorsDo) {
    const QString serif = QFontInfo(ReportFont({.face = "Times New Roman"})).family();
    const QString sans = QFontInfo(ReportFont({.face = "Arial"})).family();
    if (serif != "Liberation Serif" || sans != "Liberation Sans") {
        GTEST_SKIP() << "other fonts";
    }
    // What 25 lines of each take in a word processor, by the feet of its PDF's words [twip a line].
    const ReportLayout layout = LayoutOf(
        "\\f0\\fs40 a\\par\\fs28 a\\par\\fs26 a\\par\\fs24 a\\par\\fs20 a\\par\\f1\\fs26 a\\par\\fs24 "
        "a\\par\\fs20 a\\par");
    std::vector<double> heights;
    for (const ReportRow& row : layout.Rows()) {
        heights.push_back(row.height);
    }
    EXPECT_THAT(heights, testing::ElementsAre(460, 322, 300, 276, 230, 299, 276, 231));
}

TEST(ReportLayout, HasAnEmptyPageForNothing) {
    const ReportLayout layout{RichDocument{}};
    EXPECT_EQ(layout.PageCount(), 1);
    EXPECT_EQ(layout.Text(), QString());
    EXPECT_EQ(layout.Rows().size(), 1U);
}

TEST(ReportLayout, PassesOverWhatHasNoShape) {
    EXPECT_EQ(LayoutOf("a\\'01b\\u8232?c\\u-4?d\\par").Text(), "abcd");
}

TEST(ReportLayout, FindsPositionsBackFromTheirPlaces) {
    const ReportLayout layout =
        LayoutOf("\\tqdec\\tx3787 Genset Rating\\tab 900.00 kW\\par\\par Second\\par");
    for (int position = 0; position <= layout.Text().size(); ++position) {
        const std::size_t row = layout.RowOf(position);
        EXPECT_EQ(layout.PositionIn(row, layout.XOf(row, position) + 1), position);
        EXPECT_EQ(layout.RowAt(0, layout.Rows()[row].top + 1), row);
    }
    EXPECT_EQ(layout.PositionIn(0, 0), 0);
    EXPECT_EQ(layout.PositionIn(0, 99999), layout.Rows()[0].to);
    EXPECT_EQ(layout.RowAt(0, 99999), layout.Rows().size() - 1);
}

/// Texts that reach the corners of the layout: tabs of all kinds, widths from nothing to more than a page.
constexpr std::array<const char*, 20> kPieces{"\\tab ",
                                              "\\line ",
                                              "\\par ",
                                              "\\pard ",
                                              "\\tqr\\tx2000 ",
                                              "\\tqdec\\tx5000 ",
                                              "\\tqc\\tx31000 ",
                                              "\\qc ",
                                              "\\qr ",
                                              "\\fs2 ",
                                              "\\fs576 ",
                                              "\\b ",
                                              "\\expndtw-200 ",
                                              "\\deftab1 ",
                                              "a",
                                              " ",
                                              "\\'ad1.5",
                                              "\\u1575?\\u1604?",
                                              "longerthanthat ",
                                              "\\u-10179?\\u-8448?"};

TEST(ReportLayout, SetsAnyDocumentOnItsPages) {
    EXPECT_TRUE(rc::check([](const std::vector<std::uint8_t>& pieces) {
        std::string body;
        for (const std::uint8_t piece : pieces) {
            body += kPieces.at(piece % kPieces.size());
        }
        const ReportLayout layout = LayoutOf(body);
        int next = 0;
        ReportRow last;
        for (const ReportRow& row : layout.Rows()) {
            const bool follows = row.from == next;
            const bool followsABreak = row.from == next + 1 && layout.Text().mid(next, 1) == "\n";
            RC_ASSERT(follows != followsABreak);
            RC_ASSERT(row.to >= row.from);
            RC_ASSERT(row.height > 0.0);
            RC_ASSERT(row.page * 1e6 + row.top >= last.page * 1e6 + last.top + last.height - 1e-6);
            next = row.to;
            last = row;
        }
        RC_ASSERT(next == layout.Text().size());
        for (const ReportPiece& piece : layout.Pieces()) {
            RC_ASSERT(piece.x >= 0.0);
            RC_ASSERT(piece.width >= 0.0);
        }
    }));
}

TEST(ReportLayout, SetsLongLinesAndManyFormats) {
    EXPECT_EQ(LayoutOf(std::string(300'000, 'x')).Text().size(), 300'000);
    std::string formats;
    for (int i = 0; i < 30'000; ++i) {
        formats += "\\fs" + std::to_string(2 + i % 570) + (i % 2 == 0 ? "\\b x" : "\\b0 x");
    }
    EXPECT_EQ(LayoutOf(formats).Text().size(), 30'000);
}

TEST(ReportLayout, FillsLinesAcrossThePartsOfALongText) {
    std::string words;
    for (int i = 0; i < 2000; ++i) {
        words += "abcd ";
    }
    const ReportLayout layout = LayoutOf(words + "\\par");
    for (std::size_t row = 0; row + 1 < layout.Rows().size(); ++row) {
        EXPECT_EQ(layout.Rows()[row].to - layout.Rows()[row].from, layout.Rows()[0].to) << row;
    }
}

}  // namespace
}  // namespace genvara
