#include "panPwrSys.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ChoiceBox.h"
#include "FailureRegion.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "SiteControls.h"
#include "SiteEntry.h"
#include "Texts.h"
#include "UpDown.h"

namespace genvara {
namespace {

constexpr const char* kErrorTitle = "ERROR";

constexpr int kAltitudeDigits = 8;
constexpr int kPercentDigits = 4;
/// Characters that a list shows in a narrow window; where there is room, it shows its longest row.
constexpr int kLeastListLength = 14;

EntryField* NumberField(PlatformServices& platform, const char* name, int digits) {
    auto* field = new EntryField(platform, name);
    SetDigits(*field, digits);
    return field;
}

EntryField* PercentField(PlatformServices& platform, const char* name, std::int32_t caption,
                         std::string_view member) {
    EntryField* field = NumberField(platform, name, kPercentDigits);
    field->Filter(key_filters::Digits());
    field->Bounds(NamedSiteBounds(member, Caption(caption)));
    return field;
}

/// A number of either sign, as altitudes and temperatures are.
EntryField* SignedField(PlatformServices& platform, const char* name) {
    EntryField* field = NumberField(platform, name, kAltitudeDigits);
    field->Filter(key_filters::Signed());
    return field;
}

}  // namespace

panPwrSys::panPwrSys(PlatformServices& platform, CPwrSys& site, QWidget* parent)
    : Panel("panPwrSys", Caption(126), "lblProjName", parent),
      m_platform(&platform),
      m_site(&site),
      m_cboVolts(new ChoiceBox("cboVolts")),
      m_cboConn(new ChoiceBox("cboConn")),
      m_cboAltTempRise(new ChoiceBox("cboAltTempRise")),
      m_fraFreq(new FrequencyGroup),
      m_fraFuel(new FuelGroup),
      m_txtParallelSets(NumberField(platform, "txtParallelSets", kPercentDigits)),
      m_txtAltitude(SignedField(platform, "txtAltitude")),
      m_txtAmbTemp(SignedField(platform, "txtAmbTemp")),
      m_txtMaxVoltDip(PercentField(platform, "txtMaxVoltDip", 154, "MaxVoltageDip")),
      m_txtMaxFreqDip(PercentField(platform, "txtMaxFreqDip", 155, "MaxFreqDip")),
      m_txtMaxHarmonics(PercentField(platform, "txtMaxHarmonics", 156, "MaxHarmonics")),
      m_lblAltitudeUnits(FormGrid::MakeNote("lblAltitudeUnits")),
      m_lblAmbTempUnits(FormGrid::MakeNote("lblAmbTempUnits")),
      m_updMaxFreqDip(
          new UpDown("updMaxFreqDip", *m_txtMaxFreqDip, StepsWithin(*m_txtMaxFreqDip->Bounds(), kLimitStep))),
      m_updMaxHarmonics(new UpDown("updMaxHarmonics", *m_txtMaxHarmonics,
                                   StepsWithin(*m_txtMaxHarmonics->Bounds(), kLimitStep))),
      m_chkEnableFreqDip(new QCheckBox(Caption(155))),
      m_chkEnableHarm(new QCheckBox(Caption(156))),
      m_lblNoDistortion(FormGrid::MakeNote("lblNoDistortion", ToQt(kNoDistortionFigures))) {
    BuildElectric();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(2 * metrics::kMargin);
    auto* left = new QVBoxLayout;
    auto* right = new QVBoxLayout;
    columns->addLayout(left, 3);
    columns->addLayout(right, 2);
    BuildSite(*left);
    BuildLimits(*right);
    Content()->addLayout(columns);
    Content()->addStretch(1);
    CheckFields();
    WireLimits();
    WireChoices();
    MetricUnits(m_metricShown);
    WatchEdits();
}

void panPwrSys::BuildElectric() {
    for (ChoiceBox* list : {m_cboVolts, m_cboConn, m_cboAltTempRise}) {
        list->setMinimumContentsLength(kLeastListLength);
        connect(list, &QComboBox::currentTextChanged, list, &QWidget::setToolTip);
    }
    // Over the whole width: the longest connection is wider than a column of a small window.
    auto* grid = new FormGrid;
    grid->AddField("lblVolts", Caption(140), m_cboVolts);
    grid->AddField("lblConn", Caption(141), m_cboConn);
    // One label column with the fields below.
    grid->setColumnMinimumWidth(0, QLabel(Caption(150)).sizeHint().width());
    Content()->addLayout(grid);
}

void panPwrSys::BuildSite(QVBoxLayout& column) {
    FillRiseDuty(*m_cboAltTempRise);
    auto* arrows = new UpDown("updParallelSets", *m_txtParallelSets, StepsWithin(ParallelSetsBounds()));
    const QString note = ToQt(BoundsNote(ParallelSetsBounds(), EntryNumbers()));
    QWidget* sets = Beside(m_txtParallelSets, arrows, FormGrid::MakeNote("lblParallelSetsRange", note));
    m_txtParallelSets->setAccessibleName(Caption(151));
    column.setSpacing(metrics::kGap * 3 / 2);
    column.addWidget(m_fraFreq);
    column.addWidget(m_fraFuel);
    auto* grid = new FormGrid;
    grid->AddField("lblAltRise", Caption(150), m_cboAltTempRise);
    grid->AddField("lblParallelSets", Caption(151), sets);
    grid->AddField("lblAltitude", Caption(152), m_txtAltitude, m_lblAltitudeUnits);
    grid->AddField("lblAmbTemp", Caption(153), m_txtAmbTemp, m_lblAmbTempUnits);
    column.addLayout(grid);
    column.addStretch(1);
}

void panPwrSys::BuildLimits(QVBoxLayout& column) {
    m_chkEnableFreqDip->setObjectName("chkEnableFreqDip");
    m_chkEnableHarm->setObjectName("chkEnableHarm");
    auto* voltDip = new QLabel(Caption(154));
    voltDip->setObjectName("lblEnableVoltDip");
    auto* arrows =
        new UpDown("updMaxVoltDip", *m_txtMaxVoltDip, StepsWithin(*m_txtMaxVoltDip->Bounds(), kLimitStep));
    auto* grid = new FormGrid;
    AddLimit(*grid, voltDip, m_txtMaxVoltDip, arrows);
    AddLimit(*grid, m_chkEnableFreqDip, m_txtMaxFreqDip, m_updMaxFreqDip);
    AddLimit(*grid, m_chkEnableHarm, m_txtMaxHarmonics, m_updMaxHarmonics);
    grid->AddWide(m_lblNoDistortion);
    m_lblNoDistortion->setVisible(false);
    voltDip->setBuddy(m_txtMaxVoltDip);
    m_txtMaxVoltDip->setAccessibleName(Caption(154));
    m_txtMaxFreqDip->setAccessibleName(Caption(155));
    m_txtMaxHarmonics->setAccessibleName(Caption(156));
    column.addLayout(grid);
    column.addStretch(1);
}

void panPwrSys::AddLimit(FormGrid& grid, QWidget* caption, EntryField* field, UpDown* arrows) {
    NumberBounds shown = *field->Bounds();
    shown.unit.clear();  // it stands in the caption
    grid.AddRow(caption,
                Beside(field, arrows, FormGrid::MakeNote({}, ToQt(BoundsNote(shown, EntryNumbers())))));
}

void panPwrSys::CheckFields() {
    m_txtParallelSets->Bounds(ParallelSetsBounds());
    const auto zero = [] { return std::string("0"); };
    Check(
        {.field = m_txtAltitude,
         .complaint = "Invalid altitude entered",
         .blank = zero,
         .held = [this] { Altitude(m_site->Altitude()); },
         .store = [this](const std::string& text) { m_site->Altitude(Stored(SiteFigure::Altitude, text)); }});
    Check({.field = m_txtAmbTemp,
           .complaint = "Invalid ambient temperature entered",
           .blank = zero,
           .held = [this] { AmbTemp(m_site->AmbTemp()); },
           .store = [this](const std::string& text) { m_site->AmbTemp(Stored(SiteFigure::AmbTemp, text)); }});
    Check({.field = m_txtMaxFreqDip,
           .complaint = "Invalid frequecy dip entered",
           .blank = {},
           .held = [this] { MaxFreqDip(m_site->MaxFreqDip()); },
           .store = [this](const std::string& text) { m_site->MaxFreqDip(EntryNumbers().Whole(text)); }});
    Check({.field = m_txtMaxHarmonics,
           .complaint = "Invalid harmonic limit entered",
           .blank = {},
           .held = [this] { MaxHarmonics(m_site->MaxHarmonics()); },
           .store = [this](const std::string& text) { m_site->MaxHarmonics(EntryNumbers().Whole(text)); }});
    Check({.field = m_txtMaxVoltDip,
           .complaint = "Invalid voltage dip entered",
           .blank = {},
           .held = [this] { MaxVoltageDip(m_site->MaxVoltageDip()); },
           .store = [this](const std::string& text) { m_site->MaxVoltageDip(EntryNumbers().Whole(text)); }});
    Check({.field = m_txtParallelSets,
           .complaint = "Invalid number of gensets entered",
           .blank = [] { return std::string("1"); },
           .held = [this] { GensetsInParallel(m_site->GensetsInParallel()); },
           .store =
               [this](const std::string& text) { m_site->GensetsInParallel(EntryNumbers().Whole(text)); }});
}

QString panPwrSys::SentenceOn(const EntryField& field) const {
    const auto of = [&](SiteFigure figure, std::int32_t caption) {
        return ToQt(
            SiteComplaint(figure, FromQt(Caption(caption)), field.Content(), m_metricShown, EntryNumbers()));
    };
    if (&field == m_txtAltitude) {
        return of(SiteFigure::Altitude, 152);
    }
    return &field == m_txtAmbTemp ? of(SiteFigure::AmbTemp, 153) : field.Complaint();
}

void panPwrSys::Check(Checked checked) {
    m_checked.push_back(std::move(checked));
    m_checked.back().field->CheckBeforeLeaving(
        [this, place = m_checked.size() - 1] { return IsRefused(m_checked[place]); });
}

bool panPwrSys::IsRefused(const Checked& checked) {
    EntryField* field = checked.field;
    field->ClearError();
    const QString trimmed = field->text().trimmed();
    if (trimmed != field->text()) {
        field->setText(trimmed);
    }
    if (field->text().isEmpty()) {
        if (!checked.blank) {
            return false;
        }
        field->Content(checked.blank());
    }
    try {
        checked.store(field->Content());
    } catch (const RaisedError&) {
        field->ShowError(SentenceOn(*field));
        m_platform->ShowMessage(this,
                                {.text = checked.complaint, .icon = MessageIcon::Stop, .title = kErrorTitle});
        m_platform->Beep();
        return true;
    }
    return false;
}

EntryField* panPwrSys::PrepareToStore() {
    for (const Checked& checked : m_checked) {
        if (!checked.field->text().trimmed().isEmpty()) {
            if (!checked.field->isEnabled()) {
                RestoreUnlessAccepted(checked);
            } else if (IsRefused(checked)) {
                return checked.field;
            }
        }
    }
    FillEmptied();
    return nullptr;
}

void panPwrSys::FillEmptied() {
    for (const Checked& checked : m_checked) {
        if (!checked.field->text().trimmed().isEmpty()) {
            continue;
        }
        if (checked.blank) {
            checked.field->Content(checked.blank());
        } else {
            checked.held();
        }
    }
}

void panPwrSys::RestoreUnlessAccepted(const Checked& checked) {
    FailureRegion region;
    if (!region.Run([&] { checked.store(checked.field->Content()); })) {
        checked.held();
    }
}

void panPwrSys::WireLimits() {
    connect(m_cboConn, &ChoiceBox::Clicked, this, Event([this] { ConnectionClicked(); }));
    connect(m_chkEnableFreqDip, &QCheckBox::toggled, this, Event([this] { FreqDipClicked(); }));
    connect(m_chkEnableHarm, &QCheckBox::toggled, this, Event([this] { HarmonicsClicked(); }));
    for (QWidget* optional : std::initializer_list<QWidget*>{m_txtMaxFreqDip, m_updMaxFreqDip,
                                                             m_txtMaxHarmonics, m_updMaxHarmonics}) {
        optional->setEnabled(false);
    }
}

void panPwrSys::WireChoices() {
    const auto fromList = [this](const ChoiceBox* list, SiteChoice choice) {
        connect(list, &QComboBox::activated, this, [this, choice] { emit Chosen(choice); });
    };
    fromList(m_cboVolts, SiteChoice::Voltage);
    fromList(m_cboConn, SiteChoice::Connection);
    fromList(m_cboAltTempRise, SiteChoice::RiseDuty);
    const auto fromGroup = [this](const QWidget* group, SiteChoice choice) {
        for (const auto* button : group->findChildren<QAbstractButton*>()) {
            connect(button, &QAbstractButton::clicked, this, [this, choice] { emit Chosen(choice); });
        }
    };
    fromGroup(m_fraFreq, SiteChoice::Frequency);
    fromGroup(m_fraFuel, SiteChoice::Fuel);
}

void panPwrSys::ConnectionClicked() {
    const std::int32_t code = ConnectionCode();
    const bool harmonics = TreatmentOf(code).offersHarmonicLimit;
    if (!harmonics) {
        m_chkEnableHarm->setChecked(false);
    }
    m_chkEnableHarm->setEnabled(harmonics);
    const bool entered = harmonics && m_chkEnableHarm->isChecked();
    m_txtMaxHarmonics->setEnabled(entered);
    m_updMaxHarmonics->setEnabled(entered);
    m_lblNoDistortion->setVisible(!HasDistortionModel(code));
}

void panPwrSys::FreqDipClicked() {
    const bool enabled = m_chkEnableFreqDip->isChecked();
    m_txtMaxFreqDip->setEnabled(enabled);
    m_updMaxFreqDip->setEnabled(enabled);
    m_site->MaxFreqDipEnabled(enabled);
}

void panPwrSys::HarmonicsClicked() {
    const bool enabled = m_chkEnableHarm->isChecked();
    m_txtMaxHarmonics->setEnabled(enabled);
    m_updMaxHarmonics->setEnabled(enabled);
    m_site->MaxHarmonicsEnabled(enabled);
}

double panPwrSys::Stored(SiteFigure figure, const std::string& text) const {
    return InSI(figure, EntryNumbers().Number(text), m_metricShown);
}

template <typename Runner>
void panPwrSys::StoreSite(CPwrSys& site, Runner store) const {
    store([&] { site.Altitude(InSI(SiteFigure::Altitude, Altitude(), m_metricShown)); });
    store([&] { site.AmbTemp(InSI(SiteFigure::AmbTemp, AmbTemp(), m_metricShown)); });
    store([&] { site.Freq(Freq()); });
    store([&] { site.Fuel(Fuel()); });
    store([&] { site.GensetsInParallel(GensetsInParallel()); });
    store([&] { site.MaxFreqDip(MaxFreqDip()); });
    store([&] { site.MaxFreqDipEnabled(MaxFreqDipEnabled()); });
    store([&] { site.MaxHarmonics(MaxHarmonics()); });
    store([&] { site.MaxHarmonicsEnabled(MaxHarmonicsEnabled()); });
    store([&] { site.MaxVoltageDip(MaxVoltageDip()); });
    const bool connected = m_cboConn->currentIndex() >= 0;
    if (connected) {
        store([&] { site.Phases(Phases()); });
    }
    if (m_cboAltTempRise->currentIndex() >= 0) {
        store([&] { site.RiseDutyCode(RiseDuty()); });
    }
    if (m_cboVolts->currentIndex() >= 0) {
        store([&] { site.Voltage(Voltage()); });
    }
    if (connected) {
        store([&] { site.ConnectCode(ConnectionCode()); });
    }
}

void panPwrSys::Store(CPwrSys& site) const {
    try {
        StoreSite(site, [](const auto& statement) { statement(); });
    } catch (const RaisedError& failure) {
        throw failure.WithSource("panPwrSys::Store");
    }
}

void panPwrSys::StoreWhatHolds(CPwrSys& site) const {
    FailureRegion region;
    StoreSite(site, [&region](const auto& statement) { region.Run(statement); });
}

}  // namespace genvara
