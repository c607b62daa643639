#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>

#include "PlatformServices.h"

class QListWidget;

namespace genvara {

/// Picks the kind of a new load and hands over to its entry form.
class frmAddLoad final : public QDialog {
    Q_OBJECT

  public:
    /// Opens the entry form of a kind, modally. May raise.
    using OpenForm = std::function<void(std::int32_t loadType, QWidget* owner)>;

    frmAddLoad(PlatformServices& platform, OpenForm openForm, QWidget* owner);

  private:
    void OkClicked();

    PlatformServices* m_platform;
    OpenForm m_openForm;
    QListWidget* m_lstLoads;
};

}  // namespace genvara
