#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "CPwrSys.h"
#include "EntryField.h"
#include "GensetRecords.h"
#include "Panel.h"
#include "SiteChoice.h"
#include "SiteEntry.h"

class QCheckBox;
class QLabel;
class QVBoxLayout;

namespace genvara {

class ChoiceBox;
class FormGrid;
class FrequencyGroup;
class FuelGroup;
class UpDown;

/// What the site demands of the generator sets, in the units that the user has chosen.
class panPwrSys final : public Panel, public PwrSysDisplay {
    Q_OBJECT

  public:
    /// Checked fields and ticks are written straight into the record, which outlives the panel.
    panPwrSys(PlatformServices& platform, CPwrSys& site, QWidget* parent = nullptr);

    void ProjectName(const std::string& text);
    [[nodiscard]] std::string ProjectName() const;

    // Setters select by value: one that no row has leaves the selection. Getters raise 13 for a text that is
    // no number; an empty one counts as 0.
    void Voltage(std::int32_t volts) override;
    [[nodiscard]] std::int32_t Voltage() const;
    void ConnectionCode(std::int32_t code) override;
    [[nodiscard]] std::int32_t ConnectionCode() const;
    void Freq(std::int32_t hertz) override;
    [[nodiscard]] std::int32_t Freq() const;
    void Fuel(std::int32_t code) override;
    [[nodiscard]] std::int32_t Fuel() const;
    void GensetsInParallel(std::int32_t sets) override;
    [[nodiscard]] std::int32_t GensetsInParallel() const;
    void RiseDuty(std::int32_t code) override;
    [[nodiscard]] std::int32_t RiseDuty() const;
    void Altitude(double metres) override;
    /// Altitude in the shown units, m or ft.
    [[nodiscard]] double Altitude() const;
    void AmbTemp(double celsius) override;
    /// Temperature in the shown units, °C or °F.
    [[nodiscard]] double AmbTemp() const;
    void MaxVoltageDip(std::int32_t percent) override;
    [[nodiscard]] std::int32_t MaxVoltageDip() const;
    void MaxFreqDip(std::int32_t percent) override;
    [[nodiscard]] std::int32_t MaxFreqDip() const;
    void MaxFreqDipEnabled(bool enabled) override;
    [[nodiscard]] bool MaxFreqDipEnabled() const;
    void MaxHarmonics(std::int32_t percent) override;
    [[nodiscard]] std::int32_t MaxHarmonics() const;
    void MaxHarmonicsEnabled(bool enabled) override;
    [[nodiscard]] bool MaxHarmonicsEnabled() const;

    /// Phases of the selected connection; 0 if none is selected.
    [[nodiscard]] std::int32_t Phases() const;

    /// The voltages offered, in the database's order.
    void Voltages(const std::vector<std::int32_t>& volts);
    /// The connections offered, in the database's order.
    void Connections(const std::vector<ConnectionRecord>& connections);

    /// What the panel shows for a choice, and so what a store takes; empty where it shows none.
    [[nodiscard]] QString Shown(SiteChoice choice) const;

    /// Looks through the fields before a store, which must not fail under the user's hands: emptied ones are
    /// filled, and a bad one, wherever the focus is, gets its message.
    /// @return the bad field; null if the fields can be stored.
    [[nodiscard]] EntryField* PrepareToStore();
    /// Gives emptied limits what the record holds, and the other emptied fields what leaving them gives.
    void FillEmptied();

    /// Writes the fields into the record, in SI. A list without a selection leaves the record's own value.
    /// @throws RaisedError of the fields and setters, from "panPwrSys::Store".
    void Store(CPwrSys& site) const;

    /// Writes what of the fields can be stored into the record, as `Store`, and leaves out the rest.
    void StoreWhatHolds(CPwrSys& site) const;

    /// Shows SI or English units, and converts what is shown; a text that is no number becomes empty.
    void MetricUnits(bool metric) override;

  signals:
    /// The user has chosen, if only what was shown already.
    void Chosen(genvara::SiteChoice choice);

  private:
    void BuildElectric();
    void BuildSite(QVBoxLayout& column);
    void BuildLimits(QVBoxLayout& column);
    void AddLimit(FormGrid& grid, QWidget* caption, EntryField* field, UpDown* arrows);
    void CheckFields();
    void WireLimits();
    void WireChoices();
    /// A field that is checked before the focus leaves it.
    struct Checked {
        EntryField* field;
        const char* complaint;
        std::function<std::string()>
            blank;                   ///< what an empty text becomes; none for a field that may stay so
        std::function<void()> held;  ///< shows the record's value
        std::function<void(const std::string& text)> store;  ///< writes the text into the record
    };
    void Check(Checked checked);
    /// Checks a field and tells what is wrong; true if the focus has to stay.
    bool IsRefused(const Checked& checked);
    static void RestoreUnlessAccepted(const Checked& checked);
    void ConnectionClicked();
    void FreqDipClicked();
    void HarmonicsClicked();
    /// @param store runs a statement that stores one value.
    template <typename Runner>
    void StoreSite(CPwrSys& site, Runner store) const;
    /// One sentence on why a field's text is refused.
    [[nodiscard]] QString SentenceOn(const EntryField& field) const;
    /// A figure's text in SI.
    /// @throws RaisedError 13 for a text that is no number.
    [[nodiscard]] double Stored(SiteFigure figure, const std::string& text) const;

    PlatformServices* m_platform;
    CPwrSys* m_site;
    bool m_metricShown = false;
    std::vector<Checked> m_checked;
    std::vector<std::int32_t> m_connPhases;  ///< phases by row of the connections

    ChoiceBox* m_cboVolts;
    ChoiceBox* m_cboConn;
    ChoiceBox* m_cboAltTempRise;
    FrequencyGroup* m_fraFreq;
    FuelGroup* m_fraFuel;
    EntryField* m_txtParallelSets;
    EntryField* m_txtAltitude;
    EntryField* m_txtAmbTemp;
    EntryField* m_txtMaxVoltDip;
    EntryField* m_txtMaxFreqDip;
    EntryField* m_txtMaxHarmonics;
    QLabel* m_lblAltitudeUnits;
    QLabel* m_lblAmbTempUnits;
    UpDown* m_updMaxFreqDip;
    UpDown* m_updMaxHarmonics;
    QCheckBox* m_chkEnableFreqDip;
    QCheckBox* m_chkEnableHarm;
    QLabel* m_lblNoDistortion;
};

}  // namespace genvara
