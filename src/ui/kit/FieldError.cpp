#include "FieldError.h"

#include <QAccessible>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

#include "Theme.h"

namespace genvara {
namespace {

constexpr QColor kOutline(0xA0, 0x10, 0x20);
constexpr int kMostWidth = 340;  // pixels
constexpr int kPadding = 6;
constexpr int kGap = 2;  // between the field and its note

}  // namespace

FieldNote::FieldNote(QWidget& field) : QLabel(field.window()), m_field(&field) {
    setObjectName("lblFieldNote");
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(kPadding);
    setFocusPolicy(Qt::NoFocus);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, theme::NoteText(colours));
    setPalette(colours);
    field.installEventFilter(this);
    field.window()->installEventFilter(this);
    connect(&field, &QObject::destroyed, this, &QObject::deleteLater);
}

FieldNote* FieldNote::ShowBelow(QWidget& field, const QString& sentence) {
    for (FieldNote* other : field.window()->findChildren<FieldNote*>(Qt::FindDirectChildrenOnly)) {
        other->hide();
        other->deleteLater();
    }
    auto* note = new FieldNote(field);
    note->setText(sentence);
    note->Place();
    note->setVisible(field.isVisible());
    note->raise();
    QAccessibleEvent alert(note, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    return note;
}

void FieldNote::Place() {
    const QWidget& window = *parentWidget();
    const int width =
        std::min({kMostWidth, window.width(), fontMetrics().horizontalAdvance(text()) + 2 * kPadding + 2});
    setFixedSize(width, heightForWidth(width));
    const QPoint below = m_field->mapTo(&window, QPoint(0, m_field->height() + kGap));
    const int above = below.y() - m_field->height() - 2 * kGap - height();
    move(std::clamp(below.x(), 0, std::max(0, window.width() - width)), below.y());
    if (!HasRoomAt(below.y()) && above >= 0) {
        move(x(), above);
    }
}

/// Whether the note stands in the window there, and leaves what ends a dialog to be seen and clicked.
bool FieldNote::HasRoomAt(int top) const {
    const QWidget& window = *parentWidget();
    const QRect place(x(), top, width(), height());
    const QList<QPushButton*> buttons = window.findChildren<QPushButton*>();
    return place.bottom() < window.height() &&
           std::none_of(buttons.begin(), buttons.end(), [&](const QPushButton* button) {
               return button->isVisible() &&
                      place.intersects({button->mapTo(&window, QPoint(0, 0)), button->size()});
           });
}

bool FieldNote::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
            // Behind the event, which lays the window out.
            QMetaObject::invokeMethod(
                this, [this] { Place(); }, Qt::QueuedConnection);
            break;
        case QEvent::Show:
            setVisible(m_field->isVisible());
            break;
        case QEvent::Hide:
            hide();
            break;
        default:
            break;
    }
    return QLabel::eventFilter(watched, event);
}

void FieldNote::mousePressEvent(QMouseEvent* event) {
    hide();
    event->accept();
}

void FieldNote::paintEvent(QPaintEvent* event) {
    {
        QPainter painter(this);
        painter.setPen(kOutline);
        painter.setBrush(theme::NoteGround(palette()));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    QLabel::paintEvent(event);
}

void FieldError::Show(const QString& sentence) {
    if (!m_shown) {
        m_ownToolTip = m_field->toolTip();
    }
    m_shown = true;
    m_sentence = sentence;
    m_field->setStatusTip(sentence);
    m_field->setToolTip(sentence);
    m_field->setAccessibleDescription(sentence);
    Say(sentence);
}

void FieldError::Clear() {
    if (m_shown) {
        m_shown = false;
        m_sentence.clear();
        m_field->setStatusTip({});
        m_field->setToolTip(m_ownToolTip);
        m_field->setAccessibleDescription({});
    }
    Hide();
}

void FieldError::Say(const QString& sentence) {
    Hide();
    const bool seen = m_field->isVisible() && !m_field->isWindow();
    m_note = seen && !sentence.isEmpty() ? FieldNote::ShowBelow(*m_field, sentence) : nullptr;
}

void FieldError::Hide() {
    if (m_note != nullptr) {
        m_note->hide();
        m_note->deleteLater();
        m_note = nullptr;
    }
}

void FieldError::Recall() {
    if (m_shown && (m_note == nullptr || !m_note->isVisible())) {
        Say(m_sentence);
    }
}

void FieldError::PaintOutline() const {
    if (m_shown) {
        QPainter painter(m_field);
        painter.setPen(QPen(kOutline, 2.0));
        painter.drawRect(m_field->rect().adjusted(1, 1, -1, -1));
    }
}

}  // namespace genvara
