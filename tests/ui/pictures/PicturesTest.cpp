#include "Pictures.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace genvara {
namespace {

const std::vector<std::string> kToolbar = {"new", "open", "save",  "print", "export",
                                           "cut", "copy", "paste", "help"};
const std::vector<std::string> kSideBar = {"project", "powersystem", "loadprofile", "recommend"};
const std::vector<std::string> kTree = {"step", "airconditioning", "charger", "lighting", "medical",
                                        "misc", "motor",           "office",  "ups",      "vfd"};
const std::vector<std::vector<std::string>> kFamilies = {kToolbar, kSideBar, kTree};

std::vector<std::string> AllNames() {
    std::vector<std::string> names;
    for (const auto& family : kFamilies) {
        names.insert(names.end(), family.begin(), family.end());
    }
    return names;
}

QImage Drawn(const std::string& name, int size, QIcon::Mode mode = QIcon::Normal, qreal ratio = 1.0) {
    return Picture(name)
        .pixmap(QSize(size, size), ratio, mode)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

/// Share of the pixels that can be seen, 0 to 1: those that hide a quarter of the ground and more.
double Covered(const QImage& image) {
    int covered = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            covered += qAlpha(image.pixel(x, y)) >= 64 ? 1 : 0;
        }
    }
    return static_cast<double>(covered) / (image.width() * image.height());
}

/// Largest distance between the channels of a pixel that can be seen, 0 in a grey picture.
int Colourfulness(const QImage& image) {
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) >= 64) {
                const auto [low, high] = std::minmax({qRed(pixel), qGreen(pixel), qBlue(pixel)});
                most = std::max(most, high - low);
            }
        }
    }
    return most;
}

/// Contrast of two opaque colours as the WCAG defines it, 1 to 21.
double Contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

std::vector<QString> SourceFiles() {
    std::vector<QString> files;
    QDirIterator found(PICTURE_SOURCES, {"*.svg"}, QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext()) {
        files.push_back(found.next());
    }
    return files;
}

QByteArray TextOf(const QString& file) {
    QFile source(file);
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

TEST(Pictures, EveryNameGivesAnIconAtEverySize) {
    for (const std::string& name : AllNames()) {
        EXPECT_FALSE(Picture(name).isNull()) << name;
        for (const int size : {16, 20, 24, 48, 96}) {
            const QImage image = Drawn(name, size);
            EXPECT_EQ(image.size(), QSize(size, size)) << name;
            // A twelfth of the square is what the thinnest of them covers; all of it would be a blot.
            EXPECT_GT(Covered(image), 0.08) << name << " at " << size;
            EXPECT_LT(Covered(image), 0.85) << name << " at " << size;
        }
    }
}

TEST(Pictures, ANameWithoutAPictureGivesANullIcon) {
    for (const char* name : {"", "nothing", "new.svg", "pictures/new", "NEW"}) {
        EXPECT_TRUE(Picture(name).isNull()) << name;
    }
}

TEST(Pictures, EveryDrawingOfTheFolderIsCompiledIn) {
    std::set<std::string> drawings;
    QDirIterator found(PICTURE_SOURCES "/pictures", {"*.svg"}, QDir::Files);
    while (found.hasNext()) {
        drawings.insert(QFileInfo(found.next()).completeBaseName().toStdString());
    }
    const auto names = AllNames();
    EXPECT_EQ(drawings, std::set<std::string>(names.begin(), names.end()));
}

TEST(Pictures, DisabledIsGreyFainterAndNotBlank) {
    for (const std::string& name : AllNames()) {
        for (const int size : {16, 24, 48}) {
            const QImage enabled = Drawn(name, size);
            const QImage disabled = Drawn(name, size, QIcon::Disabled);
            EXPECT_GT(Colourfulness(enabled), 60) << name;
            // Rounding in the premultiplied form shifts a channel by a few steps where little is covered.
            EXPECT_LE(Colourfulness(disabled), 4) << name;
            EXPECT_GT(Covered(disabled), 0.05) << name << " at " << size;
            EXPECT_LE(Covered(disabled), Covered(enabled)) << name << " at " << size;
        }
    }
}

TEST(Pictures, SelectedTakesTheColourOfHighlightedText) {
    const QPalette before = QGuiApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::HighlightedText, QColor(0xf0, 0xf8, 0xff));
    QGuiApplication::setPalette(palette);
    const QImage selected = Drawn("motor", 64, QIcon::Selected);
    QGuiApplication::setPalette(before);
    // The ring is 6 of 16 wide around (8, 7): its left edge is at 2 * 4 = 8 pixels.
    EXPECT_EQ(QColor(selected.pixel(8, 28)), QColor(0xf0, 0xf8, 0xff));
}

