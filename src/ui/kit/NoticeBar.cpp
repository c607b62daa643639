#include "NoticeBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include "FormGrid.h"

namespace genvara {
namespace {

constexpr int kPictureSize = 20;  // pixels

}  // namespace

NoticeBar::NoticeBar(const QString& name, QWidget* parent) : QFrame(parent), m_text(new QLabel) {
    setObjectName(name);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    auto* picture = new QLabel;
    picture->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(kPictureSize));
    m_text->setObjectName("lblNotice");
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(metrics::kGap, metrics::kGap / 2, metrics::kGap, metrics::kGap / 2);
    line->setSpacing(metrics::kGap);
    line->addWidget(picture, 0, Qt::AlignTop);
    line->addWidget(m_text, 1);
    hide();
}

void NoticeBar::Text(const QString& text) {
    if (text == m_text->text()) {
        return;
    }
    m_text->setText(text);
    setVisible(!text.isEmpty());
    if (!text.isEmpty()) {
        QAccessibleEvent event(m_text, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

QString NoticeBar::Text() const {
    return m_text->text();
}

}  // namespace genvara
