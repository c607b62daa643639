#pragma once

#include <QDialog>

#include "PlatformServices.h"

namespace genvara {

class CApplication;

/// What the program is, of which version, and with which database.
class frmAbout final : public QDialog {
    Q_OBJECT

  public:
    frmAbout(PlatformServices& platform, CApplication& application, QWidget* owner);

  private:
    void Build();
    /// Starts the desktop's system information.
    void StartSysInfo();

    PlatformServices* m_platform;
    CApplication* m_application;
};

}  // namespace genvara
