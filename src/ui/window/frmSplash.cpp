#include "frmSplash.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

#include "ProgramVersion.h"
#include "Texts.h"

namespace genvara {
namespace {

// 7605 by 5430 twips of a fifteenth of a pixel.
constexpr int kWidth = 507;
constexpr int kHeight = 362;
constexpr int kInset = 20;
constexpr QColor kVersionColour(0x5D, 0x71, 0x85);

}  // namespace

frmSplash::frmSplash(const std::filesystem::path& picture, QWidget* owner)
    : QWidget(owner, Qt::SplashScreen), m_picSplash(ToQt(picture.string())) {
    setObjectName("frmSplash");
    setFixedSize(kWidth, kHeight);
    move(QApplication::primaryScreen()->availableGeometry().center() - rect().center());
}

void frmSplash::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (m_picSplash.isNull()) {
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect(), m_picSplash);
    painter.setPen(kVersionColour);
    painter.drawText(rect().adjusted(kInset, kInset, -kInset, -kInset), Qt::AlignRight | Qt::AlignBottom,
                     ToQt(kProgramVersionText));
}

}  // namespace genvara
