#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "RaisedError.h"
#include "SetAtFault.h"

namespace genvara {

/// What brought about the failure of a run: a load, the loads of a step together, or a row of the catalogue.
struct RunCulprit {
    std::int32_t step = 0;          ///< position of the load step, from 1; 0 where the catalogue is to blame
    std::int32_t load = 0;          ///< position in the step, from 1; 0 where its loads together are
    std::string loadName;           ///< as the user named it
    std::string members{};          ///< those of the load that hold what nobody can enter, in plain words
    std::optional<SetAtFault> set;  ///< the row of the catalogue

    bool operator==(const RunCulprit&) const = default;
};

/// Finds what brought about an error: the first load or step that raises it when it is asked the same again,
/// the first load whose negative power no set can be tried with, or else the set that the run stopped at.
///
/// @param error what `CDesigner::ChooseSets`, or a report on the same profile, raised.
/// @param set `CDesigner::StoppedAt` of that run.
/// @return nothing where none of these is to blame, as for a database that cannot be read or lacks a table.
[[nodiscard]] std::optional<RunCulprit> FindCulprit(const RaisedError& error, const CLoadProfile& profile,
                                                    const CPwrSys& site,
                                                    const std::optional<SetAtFault>& set = {});

/// As in: load 2 of step 1, "Pump"; the starting power factor of load 2 of step 1, "Pump"; the loads of step
/// 3 together; the set MV200D with the alternator TN315A-12A, row 7 of [Gensets].
[[nodiscard]] std::string CulpritText(const RunCulprit& culprit);

}  // namespace genvara
