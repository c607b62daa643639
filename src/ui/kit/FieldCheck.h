#pragma once

#include <QWidget>

class QShortcutEvent;

/// The one way out of a field: its check runs before a click, a key or a command leads elsewhere.
namespace genvara {

class EntryField;

/// The field that the user has entered and not left yet. It stays at hand while a menu, a list or another
/// window has the focus. Null where there is none.
[[nodiscard]] EntryField* FieldAtHand(const QWidget& window);

/// Lets a button be pressed whatever the field at hand holds, as Cancel must be.
void LeavesUnchecked(QWidget& button);
[[nodiscard]] bool IsLeftUnchecked(const QWidget& button);

/// Runs the check of the field at hand before a click on a widget is delivered; true if the click would take
/// the focus, and it has to stay.
bool FocusIsHeldFrom(const QWidget& clicked);

/// The same before the key of a widget's caption is delivered.
bool FocusIsHeldFromKeyOf(const QWidget& captioned);

/// Runs the check of the field at hand before a command; true if the focus has to stay there.
bool FocusIsHeld(const QWidget& window);

}  // namespace genvara
