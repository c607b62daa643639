#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "ReportFooter.h"
#include "ReportTexts.h"
#include "ReportView.h"

namespace genvara {
namespace {

using testing::ElementsAreArray;

/// A paper that notes the texts that are put on it, with their baselines.
class NotingEngine : public QPaintEngine {
  public:
    struct Note {
        QString text;
        QPointF place;
    };

    NotingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}
    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*picture*/, const QRectF& /*from*/) override {
        ADD_FAILURE() << "text was drawn as a picture";
    }
    void drawTextItem(const QPointF& place, const QTextItem& item) override {
        m_notes.push_back({item.text(), painter()->transform().map(place)});
    }
    [[nodiscard]] Type type() const override { return User; }

    std::vector<Note> m_notes;
};

class NotingPaper : public QPaintDevice {
  public:
    [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_engine; }
    [[nodiscard]] const std::vector<NotingEngine::Note>& Notes() const { return m_engine.m_notes; }

  protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
        constexpr int kTwipsPerInch = 1440;
        switch (metric) {
            case PdmWidth:
                return 12240;
            case PdmHeight:
                return 15840;
            case PdmDevicePixelRatio:
                return 1;
            case PdmDevicePixelRatioScaled:
                return static_cast<int>(devicePixelRatioFScale());
            default:
                return kTwipsPerInch;
        }
    }

  private:
    mutable NotingEngine m_engine;
};

TEST(ReportPages, HoldEveryLineInOrder) {
    constexpr int kLines = 150;
    const ReportLayout layout(ReadRichText(ReportText(NumberedLines(kLines))));
    ASSERT_GT(layout.PageCount(), 1);
    std::vector<QString> texts;
    std::vector<QString> expected;
    for (int line = 1; line <= kLines; ++line) {
        expected.push_back(QString("Line%1").arg(line));
        expected.push_back(QString("%1.50").arg(line));
    }
    for (int page = 0; page < layout.PageCount(); ++page) {
        NotingPaper paper;
        QPainter painter(&paper);
        layout.Draw(painter, page, QRectF(0, 0, 12240, 15840));
        double last = 0.0;
        for (const auto& [text, place] : paper.Notes()) {
            texts.push_back(text);
            EXPECT_GE(place.y(), last) << text.toStdString();
            EXPECT_GE(place.y(), 720);
            EXPECT_LE(place.y(), 15840 - 720);
            EXPECT_GE(place.x(), 1080 - 1);
            last = place.y();
        }
    }
    EXPECT_THAT(texts, ElementsAreArray(expected));
}

TEST(ReportPages, DrawOnlyTheLinesOfThePartThatIsSeen) {
    const ReportLayout layout(ReadRichText(ReportText(NumberedLines(40))));
    const ReportRow& row = layout.Rows()[20];
    NotingPaper paper;
    QPainter painter(&paper);
    layout.Draw(painter, 0, QRectF(0, row.top + 1, 12240, row.height - 2));
    ASSERT_EQ(paper.Notes().size(), 2U);
    EXPECT_EQ(paper.Notes().front().text, "Line21");
}

/// What a footer draws on a page.
std::vector<NotingEngine::Note> FooterOf(const ReportLayout& layout, int page, const QString& name) {
    NotingPaper paper;
    QPainter painter(&paper);
    DrawFooter(painter, layout, page, name);
    return paper.Notes();
}

TEST(ReportFooter, NamesTheReportAndNumbersItsPagesInTheLowerMargin) {
    const ReportLayout layout(ReadRichText(ReportText(NumberedLines(120))));
    ASSERT_EQ(layout.PageCount(), 3);
    for (int page = 0; page < 3; ++page) {
        const auto notes = FooterOf(layout, page, "Mill & Sons");
        ASSERT_EQ(notes.size(), 2U);
        EXPECT_EQ(notes[0].text, "Mill & Sons");
        EXPECT_EQ(notes[0].place.x(), 1080);
        EXPECT_EQ(notes[1].text.toStdString(), "Page " + std::to_string(page + 1) + " of 3");
        // 8 points of Arial are 184 twips from line to line; the margin begins at 15120 and has 720.
        EXPECT_GT(notes[1].place.y(), 15120 + 140);
        EXPECT_LT(notes[1].place.y(), 15840 - 240) << "where printers do not print";
        EXPECT_EQ(notes[0].place.y(), notes[1].place.y());
    }
}

TEST(ReportFooter, CutsALongNameBeforeTheNumber) {
    const ReportLayout layout(ReadRichText(ReportText("a\\par")));
    const auto notes = FooterOf(layout, 0, QString("long\nname ").repeated(100));
    ASSERT_EQ(notes.size(), 2U);
    EXPECT_TRUE(notes[0].text.startsWith("long name long name"));
    EXPECT_TRUE(notes[0].text.endsWith(QChar(0x2026)));
    // 80 em of 160 twips would be wider than the page; the name leaves room for the number.
    EXPECT_LT(notes[0].text.size(), 160);
}

