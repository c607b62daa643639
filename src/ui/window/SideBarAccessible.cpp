#include "SideBarAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <algorithm>
#include <vector>

#include "Texts.h"
#include "ctlSideBar.h"

namespace genvara {
namespace {

/// One item of a bar, by its number from 1.
class AccessibleItem final : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    AccessibleItem(ctlSideBar& bar, int item) : m_bar(&bar), m_item(item) {}

    bool isValid() const override { return true; }  // the bar's interface takes this one along
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_bar); }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QWindow* window() const override { return m_bar->window()->windowHandle(); }

    QAccessible::Role role() const override { return QAccessible::Button; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = true;
        state.focused = m_bar->hasFocus() && m_bar->StandsOn() == m_item;
        state.checkable = true;
        state.checked = m_bar->IsCurrent(m_item);
        state.disabled = !m_bar->isEnabled();
        state.invisible = !m_bar->isVisible();
        return state;
    }
    QRect rect() const override { return m_bar->ItemRect(m_item).translated(m_bar->mapToGlobal(QPoint())); }
    QString text(QAccessible::Text kind) const override {
        switch (kind) {
            case QAccessible::Name:
                return ToQt(m_bar->Item(m_item).Title);
            case QAccessible::Accelerator:
                return m_bar->KeyOf(m_item);
            default:
                return {};
        }
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& action) override {
        if (action == pressAction()) {
            m_bar->Press(m_item);
        } else if (action == setFocusAction()) {
            m_bar->setFocus(Qt::OtherFocusReason);
            m_bar->Stand(m_item);
        }
    }
    QStringList keyBindingsForAction(const QString& action) const override {
        const QString key = m_bar->KeyOf(m_item);
        return action == pressAction() && !key.isEmpty() ? QStringList{key} : QStringList();
    }

  private:
    ctlSideBar* m_bar;
    int m_item;
};

class AccessibleBar final : public QAccessibleWidget {
  public:
    explicit AccessibleBar(ctlSideBar& bar) : QAccessibleWidget(&bar, QAccessible::ToolBar), m_bar(&bar) {}
    ~AccessibleBar() override {
        for (const QAccessible::Id item : m_items) {
            QAccessible::deleteAccessibleInterface(item);
        }
    }
    AccessibleBar(const AccessibleBar&) = delete;
    AccessibleBar& operator=(const AccessibleBar&) = delete;
    AccessibleBar(AccessibleBar&&) = delete;
    AccessibleBar& operator=(AccessibleBar&&) = delete;

    int childCount() const override { return m_bar->CountItems(); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        while (m_items.size() <= static_cast<std::size_t>(index)) {
            const int item = static_cast<int>(m_items.size()) + 1;
            // The registry of interfaces owns it.
            m_items.push_back(QAccessible::registerAccessibleInterface(new AccessibleItem(*m_bar, item)));
        }
        return QAccessible::accessibleInterface(m_items[static_cast<std::size_t>(index)]);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (this->child(index) == child) {
                return index;
            }
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y)) {
                return child(index);
            }
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        return m_bar->hasFocus() ? child(m_bar->StandsOn() - 1) : nullptr;
    }

  private:
    ctlSideBar* m_bar;
    mutable std::vector<QAccessible::Id> m_items;  ///< those that were asked for
};

QAccessibleInterface* MakeAccessible(const QString& /*className*/, QObject* object) {
    auto* const bar = qobject_cast<ctlSideBar*>(object);
    return bar == nullptr ? nullptr : new AccessibleBar(*bar);  // the toolkit owns it
}

}  // namespace

void InstallSideBarAccessibility() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(MakeAccessible);
        return true;
    }();
}

void AnnounceCurrent(ctlSideBar& bar) {
    if (!QAccessible::isActive()) {
        return;
    }
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&bar);
    for (int index = 0; reader != nullptr && index < reader->childCount(); ++index) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(reader->child(index), changed);
        QAccessible::updateAccessibility(&event);
    }
}

void AnnounceStanding(ctlSideBar& bar) {
    const QAccessibleInterface* reader =
        QAccessible::isActive() && bar.hasFocus() ? QAccessible::queryAccessibleInterface(&bar) : nullptr;
    if (reader != nullptr && reader->focusChild() != nullptr) {
        QAccessibleEvent event(reader->focusChild(), QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

}  // namespace genvara
