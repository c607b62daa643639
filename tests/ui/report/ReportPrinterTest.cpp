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
#include <tuple>
#include <vector>

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

/// A report printed to a file.
class PrintedReport : public testing::Test {
  protected:
    QByteArray Print(const std::string& bytes) {
        QPrinter printer(QPrinter::HighResolution);
        return Print(bytes, printer);
    }
    QByteArray Print(const std::string& bytes, QPrinter& printer) {
        m_view.RichText(bytes);
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
    QStringList words;
    for (const QRegularExpressionMatch& match : word.globalMatch(text)) {
        words.append(match.captured(3));
        // The margin is 1080 twips, the stop 3787: 54 and 243.35 points. Two decimals and the point of 12
        // points are 15 points wide.
        if (match.captured(3) == "12") {
            EXPECT_NEAR(match.captured(2).toDouble(), 243.35, 0.3);
        } else if (match.captured(3).endsWith(".00")) {
            EXPECT_NEAR(match.captured(2).toDouble(), 243.35 + 15, 0.3);
        } else {
            EXPECT_NEAR(match.captured(1).toDouble(), 54, 0.5);
        }
    }
    words.sort();
    EXPECT_EQ(words.join(' ').toStdString(), "0.00 12 3255.00 Dip Rating Sets");
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
