#include "TableText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "CsvTable.h"
#include "ProjectSource.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Cells = std::vector<std::string>;

std::vector<Cells> CellsOf(const std::string& bytes) {
    std::vector<Cells> cells;
    for (const TableRow& row : ReadTableText(bytes).rows) {
        cells.push_back(row.cells);
    }
    return cells;
}

std::vector<std::int32_t> NumbersOf(const std::string& bytes) {
    std::vector<std::int32_t> numbers;
    for (const TableRow& row : ReadTableText(bytes).rows) {
        numbers.push_back(row.number);
    }
    return numbers;
}

TEST(TableText, TheHeadingTellsTheSignBetweenCells) {
    EXPECT_THAT(CellsOf("a,b\n1;2,3\n"), ElementsAre(Cells{"a", "b"}, Cells{"1;2", "3"}));
    EXPECT_THAT(CellsOf("a;b\n1,5;3\n"), ElementsAre(Cells{"a", "b"}, Cells{"1,5", "3"}));
    EXPECT_THAT(CellsOf("a;b,\tc\n1,5\t2;3\n"), ElementsAre(Cells{"a;b,", "c"}, Cells{"1,5", "2;3"}));
    EXPECT_THAT(CellsOf("\"a;b;c\",d\n1,2\n"), ElementsAre(Cells{"a;b;c", "d"}, Cells{"1", "2"}));
}

TEST(TableText, ALineBeforeTheHeadingMayTellTheSign) {
    EXPECT_THAT(CellsOf("sep=;\r\na,b;c\r\n1;2\r\n"), ElementsAre(Cells{"a,b", "c"}, Cells{"1", "2"}));
    EXPECT_THAT(NumbersOf("SEP=;\na;c\n1;2\n"), ElementsAre(2, 3));
    EXPECT_THAT(CellsOf("sep=x\n1\n"), ElementsAre(Cells{"sep=x"}, Cells{"1"}));
}

TEST(TableText, ReadsTheEncodingsOfSpreadsheets) {
    const std::vector<Cells> expected{{"Name"}, {"Kühlung"}};
    EXPECT_EQ(CellsOf("Name\nK\xC3\xBChlung\n"), expected);
    EXPECT_EQ(CellsOf("\xEF\xBB\xBFName\nK\xC3\xBChlung\n"), expected);
    EXPECT_EQ(CellsOf("Name\nK\xFChlung\n"), expected);  // Windows-1252
    using namespace std::string_literals;
    EXPECT_EQ(CellsOf("\xFF\xFEN\0a\0m\0e\0\n\0K\0\xFC\0h\0l\0u\0n\0g\0"s), expected);
    EXPECT_EQ(CellsOf("\xFE\xFF\0N\0a\0m\0e\0\n\0K\0\xFC\0h\0l\0u\0n\0g"s), expected);
    // A character beyond the first plane is a pair; half of one is no character.
    EXPECT_EQ(CellsOf("\xFF\xFE\x3D\xD8\x00\xDE"s), std::vector<Cells>{{"\U0001F600"}});
    EXPECT_EQ(CellsOf("\xFF\xFE\x3D\xD8\x41\x00"s), std::vector<Cells>{{"\uFFFD"
                                                                        "A"}});
}

TEST(TableText, RowsAreCountedAsASpreadsheetCountsThem) {
    // An empty line and a row of empty cells count; a line end within a cell does not.
    EXPECT_THAT(NumbersOf("a,b\n\n,\n\"two\nlines\",1\nx,2\n"), ElementsAre(1, 4, 5));
    EXPECT_THAT(NumbersOf("a\rb\rc\r"), ElementsAre(1, 2, 3));
    EXPECT_THAT(CellsOf("a,b,,\n1,,,\n"), ElementsAre(Cells{"a", "b"}, Cells{"1"}));
}

