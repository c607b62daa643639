#pragma once

#include <cstdint>

#include "CDefaults.h"
#include "SiteCodes.h"

namespace genvara {

/// Where the site is shown. Each member may raise; the others are then shown all the same.
class PwrSysDisplay {
  public:
    virtual ~PwrSysDisplay() = default;
    virtual void MetricUnits(bool metric) = 0;
    virtual void Altitude(double metres) = 0;
    virtual void AmbTemp(double celsius) = 0;
    virtual void ConnectionCode(std::int32_t code) = 0;
    virtual void Freq(std::int32_t hertz) = 0;
    virtual void Fuel(std::int32_t code) = 0;
    virtual void GensetsInParallel(std::int32_t sets) = 0;
    virtual void MaxFreqDip(std::int32_t percent) = 0;
    virtual void MaxFreqDipEnabled(bool enabled) = 0;
    virtual void MaxHarmonics(std::int32_t percent) = 0;
    virtual void MaxHarmonicsEnabled(bool enabled) = 0;
    virtual void MaxVoltageDip(std::int32_t percent) = 0;
    virtual void RiseDuty(std::int32_t code) = 0;
    virtual void Voltage(std::int32_t volts) = 0;
};

/// What the site demands of the generator sets. A setter that refuses a value keeps the old one. A copy takes
/// its defaults from the same source.
class CPwrSys {
  public:
    /// Fills the record from the user's defaults, which outlive it.
    explicit CPwrSys(const CDefaults& defaults);

    /// Copies every field but `Phases` to a display, whatever happens on the way.
    /// @throws RaisedError 1, "<count> error(s) occured while displaying power system data", from
    ///         "CPwrSys::Display", after the last field.
    void Display(PwrSysDisplay& panel, bool metricUnits) const;

    /// Phases of the site's connection; 1 or 3.
    /// @throws RaisedError 7 "Invalid number of phases" from "CPwrSys::Phases".
    void Phases(std::int32_t count);
    [[nodiscard]] std::int32_t Phases() const noexcept { return m_phases; }

    /// Frequency [Hz]; 1 and above.
    /// @throws RaisedError 5 "Invalid system frequency" from "CPwrSys::Freq".
    void Freq(std::int32_t hertz);
    [[nodiscard]] std::int32_t Freq() const noexcept { return m_freq; }

    /// Sets that share the load; 1 to 16.
    /// @throws RaisedError 6 "Invalid number of parallel sets" from "CPwrSys::GensetsInParallel".
    void GensetsInParallel(std::int32_t sets);
    [[nodiscard]] std::int32_t GensetsInParallel() const noexcept { return m_gensetsInParallel; }

    /// Altitude above sea level [m]; -500 to 4572.
    /// @throws RaisedError 3 "Invalid altitude" from "CPwrSys::Altitude".
    void Altitude(double metres);
    [[nodiscard]] double Altitude() const noexcept { return m_altitude; }

    /// Ambient temperature [°C]; -40 to 66.
    /// @throws RaisedError 4 "Invalid ambient temperature" from "CPwrSys::AmbTemp".
    void AmbTemp(double celsius);
    [[nodiscard]] double AmbTemp() const noexcept { return m_ambTemp; }

    /// Fuel code of `kFuels`; any value.
    void Fuel(std::int32_t code) noexcept { m_fuel = code; }
    [[nodiscard]] std::int32_t Fuel() const noexcept { return m_fuel; }

    /// Alternator temperature rise and duty, a code of `kRiseDuties`; any value.
    void RiseDutyCode(std::int32_t code) noexcept { m_riseDutyCode = code; }
    [[nodiscard]] std::int32_t RiseDutyCode() const noexcept { return m_riseDutyCode; }

    /// Line-to-line voltage [V]; any value.
    void Voltage(std::int32_t volts) noexcept { m_voltage = volts; }
    [[nodiscard]] std::int32_t Voltage() const noexcept { return m_voltage; }

    /// Key of the winding connection in the genset database; any value.
    void ConnectCode(std::int32_t code) noexcept { m_connectCode = code; }
    [[nodiscard]] std::int32_t ConnectCode() const noexcept { return m_connectCode; }

    /// Allowed voltage dip [percent]; 5 to 35.
    /// @throws RaisedError 11 "Invalid maximum voltage dip" from "CPwrSys::MaxVoltageDip".
    void MaxVoltageDip(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxVoltageDip() const noexcept { return m_maxVoltageDip; }

    /// Allowed frequency dip [percent]; 5 to 25.
    /// @throws RaisedError 12 "Invalid maximum frequency dip" from "CPwrSys::MaxFreqDip".
    void MaxFreqDip(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxFreqDip() const noexcept { return m_maxFreqDip; }

    /// Whether `MaxFreqDip` is a requirement.
    void MaxFreqDipEnabled(bool enabled) noexcept { m_maxFreqDipEnabled = enabled; }
    [[nodiscard]] bool MaxFreqDipEnabled() const noexcept { return m_maxFreqDipEnabled; }

    /// Allowed voltage distortion, THD [percent]; 5 to 20.
    /// @throws RaisedError 10 "Invalid maximum harmonics" from "CPwrSys::MaxHarmonics".
    void MaxHarmonics(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxHarmonics() const noexcept { return m_maxHarmonics; }

    /// Whether `MaxHarmonics` is a requirement.
    void MaxHarmonicsEnabled(bool enabled) noexcept { m_maxHarmonicsEnabled = enabled; }
    [[nodiscard]] bool MaxHarmonicsEnabled() const noexcept { return m_maxHarmonicsEnabled; }

    /// Every field from the user's defaults, and a fallback where a setter refuses the default. Never fails.
    /// `Phases` becomes 3 whatever the default connection is: it follows the connection at the next store.
    void ResetDefaults();

    /// Whether another record holds the same, and takes its defaults from the same source.
    [[nodiscard]] bool HoldsSame(const CPwrSys& other) const noexcept { return *this == other; }

  private:
    bool operator==(const CPwrSys&) const = default;

    const CDefaults* m_defaults;
    std::int32_t m_phases = 3;
    std::int32_t m_freq = 60;
    std::int32_t m_gensetsInParallel = 1;
    double m_altitude = 0.0;
    double m_ambTemp = 15.0;
    std::int32_t m_fuel = fuel::kDiesel;
    std::int32_t m_riseDutyCode = 3;
    std::int32_t m_voltage = 480;
    std::int32_t m_connectCode = 1;
    std::int32_t m_maxVoltageDip = 20;
    std::int32_t m_maxFreqDip = 20;
    bool m_maxFreqDipEnabled = false;
    std::int32_t m_maxHarmonics = 15;
    bool m_maxHarmonicsEnabled = false;
};

}  // namespace genvara
