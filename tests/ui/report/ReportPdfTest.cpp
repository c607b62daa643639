// Reports as PDF files, looked at with the tools that others read them with.

#include "ReportPdf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cstdlib>
#include <ctime>
#include <string>

#include "ReportTexts.h"

namespace genvara {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

constexpr DateTime kMoment{2026, 3, 4, 15, 6, 7};

std::string Report(const std::string& rest = "a\\par") {
    return ReportText("\\f0\\fs40\\b\\i Genvara\\par Generator Load Profile\\par\\par\\f1\\fs24\\b0\\i0 " +
                      rest);
}

QByteArray Pdf(const std::string& text, const QString& name = "Mill & S\u00f8n") {
    return ReportPdf(ReportLayout(ReadRichText(text)), name, kMoment);
}

/// The time zone of the process, for as long as the object lives.
class TimeZone {
  public:
    explicit TimeZone(const char* name) {
        setenv("TZ", name, 1);
        tzset();
    }
    ~TimeZone() {
        unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    TimeZone(TimeZone&&) = delete;
    TimeZone& operator=(TimeZone&&) = delete;
};

TEST(ReportPdf, OfTheSameReportAndMomentIsTheSameByteForByte) {
    const QByteArray pdf = Pdf(Report(NumberedLines(200)));
    ASSERT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(Pdf(Report(NumberedLines(200))), pdf);
}

TEST(ReportPdf, OfAnotherMomentDiffersInItsDateAlone) {
    const QByteArray pdf = Pdf(Report());
    QByteArray other =
        ReportPdf(ReportLayout(ReadRichText(Report())), "Mill & S\u00f8n", {2025, 12, 31, 1, 2, 3});
    EXPECT_NE(other, pdf);
    EXPECT_EQ(other.replace("D:20251231010203", "D:20260304150607"), pdf);
}

TEST(ReportPdf, TakesItsTitleFromTheReport) {
    EXPECT_EQ(ReportTitle(ReportLayout(ReadRichText(Report()))), "Generator Load Profile");
    for (const std::string text : {"", "one line", "\\rtf1", "{\\rtf1\\par a\\par b\\par c}"}) {
        EXPECT_EQ(ReportTitle(ReportLayout(ReadRichText(text))), "") << text;
    }
    EXPECT_TRUE(Pdf("", "").startsWith("%PDF-"));
}

/// What a tool says of a PDF file; nothing without the tool.
class ReadPdf : public testing::Test {
  protected:
    std::string Read(const QByteArray& pdf, const char* tool, QStringList arguments = {}) {
        if (QStandardPaths::findExecutable(tool).isEmpty()) {
            return {};
        }
        QFile file(m_folder.filePath("report.pdf"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size());
        file.close();
        QProcess reader;
        reader.start(tool, arguments << file.fileName() << "-");
        EXPECT_TRUE(reader.waitForFinished());
        EXPECT_EQ(reader.readAllStandardError().toStdString(), "") << tool;
        return reader.readAllStandardOutput().toStdString();
    }
    /// For a tool that takes no second file.
    std::string Ask(const QByteArray& pdf, const char* tool) {
        if (QStandardPaths::findExecutable(tool).isEmpty()) {
            return {};
        }
        QFile file(m_folder.filePath("report.pdf"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size());
        file.close();
        QProcess reader;
        reader.start(tool, {file.fileName()});
        EXPECT_TRUE(reader.waitForFinished());
        EXPECT_EQ(reader.readAllStandardError().toStdString(), "") << tool;
        return reader.readAllStandardOutput().toStdString();
    }

    QTemporaryDir m_folder;
};

TEST_F(ReadPdf, HasTitlePagesAndDate) {
    for (const char* zone : {"UTC", "IST-5:30", "NST3:30"}) {
        const TimeZone here(zone);
        const std::string facts = Ask(Pdf(Report(NumberedLines(90))), "pdfinfo");
        if (facts.empty()) {
            GTEST_SKIP() << "pdfinfo is not installed";
        }
        EXPECT_THAT(facts, ContainsRegex("Title: +Mill & S\u00f8n \u2013 Generator Load Profile\n"));
        EXPECT_THAT(facts, ContainsRegex("Creator: +Genvara 8.0.0\n"));
        EXPECT_THAT(facts, ContainsRegex("Pages: +2\n"));
        EXPECT_THAT(facts, ContainsRegex("Page size: +612 x 792 pts \\(letter\\)"));
        EXPECT_THAT(facts, ContainsRegex("CreationDate: +Wed Mar  4 15:06:07 2026"));
    }
}

TEST_F(ReadPdf, HasTextThatCanBeSelected) {
    const std::string text =
        Read(Pdf(Report("caf\\'e9 \\u937? 1/2\\par " + NumberedLines(100))), "pdftotext", {"-layout"});
    if (text.empty()) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    EXPECT_THAT(text, HasSubstr("caf\u00e9 \u03a9 1/2"));
    EXPECT_THAT(text, ContainsRegex("Line100 +100.50"));
    EXPECT_THAT(text, ContainsRegex("Mill & S\u00f8n +Page 1 of 3"));
    EXPECT_THAT(text, ContainsRegex("Mill & S\u00f8n +Page 3 of 3"));
}

TEST_F(ReadPdf, BringsItsFontsAlong) {
    const std::string fonts = Ask(Pdf(Report()), "pdffonts");
    if (fonts.empty()) {
        GTEST_SKIP() << "pdffonts is not installed";
    }
    // After two lines of headings each line tells whether a font is embedded, has the name of a subset, and
    // whether its text can be read back.
    const QStringList lines = QString::fromStdString(fonts).split('\n', Qt::SkipEmptyParts).mid(2);
    EXPECT_GE(lines.size(), 2);
    for (const QString& line : lines) {
        EXPECT_THAT(line.toStdString(), ContainsRegex("yes (yes|no) +yes +[0-9]+ +[0-9]+ *$"));
    }
}

}  // namespace
}  // namespace genvara
