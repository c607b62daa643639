#include "CPwrSys.h"

#include <string>

#include "DisplayCount.h"
#include "FailureRegion.h"
#include "RangeCheck.h"
#include "SiteLimits.h"

namespace genvara {

using namespace site_limits;

CPwrSys::CPwrSys(const CDefaults& defaults) : m_defaults(&defaults) {
    ResetDefaults();
}

void CPwrSys::Display(PwrSysDisplay& panel, bool metricUnits) const {
    DisplayCount count;
    count.Show([&] { panel.MetricUnits(metricUnits); });
    count.Show([&] { panel.Altitude(m_altitude); });
    count.Show([&] { panel.AmbTemp(m_ambTemp); });
    count.Show([&] { panel.ConnectionCode(m_connectCode); });
    count.Show([&] { panel.Freq(m_freq); });
    count.Show([&] { panel.Fuel(m_fuel); });
    count.Show([&] { panel.GensetsInParallel(m_gensetsInParallel); });
    count.Show([&] { panel.MaxFreqDip(m_maxFreqDip); });
    count.Show([&] { panel.MaxFreqDipEnabled(m_maxFreqDipEnabled); });
    count.Show([&] { panel.MaxHarmonics(m_maxHarmonics); });
    count.Show([&] { panel.MaxHarmonicsEnabled(m_maxHarmonicsEnabled); });
    count.Show([&] { panel.MaxVoltageDip(m_maxVoltageDip); });
    count.Show([&] { panel.RiseDuty(m_riseDutyCode); });
    count.Show([&] { panel.Voltage(m_voltage); });
    count.RaiseIfAny(" error(s) occured while displaying power system data", "CPwrSys::Display");
}

void CPwrSys::Phases(std::int32_t count) {
    if (count != 1 && count != 3) {
        throw RaisedError(7, "CPwrSys::Phases", "Invalid number of phases");
    }
    m_phases = count;
}

void CPwrSys::Freq(std::int32_t hertz) {
    RequireRange(hertz, kLowestFreq, kNoUpperLimit, {5, "Invalid system frequency", "CPwrSys::Freq"});
    m_freq = hertz;
}

void CPwrSys::GensetsInParallel(std::int32_t sets) {
    RequireRange(sets, kFewestGensets, kMostGensets,
                 {6, "Invalid number of parallel sets", "CPwrSys::GensetsInParallel"});
    m_gensetsInParallel = sets;
}

void CPwrSys::Altitude(double metres) {
    RequireRange(metres, kLowestAltitude, kHighestAltitude, {3, "Invalid altitude", "CPwrSys::Altitude"});
    m_altitude = metres;
}

void CPwrSys::AmbTemp(double celsius) {
    RequireRange(celsius, kLowestAmbTemp, kHighestAmbTemp,
                 {4, "Invalid ambient temperature", "CPwrSys::AmbTemp"});
    m_ambTemp = celsius;
}

void CPwrSys::MaxVoltageDip(std::int32_t percent) {
    RequireRange(percent, kLowestLimit, kHighestVoltageDip,
                 {11, "Invalid maximum voltage dip", "CPwrSys::MaxVoltageDip"});
    m_maxVoltageDip = percent;
}

void CPwrSys::MaxFreqDip(std::int32_t percent) {
    RequireRange(percent, kLowestLimit, kHighestFreqDip,
                 {12, "Invalid maximum frequency dip", "CPwrSys::MaxFreqDip"});
    m_maxFreqDip = percent;
}

void CPwrSys::MaxHarmonics(std::int32_t percent) {
    RequireRange(percent, kLowestLimit, kHighestHarmonics,
                 {10, "Invalid maximum harmonics", "CPwrSys::MaxHarmonics"});
    m_maxHarmonics = percent;
}

void CPwrSys::ResetDefaults() {
    // The fallbacks are stored past the setters; they are no defaults of the user.
    FailureRegion region;
    const auto take = [&region](auto&& setter, auto& field, auto fallback) {
        region.Run(setter);
        if (region.Pending()) {
            field = fallback;
            region.Clear();
        }
    };
    const CDefaults& from = *m_defaults;
    Phases(3);
    take([&] { Voltage(from.VoltageLL()); }, m_voltage, 480);
    take([&] { ConnectCode(from.ConnectCode()); }, m_connectCode, 1);
    take([&] { Freq(from.Freq()); }, m_freq, 60);
    take([&] { GensetsInParallel(from.NumParallelSets()); }, m_gensetsInParallel, 1);
    take([&] { Altitude(from.Altitude()); }, m_altitude, 0.0);
    take([&] { AmbTemp(from.AmbTemp()); }, m_ambTemp, 15.0);
    take([&] { Fuel(from.Fuel()); }, m_fuel, fuel::kDiesel);
    take([&] { RiseDutyCode(from.Duty()); }, m_riseDutyCode, 3);
    m_maxFreqDipEnabled = false;
    m_maxHarmonicsEnabled = false;
    take([&] { MaxVoltageDip(from.MaxVoltageDip()); }, m_maxVoltageDip, 20);
    take([&] { MaxFreqDip(from.MaxFreqDip()); }, m_maxFreqDip, 20);
    take([&] { MaxHarmonics(from.MaxHarmonics()); }, m_maxHarmonics, 15);
}

}  // namespace genvara
