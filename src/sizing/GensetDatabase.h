#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "GensetSource.h"
#include "MotorConversions.h"

namespace SQLite {
class Database;
}

namespace genvara {

/// The genset database: an SQLite file that is only ever read.
///
/// Answers the program's nine queries as typed records. Fields are found by name, so that the order of the
/// columns and further ones do not matter. Failures of the database carry its own number and the source
/// "GensetDatabase".
class GensetDatabase final : public GensetSource {
  public:
    /// @throws RaisedError 53 for a missing file, the system's number for one that may not be read, 0 for one
    /// that
    ///         is no database.
    explicit GensetDatabase(std::filesystem::path file);
    ~GensetDatabase() override;
    GensetDatabase(const GensetDatabase&) = delete;
    GensetDatabase& operator=(const GensetDatabase&) = delete;
    GensetDatabase(GensetDatabase&&) = delete;
    GensetDatabase& operator=(GensetDatabase&&) = delete;

    [[nodiscard]] const std::filesystem::path& File() const noexcept { return m_file; }

    /// Makes sure of the eight tables and the columns that the program reads.
    /// @throws RaisedError 0 with the first table or column that is missing.
    void RequireSchema();

    /// @throws RaisedError 3021 for an empty table.
    [[nodiscard]] PropertiesRecord Properties() override;
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& filter) override;
    [[nodiscard]] std::optional<std::int64_t> RowNumber(const SiteFilter& filter,
                                                        std::int64_t position) override;
    [[nodiscard]] DerateRow DerateCode(std::int32_t id) override;
    [[nodiscard]] AlternatorRow Alternator(std::int32_t id) override;

    /// The winding connections offered to the user, in table order.
    [[nodiscard]] std::vector<ConnectionRecord> Connections();
    /// The line-to-line voltages [V] for which there are sets, as the database gives them.
    [[nodiscard]] std::vector<std::int32_t> VoltagesLL();
    /// Locked-rotor kVA per horsepower by code letter, in table order.
    [[nodiscard]] std::vector<CodeLetterRecord> MotorCodeLetters();
    /// Starting kVA as a multiple of the locked-rotor kVA, by the order of the starting methods.
    [[nodiscard]] std::vector<double> MotorStartingMultipliers();
    /// The motor tables, sorted by horsepower.
    [[nodiscard]] MotorConversions ReadMotorConversions();

  private:
    [[noreturn]] void RaiseNoRow(const std::string& table, std::int32_t id) const;

    std::filesystem::path m_file;
    std::unique_ptr<SQLite::Database> m_database;
};

}  // namespace genvara
