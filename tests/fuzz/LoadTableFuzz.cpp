// Reads arbitrary bytes as a table of loads: what can be added is added, and everything else told.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "ImportTable.h"

namespace {

using namespace genvara;

const MotorConversions kMotors{.MotorHP = {1, 10, 1000},
                               .MotorRunningKW = {0.8, 8, 798},
                               .MotorRunningKVA = {1, 10, 887},
                               .MotorStartPF = {0.4, 0.4, 0.4}};
const std::vector<CodeLetterRecord> kLetters{{"F", 5.3}, {"G", 6},  {"H", 7}, {"J", 8},
                                             {"K", 9},   {"L", 10}, {"M", 11}};
const std::vector<double> kMultipliers{1, 0.64, 0.4225, 0.7, 0.33, 0.33};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CDefaults defaults;
    const CPwrSys site(defaults);
    CLoadProfile profile;
    profile.AddLoadStep("Lights", 20, 0);
    const EntryRules rules{.motors = {kMotors, kLetters, kMultipliers}, .phasesOf = {}};
    const ImportedTable table =
        ReadLoadTable({reinterpret_cast<const char*>(data), size}, profile, site, rules);
    if (!table.CanBeAdded()) {
        if (table.faults.empty()) {
            std::abort();
        }
        return 0;
    }
    AddTable(table, profile);
    for (const ImportedRow& row : table.rows) {
        if (row.step < 1 || row.step > profile.NumLoadSteps() || !row.load) {
            std::abort();
        }
    }
    return 0;
}
