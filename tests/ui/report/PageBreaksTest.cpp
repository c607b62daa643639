#include "PageBreaks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace genvara {
namespace {

/// Bonds by the signs that the cases below write behind a line of 100 twips.
constexpr std::string_view kSigns = ".,;-=";
constexpr double kLine = 100.0;

std::vector<BoundLine> Lines(std::string_view signs) {
    std::vector<BoundLine> lines;
    for (const char sign : signs) {
        lines.push_back({kLine, static_cast<LineBond>(kSigns.find(sign))});
    }
    return lines;
}

/// The signs of the lines, with a bar where a page begins.
std::string Pages(std::string_view signs, double room) {
    const std::vector<BoundLine> lines = Lines(signs);
    const std::vector<LinePlace> places = PlaceOnPages(lines, room);
    std::string pages;
    double top = 0.0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const bool isNew = i > 0 && places[i].page != places[i - 1].page;
        EXPECT_EQ(places[i].page, isNew ? places[i - 1].page + 1 : i > 0 ? places[i - 1].page : 0);
        top = isNew ? 0.0 : top;
        EXPECT_DOUBLE_EQ(places[i].top, top);
        top += lines[i].height;
        pages += isNew ? "|" : "";
        pages += signs[i];
    }
    return pages;
}

struct PageCase {
    const char* name;
    const char* lines;
    double room;
    const char* pages;
};

void PrintTo(const PageCase& tested, std::ostream* out) {
    *out << tested.name;
}

class PageBreaks : public testing::TestWithParam<PageCase> {};

TEST_P(PageBreaks, AreWhereTheBondsAllowThem) {
    EXPECT_EQ(Pages(GetParam().lines, GetParam().room), GetParam().pages);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, PageBreaks,
    testing::Values(
        PageCase{"None", "", 300, ""}, PageCase{"OnePage", "...", 300, "..."},
        PageCase{"FreeLinesFillPages", ".......", 300, "...|...|."},
        PageCase{"ALineThatJustDoesNotFit", "...", 299.9, "..|."},
        PageCase{"ALineHigherThanAPage", "...", 50, ".|.|."},
        PageCase{"BoundLinesMoveTogether", "..;..", 300, "..|;.."},
        PageCase{"BoundLinesThatJustFitStay", "..;..", 400, "..;.|."},
        PageCase{"AChainMovesAsAWhole", ".;;;..", 500, ".;;;.|."},
        PageCase{"AChainOfAPage", "..;;;.", 400, "..|;;;."},
        // Longer than a page: it begins where it stands, and is parted at its weakest bonds.
        PageCase{"ALongChainIsPartedBetweenEntries", ".;,;,;,;.", 400, ".;,|;,;,|;."},
        PageCase{"AChainWithoutEntriesIsPartedBetweenParagraphs", ".;;;;;.", 400, ".;;;|;;."},
        PageCase{"AnEntryLongerThanAPageIsPartedToo", ".,;;;;,;.", 400, ".,;;|;;,|;."},
        PageCase{"AParagraphInOnePieceMoves", "..=-=.", 400, "..|=-=."},
        PageCase{"LinesOfALongParagraphFillPages", "=-----=.", 400, "=---|--=."},
        PageCase{"ALongParagraphKeepsItsFirstTwoLinesTogether", "...=----=.", 400, "...|=---|-=."},
        PageCase{"ALongParagraphKeepsItsLastTwoLinesTogether", "=----=.", 600, "=----|=."},
        PageCase{"AParagraphMayBePartedAtAFreeLine", "..=....=.", 400, "..=.|...|=."},
        // More than 0.6 of a page of 10 lines would stay empty: behind 3 lines 7, behind 4 lines 6.
        PageCase{"ATableIsPartedRatherThanLeaveAPageEmpty", "...;,;,;,;,.", 1000, "...;,;,;,|;,."},
        PageCase{"ATableMovesWhereItLeavesLess", "....;,;,;,;,.", 1000, "....|;,;,;,;,."},
        PageCase{"WhatHasNoEntriesMovesInAnyCase", "...;;;;;;;;.", 1000, "...|;;;;;;;;."}),
    [](const testing::TestParamInfo<PageCase>& tested) { return std::string(tested.param.name); });

