#pragma once

#include <QDialog>

#include "PlatformServices.h"

namespace genvara {

class EntryField;
class frmMtrLoad;

/// Asks for the current limit of a motor's solid-state starter.
class frmSSCurrentLimit final : public QDialog {
    Q_OBJECT

  public:
    frmSSCurrentLimit(QWidget* owner, PlatformServices& platform);

    /// Takes the motor form whose limit is shown, and set on OK; it outlives the dialog.
    void ParentForm(frmMtrLoad& form);

  private:
    /// Shows the error, unless the field holds a limit.
    bool IsBad();
    void Confirm();

    frmMtrLoad* m_parentForm = nullptr;
    EntryField* m_limit;
};

}  // namespace genvara
