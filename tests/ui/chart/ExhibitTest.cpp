// Charts and tables on paper, in files and on the clipboard.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPainter>
#include <QSvgRenderer>
#include <memory>

#include "BarChart.h"
#include "ExhibitDesk.h"
#include "GridSheet.h"
#include "ReportFonts.h"
#include "ScriptedPlatform.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TextGrid Wide(std::size_t columns, std::size_t rows) {
    TextGrid grid{.title = "Wide", .columns = {{.caption = "Test"}}};
    for (std::size_t column = 0; column < columns; ++column) {
        grid.columns.push_back({.caption = QString("MV%1D recommended").arg(column), .isNumber = true});
    }
    for (std::size_t row = 0; row < rows; ++row) {
        std::vector<GridCell> cells{TextCell(QString("Row %1").arg(row))};
        for (std::size_t column = 0; column < columns; ++column) {
            cells.push_back(NumberCell(static_cast<double>(row * 100 + column), 1, " %"));
        }
        grid.rows.push_back(std::move(cells));
    }
    return grid;
}

ChartPtr OneBar() {
    TextGrid table{.title = "Dip: limit 10 %", .columns = {{.caption = "Step"}}, .rows = {{TextCell("1")}}};
    return std::make_shared<const BarChart>(
        std::move(table), BarChart::Figures{.unit = "%", .bars = {{.number = "1", .value = 4.0}}});
}

class ExhibitTest : public testing::Test {
  protected:
    TemporaryFolder folder;
    ScriptedPlatform platform;
    std::optional<std::string> obstacle;
    ExhibitDesk desk{{.platform = platform,
                      .printSetup = [] { return PrintSetup(); },
                      .projectName = [] { return QString("Hospital"); },
                      .obstacle = [this](const std::filesystem::path&) { return obstacle; },
                      .clock = [] { return DateTime{2026, 3, 4, 15, 6, 7}; }}};

    std::string Saved(const char* name, const std::function<void()>& save) {
        platform.files.push_back((folder / name).string());
        save();
        return ReadBytes(folder / name);
    }
};

TEST(GridSheetTest, ATableThatIsTooWideIsPartedWithItsRowsNames) {
    const TextGrid grid = Wide(20, 2);
    const GridSheet sheet(grid, 10080.0, ReportFont({.face = "Arial", .halfPoints = 16}));
    ASSERT_GT(sheet.Groups().size(), 1U);
    std::size_t columns = 0;
    for (const GridSheet::Group& group : sheet.Groups()) {
        EXPECT_EQ(group.front(), 0U);
        EXPECT_LE(sheet.Width(group), 10081.0);
        columns += group.size() - 1;
    }
    EXPECT_EQ(columns, 20U);
}

TEST(GridSheetTest, GroupsOfColumnsAreOfOneSize) {
    const QFont font = ReportFont({.face = "Arial", .halfPoints = 16});
    constexpr double kPaper = 10080.0;
    for (const std::size_t columns : {11U, 13U, 16U, 20U, 21U}) {
        const TextGrid grid = Wide(columns, 2);
        const GridSheet sheet(grid, kPaper, font);
        std::size_t least = columns;
        std::size_t most = 0;
        double widest = 0.0;
        for (const GridSheet::Group& group : sheet.Groups()) {
            least = std::min(least, group.size() - 1);
            most = std::max(most, group.size() - 1);
            widest = std::max(widest, sheet.Width(group));
        }
        ASSERT_GT(sheet.Groups().size(), 1U);
        EXPECT_LT(most - least, sheet.Groups().size()) << columns << ": no column is left over by itself";
        EXPECT_NEAR(widest, kPaper, 1.0) << "and they have the paper's width";
    }
}

TEST(GridSheetTest, ALongColumnOfWordsIsBrokenBeforeATableIsParted) {
    TextGrid grid{
        .title = "Advice",
        .columns = {{.caption = "Change"}, {.caption = "Set"}, {.caption = "Left", .isNumber = true}}};
    const QString sentence = "Start the crusher by a softer starter instead of across the line. ";
    grid.rows.push_back({TextCell(sentence.repeated(4)),
                         TextCell("MV2000D in parallel with two others, and one "
                                  "more of the same size"),
                         NumberCell(5.6, 1)});
    const GridSheet sheet(grid, 8000.0, ReportFont({.face = "Arial", .halfPoints = 16}));
    ASSERT_EQ(sheet.Groups().size(), 1U);
    EXPECT_LE(sheet.Width(sheet.Groups().front()), 8001.0);
}