TEST(PageBreaks, SumsOfHeightsMayBeRounded) {
    const std::vector<BoundLine> lines(10, {.height = 0.1});
    EXPECT_EQ(PlaceOnPages(lines, 1.0).back().page, 0);  // ten times 0.1 is a little less than 1
    const std::vector<BoundLine> thirds(3, {.height = 14400.0 / 3.0});
    EXPECT_EQ(PlaceOnPages(thirds, 14400.0 - 1e-9).back().page, 0);
}

TEST(PageBreaks, PartNoChainThatAPageHolds) {
    EXPECT_TRUE(rc::check([](const std::vector<std::uint8_t>& kinds) {
        std::string signs;
        for (const std::uint8_t kind : kinds) {
            signs += ".;-="[kind % 4U];  // entries may be parted
        }
        constexpr std::size_t kRoom = 7;
        const std::vector<BoundLine> lines = Lines(signs);
        const std::vector<LinePlace> places = PlaceOnPages(lines, kRoom * kLine);
        RC_ASSERT(places.size() == lines.size());
        std::size_t chain = 0;  // where the present chain began
        for (std::size_t i = 0; i < lines.size(); ++i) {
            RC_ASSERT(places[i].top + kLine <= kRoom * kLine + 1e-6);
            if (lines[i].bond == LineBond::kNone || i + 1 == lines.size()) {
                const bool fits = i + 1 - chain <= kRoom;
                const bool isWhole = places[chain].page == places[i].page;
                RC_ASSERT(isWhole || !fits);
                chain = i + 1;
            }
        }
    }));
}

TEST(LineBonds, ParagraphsHoldTheirEndsTogether) {
    for (const auto& [count, isOnePiece, signs] : {std::tuple{1, false, "."},
                                                   {2, false, "=."},
                                                   {3, false, "==."},
                                                   {5, false, "=..=."},
                                                   {5, true, "=--=."}}) {
        std::vector<BoundLine> lines(static_cast<std::size_t>(count));
        BindLines(lines, isOnePiece);
        std::string found;
        for (const BoundLine& line : lines) {
            found += kSigns[static_cast<std::size_t>(line.bond)];
        }
        EXPECT_EQ(found, signs);
    }
}

RichParagraph Paragraph(const std::string& text, bool isWithNext, bool isBold = false) {
    RichParagraph paragraph;
    paragraph.mark.bold = isBold;
    paragraph.isWithNext = isWithNext;
    if (!text.empty()) {
        paragraph.runs.push_back({paragraph.mark, text});
    }
    return paragraph;
}

TEST(LineBonds, FollowWhatTheTextSaysAndWhereEntriesEnd) {
    const RichParagraph label = Paragraph("   Load", true);
    const RichParagraph rule = Paragraph("____", true);
    const RichParagraph figures = Paragraph("\t1\t2.00", true);
    EXPECT_EQ(BondBetween(Paragraph("a", false), label), LineBond::kNone);
    EXPECT_EQ(BondBetween(Paragraph("a", true), label), LineBond::kParagraphs);
    EXPECT_EQ(BondBetween(label, figures), LineBond::kParagraphs);
    EXPECT_EQ(BondBetween(figures, label), LineBond::kEntries);
    EXPECT_EQ(BondBetween(Paragraph("\t1\t2.00", false), label), LineBond::kEntries);
    EXPECT_EQ(BondBetween(figures, figures), LineBond::kParagraphs);
    EXPECT_EQ(BondBetween(figures, rule), LineBond::kParagraphs);
    EXPECT_EQ(BondBetween(Paragraph("\tQty\tkW", true, true), label), LineBond::kParagraphs);
    EXPECT_EQ(BondBetween(Paragraph("", true), label), LineBond::kEntries);
    EXPECT_EQ(BondBetween(Paragraph("", false), label), LineBond::kNone);
    EXPECT_EQ(BondBetween(Paragraph("", true, true), label), LineBond::kParagraphs);
}

}  // namespace
}  // namespace genvara
