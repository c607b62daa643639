#pragma once

#include "frmMain.h"

namespace genvara {

/// While it lives, what is entered may go: the user said so.
class frmMain::LetGo {
  public:
    LetGo(frmMain& window, bool wish) : m_window(&window) { window.m_letGo = wish; }
    ~LetGo() { m_window->m_letGo = false; }
    LetGo(const LetGo&) = delete;
    LetGo& operator=(const LetGo&) = delete;
    LetGo(LetGo&&) = delete;
    LetGo& operator=(LetGo&&) = delete;

  private:
    frmMain* m_window;
};

}  // namespace genvara
