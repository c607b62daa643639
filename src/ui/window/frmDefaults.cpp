#include "frmDefaults.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "CApplication.h"
#include "ChoiceBox.h"
#include "DialogKeys.h"
#include "EntryNumbers.h"
#include "FailureRegion.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "SiteControls.h"
#include "SiteLimits.h"
#include "Texts.h"
#include "UpDown.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

constexpr int kNumberDigits = 8;
constexpr int kPercentDigits = 4;

EntryField* MakeField(PlatformServices& platform, const char* name, int digits = 0) {
    auto* field = new EntryField(platform, name);
    if (digits > 0) {
        SetDigits(*field, digits);
    }
    return field;
}

}  // namespace

frmDefaults::frmDefaults(PlatformServices& platform, CApplication& application, QWidget* owner)
    : QDialog(owner),
      m_platform(&platform),
      m_application(&application),
      m_txtUserName(MakeField(platform, "txtUserName")),
      m_txtCustomerName(MakeField(platform, "txtCustomerName")),
      m_cboVolts(new ChoiceBox("cboVolts")),
      m_cboConn(new ChoiceBox("cboConn")),
      m_cboAltTempRise(new ChoiceBox("cboAltTempRise")),
      m_fraFreq(new FrequencyGroup),
      m_fraFuel(new FuelGroup),
      m_txtParallelSets(MakeField(platform, "txtParallelSets", kPercentDigits)),
      m_txtAltitude(MakeField(platform, "txtAltitude", kNumberDigits)),
      m_txtAmbTemp(MakeField(platform, "txtAmbTemp", kNumberDigits)) {
    setObjectName("frmDefaults");
    setWindowTitle("Defaults");
    auto* pages = new QTabWidget;
    pages->setObjectName("tabDefaults");
    pages->tabBar()->setAccessibleName(windowTitle());
    pages->addTab(MakeProjectPage(), "Project");
    pages->addTab(MakeSitePage(), "Power System");
    for (int page = 0; page < pages->count(); ++page) {
        MarkMnemonics(*pages->widget(page));
        OrderTabsByLayout(*pages->widget(page));
    }
    const OkCancel buttons = MakeOkCancel();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    column->addWidget(pages, 1);
    column->addWidget(buttons.box);
    connect(buttons.ok, &QPushButton::clicked, this, Event([this] { OkClicked(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    FillLists();
    ShowDefaults();
    KeepOnLeaving();
}

QWidget* frmDefaults::MakeProjectPage() {
    auto* page = new QWidget;
    auto* grid = new FormGrid(page);
    grid->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    grid->AddField("lblUserName", Caption(133), m_txtUserName);
    grid->AddField("lblCustomer", Caption(131), m_txtCustomerName);
    grid->setRowStretch(grid->rowCount(), 1);
    return page;
}

QWidget* frmDefaults::MakeSitePage() {
    FillRiseDuty(*m_cboAltTempRise);
    const UnitStrings units = UnitsOf(m_application->IsMetric());
    auto* arrows =
        new UpDown("updParallelSets", *m_txtParallelSets, {kLeastParallelSets, kMostParallelSets, 1});
    m_txtParallelSets->setAccessibleName(Caption(151));
    auto* page = new QWidget;
    auto* grid = new FormGrid(page);
    grid->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    grid->AddField("lblVolts", Caption(140), m_cboVolts);
    grid->AddField("lblConn", Caption(141), m_cboConn);
    grid->AddWide(m_fraFreq);
    grid->AddWide(m_fraFuel);
    grid->AddField("lblAltRise", Caption(150), m_cboAltTempRise);
    grid->AddField(
        "lblParallelSets", Caption(151),
        Beside(m_txtParallelSets, arrows, FormGrid::MakeNote("lblParallelSetsRange", kParallelSetsRange)));
    grid->AddField("lblAltitude", Caption(152), m_txtAltitude,
                   FormGrid::MakeNote("lblAltitudeUnits", Caption(units.altitude)));
    grid->AddField("lblAmbTemp", Caption(153), m_txtAmbTemp,
                   FormGrid::MakeNote("lblAmbTempUnits", Caption(units.temperature)));
    AddLimits(*grid);
    return page;
}

void frmDefaults::AddLimits(FormGrid& grid) {
    m_txtMaxVoltDip = AddLimit(grid, {"txtDefaultMaxVoltDip", "updDefaultMaxVoltDip", "lblDefaultMaxVoltDip"},
                               "Max. Voltage Dip  (%)", site_limits::kHighestVoltageDip);
    m_txtMaxFreqDip = AddLimit(grid, {"txtDefaultMaxFreqDip", "updDefaultMaxFreqDip", "lblDefaultMaxFreqDip"},
                               "Max. Frequency Dip  (%)", site_limits::kHighestFreqDip);
    m_txtMaxHarmonics =
        AddLimit(grid, {"txtDefaultMaxHarmonics", "updDefaultMaxHarmonics", "lblDefaultMaxHarmonics"},
                 "Max. Harmonics  (%)", site_limits::kHighestHarmonics);
}

EntryField* frmDefaults::AddLimit(FormGrid& grid, const NumberNames& names, const QString& caption,
                                  std::int32_t most) {
    auto* field = MakeField(*m_platform, names.field, kPercentDigits);
    field->setAccessibleName(caption);
    auto* arrows = new UpDown(names.arrows, *field, {site_limits::kLowestLimit, most, kLimitStep});
    QLabel* range = FormGrid::MakeNote({}, QString("( %1% - %2% )").arg(site_limits::kLowestLimit).arg(most));
    grid.AddField(names.label, caption, Beside(field, arrows, range));
    return field;
}

void frmDefaults::FillLists() {
    try {
        Catalogue& catalogue = m_application->Catalogue();
        FillConnections(*m_cboConn, catalogue.Connections());
        FillVoltages(*m_cboVolts, catalogue.VoltagesLL());
    } catch (const RaisedError& failure) {
        m_platform->ShowMessage(
            parentWidget(),
            {.text = "An error occured while attempting to populate the voltage and connection dropdown "
                     "boxes.\r\n" +
                     failure.Description()});
    }
}

void frmDefaults::ShowDefaults() {
    const CDefaults& defaults = m_application->Defaults();
    const bool metric = m_application->IsMetric();
    m_txtUserName->Content(defaults.UserName());
    m_txtCustomerName->Content(defaults.CustomerName());
    m_altitude = defaults.Altitude();
    m_ambTemp = defaults.AmbTemp();
    m_txtAltitude->Content(ShownRounded(metric ? m_altitude : MetersToFeet(m_altitude)));
    m_txtAmbTemp->Content(ShownRounded(metric ? m_ambTemp : CelsiusToFahrenheit(m_ambTemp)));
    m_fraFreq->Freq(defaults.Freq());
    m_fraFuel->Fuel(defaults.Fuel());
    m_txtParallelSets->setText(QString::number(defaults.NumParallelSets()));
    m_txtMaxVoltDip->setText(QString::number(defaults.MaxVoltageDip()));
    m_txtMaxFreqDip->setText(QString::number(defaults.MaxFreqDip()));
    m_txtMaxHarmonics->setText(QString::number(defaults.MaxHarmonics()));
    m_cboVolts->SelectCode(defaults.VoltageLL());
    m_cboConn->SelectCode(defaults.ConnectCode());
    m_cboAltTempRise->SelectCode(defaults.Duty());
}

void frmDefaults::KeepOnLeaving() {
    const auto keep = [this](EntryField* field, double* kept, double (*toSI)(double) noexcept) {
        field->OnLeft([this, field, kept, toSI] {
            FailureRegion region;  // a text that is no number keeps the former value
            region.Run([&] {
                const double shown = EnteredNumber(field->Content());
                *kept = m_application->IsMetric() ? shown : toSI(shown);
            });
        });
    };
    keep(m_txtAltitude, &m_altitude, FeetToMeters);
    keep(m_txtAmbTemp, &m_ambTemp, SiteCelsius);
}

void frmDefaults::OkClicked() {
    CDefaults& defaults = m_application->Defaults();
    defaults.UserName(m_txtUserName->Content());
    defaults.CustomerName(m_txtCustomerName->Content());
    defaults.VoltageLL(EnteredInteger(FromQt(m_cboVolts->currentText())));
    // No selection has no code to give; the former one stays.
    defaults.ConnectCode(m_cboConn->Code().value_or(defaults.ConnectCode()));
    defaults.Duty(m_cboAltTempRise->Code().value_or(defaults.Duty()));
    defaults.Freq(m_fraFreq->Is50() ? 50 : 60);
    defaults.Fuel(m_fraFuel->Fuel());
    defaults.NumParallelSets(EnteredInteger(m_txtParallelSets->Content()));
    defaults.Altitude(m_altitude);
    defaults.AmbTemp(m_ambTemp);
    defaults.MaxVoltageDip(EnteredInteger(m_txtMaxVoltDip->Content()));
    defaults.MaxFreqDip(EnteredInteger(m_txtMaxFreqDip->Content()));
    defaults.MaxHarmonics(EnteredInteger(m_txtMaxHarmonics->Content()));
    defaults.SaveDefaults(m_application->Registry(), CApplication::BaseRegistrySubkey() + "Defaults");
    accept();
}

}  // namespace genvara
