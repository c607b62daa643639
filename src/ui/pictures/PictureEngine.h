#pragma once

#include <QByteArray>
#include <QIconEngine>
#include <QString>

namespace genvara {

/// The two tones that every picture is drawn in. They stand out alike from white and from a dark theme's
/// ground.
namespace tone {
inline constexpr const char* kBody = "#74889c";
inline constexpr const char* kAccent = "#d97a14";
}  // namespace tone

/// Draws one picture at the size that is asked for, instead of scaling a drawn one.
class PictureEngine final : public QIconEngine {
  public:
    /// @param name what the cache of drawn pictures knows it by
    /// @param source text of the SVG, drawn in the colours of `tone`
    PictureEngine(QString name, QByteArray source);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    /// @param size in pixels of the device
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    /// @param size in pixels of the device; `scale` is already part of it
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    [[nodiscard]] QIconEngine* clone() const override;
    bool isNull() override { return m_source.isEmpty(); }
    QString key() const override;

  private:
    QString m_name;
    QByteArray m_source;
};

}  // namespace genvara
