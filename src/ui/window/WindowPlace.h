#pragma once

#include <QSize>
#include <string>

class QWidget;

namespace genvara {

class clsTRX_Registry;

/// Size and place of the main window, which come back at the next start.
class WindowPlace {
  public:
    /// @param key of the settings store, of the place's own. The store outlives this.
    WindowPlace(clsTRX_Registry& registry, std::string key);

    /// Gives a window that is not shown yet the size and place that it was closed with; one that was never
    /// closed, or that is on no screen any more, the first size, as far as the screen has room for it.
    void Restore(QWidget& window, QSize first) const;
    /// Keeps them as the window closes. What cannot be kept is passed over.
    void Keep(const QWidget& window) const;

  private:
    void Open(bool create) const;

    clsTRX_Registry* m_registry;
    std::string m_key;
};

}  // namespace genvara