TEST(ReportFooter, IsNotThereWithoutTextOrRoom) {
    EXPECT_TRUE(FooterOf(ReportLayout(ReadRichText("")), 0, "x").empty());
    const auto withMargin = [](int twips) {
        return ReportLayout(ReadRichText("{\\rtf1\\margb" + std::to_string(twips) + " a\\par}"));
    };
    EXPECT_TRUE(FooterOf(withMargin(150), 0, "x").empty());
    EXPECT_EQ(FooterOf(withMargin(250), 0, "x").size(), 2U);
}

/// A5 on its side, with half an inch all around: 11906 twips wide, 8391 high.
constexpr RichPage kWideA5{
    .width = 11906, .height = 8391, .left = 720, .right = 720, .top = 720, .bottom = 720};
/// A5 upright: 6951 twips are left for the text.
constexpr RichPage kA5{.width = 8391, .height = 11906, .left = 720, .right = 720, .top = 720, .bottom = 720};

TEST(ReportPaper, HoldsTheSameTextOnPagesOfItsOwn) {
    const RichDocument document = ReadRichText(ReportText(NumberedLines(100)));
    const ReportLayout own(document);
    const ReportLayout wide(document, kWideA5);
    EXPECT_EQ(wide.Text(), own.Text());
    EXPECT_EQ(wide.Scale(), 1.0);
    // A line of 12 points is 276 twips high: 25 in the 6951 that are left.
    EXPECT_EQ(wide.PageCount(), 4);
    EXPECT_EQ(own.PageCount(), 2);
    EXPECT_EQ(wide.Page(), kWideA5);
    EXPECT_EQ(wide.Paper(), kWideA5);
}

TEST(ReportPaper, ThatIsNarrowScalesTheTextDown) {
    const RichDocument document =
        ReadRichText(ReportText(std::string(59, '_') + "\\par\\tx9000\\tab a\\par"));
    const ReportLayout layout(document, kA5);
    EXPECT_NEAR(layout.Scale(), 6951.0 / 10080.0, 1e-9);
    EXPECT_EQ(layout.Paper(), kA5);
    EXPECT_EQ(layout.Page().width - layout.Page().left - layout.Page().right, 10080);
    EXPECT_NEAR(layout.Page().height * layout.Scale(), kA5.height, 1.0);
    EXPECT_NEAR(layout.Page().top * layout.Scale(), kA5.top, 1.0);
    EXPECT_EQ(layout.Rows().size(), 2U) << "no line is broken that the document's own page holds";
}

TEST(ReportPaper, ScalesToAHalfAtMost) {
    const RichDocument document = ReadRichText(ReportText(NumberedLines(3)));
    RichPage narrow = kA5;
    narrow.left = narrow.right = (narrow.width - 5040) / 2;
    EXPECT_NEAR(ReportLayout(document, narrow).Scale(), 0.5, 1e-4);
    narrow.left = narrow.right = (narrow.width - 2000) / 2;
    EXPECT_EQ(ReportLayout(document, narrow).Scale(), 0.5);
}

TEST(ReportPaper, WithMarginsThatLeaveNothingHasNone) {
    const RichDocument document = ReadRichText(ReportText(NumberedLines(3)));
    const RichPage hopeless{
        .width = 8391, .height = 11906, .left = 5000, .right = 5000, .top = 9000, .bottom = 9000};
    const ReportLayout layout(document, hopeless);
    EXPECT_EQ(layout.Paper(),
              (RichPage{.width = 8391, .height = 11906, .left = 0, .right = 0, .top = 0, .bottom = 0}));
    EXPECT_EQ(layout.PageCount(), 1);
}

