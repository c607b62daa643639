#include "PictureEngine.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <utility>

namespace genvara {
namespace {

/// Colours that a picture is drawn in, and how much of the ground stays hidden, 0 to 1.
struct Tones {
    QColor body;
    QColor accent;
    double opacity = 1.0;
};

/// Mid greys that keep the two tones apart, and let half of any ground through: faint on white as on black.
const Tones kDisabledTones{QColor(0x70, 0x70, 0x70), QColor(0x90, 0x90, 0x90), 0.65};

Tones TonesOf(QIcon::Mode mode) {
    if (mode == QIcon::Disabled) {
        return kDisabledTones;
    }
    if (mode == QIcon::Selected) {
        const QColor text = QGuiApplication::palette().color(QPalette::HighlightedText);
        return {text, text};
    }
    return {QColor(tone::kBody), QColor(tone::kAccent)};
}

QByteArray InTones(QByteArray source, const Tones& tones) {
    source.replace(tone::kBody, tones.body.name().toLatin1());
    source.replace(tone::kAccent, tones.accent.name().toLatin1());
    return source;
}

/// Thins the picture as a whole: thinned shape by shape, strokes would show through each other.
void Thin(QImage& image, double opacity) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity)));
}

QImage Drawn(const QByteArray& source, const QSize& size, const Tones& tones) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(InTones(source, tones));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    {
        QPainter painter(&image);
        renderer.render(&painter);
    }
    if (tones.opacity < 1.0) {
        Thin(image, tones.opacity);
    }
    return image;
}

}  // namespace

PictureEngine::PictureEngine(QString name, QByteArray source)
    : m_name(std::move(name)), m_source(std::move(source)) {}

void PictureEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    const qreal ratio = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
}

QPixmap PictureEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) {
    if (m_source.isEmpty() || size.isEmpty()) {
        return {};
    }
    const Tones tones = TonesOf(mode);
    const QString cached = QStringLiteral("genvara/%1/%2x%3/%4/%5")
                               .arg(m_name)
                               .arg(size.width())
                               .arg(size.height())
                               .arg(tones.body.name(), tones.accent.name());
    QPixmap pixmap;
    if (!QPixmapCache::find(cached, &pixmap)) {
        pixmap = QPixmap::fromImage(Drawn(m_source, size, tones));
        QPixmapCache::insert(cached, pixmap);
    }
    return pixmap;
}

QPixmap PictureEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                                    qreal /*scale*/) {
    return pixmap(size, mode, state);
}

QIconEngine* PictureEngine::clone() const {
    return new PictureEngine(*this);
}

QString PictureEngine::key() const {
    return QStringLiteral("genvara-picture");
}

}  // namespace genvara
