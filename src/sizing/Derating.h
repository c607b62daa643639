#pragma once

#include <cstdint>

#include "CPwrSys.h"
#include "GensetRecords.h"

namespace genvara {

/// Shares of its rating that a set keeps at the site; they multiply, and nothing bounds them below.
struct DerateFactors {
    double temperature = 1.0;
    double altitude = 1.0;
};

/// The factors of a derate code for a site; exactly 1 up to and at the base.
/// @throws RaisedError 13 from "CDesigner::DeratedRating" for a field that is no number.
[[nodiscard]] DerateFactors FactorsAt(const DerateRow& row, double ambTemp, double altitude);

/// Nominal rating [kW] of a row at a temperature rise and duty code; 0 for a code that has no column.
/// @throws RaisedError 13 from "CDesigner::NominalRating".
[[nodiscard]] double NominalRatingOf(const GensetNumbers& row, std::int32_t riseDutyCode);

/// Rating [kW] of one set at the site.
/// @throws RaisedError 6 from "CDesigner::DeratedRating".
[[nodiscard]] double DeratedRatingOf(double nominal, const DerateFactors& factors);

/// Engine's starting power [kW]; nine tenths of it when the site asks for natural gas, whatever fuel the row
/// itself burns.
/// @throws RaisedError 13 from "CDesigner::EngineStartingPower".
[[nodiscard]] double EngineStartingPowerOf(const GensetNumbers& row, std::int32_t siteFuel);

}  // namespace genvara