TEST(Pictures, NoTwoOfAFamilyLookAlike) {
    for (const auto& family : kFamilies) {
        for (auto one = family.begin(); one != family.end(); ++one) {
            for (auto other = std::next(one); other != family.end(); ++other) {
                const QImage a = Drawn(*one, 16);
                const QImage b = Drawn(*other, 16);
                int differing = 0;
                for (int y = 0; y < a.height(); ++y) {
                    for (int x = 0; x < a.width(); ++x) {
                        differing += std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))) > 100 ? 1 : 0;
                    }
                }
                EXPECT_GT(differing, 25) << *one << " and " << *other << " at 16 pixels";
            }
        }
    }
}

TEST(Pictures, AreDrawnForThePixelsOfTheDevice) {
    // Scaled up from 24 pixels, an edge would smear over several pixels of 48: sharp drawing and scaled
    // drawing must differ, and the sharp one is what 48 pixels at ratio 1 give.
    for (const std::string& name : kToolbar) {
        const QImage doubled = Drawn(name, 24, QIcon::Normal, 2.0);
        EXPECT_EQ(doubled.size(), QSize(48, 48)) << name;
        EXPECT_DOUBLE_EQ(doubled.devicePixelRatio(), 2.0) << name;
        QImage plain = doubled;
        plain.setDevicePixelRatio(1.0);
        EXPECT_EQ(plain, Drawn(name, 48)) << name;
        EXPECT_NE(plain, Drawn(name, 24).scaled(48, 48, Qt::IgnoreAspectRatio, Qt::SmoothTransformation))
            << name;
    }
}

TEST(Pictures, PaintUsesThePixelsOfTheDevice) {
    QImage canvas(48, 48, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    canvas.setDevicePixelRatio(2.0);
    {
        QPainter painter(&canvas);
        Picture("save").paint(&painter, QRect(0, 0, 24, 24));
    }
    canvas.setDevicePixelRatio(1.0);
    EXPECT_EQ(canvas.convertToFormat(QImage::Format_ARGB32), Drawn("save", 48));
}

TEST(Pictures, ASquarePictureKeepsItsShapeInAnOblongPlace) {
    const QImage wide =
        Picture("help").pixmap(QSize(96, 48)).toImage().convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(wide.size(), QSize(96, 48));
    EXPECT_EQ(wide.copy(24, 0, 48, 48), Drawn("help", 48));
}

TEST(PictureSources, AreAllDrawingsOfTheTinyProfile) {
    const std::vector<QString> files = SourceFiles();
    ASSERT_EQ(files.size(), AllNames().size() + 3);  // and the icon and two splashes
    const QRegularExpression beyond(
        "<(filter|mask|style|text|image|clipPath|pattern|script|foreignObject)\\b|class=");
    for (const QString& file : files) {
        EXPECT_TRUE(QSvgRenderer(file).isValid()) << qPrintable(file);
        const QByteArray text = TextOf(file);
        EXPECT_TRUE(text.contains("baseProfile=\"tiny\"")) << qPrintable(file);
        EXPECT_TRUE(text.contains("<!-- ")) << qPrintable(file);
        EXPECT_FALSE(beyond.match(QString::fromUtf8(text)).hasMatch()) << qPrintable(file);
    }
}

TEST(PictureSources, UseTwoTonesThatStandOutFromEveryGround) {
    const QRegularExpression colour("#[0-9a-fA-F]{6}");
    std::set<QString> tones;
    for (const QString& file : SourceFiles()) {
        if (!file.startsWith(PICTURE_SOURCES "/pictures/")) {
            continue;
        }
        auto matches = colour.globalMatch(QString::fromUtf8(TextOf(file)));
        while (matches.hasNext()) {
            tones.insert(matches.next().captured());
        }
    }
    EXPECT_EQ(tones.size(), 2U);
    for (const QString& tone : tones) {
        for (const char* ground : {"#ffffff", "#efefef", "#2b2b2b"}) {
            // The WCAG asks for 3 of graphics on white; a toolbar's pale grey takes a little of it.
            EXPECT_GT(Contrast(QColor(tone), QColor(ground)), 2.6) << qPrintable(tone) << " on " << ground;
        }
    }
}

}  // namespace
}  // namespace genvara
