#pragma once

#include <QMetaObject>
#include <QObject>
#include <functional>

class QWidget;

namespace genvara {

/// Tells when what can be cut, copied or pasted may have changed: with the focus, the selection of the
/// control that has it, and the clipboard.
class EditWatch final : public QObject {
    Q_OBJECT

  public:
    explicit EditWatch(std::function<void()> changed);

  private:
    void Follow(QWidget* control);

    std::function<void()> m_changed;
    QMetaObject::Connection m_selection;
};

}  // namespace genvara
