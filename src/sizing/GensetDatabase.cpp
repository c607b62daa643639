#include "GensetDatabase.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <numeric>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "AtomicFile.h"
#include "GensetColumns.h"
#include "GensetSchema.h"
#include "NumberText.h"
#include "RaisedError.h"
#include "SqlRows.h"

namespace genvara {
namespace {

constexpr const char* kSource = kDatabaseSource;
/// Rows of a table with keys that are read at once: more than a maker has of either.
constexpr std::size_t kMostKeptRows = 1000;

/// Runs a stretch of database work and turns the library's failures into the program's.
template <typename Work>
auto Guarded(Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const SQLite::Exception& failure) {
        throw RaisedError(failure.getErrorCode(), kSource, failure.what());
    }
}

class DatabaseCursor final : public GensetCursor {
  public:
    DatabaseCursor(sqlite3* connection, const std::string& query)
        : m_rows(connection, query), m_columns(m_rows) {}

    const GensetRow* Next() override {
        if (!m_rows.Next()) {
            return nullptr;
        }
        m_columns.Read(m_rows, m_row);
        return &m_row;
    }

  private:
    SqlRows m_rows;
    GensetColumns m_columns;
    GensetRow m_row;
};

/// The first row of each key, of no more rows than are kept. A key is an integer that is stored as a number:
/// that alone equals the number of a query whatever type the column has.
template <typename Row, typename Columns>
std::unordered_map<std::int32_t, Row> RowsByKey(sqlite3* connection, const std::string& query) {
    SqlRows rows(connection, query);
    const Columns columns(rows);
    const int key = rows.Column("ID");
    std::unordered_map<std::int32_t, Row> byKey;
    for (std::size_t count = 0; count < kMostKeptRows && rows.Next(); ++count) {
        if (const std::optional<std::int32_t> id = rows.StoredInteger(key)) {
            byKey.try_emplace(*id, columns.Read(rows));
        }
    }
    return byKey;
}

std::string GensetQuery(const SiteFilter& filter) {
    std::string query = fmt::format(
        "Select * from [Gensets] where Frequency = {} AND WindingConnection = {} AND VoltageLL = {}",
        filter.frequency, filter.connectCode, filter.voltage);
    if (filter.fuel != 0) {
        query += fmt::format(" AND Fuel = {}", filter.fuel);
    }
    return query;
}

/// Rearranges a table by the order of another one.
std::vector<double> Permuted(const std::vector<double>& values, const std::vector<std::size_t>& order) {
    std::vector<double> permuted;
    permuted.reserve(values.size());
    for (const std::size_t index : order) {
        permuted.push_back(values[index]);
    }
    return permuted;
}

void SortByHorsepower(MotorConversions& tables) {
    std::vector<std::size_t> order(tables.MotorHP.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&tables](std::size_t index) { return tables.MotorHP[index]; });
    for (auto* table :
         {&tables.MotorRunningKW, &tables.MotorRunningKVA, &tables.MotorStartPF, &tables.MotorHP}) {
        *table = Permuted(*table, order);
    }
}

}  // namespace

GensetDatabase::GensetDatabase(std::filesystem::path file) : m_file(std::move(file)) {
    std::error_code failure;
    const auto status = std::filesystem::status(m_file, failure);
    if (!std::filesystem::exists(status)) {
        RaiseSystemError(failure ? failure.value() : ENOENT, kSource,
                         fmt::format("The genset database {} is not there.", m_file.string()));
    }
    if (std::filesystem::is_directory(status)) {
        RaiseSystemError(EISDIR, kSource,
                         fmt::format("The genset database {} is a folder.", m_file.string()));
    }
    if (access(m_file.c_str(), R_OK) != 0) {
        const int denied = errno;
        RaiseSystemError(denied, kSource,
                         fmt::format("The genset database {} cannot be read: {}.", m_file.string(),
                                     std::generic_category().message(denied)));
    }
    try {
        m_database = std::make_unique<SQLite::Database>(m_file.string(), SQLite::OPEN_READONLY);
        // The file is opened at the first question only; a file of another kind shows here.
        (void)m_database->execAndGet("Select count(*) from sqlite_master").getInt();
    } catch (const SQLite::Exception& cause) {
        throw RaisedError(
            0, kSource,
            fmt::format("The genset database {} cannot be read: {}.", m_file.string(), cause.what()));
    }
}

GensetDatabase::~GensetDatabase() = default;

void GensetDatabase::RequireSchema() {
    Guarded([this] {
        for (const TableSchema& table : kGensetSchema) {
            SQLite::Statement columns(*m_database, "Select name from pragma_table_info(?)");
            columns.bind(1, std::string(table.name));
            std::vector<std::string> present;
            while (columns.executeStep()) {
                present.push_back(columns.getColumn(0).getString());
            }
            if (present.empty()) {
                throw RaisedError(
                    0, kSource,
                    fmt::format("The genset database {} lacks the table [{}].", m_file.string(), table.name));
            }
            for (const ColumnSchema& column : table.columns) {
                const bool found = std::ranges::any_of(present, [&column](const std::string& name) {
                    return sqlite3_stricmp(name.c_str(), column.name) == 0;
                });
                if (!found) {
                    throw RaisedError(
                        0, kSource,
                        fmt::format("The table [{}] of the genset database {} lacks the column \"{}\".",
                                    table.name, m_file.string(), column.name));
                }
            }
        }
    });
}

