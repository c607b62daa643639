#include "frmDefaults.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "CApplication.h"
#include "ChoiceBox.h"
#include "DialogKeys.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "SiteControls.h"
#include "SiteEntry.h"
#include "Texts.h"
#include "UpDown.h"

namespace genvara {
namespace {

constexpr int kNumberDigits = 8;
constexpr int kPercentDigits = 4;
constexpr int kSitePage = 1;

EntryField* MakeField(PlatformServices& platform, const char* name, int digits,
                      EntryField::KeyFilter filter) {
    auto* field = new EntryField(platform, name);
    SetDigits(*field, digits);
    field->Filter(std::move(filter));
    return field;
}

}  // namespace

frmDefaults::frmDefaults(PlatformServices& platform, CApplication& application, QWidget* owner)
    : QDialog(owner),
      m_platform(&platform),
      m_application(&application),
      m_pages(new QTabWidget),
      m_txtUserName(new EntryField(platform, "txtUserName")),
      m_txtCustomerName(new EntryField(platform, "txtCustomerName")),
      m_cboVolts(new ChoiceBox("cboVolts")),
      m_cboConn(new ChoiceBox("cboConn")),
      m_cboAltTempRise(new ChoiceBox("cboAltTempRise")),
      m_fraFreq(new FrequencyGroup),
      m_fraFuel(new FuelGroup),
      m_txtParallelSets(MakeField(platform, "txtParallelSets", kPercentDigits, key_filters::Digits())),
      m_txtAltitude(MakeField(platform, "txtAltitude", kNumberDigits, key_filters::Signed())),
      m_txtAmbTemp(MakeField(platform, "txtAmbTemp", kNumberDigits, key_filters::Signed())) {
    setObjectName("frmDefaults");
    setWindowTitle("Defaults");
    m_pages->setObjectName("tabDefaults");
    m_pages->tabBar()->setAccessibleName(windowTitle());
    m_pages->addTab(MakeProjectPage(), "Project");
    m_pages->addTab(MakeSitePage(), "Power System");
    for (int page = 0; page < m_pages->count(); ++page) {
        MarkMnemonics(*m_pages->widget(page));
        OrderTabsByLayout(*m_pages->widget(page));
    }
    const OkCancel buttons = MakeOkCancel();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    column->addWidget(m_pages, 1);
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
    auto* page = new QWidget;
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    rows->setSpacing(metrics::kGap);
    auto* electric = new FormGrid;
    electric->AddField("lblVolts", Caption(140), m_cboVolts);
    electric->AddField("lblConn", Caption(141), m_cboConn);
    electric->AddField("lblAltRise", Caption(150), m_cboAltTempRise);
    rows->addLayout(electric);
    // Side by side, so that the dialog fits a small screen.
    auto* columns = new QHBoxLayout;
    columns->setSpacing(2 * metrics::kMargin);
    auto* frames = new QVBoxLayout;
    frames->addWidget(m_fraFreq);
    frames->addWidget(m_fraFuel);
    frames->addStretch(1);
    columns->addLayout(frames);
    auto* numbers = new FormGrid;
    AddNumbers(*numbers);
    numbers->setRowStretch(numbers->rowCount(), 1);
    columns->addLayout(numbers);
    rows->addLayout(columns);
    rows->addStretch(1);
    return page;
}

void frmDefaults::AddNumbers(FormGrid& grid) {
    const bool metric = m_application->IsMetric();
    m_txtParallelSets->Bounds(ParallelSetsBounds());
    auto* arrows = new UpDown("updParallelSets", *m_txtParallelSets, StepsWithin(ParallelSetsBounds()));
    const QString note = ToQt(BoundsNote(*m_txtParallelSets->Bounds(), EntryNumbers()));
    m_txtParallelSets->setAccessibleName(Caption(151));
    grid.AddField("lblParallelSets", Caption(151),
                  Beside(m_txtParallelSets, arrows, FormGrid::MakeNote("lblParallelSetsRange", note)));
    grid.AddField("lblAltitude", Caption(152), m_txtAltitude,
                  FormGrid::MakeNote("lblAltitudeUnits", Caption(UnitString(SiteFigure::Altitude, metric))));
    grid.AddField("lblAmbTemp", Caption(153), m_txtAmbTemp,
                  FormGrid::MakeNote("lblAmbTempUnits", Caption(UnitString(SiteFigure::AmbTemp, metric))));
    AddLimits(grid);
}

void frmDefaults::AddLimits(FormGrid& grid) {
    m_txtMaxVoltDip = AddLimit(grid, {"txtDefaultMaxVoltDip", "updDefaultMaxVoltDip", "lblDefaultMaxVoltDip"},
                               "Max. Voltage Dip  (%)", "MaxVoltageDip");
    m_txtMaxFreqDip = AddLimit(grid, {"txtDefaultMaxFreqDip", "updDefaultMaxFreqDip", "lblDefaultMaxFreqDip"},
                               "Max. Frequency Dip  (%)", "MaxFreqDip");
    m_txtMaxHarmonics =
        AddLimit(grid, {"txtDefaultMaxHarmonics", "updDefaultMaxHarmonics", "lblDefaultMaxHarmonics"},
                 "Max. Harmonics  (%)", "MaxHarmonics");
}

EntryField* frmDefaults::AddLimit(FormGrid& grid, const NumberNames& names, const QString& caption,
                                  std::string_view member) {
    auto* field = MakeField(*m_platform, names.field, kPercentDigits, key_filters::Digits());
    field->Bounds(NamedSiteBounds(member, caption));
    field->setAccessibleName(caption);
    auto* arrows = new UpDown(names.arrows, *field, StepsWithin(*field->Bounds(), kLimitStep));
    QLabel* range = FormGrid::MakeNote({}, ToQt(BoundsNote(*field->Bounds(), EntryNumbers())));
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
    m_txtAltitude->Content(SiteText(SiteFigure::Altitude, m_altitude, metric, EntryNumbers()));
    m_txtAmbTemp->Content(SiteText(SiteFigure::AmbTemp, m_ambTemp, metric, EntryNumbers()));
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
    const auto keep = [this](EntryField* field, double* kept, SiteFigure figure) {
        field->OnLeft([this, field, kept, figure] {
            // A text that the site would not take keeps the former value.
            if (ComplaintOf(*field, figure).isEmpty()) {
                *kept = InSI(figure, EntryNumbers().Number(field->Content()), m_application->IsMetric());
            }
        });
    };
    keep(m_txtAltitude, &m_altitude, SiteFigure::Altitude);
    keep(m_txtAmbTemp, &m_ambTemp, SiteFigure::AmbTemp);
}

QString frmDefaults::ComplaintOf(const EntryField& field, SiteFigure figure) const {
    return ToQt(SiteComplaint(figure, FromQt(field.accessibleName()), field.Content(),
                              m_application->IsMetric(), EntryNumbers()));
}

bool frmDefaults::HoldsOk() {
    if (m_cboVolts->currentIndex() < 0) {
        m_pages->setCurrentIndex(kSitePage);
        m_platform->Beep();
        m_cboVolts->ShowError(tr("%1: nothing is selected.").arg(Caption(140)));
        m_cboVolts->setFocus(Qt::OtherFocusReason);
        return true;
    }
    using FieldComplaint = std::pair<EntryField*, QString>;
    const std::array complaints{
        FieldComplaint{m_txtParallelSets, m_txtParallelSets->Complaint()},
        FieldComplaint{m_txtAltitude, ComplaintOf(*m_txtAltitude, SiteFigure::Altitude)},
        FieldComplaint{m_txtAmbTemp, ComplaintOf(*m_txtAmbTemp, SiteFigure::AmbTemp)},
        FieldComplaint{m_txtMaxVoltDip, m_txtMaxVoltDip->Complaint()},
        FieldComplaint{m_txtMaxFreqDip, m_txtMaxFreqDip->Complaint()},
        FieldComplaint{m_txtMaxHarmonics, m_txtMaxHarmonics->Complaint()}};
    for (const auto& [field, complaint] : complaints) {
        if (!complaint.isEmpty()) {
            m_pages->setCurrentIndex(kSitePage);
            field->Refuse(complaint);
            return true;
        }
    }
    return false;
}

void frmDefaults::OkClicked() {
    if (HoldsOk()) {
        return;
    }
    const EntryNumbers numbers;
    CDefaults& defaults = m_application->Defaults();
    defaults.UserName(m_txtUserName->Content());
    defaults.CustomerName(m_txtCustomerName->Content());
    defaults.VoltageLL(numbers.Integer(FromQt(m_cboVolts->currentText())));
    // No selection has no code to give; the former one stays.
    defaults.ConnectCode(m_cboConn->Code().value_or(defaults.ConnectCode()));
    defaults.Duty(m_cboAltTempRise->Code().value_or(defaults.Duty()));
    defaults.Freq(m_fraFreq->Is50() ? 50 : 60);
    defaults.Fuel(m_fraFuel->Fuel());
    defaults.NumParallelSets(numbers.Integer(m_txtParallelSets->Content()));
    defaults.Altitude(m_altitude);
    defaults.AmbTemp(m_ambTemp);
    defaults.MaxVoltageDip(numbers.Integer(m_txtMaxVoltDip->Content()));
    defaults.MaxFreqDip(numbers.Integer(m_txtMaxFreqDip->Content()));
    defaults.MaxHarmonics(numbers.Integer(m_txtMaxHarmonics->Content()));
    defaults.SaveDefaults(m_application->Registry(), CApplication::BaseRegistrySubkey() + "Defaults");
    accept();
}

}  // namespace genvara
