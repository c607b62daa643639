// Pictures of the report view, for people to look at.
//
// GENVARA_REPORT_PICTURES names a folder with rich texts (*.rtf); each is shown in a light and a dark theme
// and its picture written beside it, at the screen's scale (QT_SCALE_FACTOR). Without it nothing is made.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPrinter>

#include "ReportView.h"

namespace genvara {
namespace {

constexpr QSize kWindow{1024, 760};

QPalette Theme(bool isDark) {
    return isDark ? QPalette(QColor(0x35, 0x35, 0x35), QColor(0x2A, 0x2A, 0x2A))
                  : QPalette(QColor(0xEF, 0xEF, 0xEF));
}

std::string Bytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

TEST(ReportPictures, AreMadeOnDemand) {
    const QDir folder(qEnvironmentVariable("GENVARA_REPORT_PICTURES"));
    if (!qEnvironmentVariableIsSet("GENVARA_REPORT_PICTURES")) {
        GTEST_SKIP() << "GENVARA_REPORT_PICTURES names no folder";
    }
    for (const QString& name : folder.entryList({"*.rtf"})) {
        const QString stem = folder.filePath(name.chopped(4));
        for (const bool isDark : {false, true}) {
            ReportView view;
            view.setPalette(Theme(isDark));
            view.resize(kWindow);
            view.show();
            view.RichText(Bytes(folder.filePath(name)));
            view.setFocus();
            QApplication::processEvents();
            const int percent = static_cast<int>(view.devicePixelRatio() * 100);
            EXPECT_TRUE(
                view.grab().save(QString("%1-%2-%3.png").arg(stem, isDark ? "dark" : "light").arg(percent)));
        }
        ReportView view;
        view.RichText(Bytes(folder.filePath(name)));
        QPrinter printer;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(stem + ".pdf");
        EXPECT_TRUE(view.Print(printer));
    }
}

}  // namespace
}  // namespace genvara