/// A report printed to a file.
class PrintedReport : public testing::Test {
  protected:
    QByteArray Print(const std::string& bytes) {
        QPrinter printer(QPrinter::HighResolution);
        return Print(bytes, printer);
    }
    QByteArray Print(const std::string& bytes, QPrinter& printer) {
        m_view.RichText(bytes);
        m_view.FooterName("Mill");
        m_view.Zoom(3.0);  // what is seen has no part in what is printed
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(Path());
        EXPECT_TRUE(m_view.Print(printer));
        QFile file(Path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    [[nodiscard]] QString Path() const { return m_folder.filePath("report.pdf"); }

    QTemporaryDir m_folder;
    ReportView m_view;
};

qsizetype PagesOf(const QByteArray& pdf) {
    return QString::fromLatin1(pdf).count(QRegularExpression("/Type\\s*/Page\\b"));
}

TEST_F(PrintedReport, HasItsOwnPages) {
    const QByteArray pdf = Print(ReportText(NumberedLines(150)));
    EXPECT_EQ(PagesOf(pdf), m_view.Layout().PageCount());
    EXPECT_GT(PagesOf(pdf), 1);
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 612.000000 792.000000]"));
    EXPECT_FALSE(pdf.contains("/Subtype /Image"));
    EXPECT_TRUE(pdf.contains("/Type /Font"));
}

TEST_F(PrintedReport, LeavesThePrinterAsItWasSetUp) {
    QPrinter printer;
    const QPageLayout before(QPageSize(QPageSize::A6), QPageLayout::Landscape, QMarginsF(20, 21, 22, 23));
    printer.setPageLayout(before);
    Print(ReportText("a\\par"), printer);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(printer.pageLayout().pageSize().id(), QPageSize::A6);
    EXPECT_EQ(printer.pageLayout().margins(QPageLayout::Point), before.margins(QPageLayout::Point));
    EXPECT_FALSE(printer.fullPage());
}

TEST_F(PrintedReport, HasThePagesThatAreWanted) {
    QPrinter printer;
    printer.setPrintRange(QPrinter::PageRange);
    for (const auto& [from, to, pages] :
         {std::tuple{1, 1, 1}, {2, 3, 2}, {2, 99, 2}, {77, 99, 1}, {0, 0, 3}}) {
        printer.setFromTo(from, to);
        EXPECT_EQ(PagesOf(Print(ReportText(NumberedLines(150)), printer)), pages) << from << " to " << to;
    }
}

TEST_F(PrintedReport, LiesOnItsSideWhereItIsWide) {
    const QByteArray pdf =
        Print("{\\rtf1\\paperw15840\\paperh12240\\margl1080\\margr1080\\margt720\\margb720 wide\\par}");
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 792.000000 612.000000]"));
}

TEST_F(PrintedReport, IsOnThePaperThatWasChosen) {
    m_view.Paper(kWideA5);
    QByteArray pdf = Print(ReportText(NumberedLines(100)));
    // 595.3 by 419.55 points, which is A5.
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 595.000000 420.000000]"));
    EXPECT_EQ(PagesOf(pdf), 4);
    m_view.Paper(kA5);
    pdf = Print(ReportText(NumberedLines(100)));
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 420.000000 595.000000]"));
    m_view.Paper(std::nullopt);
    EXPECT_TRUE(Print(ReportText("a\\par")).contains("/MediaBox [0 0 612.000000 792.000000]"));
}

TEST_F(PrintedReport, IsOnePageForNothing) {
    EXPECT_EQ(PagesOf(Print("")), 1);
}

TEST_F(PrintedReport, HasItsTextAtItsPlaces) {
    const QString tool = QStandardPaths::findExecutable("pdftotext");
    if (tool.isEmpty()) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    Print(ReportText("\\pard\\tqdec\\tx3787 Rating\\tab 3255.00\\par Dip\\tab 0.00\\par Sets\\tab 12\\par"));
    QProcess reader;
    reader.start(tool, {"-bbox", Path(), "-"});
    ASSERT_TRUE(reader.waitForFinished());
    const QString text = QString::fromUtf8(reader.readAllStandardOutput());
    static const QRegularExpression word(
        "<word xMin=\"([\\d.]+)\" yMin=\"[\\d.]+\" xMax=\"([\\d.]+)\"[^>]*>([^<]+)<");
    const QStringList footer{"Mill", "Page", "1", "of"};
    QStringList words;
    for (const QRegularExpressionMatch& match : word.globalMatch(text)) {
        words.append(match.captured(3));
        // The margin is 1080 twips, the stop 3787: 54 and 243.35 points. Two decimals and the point of 12
        // points are 15 points wide.
        if (footer.contains(match.captured(3))) {
            continue;
        }
        if (match.captured(3) == "12") {
            EXPECT_NEAR(match.captured(2).toDouble(), 243.35, 0.3);
        } else if (match.captured(3).endsWith(".00")) {
            EXPECT_NEAR(match.captured(2).toDouble(), 243.35 + 15, 0.3);
        } else {
            EXPECT_NEAR(match.captured(1).toDouble(), 54, 0.5);
        }
    }
    words.sort();
    EXPECT_EQ(words.join(' ').toStdString(), "0.00 1 1 12 3255.00 Dip Mill Page Rating Sets of");
}

TEST_F(PrintedReport, TellsOfAPrinterThatTakesNothing) {
    m_view.RichText(ReportText("a\\par"));
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(m_folder.filePath("no/such/folder/report.pdf"));
    EXPECT_FALSE(m_view.Print(printer));
}

}  // namespace
}  // namespace genvara
