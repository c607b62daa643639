#pragma once

#include <QPointer>
#include <QWidget>

#include "PlatformServices.h"

namespace genvara {

/// What the Edit menu does to the control at hand. A control has to be set before a command.
class CEditMenu {
  public:
    explicit CEditMenu(const PlatformServices& platform) : m_platform(&platform) {}

    void ActiveTextBox(QWidget* box) { m_active = box; }
    void ActiveRTFBox(QWidget* box) { m_active = box; }

    void Cut() const;
    void Copy() const;
    void Paste() const;
    /// A selection, in a control that is not locked.
    [[nodiscard]] bool CanCut() const;
    [[nodiscard]] bool CanCopy() const;
    /// Text in the clipboard, whatever the control is.
    [[nodiscard]] bool CanPaste() const;

  private:
    const PlatformServices* m_platform;
    QPointer<QWidget> m_active;
};

}  // namespace genvara
