#include "frmSplash.h"

#include <QApplication>
#include <QMouseEvent>
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
/// Longest wait for a desktop to show the window [ms].
constexpr int kMostWait = 500;

}  // namespace

frmSplash::frmSplash(const std::filesystem::path& picture, QWidget* owner)
    : QWidget(owner, Qt::SplashScreen), m_picSplash(ToQt(picture.string())) {
    setObjectName("frmSplash");
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedSize(kWidth, kHeight);
    move(QApplication::primaryScreen()->availableGeometry().center() - rect().center());
}

void frmSplash::Appear() {
    show();
    QElapsedTimer waited;
    waited.start();
    while (!m_seen.isValid() && !waited.hasExpired(kMostWait)) {
        constexpr int kGlance = 10;
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, kGlance);
    }
}

int frmSplash::SeenFor() const {
    return m_seen.isValid() ? static_cast<int>(m_seen.elapsed()) : 0;
}

void frmSplash::mousePressEvent(QMouseEvent* event) {
    event->accept();
    emit Clicked();
}

void frmSplash::paintEvent(QPaintEvent* /*event*/) {
    if (!m_seen.isValid()) {
        m_seen.start();
    }
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
