#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

/// The eight tables of the genset database with the columns that the program reads: one place for the
/// reader, the builder and the checker.
namespace genvara {

/// What a column must hold.
enum class ColumnKind : std::uint8_t { Integer, Real, OptionalReal, Text };

struct ColumnSchema {
    const char* name;
    ColumnKind kind;
};

struct TableSchema {
    std::string_view name;
    std::span<const ColumnSchema> columns;
};

namespace schema {
using enum ColumnKind;

inline constexpr std::array<ColumnSchema, 18> kGensets{{{"Frequency", Integer},
                                                        {"WindingConnection", Integer},
                                                        {"VoltageLL", Integer},
                                                        {"Fuel", Integer},
                                                        {"DerateCode", Integer},
                                                        {"AltModel", Integer},
                                                        {"GensetModel", Text},
                                                        {"EngineModel", Text},
                                                        {"Rating80C", Real},
                                                        {"Rating105C", Real},
                                                        {"Rating125C", Real},
                                                        {"Rating130C", Real},
                                                        {"Rating150C", Real},
                                                        {"LRkVA", Real},
                                                        {"StartingPower", Real},
                                                        {"BaseFreqDipKW", OptionalReal},
                                                        {"BaseFreqDip", OptionalReal},
                                                        {"ExpC", OptionalReal}}};
inline constexpr std::array<ColumnSchema, 5> kDerateCodes{{{"ID", Integer},
                                                           {"AltDerateBase", Real},
                                                           {"AltDerateSlope", Real},
                                                           {"TempDerateBase", Real},
                                                           {"TempDerateSlope", Real}}};
inline constexpr std::array<ColumnSchema, 5> kAlternators{
    {{"ID", Integer}, {"ModelNum", Text}, {"BasekW", Real}, {"BaseVolts", Real}, {"SubtransReact", Real}}};
inline constexpr std::array<ColumnSchema, 4> kProperties{
    {{"ID", Integer}, {"Version", Text}, {"Date", Text}, {"Initials", Text}}};
inline constexpr std::array<ColumnSchema, 3> kConnections{
    {{"ID", Integer}, {"Connection Type", Text}, {"Phases", Integer}}};
inline constexpr std::array<ColumnSchema, 2> kMotorCodeLetters{{{"CodeLetter", Text}, {"LRkVAPerHP", Real}}};
inline constexpr std::array<ColumnSchema, 1> kMotorStartingMultiplier{{{"Multiplier", Real}}};
inline constexpr std::array<ColumnSchema, 4> kMotorPowerConversions{
    {{"HP", Real}, {"RunningKW", Real}, {"RunningKVA", Real}, {"SPF", Real}}};
}  // namespace schema

inline constexpr std::array<TableSchema, 8> kGensetSchema{
    {{"Gensets", schema::kGensets},
     {"Derate Codes", schema::kDerateCodes},
     {"Alternators", schema::kAlternators},
     {"Properties", schema::kProperties},
     {"Connections", schema::kConnections},
     {"Motor Code Letters", schema::kMotorCodeLetters},
     {"Motor Starting Multiplier", schema::kMotorStartingMultiplier},
     {"Motor Power Conversions", schema::kMotorPowerConversions}}};

}  // namespace genvara
