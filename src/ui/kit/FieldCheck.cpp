#include "FieldCheck.h"

#include <QApplication>
#include <QLabel>
#include <QMenuBar>

#include "EntryField.h"

namespace genvara {
namespace {

constexpr const char* kLeavesUnchecked = "leavesUnchecked";

/// The widget that would take the focus of a click, if any.
const QWidget* FocusTaker(const QWidget* clicked) {
    for (const QWidget* widget = clicked; widget != nullptr; widget = widget->parentWidget()) {
        if ((widget->focusPolicy() & Qt::ClickFocus) != 0) {
            return widget;
        }
        if (widget->isWindow()) {
            break;
        }
    }
    return nullptr;
}

/// Runs the check of a field that is about to be left for a widget.
bool IsHeld(EntryField& field, const QWidget& next) {
    if (IsLeftUnchecked(next)) {
        return false;
    }
    const bool held = field.HoldsFocus();
    if (held) {
        field.setFocus(Qt::OtherFocusReason);  // it may be a menu that has it
    } else if (!field.hasFocus()) {
        field.Leave();
    }
    return held;
}

}  // namespace

EntryField* FieldAtHand(const QWidget& window) {
    auto* focus = dynamic_cast<EntryField*>(QApplication::focusWidget());
    if (focus != nullptr) {
        return focus->window() == &window ? focus : nullptr;
    }
    for (EntryField* field : window.findChildren<EntryField*>()) {
        if (field->IsAtHand() && field->window() == &window) {
            return field;
        }
    }
    return nullptr;
}

void LeavesUnchecked(QWidget& button) {
    button.setProperty(kLeavesUnchecked, true);
}

bool IsLeftUnchecked(const QWidget& button) {
    return button.property(kLeavesUnchecked).toBool();
}

bool FocusIsHeldFrom(const QWidget& clicked) {
    EntryField* field = FieldAtHand(*clicked.window());
    const QWidget* taker = FocusTaker(&clicked);
    return field != nullptr && taker != nullptr && taker != field && IsHeld(*field, *taker);
}

bool FocusIsHeldFromKeyOf(const QWidget& captioned) {
    const auto* label = qobject_cast<const QLabel*>(&captioned);
    const QWidget* next = label != nullptr && label->buddy() != nullptr ? label->buddy() : &captioned;
    if (qobject_cast<const QMenuBar*>(next) != nullptr) {
        return false;  // a menu is opened and closed without leaving the field
    }
    EntryField* field = FieldAtHand(*captioned.window());
    return field != nullptr && next != field && IsHeld(*field, *next);
}

bool FocusIsHeld(const QWidget& window) {
    EntryField* field = FieldAtHand(window);
    return field != nullptr && IsHeld(*field, window);
}

}  // namespace genvara
