// The picture files that lie beside the programs: the window's icon and the splash.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <string>
#include <vector>

namespace genvara {
namespace {

const QString kIcon = QStringLiteral(PICTURE_FILES "/FERN.ico");
const QString kSplash = QStringLiteral(PICTURE_FILES "/GenvaraSplash.bmp");

TEST(PictureFiles, TheIconOpensAtItsLargestSize) {
    const QImage image(kIcon);
    ASSERT_EQ(image.size(), QSize(256, 256));
    EXPECT_TRUE(image.hasAlphaChannel());
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);        // outside of the rounded corner
    EXPECT_EQ(qAlpha(image.pixel(128, 240)), 255);  // on the plate
}

TEST(PictureFiles, TheIconHasEverySizeThatDesktopsAskFor) {
    QImageReader reader(kIcon);
    std::vector<int> sides;
    for (int i = 0; i < reader.imageCount(); ++i) {
        ASSERT_TRUE(reader.jumpToImage(i));
        const QImage image = reader.read();
        ASSERT_FALSE(image.isNull()) << reader.errorString().toStdString();
        EXPECT_EQ(image.width(), image.height());
        sides.push_back(image.width());
    }
    EXPECT_EQ(sides, (std::vector{256, 128, 64, 48, 32, 24, 16}));
}

TEST(PictureFiles, TheIconServesTheSizeThatIsAsked) {
    const QIcon icon(kIcon);
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        EXPECT_EQ(icon.actualSize(QSize(side, side)), QSize(side, side));
    }
}

TEST(PictureFiles, TheSplashIsTwiceItsSizeOnTheScreen) {
    // 7605 x 5430 twips are 507 x 362 pixels at 15 twips a pixel.
    const QImage image(kSplash);
    EXPECT_EQ(image.size(), QSize(2 * 507, 2 * 362));
}

TEST(PictureFiles, TheSplashIsThatOfTheBrandBuilt) {
    QSvgRenderer source(QStringLiteral(SPLASH_SOURCE));
    ASSERT_TRUE(source.isValid());
    const QImage image(kSplash);
    QImage drawn(image.size(), QImage::Format_RGB32);
    {
        QPainter painter(&drawn);
        source.render(&painter);
    }
    EXPECT_EQ(image.convertToFormat(QImage::Format_RGB32), drawn);
}

TEST(PictureFiles, TheSplashLeavesRoomForTheVersion) {
    // The bottom right corner inside the frame: 150 x 40 pixels of the screen without a mark.
    const QImage image(kSplash);
    ASSERT_FALSE(image.isNull());
    for (int y = 2 * 312; y < 2 * 352; ++y) {
        for (int x = 2 * 347; x < 2 * 497; ++x) {
            ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::white)) << x << ", " << y;
        }
    }
}

}  // namespace
}  // namespace genvara
