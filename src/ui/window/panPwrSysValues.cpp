// The panel's values: what is shown, and in which units.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>

#include "ChoiceBox.h"
#include "SiteControls.h"
#include "Texts.h"
#include "panPwrSys.h"

namespace genvara {
namespace {

/// What the program shows is no error, whatever was shown before.
void Show(EntryField& field, const std::string& text) {
    field.ClearError();
    field.Content(text);
}

double Number(const EntryField& field) {
    return field.text().trimmed().isEmpty() ? 0.0 : EntryNumbers().Number(field.Content());
}

std::int32_t Integer(const EntryField& field) {
    return field.text().trimmed().isEmpty() ? 0 : EntryNumbers().Integer(field.Content());
}

/// Replaces a shown figure by that of the other unit system; a text that is no number becomes empty.
void Convert(EntryField& field, SiteFigure figure, bool toMetric) {
    Show(field, ConvertedText(figure, field.Content(), toMetric, EntryNumbers()).value_or(""));
}

}  // namespace

void panPwrSys::ProjectName(const std::string& text) {
    Heading(ToQt(text));
}

std::string panPwrSys::ProjectName() const {
    return FromQt(Heading());
}

void panPwrSys::Voltage(std::int32_t volts) {
    m_cboVolts->SelectCode(volts);
}

std::int32_t panPwrSys::Voltage() const {
    return EntryNumbers().Integer(FromQt(m_cboVolts->currentText()));
}

void panPwrSys::ConnectionCode(std::int32_t code) {
    m_cboConn->SelectCode(code);
}

std::int32_t panPwrSys::ConnectionCode() const {
    return m_cboConn->Code().value_or(0);
}

void panPwrSys::Freq(std::int32_t hertz) {
    m_fraFreq->Freq(hertz);
}

std::int32_t panPwrSys::Freq() const {
    return m_fraFreq->Freq().value_or(50);
}

void panPwrSys::Fuel(std::int32_t code) {
    m_fraFuel->Fuel(code);
}

std::int32_t panPwrSys::Fuel() const {
    return m_fraFuel->Fuel();
}

void panPwrSys::GensetsInParallel(std::int32_t sets) {
    Show(*m_txtParallelSets, std::to_string(sets));
}

std::int32_t panPwrSys::GensetsInParallel() const {
    return Integer(*m_txtParallelSets);
}

void panPwrSys::RiseDuty(std::int32_t code) {
    m_cboAltTempRise->SelectCode(code);
}

std::int32_t panPwrSys::RiseDuty() const {
    return m_cboAltTempRise->Code().value_or(0);
}

void panPwrSys::Altitude(double metres) {
    Show(*m_txtAltitude, SiteText(SiteFigure::Altitude, metres, m_metricShown, EntryNumbers()));
}

double panPwrSys::Altitude() const {
    return Number(*m_txtAltitude);
}

void panPwrSys::AmbTemp(double celsius) {
    Show(*m_txtAmbTemp, SiteText(SiteFigure::AmbTemp, celsius, m_metricShown, EntryNumbers()));
}

double panPwrSys::AmbTemp() const {
    return Number(*m_txtAmbTemp);
}

void panPwrSys::MaxVoltageDip(std::int32_t percent) {
    Show(*m_txtMaxVoltDip, std::to_string(percent));
}

std::int32_t panPwrSys::MaxVoltageDip() const {
    return Integer(*m_txtMaxVoltDip);
}

void panPwrSys::MaxFreqDip(std::int32_t percent) {
    Show(*m_txtMaxFreqDip, std::to_string(percent));
}

std::int32_t panPwrSys::MaxFreqDip() const {
    return Integer(*m_txtMaxFreqDip);
}

void panPwrSys::MaxFreqDipEnabled(bool enabled) {
    m_chkEnableFreqDip->setChecked(enabled);
}

bool panPwrSys::MaxFreqDipEnabled() const {
    return m_chkEnableFreqDip->isChecked();
}

void panPwrSys::MaxHarmonics(std::int32_t percent) {
    Show(*m_txtMaxHarmonics, std::to_string(percent));
}

std::int32_t panPwrSys::MaxHarmonics() const {
    return Integer(*m_txtMaxHarmonics);
}

void panPwrSys::MaxHarmonicsEnabled(bool enabled) {
    m_chkEnableHarm->setChecked(enabled);
}

bool panPwrSys::MaxHarmonicsEnabled() const {
    return m_chkEnableHarm->isChecked();
}

QString panPwrSys::Shown(SiteChoice choice) const {
    switch (choice) {
        case SiteChoice::Voltage:
            return m_cboVolts->currentIndex() < 0 ? QString() : m_cboVolts->currentText() + " V";
        case SiteChoice::Connection:
            return m_cboConn->currentText();
        case SiteChoice::Frequency:
            return QString("%1 Hz").arg(Freq());
        case SiteChoice::Fuel:
            return Caption(CaptionOfFuel(Fuel()));
        case SiteChoice::RiseDuty:
            return m_cboAltTempRise->currentText();
    }
    return {};
}

std::int32_t panPwrSys::Phases() const {
    const int row = m_cboConn->currentIndex();
    return row < 0 ? 0 : m_connPhases.at(static_cast<std::size_t>(row));
}

void panPwrSys::Voltages(const std::vector<std::int32_t>& volts) {
    FillVoltages(*m_cboVolts, volts);
}

void panPwrSys::Connections(const std::vector<ConnectionRecord>& connections) {
    FillConnections(*m_cboConn, connections);
    // The open list shows its rows whole, however narrow the window.
    m_cboConn->view()->setMinimumWidth(m_cboConn->sizeHint().width());
    m_connPhases.clear();
    for (const ConnectionRecord& connection : connections) {
        m_connPhases.push_back(connection.phases);
    }
}

void panPwrSys::MetricUnits(bool metric) {
    m_lblAltitudeUnits->setText(Caption(UnitString(SiteFigure::Altitude, metric)));
    m_lblAmbTempUnits->setText(Caption(UnitString(SiteFigure::AmbTemp, metric)));
    if (metric != m_metricShown) {
        Convert(*m_txtAmbTemp, SiteFigure::AmbTemp, metric);
        Convert(*m_txtAltitude, SiteFigure::Altitude, metric);
        m_metricShown = metric;
    }
}

}  // namespace genvara
