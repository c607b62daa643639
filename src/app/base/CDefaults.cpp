#include "CDefaults.h"

#include <utility>

#include "RangeCheck.h"
#include "SiteLimits.h"

namespace genvara {

using namespace site_limits;

void CDefaults::UserName(std::string text) {
    m_values.userName = std::move(text);
}

void CDefaults::CustomerName(std::string text) {
    m_values.customerName = std::move(text);
}

void CDefaults::VoltageLL(std::int32_t volts) {
    RequireRange(volts, 0, kNoUpperLimit, {9, "Invalid line-to-line voltage.", "CDefaults::VoltageLL"});
    m_values.voltageLL = volts;
}

void CDefaults::Freq(std::int32_t hertz) {
    RequireRange(hertz, kLowestFreq, kNoUpperLimit, {5, "Invalid frequency", "CDefaults::Freq"});
    m_values.freq = hertz;
}

void CDefaults::NumParallelSets(std::int32_t sets) {
    // The source names the site's member of the same meaning.
    RequireRange(sets, 1, kMostGensets,
                 {6, "Invalid number of parallel sets", "CDefaults::GensetsInParallel"});
    m_values.numParallelSets = sets;
}

void CDefaults::Altitude(double metres) {
    RequireRange(metres, kLowestAltitude, kHighestAltitude, {3, "Invalid altitude", "CDefaults::Altitude"});
    m_values.altitude = metres;
}

void CDefaults::AmbTemp(double celsius) {
    RequireRange(celsius, kLowestAmbTemp, kHighestAmbTemp,
                 {4, "Invalid ambient temperature", "CDefaults::AmbTemp"});
    m_values.ambTemp = celsius;
}

void CDefaults::MaxVoltageDip(std::int32_t percent) {
    RequireRange(percent, kLowestLimit, kHighestVoltageDip,
                 {11, "Invalid maximum voltage dip", "CDefaults::MaxVoltageDip"});
    m_values.maxVoltageDip = percent;
}

void CDefaults::MaxFreqDip(std::int32_t percent) {
    RequireRange(percent, kLowestLimit, kHighestFreqDip,
                 {12, "Invalid maximum frequency dip", "CDefaults::MaxFreqDip"});
    m_values.maxFreqDip = percent;
}

void CDefaults::MaxHarmonics(std::int32_t percent) {
    RequireRange(percent, kLowestLimit, kHighestHarmonics,
                 {10, "Invalid maximum harmonics", "CDefaults::MaxHarmonics"});
    m_values.maxHarmonics = percent;
}

}  // namespace genvara
