#include "GenvaraApplication.h"

#include <QEvent>
#include <QWidget>

#include "EntryField.h"
#include "LastChance.h"

namespace genvara {

bool GenvaraApplication::notify(QObject* receiver, QEvent* event) {
    bool done = true;
    RunEvent([&] {
        const bool press =
            event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
        // Here, since the toolkit moves the focus before any filter sees the click.
        const auto* clicked = press ? qobject_cast<QWidget*>(receiver) : nullptr;
        done = (clicked != nullptr && FocusIsHeldFrom(*clicked)) || QApplication::notify(receiver, event);
    });
    return done;
}

}  // namespace genvara
