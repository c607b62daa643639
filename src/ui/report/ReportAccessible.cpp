#include "ReportAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <utility>

#include "ReportView.h"

namespace genvara {
namespace {

class AccessibleReport : public QAccessibleWidget, public QAccessibleTextInterface {
  public:
    explicit AccessibleReport(ReportView& view)
        : QAccessibleWidget(&view, QAccessible::Document), m_view(view) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                                  : QAccessibleWidget::interface_cast(type);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? m_view.Layout().Text() : QAccessibleWidget::text(kind);
    }

    void selection(int index, int* from, int* to) const override {
        const bool isThere = index == 0 && m_view.SelLength() > 0;
        *from = isThere ? m_view.SelectionStart() : 0;
        *to = isThere ? m_view.SelectionStart() + m_view.SelLength() : 0;
    }
    int selectionCount() const override { return m_view.SelLength() > 0 ? 1 : 0; }
    void addSelection(int from, int to) override { m_view.Select(from, to); }
    void removeSelection(int /*index*/) override { m_view.Select(cursorPosition(), cursorPosition()); }
    void setSelection(int /*index*/, int from, int to) override { m_view.Select(from, to); }
    int cursorPosition() const override { return m_view.SelectionStart() + m_view.SelLength(); }
    void setCursorPosition(int position) override { m_view.Select(position, position); }

    QString text(int from, int to) const override { return m_view.Layout().Text().mid(from, to - from); }
    int characterCount() const override { return static_cast<int>(m_view.Layout().Text().size()); }
    QRect characterRect(int position) const override {
        const QRect here = m_view.CursorRect(position);
        return here.united(m_view.CursorRect(position + 1)).translated(Origin());
    }
    int offsetAtPoint(const QPoint& point) const override { return m_view.PositionAt(point - Origin()); }
    void scrollToSubstring(int from, int /*to*/) override { m_view.ScrollTo(from); }
    QString attributes(int position, int* from, int* to) const override {
        *from = position;
        *to = characterCount();
        return {};
    }

  private:
    QPoint Origin() const { return m_view.viewport()->mapToGlobal(QPoint()); }

    ReportView& m_view;
};

QAccessibleInterface* MakeAccessible(const QString& /*className*/, QObject* object) {
    auto* const view = qobject_cast<ReportView*>(object);
    return view == nullptr ? nullptr : new AccessibleReport(*view);  // Qt owns it
}

}  // namespace

void InstallReportAccessibility() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(MakeAccessible);
        return true;
    }();
}

void AnnounceReport(ReportView& view) {
    QAccessibleValueChangeEvent event(&view, view.Layout().Text());
    QAccessible::updateAccessibility(&event);
}

void AnnounceSelection(ReportView& view, int from, int to) {
    QAccessibleTextSelectionEvent event(&view, from, to);
    QAccessible::updateAccessibility(&event);
}

}  // namespace genvara