TEST(PageFlowTest, ATableStaysWithItsHeadingOnOnePage) {
    std::vector<FlowBlock> blocks;
    // These leave room for the heading and some rows of the next table, not for all of them.
    blocks.emplace_back(Wide(2, 40));
    blocks.emplace_back(FlowText{.text = "Heading", .kind = FlowText::Kind::Heading});
    blocks.emplace_back(Wide(2, 15));
    const auto inkOf = [](const PageFlow& pages, int page) {
        QImage picture(612, 792, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.scale(1.0 / 20.0, 1.0 / 20.0);
        pages.Draw(painter, page);
        painter.end();
        int last = 0;
        for (int y = 0; y < 715; ++y) {
            for (int x = 0; x < 612; ++x) {
                last = qGray(picture.pixel(x, y)) < 160 ? y : last;
            }
        }
        return last;
    };
    const PageFlow alone({blocks.front()}, RichPage{}, "Name");
    const PageFlow both(blocks, RichPage{}, "Name");
    ASSERT_EQ(alone.PageCount(), 1);
    ASSERT_EQ(both.PageCount(), 2);
    EXPECT_EQ(inkOf(both, 0), inkOf(alone, 0)) << "heading and table begin on the next page together";
}

TEST(PageFlowTest, ALongTableGoesOnWithItsHeadAndNothingLeavesThePage) {
    const PageFlow pages({FlowText{.text = "Title", .kind = FlowText::Kind::Title}, Wide(3, 120)}, RichPage{},
                         "Name");
    EXPECT_GE(pages.PageCount(), 2);
    for (int page = 0; page < pages.PageCount(); ++page) {
        QImage picture(612, 792, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.scale(1.0 / 20.0, 1.0 / 20.0);
        pages.Draw(painter, page);
        painter.end();
        int belowText = 0;
        int inText = 0;
        for (int y = 0; y < 792; ++y) {
            for (int x = 0; x < 612; ++x) {
                const bool ink = qGray(picture.pixel(x, y)) < 160;
                belowText += ink && y > 792 - 20 ? 1 : 0;
                inText += ink && y > 72 && y < 720 ? 1 : 0;
                ASSERT_FALSE(ink && (x < 85 || x > 612 - 85)) << x << ", " << y;
            }
        }
        EXPECT_EQ(belowText, 0);
        EXPECT_GT(inText, 100) << page;
    }
}

TEST_F(ExhibitTest, CopiesAChartAsPictureAndTable) {
    ExhibitDesk::Copy({.table = OneBar()->Table(), .chart = OneBar()});
    const QMimeData* data = QApplication::clipboard()->mimeData();
    EXPECT_EQ(data->text(), "Step\n1\n");
    EXPECT_TRUE(data->hasImage());
    ExhibitDesk::Copy({.table = Wide(1, 1)});
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasImage());
}

TEST_F(ExhibitTest, SavesAsPdfWithTheProjectsName) {
    const std::string pdf =
        Saved("a.pdf", [&] { desk.SaveAsPdf(nullptr, {.table = OneBar()->Table(), .chart = OneBar()}); });
    EXPECT_THAT(pdf, StartsWith("%PDF-"));
    EXPECT_EQ(pdf, Saved("b.pdf",
                         [&] { desk.SaveAsPdf(nullptr, {.table = OneBar()->Table(), .chart = OneBar()}); }))
        << "the same of the same moment";
    const auto asked = platform.Take();
    EXPECT_TRUE(asked.front().file.asksBeforeReplacing);
    EXPECT_THAT(asked.front().file.initialName, HasSubstr(".pdf"));
}

TEST_F(ExhibitTest, SavesASvgDrawingThatCanBeDrawn) {
    for (const Exhibit& exhibit :
         {Exhibit{.table = OneBar()->Table(), .chart = OneBar()}, Exhibit{.table = Wide(4, 3)}}) {
        const std::string svg = Saved("a.svg", [&] { desk.SaveAsSvg(nullptr, exhibit); });
        QSvgRenderer drawn(QByteArray::fromStdString(svg));
        EXPECT_TRUE(drawn.isValid());
        EXPECT_GT(drawn.defaultSize().width(), 100);
        EXPECT_THAT(svg, HasSubstr("<text"));
    }
}

TEST_F(ExhibitTest, SavesAsCsv) {
    EXPECT_EQ(Saved("a.csv", [&] { desk.SaveAsCsv(nullptr, {.table = Wide(1, 1)}); }),
              "Test,MV0D recommended\nRow 0,0\n");
}

TEST_F(ExhibitTest, WritesOverNoInputAndTellsWhatFails) {
    obstacle = "this is the file of the project";
    platform.files.push_back((folder / "a.csv").string());
    desk.SaveAsCsv(nullptr, {.table = Wide(1, 1)});
    EXPECT_FALSE(std::filesystem::exists(folder / "a.csv"));
    EXPECT_THAT(platform.Take().back().message.text, HasSubstr("this is the file of the project"));
    obstacle.reset();
    platform.files.push_back((folder / "missing/a.csv").string());
    desk.SaveAsCsv(nullptr, {.table = Wide(1, 1)});
    EXPECT_THAT(platform.Take().back().message.text, HasSubstr("was not written"));
    platform.files.emplace_back("");
    desk.SaveAsCsv(nullptr, {.table = Wide(1, 1)});
    EXPECT_EQ(platform.Take().size(), 1U) << "a cancelled dialog says no more";
}

TEST_F(ExhibitTest, PrintsThePages) {
    platform.printFile = folder / "printed.pdf";
    desk.Print(nullptr, {.table = Wide(30, 80)});
    EXPECT_THAT(ReadBytes(folder / "printed.pdf"), StartsWith("%PDF-"));
    platform.Take();
    platform.printFails = true;
    desk.Print(nullptr, {.table = Wide(1, 1)});
    EXPECT_THAT(platform.Take().back().message.text, HasSubstr("could not be printed"));
}

}  // namespace
}  // namespace genvara