PropertiesRecord GensetDatabase::Properties() {
    constexpr std::string_view kMember = "CDesigner::ReadDatabaseProperties";
    SqlRows rows(Connection(), "Select * from [Properties]");
    std::optional<std::pair<DbNumber, std::array<DbText, 3>>> last;
    while (rows.Next()) {
        last.emplace(rows.Number("ID"),
                     std::array{rows.Text("Version"), rows.Text("Date"), rows.Text("Initials")});
    }
    if (!last) {
        throw RaisedError(kNoRowError, kSource, "The table [Properties] of the genset database is empty.");
    }
    return PropertiesRecord{.ID = last->first.Integer(kMember),
                            .Version = last->second[0].Text(kMember),
                            .Date = last->second[1].Text(kMember),
                            .Initials = last->second[2].Text(kMember)};
}

std::unique_ptr<GensetCursor> GensetDatabase::SelectGensets(const SiteFilter& filter) {
    const std::lock_guard lock(m_keyMutex);
    m_derateCodes.Forget();
    m_alternators.Forget();
    return std::make_unique<DatabaseCursor>(Connection(), GensetQuery(filter));
}

std::optional<std::int64_t> GensetDatabase::RowNumber(const SiteFilter& filter, std::int64_t position) {
    try {
        // All columns are asked for as well, so that the rows come in the same order.
        const std::string query = GensetQuery(filter);
        SQLite::Statement rows(*m_database, "Select rowid, " + query.substr(query.find('*')));
        for (std::int64_t skipped = 0; rows.executeStep(); ++skipped) {
            if (skipped == position && !rows.getColumn(0).isNull()) {
                return rows.getColumn(0).getInt64();
            }
        }
    } catch (const SQLite::Exception&) {
        return std::nullopt;  // a table without row numbers; a view has Nulls
    }
    return std::nullopt;
}

DerateRow GensetDatabase::DerateCode(std::int32_t id) {
    const std::lock_guard lock(m_keyMutex);
    return RowOf<DerateColumns>("Derate Codes", id, m_derateCodes);
}

AlternatorRow GensetDatabase::Alternator(std::int32_t id) {
    const std::lock_guard lock(m_keyMutex);
    return RowOf<AlternatorColumns>("Alternators", id, m_alternators);
}

template <typename Columns, typename Row>
Row GensetDatabase::RowOf(std::string_view table, std::int32_t id, KeptRows<Row>& kept) {
    const std::string query = fmt::format("Select * from [{}]", table);
    if (!kept.byKey) {
        kept.byKey = RowsByKey<Row, Columns>(Connection(), query);
    }
    if (const auto found = kept.byKey->find(id); found != kept.byKey->end()) {
        return found->second;
    }
    SqlRows rows(Connection(), fmt::format("{} where ID = {}", query, id));
    if (!rows.Next()) {
        throw RaisedError(kNoRowError, kSource,
                          fmt::format("The table [{}] of the genset database {} has no row whose ID is {}.",
                                      table, m_file.string(), id));
    }
    return Columns(rows).Read(rows);
}

bool GensetDatabase::HasModel(const std::string& model) {
    SqlRows rows(Connection(), "Select distinct GensetModel from [Gensets]");
    DbText found;
    while (rows.Next()) {
        rows.ReadText(0, found);
        if (!found.IsNull() && found.Text("GensetDatabase::HasModel") == model) {
            return true;
        }
    }
    return false;
}

std::vector<ConnectionRecord> GensetDatabase::Connections() {
    constexpr std::string_view kMember = "GensetDatabase::Connections";
    SqlRows rows(Connection(), "Select * from Connections");
    std::vector<ConnectionRecord> connections;
    while (rows.Next()) {
        connections.push_back({.ID = rows.Number("ID").Integer(kMember),
                               .caption = rows.Text("Connection Type").Text(kMember),
                               .phases = rows.Number("Phases").Integer(kMember)});
    }
    return connections;
}

std::vector<std::int32_t> GensetDatabase::VoltagesLL() {
    SqlRows rows(Connection(), "Select distinct VoltageLL from [Gensets]");
    std::vector<std::int32_t> volts;
    while (rows.Next()) {
        volts.push_back(rows.Number(0).Integer("GensetDatabase::VoltagesLL"));
    }
    return volts;
}

std::vector<CodeLetterRecord> GensetDatabase::MotorCodeLetters() {
    constexpr std::string_view kMember = "GensetDatabase::MotorCodeLetters";
    SqlRows rows(Connection(), "Select * from [Motor Code Letters]");
    std::vector<CodeLetterRecord> letters;
    while (rows.Next()) {
        letters.push_back({.CodeLetter = rows.Text("CodeLetter").Text(kMember),
                           .LRkVAPerHP = rows.Number("LRkVAPerHP").Real(kMember)});
    }
    return letters;
}

std::vector<double> GensetDatabase::MotorStartingMultipliers() {
    SqlRows rows(Connection(), "Select Multiplier from [Motor Starting Multiplier]");
    std::vector<double> multipliers;
    while (rows.Next()) {
        multipliers.push_back(rows.Number(0).Real("GensetDatabase::MotorStartingMultipliers"));
    }
    return multipliers;
}

MotorConversions GensetDatabase::ReadMotorConversions() {
    constexpr std::string_view kMember = "GensetDatabase::ReadMotorConversions";
    SqlRows rows(Connection(), "Select * from [Motor Power Conversions]");
    MotorConversions tables;
    while (rows.Next()) {
        tables.MotorHP.push_back(rows.Number("HP").Real(kMember));
        tables.MotorRunningKW.push_back(rows.Number("RunningKW").Real(kMember));
        tables.MotorRunningKVA.push_back(rows.Number("RunningKVA").Real(kMember));
        tables.MotorStartPF.push_back(rows.Number("SPF").Real(kMember));
    }
    SortByHorsepower(tables);
    return tables;
}

sqlite3* GensetDatabase::Connection() const noexcept {
    return m_database->getHandle();
}

}  // namespace genvara