TEST(TableText, AMarkWithinACellOfTheClipboardStandsForItself) {
    EXPECT_THAT(CellsOf("a\tb\n12\" pipe\t\"two\nlines\"\n"),
                ElementsAre(Cells{"a", "b"}, Cells{"12\" pipe", "two\nlines"}));
    EXPECT_THAT(ReadTableText("a,b\n12\" pipe,1\n").fault, HasSubstr("quotation marks"));
    EXPECT_THAT(ReadTableText("a,b\n\"open,1\n").fault, HasSubstr("quotation marks"));
    EXPECT_THAT(ReadTableText("a\tb\n\"open\t1\n").fault, HasSubstr("quotation marks"));
    EXPECT_THAT(ReadTableText("a\tb\n\"12\" pipe\t1\n\"14\" pipe\t1\n").fault, HasSubstr("quotation marks"));
}

TEST(TableText, WhatIsNoTableIsToldInOneSentence) {
    using namespace std::string_literals;
    EXPECT_EQ(ReadTableText("").fault, "The table is empty.");
    EXPECT_EQ(ReadTableText("\n \n,,\n").fault, "The table is empty.");
    EXPECT_THAT(ReadTableText("a,b\n1\0,2\n"s).fault, HasSubstr("no table of text"));
    EXPECT_THAT(ReadTableText("a,b\n1\0,2\n"s).rows, IsEmpty());
}

TEST(TableText, KeepsItsLimitsToTheLastRowColumnAndCharacter) {
    std::string rows = "a\n";
    for (std::size_t row = 0; row < kMostTableRows; ++row) {
        rows += "1\n";
    }
    EXPECT_THAT(ReadTableText(rows).rows, SizeIs(kMostTableRows + 1));
    EXPECT_EQ(ReadTableText(rows + "1\n").fault, "The table has more than 10000 rows. Import it in parts.");
    const std::string widest(kMostTableColumns - 1, ',');
    EXPECT_EQ(ReadTableText(widest + "x\n").fault, "");
    EXPECT_THAT(ReadTableText(widest + ",x\n").fault, HasSubstr("256 columns at most"));
    EXPECT_EQ(ReadTableText(std::string(kLongestTableCell, 'x')).fault, "");
    EXPECT_THAT(ReadTableText(std::string(kLongestTableCell + 1, 'x')).fault, HasSubstr("32767"));
    EXPECT_THAT(ReadTableText(std::string(kMostTableBytes + 1, '\n')).fault, HasSubstr("larger than 16 MB"));
    EXPECT_EQ(ReadTableText(std::string(100000, ',')).fault, "The table is empty.");
    EXPECT_THAT(ReadTableText("a" + std::string(100000, ',') + "b").fault, HasSubstr("100001 cells"));
}

TEST(CsvTable, ReadsOtherSignsThanACommaAndLenientlyWhereTold) {
    MemorySource source("a;\"b;c\"\n1\"2;3\n");
    std::vector<Cells> rows;
    const auto take = [&](std::int64_t, const Cells& cells) { rows.push_back(cells); };
    EXPECT_EQ(ReadCsv(source, take, {.delimiter = ';', .strict = false}), "");
    EXPECT_THAT(rows, ElementsAre(Cells{"a", "b;c"}, Cells{"1\"2", "3"}));
}

/// Gives a few bytes at a time, without an end.
class Endless final : public ByteSource {
  public:
    std::size_t asked = 0;
    [[nodiscard]] std::size_t Read(std::span<char> buffer) override {
        std::ranges::fill(buffer, 'a');
        asked += buffer.size();
        return buffer.size();
    }
};

TEST(TableText, TakesAllBytesOfASourceAndNotTheLastOfOneWithoutAnEnd) {
    const std::string text(200'001, 'b');
    MemorySource source(text);
    EXPECT_EQ(TableBytes(source), text);
    Endless endless;
    EXPECT_GT(TableBytes(endless).size(), kMostTableBytes);
    EXPECT_LT(endless.asked, 2 * kMostTableBytes);
}

}  // namespace
}  // namespace genvara
