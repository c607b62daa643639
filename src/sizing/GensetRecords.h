#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "DbValue.h"

namespace genvara {

/// What of the site decides which rows of [Gensets] are candidates.
struct SiteFilter {
    std::int32_t frequency = 0;    ///< Hz
    std::int32_t connectCode = 0;  ///< `ID` of a row of Connections
    std::int32_t voltage = 0;      ///< line-to-line volts
    std::int32_t fuel = 0;         ///< fuel code; 0 leaves the fuel free

    auto operator<=>(const SiteFilter&) const = default;  // NOLINT(modernize-use-nullptr): none is meant
};

/// The numbers of a row of [Gensets].
struct GensetNumbers {
    DbNumber Fuel;                    ///< fuel code 1 to 4
    DbNumber DerateCode;              ///< key of [Derate Codes]
    DbNumber AltModel;                ///< key of [Alternators]
    std::array<DbNumber, 5> Ratings;  ///< kW at rise and duty code 0 to 4
    DbNumber LRkVA;                   ///< locked-rotor kVA started at a voltage dip of 35 percent
    DbNumber StartingPower;           ///< engine's largest starting power [kW]
    DbNumber BaseFreqDipKW;  ///< load step [kW] that dips the frequency by `BaseFreqDip`; one-step capability
    DbNumber BaseFreqDip;    ///< percent
    DbNumber ExpC;           ///< exponent of the frequency dip curve
};

/// The texts of a row of [Gensets].
struct GensetTexts {
    DbText GensetModel;  ///< model number that the user sees
    DbText EngineModel;  ///< engine's model number
};

/// A row of [Gensets].
struct GensetRow : GensetNumbers, GensetTexts {};

/// A row of [Derate Codes].
struct DerateRow {
    DbNumber AltDerateBase;    ///< altitude up to which nothing is lost [m]
    DbNumber AltDerateSlope;   ///< percent per 100 m above it
    DbNumber TempDerateBase;   ///< ambient temperature up to which nothing is lost [°C]
    DbNumber TempDerateSlope;  ///< percent per 10 °C above it
};

/// A row of [Alternators].
struct AlternatorRow {
    DbNumber ID;
    DbText ModelNum;
    DbNumber BasekW;         ///< power base of the subtransient reactance [kW]
    DbNumber BaseVolts;      ///< voltage base of the subtransient reactance [V]
    DbNumber SubtransReact;  ///< subtransient reactance on that base, per unit
};

/// The last row of [Properties].
struct PropertiesRecord {
    std::int32_t ID = 0;
    std::string Version;
    std::string Date;
    std::string Initials;
};

/// A row of Connections.
struct ConnectionRecord {
    std::int32_t ID = 0;
    std::string caption;
    std::int32_t phases = 0;
};

}  // namespace genvara
