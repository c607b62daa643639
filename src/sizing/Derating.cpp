#include "Derating.h"

#include <cstddef>

#include "LanguageErrors.h"

namespace genvara {
namespace {

constexpr double kDegreesPerSlope = 10.0;  // °C that a temperature slope counts for
constexpr double kMetresPerSlope = 100.0;  // m that an altitude slope counts for
constexpr double kNaturalGasStartingShare = 0.9;

double FactorAbove(double site, double base, double slope) {
    return site > base ? (100.0 - (site - base) * slope) / 100.0 : 1.0;
}

}  // namespace

DerateFactors FactorsAt(const DerateRow& row, double ambTemp, double altitude) {
    constexpr std::string_view kMember = "CDesigner::DeratedRating";
    const double altitudeBase = row.AltDerateBase.Real(kMember);
    const double altitudeSlope = row.AltDerateSlope.Real(kMember) / kMetresPerSlope;
    const double temperatureBase = row.TempDerateBase.Real(kMember);
    const double temperatureSlope = row.TempDerateSlope.Real(kMember) / kDegreesPerSlope;
    return {.temperature = FactorAbove(ambTemp, temperatureBase, temperatureSlope),
            .altitude = FactorAbove(altitude, altitudeBase, altitudeSlope)};
}

double NominalRatingOf(const GensetNumbers& row, std::int32_t riseDutyCode) {
    if (riseDutyCode < 0 || riseDutyCode >= static_cast<std::int32_t>(row.Ratings.size())) {
        return 0.0;
    }
    return row.Ratings[static_cast<std::size_t>(riseDutyCode)].Real("CDesigner::NominalRating");
}

double DeratedRatingOf(double nominal, const DerateFactors& factors) {
    return Finite(factors.temperature * nominal * factors.altitude, "CDesigner::DeratedRating");
}

double EngineStartingPowerOf(const GensetNumbers& row, std::int32_t siteFuel) {
    const double power = row.StartingPower.Real("CDesigner::EngineStartingPower");
    return siteFuel == fuel::kNaturalGas ? power * kNaturalGasStartingShare : power;
}

}  // namespace genvara
