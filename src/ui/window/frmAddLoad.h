#pragma once

#include <QDialog>

#include "LoadForms.h"
#include "PlatformServices.h"

class QListWidget;

namespace genvara {

/// Picks the kind of a new load and hands over to its entry form.
class frmAddLoad final : public QDialog {
    Q_OBJECT

  public:
    frmAddLoad(PlatformServices& platform, LoadFormHost& host, QWidget* owner);

  private:
    void OkClicked();

    PlatformServices* m_platform;
    LoadFormHost* m_host;
    QListWidget* m_lstLoads;
};

}  // namespace genvara
