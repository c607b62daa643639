#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>

#include "RichTextReader.h"

namespace genvara {

/// Where the pages of a report lie on their ground, one beneath the other and centred. The ground's unit is
/// the pixel, that of a page the twip.
class SheetGeometry {
  public:
    SheetGeometry() = default;
    /// @param scale pixels a twip
    /// @param window the part of the ground that is seen; pages are centred on one that is wider than they
    SheetGeometry(const RichPage& page, int pageCount, double scale, QSize window);

    /// Ground on each side of a page and between pages [pixel].
    static constexpr int kMargin = 20;

    [[nodiscard]] double Scale() const noexcept { return m_scale; }
    [[nodiscard]] QSize GroundSize() const;
    [[nodiscard]] QRect PageRect(int page) const;
    /// Page nearest to a height on the ground.
    [[nodiscard]] int PageAt(double y) const;
    [[nodiscard]] QPointF ToPage(int page, QPointF ground) const;
    [[nodiscard]] QRectF FromPage(int page, const QRectF& area) const;

  private:
    double m_scale = 1.0;
    QSize m_window;
    QSize m_page{1, 1};
    int m_pageCount = 1;
};

}  // namespace genvara
