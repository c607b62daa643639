#pragma once

#include <QDialog>
#include <string_view>

#include "EntryField.h"
#include "SiteControls.h"
#include "SiteEntry.h"

class QTabWidget;

namespace genvara {

class CApplication;
class ChoiceBox;
class FormGrid;
class FrequencyGroup;
class FuelGroup;

/// What new projects start from.
class frmDefaults final : public QDialog {
    Q_OBJECT

  public:
    frmDefaults(PlatformServices& platform, CApplication& application, QWidget* owner);

  private:
    QWidget* MakeProjectPage();
    QWidget* MakeSitePage();
    void AddNumbers(FormGrid& grid);
    void AddLimits(FormGrid& grid);
    EntryField* AddLimit(FormGrid& grid, const NumberNames& names, const QString& caption,
                         std::string_view member);
    void FillLists();
    void ShowDefaults();
    void KeepOnLeaving();
    /// One sentence on why the site would not take a figure's text; empty if it would.
    [[nodiscard]] QString ComplaintOf(const EntryField& field, SiteFigure figure) const;
    /// Whether a field has to be mended first; it then shows its error.
    bool HoldsOk();
    void OkClicked();

    PlatformServices* m_platform;
    CApplication* m_application;
    QTabWidget* m_pages;
    double m_altitude = 0.0;  ///< m
    double m_ambTemp = 0.0;   ///< °C
    EntryField* m_txtUserName;
    EntryField* m_txtCustomerName;
    ChoiceBox* m_cboVolts;
    ChoiceBox* m_cboConn;
    ChoiceBox* m_cboAltTempRise;
    FrequencyGroup* m_fraFreq;
    FuelGroup* m_fraFuel;
    EntryField* m_txtParallelSets;
    EntryField* m_txtAltitude;
    EntryField* m_txtAmbTemp;
    EntryField* m_txtMaxVoltDip = nullptr;
    EntryField* m_txtMaxFreqDip = nullptr;
    EntryField* m_txtMaxHarmonics = nullptr;
};

}  // namespace genvara
