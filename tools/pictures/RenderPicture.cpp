// Turns a drawing into the picture files that lie beside the programs.
//
//   render_picture icon SOURCE.svg TARGET.ico       every size that desktops ask for, the largest first
//   render_picture splash SOURCE.svg TARGET.bmp     twice the drawing's own size

#include <QBuffer>
#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <array>

namespace {

// The largest first: a reader that takes one image of the file takes the first.
constexpr std::array kIconSizes = {256, 128, 64, 48, 32, 24, 16};  // [px]
constexpr int kSplashScale = 2;

QImage Drawn(QSvgRenderer& renderer, const QSize& size, QImage::Format format) {
    QImage image(size, format);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

QByteArray AsPng(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// The ICO container around PNG images; Qt's own writer knows one image a file only.
/// Layout: a header of 6 bytes, one entry of 16 bytes an image, the images.
QByteArray IconFile(const QList<QByteArray>& images) {
    constexpr quint32 kHeaderLength = 6;
    constexpr quint32 kEntryLength = 16;
    constexpr quint16 kTypeIcon = 1;
    constexpr quint16 kPlanes = 1;
    constexpr quint16 kBitsPerPixel = 32;

    QByteArray file;
    QDataStream out(&file, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16{0} << kTypeIcon << static_cast<quint16>(images.size());
    quint32 offset = kHeaderLength + kEntryLength * static_cast<quint32>(images.size());
    for (qsizetype i = 0; i < images.size(); ++i) {
        // A side of 256 is written as 0; the two zeros are the colours of a palette, and a reserved byte.
        const auto side = static_cast<quint8>(kIconSizes.at(static_cast<std::size_t>(i)) % 256);
        const auto length = static_cast<quint32>(images[i].size());
        out << side << side << quint8{0} << quint8{0} << kPlanes << kBitsPerPixel << length << offset;
        offset += length;
    }
    for (const QByteArray& image : images) {
        out.writeRawData(image.constData(), static_cast<int>(image.size()));
    }
    return file;
}

bool WriteIcon(QSvgRenderer& renderer, const QString& target) {
    QList<QByteArray> images;
    for (const int side : kIconSizes) {
        images.append(AsPng(Drawn(renderer, QSize(side, side), QImage::Format_ARGB32)));
    }
    const QByteArray bytes = IconFile(images);
    QFile file(target);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool WriteSplash(QSvgRenderer& renderer, const QString& target) {
    return Drawn(renderer, renderer.defaultSize() * kSplashScale, QImage::Format_RGB32).save(target, "BMP");
}

}  // namespace

int main(int argc, char** argv) {
    // No window and no font: drawings become images where there is no display as well.
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || (arguments[1] != "icon" && arguments[1] != "splash")) {
        qCritical("usage: render_picture icon|splash SOURCE.svg TARGET");
        return 2;
    }
    QSvgRenderer renderer(arguments[2]);
    if (!renderer.isValid()) {
        qCritical("%s: not a drawing", qPrintable(arguments[2]));
        return 1;
    }
    const bool written =
        arguments[1] == "icon" ? WriteIcon(renderer, arguments[3]) : WriteSplash(renderer, arguments[3]);
    if (!written) {
        qCritical("%s: cannot be written", qPrintable(arguments[3]));
    }
    return written ? 0 : 1;
}
