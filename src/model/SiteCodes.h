#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <numbers>
#include <string_view>

/// What the codes of a site mean, a row a code: what the engine models, the panel offers, and reports and
/// exports print comes from the same row.
namespace genvara {

/// Codes of the fuels.
namespace fuel {
inline constexpr std::int32_t kAny = 0;
inline constexpr std::int32_t kDiesel = 1;
inline constexpr std::int32_t kNaturalGas = 2;
inline constexpr std::int32_t kLP = 3;
inline constexpr std::int32_t kGasoline = 4;
}  // namespace fuel

/// How the alternator's reactance becomes the source impedance of the distortion model.
enum class DistortionModel : std::uint8_t {
    None,          ///< no distortion figures
    ScaledToSite,  ///< scaled from the alternator's voltage to the site's
    FixedScaling,  ///< a winding wound for 208 V that delivers 240 V, whatever the voltages are
};

/// What a winding connection means beside its row in the catalogue, which tells its caption and phases.
struct ConnectionTreatment {
    std::int32_t code;  ///< `ID` of the catalogue's row
    DistortionModel distortion;
    bool offersHarmonicLimit;         ///< whether the panel lets a limit be set
    double neutralDivisor;            ///< line-to-line over line-to-neutral volts
    std::string_view exportedPhases;  ///< number of phases in a spec export
};

inline constexpr std::array<ConnectionTreatment, 4> kConnectionTreatments{{
    {1, DistortionModel::ScaledToSite, true, std::numbers::sqrt3, "3"},  // wye, 4 wires
    {2, DistortionModel::FixedScaling, true, 2.0, "3"},                  // delta, 120/240 V
    {3, DistortionModel::None, false, 2.0, "1"},                         // one phase, 3 wires
    {6, DistortionModel::None, false, 2.0, "1"},                         // one phase, 2 wires
}};

/// Of every other connection.
inline constexpr ConnectionTreatment kOtherConnection{0, DistortionModel::None, true, 2.0, "1"};

[[nodiscard]] constexpr const ConnectionTreatment& TreatmentOf(std::int32_t connectCode) noexcept {
    const auto* const found =
        std::ranges::find(kConnectionTreatments, connectCode, &ConnectionTreatment::code);
    return found != kConnectionTreatments.end() ? *found : kOtherConnection;
}

/// Whether distortion is worked out for a connection.
[[nodiscard]] constexpr bool HasDistortionModel(std::int32_t connectCode) noexcept {
    return TreatmentOf(connectCode).distortion != DistortionModel::None;
}

/// What is said beside a harmonic limit that nothing can be held against.
inline constexpr std::string_view kNoDistortionFigures = "no distortion figures for this connection";

/// A frequency for which catalogues have sets.
struct FrequencyRow {
    std::int32_t code;  ///< the frequency itself [Hz]
};

/// In the order in which they are offered.
inline constexpr std::array<FrequencyRow, 2> kFrequencies{{{60}, {50}}};

/// A fuel.
struct FuelRow {
    std::int32_t code;
    std::int32_t caption;  ///< id in the string table
};

inline constexpr std::array<FuelRow, 5> kFuels{{{fuel::kAny, 149},
                                                {fuel::kDiesel, 145},
                                                {fuel::kNaturalGas, 146},
                                                {fuel::kLP, 147},
                                                {fuel::kGasoline, 148}}};

/// A temperature rise and duty of alternators.
struct RiseDutyRow {
    std::int32_t code;
    std::int32_t caption;  ///< id in the string table
    std::int32_t degrees;  ///< allowed rise [°C], as reports and exports print it
};

/// From the coolest to the hottest.
inline constexpr std::array<RiseDutyRow, 5> kRiseDuties{
    {{0, 520, 80}, {1, 521, 105}, {2, 522, 125}, {3, 523, 130}, {4, 524, 150}}};

/// The row of a code; null for a code of none.
template <typename Table>
[[nodiscard]] constexpr auto FindRow(const Table& table, std::int32_t code) noexcept {
    const auto found = std::ranges::find_if(table, [code](const auto& row) { return row.code == code; });
    return found != std::ranges::end(table) ? &*found : nullptr;
}

}  // namespace genvara
