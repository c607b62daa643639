#pragma once

#include <optional>
#include <string>
#include <utility>

#include "ImportTable.h"
#include "MotorCalculatorTables.h"

namespace genvara {

/// A site of 480 V whose profile has two steps, "Lights" and "Pumps", and tables that are read for it. A
/// motor of h hp runs at h x 0.8 kW and h kVA there, and starts at 0.4.
struct ImportFixture {
    CDefaults defaults;
    CPwrSys site{defaults};
    CLoadProfile profile;
    EntryRules rules{.motors = {kMotors, kLetters, kMultipliers},
                     .phasesOf = [](std::int32_t) { return std::optional(3); }};
    ImportOptions options;

    explicit ImportFixture(std::int32_t phases = 3) {
        site.Voltage(kVoltage);
        site.Phases(phases);
        profile.AddLoadStep("Lights", 20, 0);
        profile.AddLoadStep("Pumps", 25, 0);
    }

    [[nodiscard]] ImportedTable Read(const std::string& text) const {
        return ReadLoadTable(text, profile, site, rules, options);
    }
    /// The one row of a table with a heading.
    template <typename Kind>
    [[nodiscard]] const Kind& Only(const ImportedTable& table) const {
        return dynamic_cast<const Kind&>(*table.rows.at(0).load);
    }
};

/// The faults as lines.
inline std::vector<std::string> LinesOf(const ImportedTable& table) {
    std::vector<std::string> lines;
    for (const TableFault& fault : table.faults) {
        lines.push_back(FaultLine(fault));
    }
    return lines;
}

}  // namespace genvara
