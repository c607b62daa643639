#include "CDefaults.h"

#include <optional>
#include <utility>
#include <variant>

#include "FailureRegion.h"
#include "LanguageErrors.h"
#include "NumberText.h"
#include "RangeCheck.h"
#include "SiteLimits.h"

namespace genvara {

using namespace site_limits;

namespace {

constexpr const char* kSaveSource = "CDefaults::SaveDefaults";
constexpr const char* kReadSource = "CDefaults::ReadDefaults";

std::string TextValue(const clsTRX_Registry& registry, const char* name) {
    return std::get<std::string>(registry.Value(name, registry_type::REG_SZ));
}

std::int32_t IntegerValue(const clsTRX_Registry& registry, const char* name) {
    return std::get<std::int32_t>(registry.Value(name, registry_type::REG_DWORD));
}

/// A double that travels as text.
double RealValue(const clsTRX_Registry& registry, const char* name) {
    const std::optional<double> number = ParseNumber(TextValue(registry, name));
    if (!number) {
        RaiseTypeMismatch(kReadSource);
    }
    return *number;
}

}  // namespace

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
    RequireRange(sets, kFewestGensets, kMostGensets,
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

void CDefaults::SaveDefaults(clsTRX_Registry& registry, const std::string& subkey) const {
    FailureRegion region;
    const auto write = [&](const char* name, std::int32_t type, const clsTRX_Registry::Variant& value) {
        region.Run([&] { registry.Value(name, type, value); });
    };
    const auto raiseIfPending = [&region](std::int32_t number, const char* description) {
        // Raised within the region, and so kept there: no caller ever sees it.
        if (region.Pending()) {
            region.Run([&] { throw RaisedError(number, kSaveSource, description); });
        }
    };
    registry.SubKey(subkey);
    registry.AutoCreate(true);
    region.Run([&] { registry.OpenKey(); });
    raiseIfPending(1, "Error opening system registry. No values saved.");
    write("UserName", registry_type::REG_SZ, m_values.userName);
    write("CustomerName", registry_type::REG_SZ, m_values.customerName);
    write("Voltage", registry_type::REG_DWORD, m_values.voltageLL);
    write("Connection", registry_type::REG_DWORD, m_values.connectCode);
    write("Freq", registry_type::REG_DWORD, m_values.freq);
    write("Fuel", registry_type::REG_DWORD, m_values.fuel);
    write("Duty", registry_type::REG_DWORD, m_values.duty);
    write("NumSets", registry_type::REG_DWORD, m_values.numParallelSets);
    write("Altitude", registry_type::REG_SZ, RenderShortest(m_values.altitude));
    write("AmbTemp", registry_type::REG_SZ, RenderShortest(m_values.ambTemp));
    write("MaxVoltDip", registry_type::REG_DWORD, m_values.maxVoltageDip);
    write("MaxFreqDip", registry_type::REG_DWORD, m_values.maxFreqDip);
    write("MaxHarm", registry_type::REG_DWORD, m_values.maxHarmonics);
    raiseIfPending(2, "Error while saving default(s) to system registry.");
    registry.CloseKey();
}

void CDefaults::ReadDefaults(clsTRX_Registry& registry, const std::string& subkey) {
    try {
        registry.AutoCreate(false);
        registry.SubKey(subkey);
        registry.OpenKey();
        m_values.userName = TextValue(registry, "UserName");
        m_values.customerName = TextValue(registry, "CustomerName");
        m_values.voltageLL = IntegerValue(registry, "Voltage");
        m_values.connectCode = IntegerValue(registry, "Connection");
        m_values.freq = IntegerValue(registry, "Freq");
        m_values.fuel = IntegerValue(registry, "Fuel");
        m_values.duty = IntegerValue(registry, "Duty");
        m_values.numParallelSets = IntegerValue(registry, "NumSets");
        m_values.altitude = RealValue(registry, "Altitude");
        m_values.ambTemp = RealValue(registry, "AmbTemp");
        m_values.maxVoltageDip = IntegerValue(registry, "MaxVoltDip");
        m_values.maxFreqDip = IntegerValue(registry, "MaxFreqDip");
        m_values.maxHarmonics = IntegerValue(registry, "MaxHarm");
        registry.CloseKey();
    } catch (const RaisedError&) {
        SetFactoryDefaults();
        throw RaisedError(3, kReadSource, "Error reading defaults from system registry.");
    }
}

}  // namespace genvara
