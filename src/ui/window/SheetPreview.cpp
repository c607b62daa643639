#include "SheetPreview.h"

#include <QPainter>
#include <algorithm>

namespace genvara {
namespace {

constexpr int kSide = 150;           // pixels of the picture
constexpr int kFrame = 4;            // pixels around the sheet
constexpr double kLine = 480;        // twips from line to line
constexpr double kLineHeight = 170;  // twips
constexpr QRgb kTextColour = 0xFFC4C8CE;
constexpr QRgb kEdgeColour = 0xFF8A8F98;

}  // namespace

SheetPreview::SheetPreview(QWidget* parent) : QWidget(parent) {
    setObjectName("picSheet");
    setFixedSize(sizeHint());
}

void SheetPreview::Show(const PrintSetup& setup) {
    m_setup = setup;
    update();
}

QSize SheetPreview::sizeHint() const {
    return {kSide, kSide};
}

void SheetPreview::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = static_cast<double>(kSide - 2 * kFrame) / std::max(m_setup.width, m_setup.height);
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale, scale);
    painter.translate(-m_setup.width / 2.0, -m_setup.height / 2.0);
    QPen edge(QColor::fromRgba(kEdgeColour));
    edge.setCosmetic(true);
    painter.setPen(edge);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(0, 0, m_setup.width, m_setup.height));
    const QRectF text(QPointF(m_setup.left, m_setup.top),
                      QPointF(m_setup.width - m_setup.right, m_setup.height - m_setup.bottom));
    for (double y = text.top(); y + kLineHeight <= text.bottom(); y += kLine) {
        painter.fillRect(QRectF(text.left(), y, text.width(), kLineHeight), QColor::fromRgba(kTextColour));
    }
}

}  // namespace genvara
