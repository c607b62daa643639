#pragma once

#include <QProxyStyle>

namespace genvara {

/// The desktop's style, with boxes to tick and option buttons that are seen on a dark ground while they are
/// off.
class GenvaraStyle final : public QProxyStyle {
    Q_OBJECT

  public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace genvara
