#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "EntryNumbers.h"
#include "Load.h"
#include "MemberChange.h"
#include "RowReader.h"
#include "TableSteps.h"

/// A table of loads, as spreadsheets hold them, becomes loads of a project.
namespace genvara {

/// What a load counts for, all its units together.
struct ImportedFigures {
    double runningKW = 0.0;
    double runningKVA = 0.0;
    double startingKW = 0.0;
    double startingKVA = 0.0;
};

/// A row of a table, and what it becomes.
struct ImportedRow {
    std::int32_t number = 0;  ///< as a spreadsheet counts
    std::vector<std::string> cells;
    std::int32_t step = 0;               ///< position from 1; 0 for a bad one
    std::string stepDescription{};       ///< of that step
    std::string kind{};                  ///< as the list of kinds has it; empty for a bad one
    std::shared_ptr<const Load> load{};  ///< null for a bad row
    std::optional<ImportedFigures> figures{};
};

/// What a table is read with besides the project.
struct ImportOptions {
    std::int32_t stepAtHand = 0;         ///< of the first row, if it tells none; 0 for the last step
    std::optional<char> usualDecimal{};  ///< of the user, for tables that do not tell theirs
    EntryNumbers shown{NumberSigns{}};   ///< how sentences show numbers
};

/// A table of loads, read, checked and not yet part of a project.
struct ImportedTable {
    std::vector<TableColumn> columns;
    std::vector<ImportedRow> rows;
    std::vector<NewStep> newSteps;   ///< behind the project's last one
    std::vector<TableFault> faults;  ///< by rows, then columns; the first thousand
    std::vector<std::string> notes;  ///< sentences on what is passed over

    /// Whether all of it can become part of the project.
    [[nodiscard]] bool CanBeAdded() const noexcept { return faults.empty() && !rows.empty(); }
};

/// Reads a table with a heading row (see `ReadTableText` and `MeaningOf`), and makes a load of each row as
/// its entry form would (see `MakeTableLoad`), in the step that it names (see `TableSteps`).
///
/// Nothing is passed over in silence: a column that means nothing is told, and a cell that its row's kind has
/// nothing for is a fault.
[[nodiscard]] ImportedTable ReadLoadTable(std::string_view bytes, const CLoadProfile& profile,
                                          const CPwrSys& site, const EntryRules& rules,
                                          const ImportOptions& options = {});

/// Adds the steps and loads of a table that can be added to the profile that it was read for.
void AddTable(const ImportedTable& table, CLoadProfile& profile);

/// "Import 12 Loads".
[[nodiscard]] std::string ImportName(const ImportedTable& table);

/// What a table comes to, in one sentence: how many loads and new steps, or how much is wrong.
[[nodiscard]] std::string ImportSummary(const ImportedTable& table);

/// A fault in one line with its place: "Row 5, HP: ...".
[[nodiscard]] std::string FaultLine(const TableFault& fault);

}  // namespace genvara
