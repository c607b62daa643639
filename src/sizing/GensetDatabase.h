#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "GensetSource.h"
#include "MotorConversions.h"

struct sqlite3;

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
    /// Begins a run: what it asks for by key is read afresh.
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& filter) override;
    [[nodiscard]] std::optional<std::int64_t> RowNumber(const SiteFilter& filter,
                                                        std::int64_t position) override;
    [[nodiscard]] DerateRow DerateCode(std::int32_t id) override;
    [[nodiscard]] AlternatorRow Alternator(std::int32_t id) override;

    /// Whether any row of [Gensets] is of a model.
    [[nodiscard]] bool HasModel(const std::string& model);

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
    /// Rows of a table that a run asks for one after the other by key; read at the first question of a run.
    template <typename Row>
    struct KeptRows {
        std::optional<std::unordered_map<std::int32_t, Row>> byKey;

        void Forget() noexcept { byKey.reset(); }
    };

    [[nodiscard]] sqlite3* Connection() const noexcept;
    template <typename Columns, typename Row>
    [[nodiscard]] Row RowOf(std::string_view table, std::int32_t id, KeptRows<Row>& kept);

    std::filesystem::path m_file;
    std::unique_ptr<SQLite::Database> m_database;
    std::mutex m_keyMutex;
    KeptRows<DerateRow> m_derateCodes;
    KeptRows<AlternatorRow> m_alternators;
};

}  // namespace genvara
