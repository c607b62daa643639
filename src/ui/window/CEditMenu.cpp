#include "CEditMenu.h"

#include <QLineEdit>
#include <QPlainTextEdit>

#include "ReportView.h"

namespace genvara {
namespace {

struct Selection {
    bool any = false;
    bool locked = true;
};

/// A text control's selection; none for any other widget.
Selection SelectionOf(QWidget* widget) {
    if (const auto* line = qobject_cast<QLineEdit*>(widget)) {
        return {.any = line->hasSelectedText(), .locked = line->isReadOnly()};
    }
    if (const auto* plain = qobject_cast<QPlainTextEdit*>(widget)) {
        return {.any = plain->textCursor().hasSelection(), .locked = plain->isReadOnly()};
    }
    if (const auto* report = qobject_cast<ReportView*>(widget)) {
        return {.any = report->SelLength() > 0, .locked = true};
    }
    return {};
}

/// Sends a control the desktop's message; one that does not know it ignores it.
void Send(QWidget* widget, const char* command) {
    if (widget != nullptr && widget->metaObject()->indexOfMethod(QByteArray(command) + "()") >= 0) {
        QMetaObject::invokeMethod(widget, command);
    }
}

}  // namespace

void CEditMenu::Cut() const {
    // The toolkit's commands would change a locked control, too.
    if (!SelectionOf(m_active).locked) {
        Send(m_active, "cut");
    }
}

void CEditMenu::Copy() const {
    if (const auto* report = qobject_cast<ReportView*>(m_active.data())) {
        report->Copy();
    } else {
        Send(m_active, "copy");
    }
}

void CEditMenu::Paste() const {
    if (!SelectionOf(m_active).locked) {
        Send(m_active, "paste");
    }
}

bool CEditMenu::CanCut() const {
    const Selection selection = SelectionOf(m_active);
    return selection.any && !selection.locked;
}

bool CEditMenu::CanCopy() const {
    return SelectionOf(m_active).any;
}

bool CEditMenu::CanPaste() const {
    return m_platform->ClipboardHoldsText();
}

}  // namespace genvara
