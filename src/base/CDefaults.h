#pragma once

#include <cstdint>
#include <string>

#include "clsTRX_Registry.h"

namespace genvara {

/// The values that a new project starts from: user, customer and the requirements of the site.
///
/// A new instance holds the factory defaults. Setters check their ranges; what comes from the settings
/// store is taken as it stands. Units are metric, whatever the display units are.
class CDefaults {
  public:
    [[nodiscard]] const std::string& UserName() const noexcept { return m_values.userName; }
    void UserName(std::string text);

    [[nodiscard]] const std::string& CustomerName() const noexcept { return m_values.customerName; }
    void CustomerName(std::string text);

    /// Line-to-line voltage [V]; 0 or more, default 480.
    /// @throws RaisedError 9 "Invalid line-to-line voltage." from "CDefaults::VoltageLL".
    void VoltageLL(std::int32_t volts);
    [[nodiscard]] std::int32_t VoltageLL() const noexcept { return m_values.voltageLL; }

    /// Code of the winding connection; any, default 1.
    void ConnectCode(std::int32_t code) noexcept { m_values.connectCode = code; }
    [[nodiscard]] std::int32_t ConnectCode() const noexcept { return m_values.connectCode; }

    /// Frequency [Hz]; 1 or more, default 60.
    /// @throws RaisedError 5 "Invalid frequency" from "CDefaults::Freq".
    void Freq(std::int32_t hertz);
    [[nodiscard]] std::int32_t Freq() const noexcept { return m_values.freq; }

    /// Fuel code: 0 any, 1 diesel, 2 natural gas, 3 L.P., 4 gasoline; any value, default 1.
    void Fuel(std::int32_t code) noexcept { m_values.fuel = code; }
    [[nodiscard]] std::int32_t Fuel() const noexcept { return m_values.fuel; }

    /// Temperature rise and duty code 0 to 4; any value, default 3, 130 °C standby.
    void Duty(std::int32_t code) noexcept { m_values.duty = code; }
    [[nodiscard]] std::int32_t Duty() const noexcept { return m_values.duty; }

    /// Sets in parallel; 1 to 16, default 1.
    /// @throws RaisedError 6 "Invalid number of parallel sets" from "CDefaults::GensetsInParallel".
    void NumParallelSets(std::int32_t sets);
    [[nodiscard]] std::int32_t NumParallelSets() const noexcept { return m_values.numParallelSets; }

    /// Altitude above sea level [m]; -500 to 4572, default 152.4 (500 ft).
    /// @throws RaisedError 3 "Invalid altitude" from "CDefaults::Altitude".
    void Altitude(double metres);
    [[nodiscard]] double Altitude() const noexcept { return m_values.altitude; }

    /// Ambient temperature [°C]; -40 to 66, default 21.1111111111 (70 °F).
    /// @throws RaisedError 4 "Invalid ambient temperature" from "CDefaults::AmbTemp".
    void AmbTemp(double celsius);
    [[nodiscard]] double AmbTemp() const noexcept { return m_values.ambTemp; }

    /// Allowed voltage dip [percent]; 5 to 35, default 20.
    /// @throws RaisedError 11 "Invalid maximum voltage dip" from "CDefaults::MaxVoltageDip".
    void MaxVoltageDip(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxVoltageDip() const noexcept { return m_values.maxVoltageDip; }

    /// Allowed frequency dip [percent]; 5 to 25, default 20.
    /// @throws RaisedError 12 "Invalid maximum frequency dip" from "CDefaults::MaxFreqDip".
    void MaxFreqDip(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxFreqDip() const noexcept { return m_values.maxFreqDip; }

    /// Allowed voltage distortion [percent]; 5 to 20, default 15.
    /// @throws RaisedError 10 "Invalid maximum harmonics" from "CDefaults::MaxHarmonics".
    void MaxHarmonics(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxHarmonics() const noexcept { return m_values.maxHarmonics; }

    /// Writes all thirteen values under the key. Never fails: a store that cannot be written keeps what it
    /// had.
    void SaveDefaults(clsTRX_Registry& registry, const std::string& subkey) const;

    /// Replaces the values by those of the key, as they stand there.
    /// @throws RaisedError 3 "Error reading defaults from system registry." from "CDefaults::ReadDefaults" if
    ///         the key or any of its values is missing; all values are then the factory's.
    void ReadDefaults(clsTRX_Registry& registry, const std::string& subkey);

  private:
    void SetFactoryDefaults() { m_values = Values{}; }

    /// The thirteen values with their factory defaults.
    struct Values {
        std::string userName;
        std::string customerName;
        std::int32_t voltageLL = 480;
        std::int32_t connectCode = 1;
        std::int32_t freq = 60;
        std::int32_t fuel = 1;
        std::int32_t duty = 3;
        std::int32_t numParallelSets = 1;
        double altitude = 152.4;
        double ambTemp = 21.1111111111;
        std::int32_t maxVoltageDip = 20;
        std::int32_t maxFreqDip = 20;
        std::int32_t maxHarmonics = 15;
    };

    Values m_values;
};

}  // namespace genvara
