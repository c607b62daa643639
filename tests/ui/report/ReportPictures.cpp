// Pictures of the report view, for people to look at.
//
// GENVARA_REPORT_PICTURES names a folder with rich texts (*.rtf); each is shown in a light and a dark theme
// and its picture written beside it, at the screen's scale (QT_SCALE_FACTOR). Without it nothing is made.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QScrollBar>
#include <array>

#include "ReportView.h"

namespace genvara {
namespace {

QPalette Theme(bool isDark) {
    return isDark ? QPalette(QColor(0x35, 0x35, 0x35), QColor(0x2A, 0x2A, 0x2A))
                  : QPalette(QColor(0xEF, 0xEF, 0xEF));
}

std::string Bytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

/// A view as it is met: its name, size, and what is done to it before the picture is taken.
struct Scene {
    const char* name;
    QSize window;
    void (*prepare)(ReportView&);
};

const std::array<Scene, 4> kScenes{{
    {"", {1024, 760}, [](ReportView& view) { view.setFocus(); }},
    {"-selected",
     {1024, 760},
     [](ReportView& view) {
         view.setFocus();
         view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() / 2);
         view.Select(static_cast<int>(view.Layout().Text().size() / 3),
                     static_cast<int>(view.Layout().Text().size()));
     }},
    {"-small", {420, 320}, [](ReportView&) {}},
    {"-large", {1800, 1000}, [](ReportView&) {}},
}};

void TakePictures(const QString& stem, const std::string& bytes, bool isDark) {
    for (const Scene& scene : kScenes) {
        ReportView view;
        view.setPalette(Theme(isDark));
        view.resize(scene.window);
        view.show();
        view.RichText(bytes);
        QApplication::processEvents();
        scene.prepare(view);
        QApplication::processEvents();
        const int percent = static_cast<int>(view.devicePixelRatio() * 100);
        const QString theme = isDark ? "dark" : "light";
        EXPECT_TRUE(view.grab().save(QString("%1%2-%3-%4.png").arg(stem, scene.name, theme).arg(percent)));
    }
}

class ReportPictures : public testing::Test {
  protected:
    void SetUp() override {
        if (!qEnvironmentVariableIsSet("GENVARA_REPORT_PICTURES")) {
            GTEST_SKIP() << "GENVARA_REPORT_PICTURES names no folder";
        }
        const QDir folder(qEnvironmentVariable("GENVARA_REPORT_PICTURES"));
        for (const QString& name : folder.entryList({"*.rtf"})) {
            m_stems.append(folder.filePath(name.chopped(4)));
        }
    }

    QStringList m_stems;
};

TEST_F(ReportPictures, AreMadeOnDemand) {
    for (const QString& stem : m_stems) {
        const std::string bytes = Bytes(stem + ".rtf");
        TakePictures(stem, bytes, false);
        TakePictures(stem, bytes, true);
    }
}

TEST_F(ReportPictures, ArePrintedOnDemand) {
    for (const QString& stem : m_stems) {
        ReportView view;
        view.RichText(Bytes(stem + ".rtf"));
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(stem + ".pdf");
        EXPECT_TRUE(view.Print(printer));
    }
}

}  // namespace
}  // namespace genvara
