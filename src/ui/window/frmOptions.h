#pragma once

#include <QDialog>
#include <functional>

#include "EntryField.h"
#include "SiteControls.h"
#include "UpDown.h"

class QRadioButton;

namespace genvara {

class CApplication;
class FormGrid;

/// The options of the program.
class frmOptions final : public QDialog {
    Q_OBJECT

  public:
    /// @param unitsChanged told of the unit system when the options are taken over.
    frmOptions(PlatformServices& platform, CApplication& application, std::function<void(bool)> unitsChanged,
               QWidget* owner);

  private:
    /// A number field with its arrows.
    EntryField* AddNumber(FormGrid& grid, const NumberNames& names, const QString& caption,
                          UpDown::Range range);
    void AddPath(FormGrid& grid);
    QWidget* MakeUnits();
    void ShowOptions();
    void BrowseClicked();
    void OkClicked();
    void Store();

    PlatformServices* m_platform;
    CApplication* m_application;
    std::function<void(bool)> m_unitsChanged;
    EntryField* m_txtProjPath;
    EntryField* m_txtNumGensets = nullptr;
    EntryField* m_txtNumUndersized = nullptr;
    EntryField* m_txtMaxLoad = nullptr;
    EntryField* m_txtMinLoad = nullptr;
    QRadioButton* m_optEnglish;
    QRadioButton* m_optMetric;
};

}  // namespace genvara
