#include "GenvaraApplication.h"

#include <QEvent>
#include <QKeyEvent>
#include <QWidget>

#include "FieldCheck.h"
#include "GenvaraStyle.h"
#include "LastChance.h"

namespace genvara {
namespace {

/// Whether an event would lead the user out of a field that has to be mended first. Asked here, since the
/// toolkit moves the focus before any filter sees a click.
bool IsHeldBack(const QWidget& receiver, const QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return FocusIsHeldFrom(receiver);
        case QEvent::Shortcut:
            return FocusIsHeldFromKeyOf(receiver);
        default:
            return false;
    }
}

/// Whether a key with Alt, which nothing has taken for its own, would be typed as if Alt were up.
bool IsTypedWithAlt(const QWidget& receiver, const QEvent& event) {
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.modifiers().testFlag(Qt::AltModifier) && !key.modifiers().testFlag(Qt::ControlModifier) &&
           !key.text().isEmpty() && key.text().at(0).isPrint() &&
           (receiver.inherits("QLineEdit") || receiver.inherits("QPlainTextEdit"));
}

}  // namespace

GenvaraApplication::GenvaraApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setStyle(new GenvaraStyle);
}

bool GenvaraApplication::notify(QObject* receiver, QEvent* event) {
    bool done = true;
    RunEvent([&] {
        const auto* widget = qobject_cast<QWidget*>(receiver);
        if (widget != nullptr && IsTypedWithAlt(*widget, *event)) {
            event->ignore();
            done = false;
            return;
        }
        done = (widget != nullptr && IsHeldBack(*widget, *event)) || QApplication::notify(receiver, event);
    });
    return done;
}

}  // namespace genvara
