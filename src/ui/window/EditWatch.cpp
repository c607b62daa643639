#include "EditWatch.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <utility>

#include "ReportView.h"

namespace genvara {

EditWatch::EditWatch(std::function<void()> changed) : m_changed(std::move(changed)) {
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { Follow(now); });
    connect(QApplication::clipboard(), &QClipboard::dataChanged, this, [this] { m_changed(); });
}

void EditWatch::Follow(QWidget* control) {
    if (const auto* line = qobject_cast<QLineEdit*>(control)) {
        disconnect(m_selection);
        m_selection = connect(line, &QLineEdit::selectionChanged, this, [this] { m_changed(); });
    } else if (const auto* text = qobject_cast<QPlainTextEdit*>(control)) {
        disconnect(m_selection);
        m_selection = connect(text, &QPlainTextEdit::selectionChanged, this, [this] { m_changed(); });
    } else if (const auto* report = qobject_cast<ReportView*>(control)) {
        disconnect(m_selection);
        m_selection = connect(report, &ReportView::SelectionChanged, this, [this] { m_changed(); });
    }
    m_changed();
}

}  // namespace genvara
