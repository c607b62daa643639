#include "SheetGeometry.h"

#include <algorithm>
#include <cmath>

namespace genvara {

SheetGeometry::SheetGeometry(const RichPage& page, int pageCount, double scale, QSize window)
    : m_scale(scale),
      m_window(window),
      m_page(static_cast<int>(std::lround(page.width * scale)),
             static_cast<int>(std::lround(page.height * scale))),
      m_pageCount(pageCount) {}

QSize SheetGeometry::GroundSize() const {
    return {m_page.width() + 2 * kMargin, m_pageCount * (m_page.height() + kMargin) + kMargin};
}

QRect SheetGeometry::PageRect(int page) const {
    const int left = std::max(kMargin, (m_window.width() - m_page.width()) / 2);
    return {{left, kMargin + page * (m_page.height() + kMargin)}, m_page};
}

int SheetGeometry::PageAt(double y) const {
    const double page = std::floor((y - kMargin / 2.0) / (m_page.height() + kMargin));
    return static_cast<int>(std::clamp(page, 0.0, static_cast<double>(m_pageCount - 1)));
}

QPointF SheetGeometry::ToPage(int page, QPointF ground) const {
    return (ground - QPointF(PageRect(page).topLeft())) / m_scale;
}

QRectF SheetGeometry::FromPage(int page, const QRectF& area) const {
    return {QPointF(PageRect(page).topLeft()) + area.topLeft() * m_scale, area.size() * m_scale};
}

}  // namespace genvara
