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
#include "GensetSchema.h"
#include "NumberText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr const char* kSource = "GensetDatabase";
/// Number of the failure to read a field where there is no row.
constexpr std::int32_t kNoRowError = 3021;

/// Runs a stretch of database work and turns the library's failures into the program's.
template <typename Work>
auto Guarded(Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const SQLite::Exception& failure) {
        throw RaisedError(failure.getErrorCode(), kSource, failure.what());
    }
}

DbNumber ReadNumber(const SQLite::Column& column) {
    if (column.isFloat() || column.isInteger()) {
        return DbNumber(column.getDouble());
    }
    if (column.isNull()) {
        return {};
    }
    const std::optional<double> number = column.isText() ? ParseNumber(column.getString()) : std::nullopt;
    return number ? DbNumber(*number) : DbNumber::Unreadable();
}

void ReadText(const SQLite::Column& column, DbText& target) {
    if (column.isNull()) {
        target.AssignNull();
    } else if (column.isFloat()) {
        target.Assign(RenderPlain(column.getDouble()));
    } else {
        target.Assign({column.getText(), static_cast<std::size_t>(column.getBytes())});
    }
}

std::string TextOf(const SQLite::Column& column, std::string_view member) {
    DbText text;
    ReadText(column, text);
    return text.Text(member);
}

/// Where the fields of [Gensets] stand in a statement's rows, looked up once a statement.
struct GensetColumns {
    explicit GensetColumns(const SQLite::Statement& statement) {
        for (std::size_t i = 0; i < kGensetNumbers.size(); ++i) {
            numbers.at(i) = statement.getColumnIndex(kGensetNumbers.at(i).name);
        }
        for (std::size_t i = 0; i < kRatingColumns.size(); ++i) {
            ratings.at(i) = statement.getColumnIndex(kRatingColumns.at(i));
        }
        gensetModel = statement.getColumnIndex("GensetModel");
        engineModel = statement.getColumnIndex("EngineModel");
    }

    /// The numeric fields with the members that take them.
    struct NumberField {
        const char* name;
        DbNumber GensetRow::*target;
    };
    static constexpr std::array<NumberField, 8> kGensetNumbers{{{"Fuel", &GensetRow::Fuel},
                                                                {"DerateCode", &GensetRow::DerateCode},
                                                                {"AltModel", &GensetRow::AltModel},
                                                                {"LRkVA", &GensetRow::LRkVA},
                                                                {"StartingPower", &GensetRow::StartingPower},
                                                                {"BaseFreqDipKW", &GensetRow::BaseFreqDipKW},
                                                                {"BaseFreqDip", &GensetRow::BaseFreqDip},
                                                                {"ExpC", &GensetRow::ExpC}}};
    /// By temperature rise and duty code.
    static constexpr std::array<const char*, 5> kRatingColumns{"Rating80C", "Rating105C", "Rating125C",
                                                               "Rating130C", "Rating150C"};

    std::array<int, kGensetNumbers.size()> numbers{};
    std::array<int, kRatingColumns.size()> ratings{};
    int gensetModel = 0;
    int engineModel = 0;
};

void ReadGensetRow(const SQLite::Statement& statement, const GensetColumns& columns, GensetRow& row) {
    for (std::size_t i = 0; i < columns.numbers.size(); ++i) {
        row.*GensetColumns::kGensetNumbers[i].target = ReadNumber(statement.getColumn(columns.numbers[i]));
    }
    for (std::size_t i = 0; i < columns.ratings.size(); ++i) {
        row.Ratings[i] = ReadNumber(statement.getColumn(columns.ratings[i]));
    }
    ReadText(statement.getColumn(columns.gensetModel), row.GensetModel);
    ReadText(statement.getColumn(columns.engineModel), row.EngineModel);
}

class DatabaseCursor final : public GensetCursor {
  public:
    DatabaseCursor(SQLite::Database& database, const std::string& query)
        : m_statement(database, query), m_columns(m_statement) {}

    const GensetRow* Next() override {
        return Guarded([this]() -> const GensetRow* {
            if (!m_statement.executeStep()) {
                return nullptr;
            }
            ReadGensetRow(m_statement, m_columns, m_row);
            return &m_row;
        });
    }

  private:
    SQLite::Statement m_statement;
    GensetColumns m_columns;
    GensetRow m_row;
};

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
    return Guarded([this] {
        constexpr std::string_view kMember = "CDesigner::ReadDatabaseProperties";
        SQLite::Statement rows(*m_database, "Select * from [Properties]");
        std::optional<std::pair<DbNumber, std::array<DbText, 3>>> last;
        while (rows.executeStep()) {
            last.emplace();
            last->first = ReadNumber(rows.getColumn("ID"));
            ReadText(rows.getColumn("Version"), last->second[0]);
            ReadText(rows.getColumn("Date"), last->second[1]);
            ReadText(rows.getColumn("Initials"), last->second[2]);
        }
        if (!last) {
            throw RaisedError(kNoRowError, kSource,
                              "The table [Properties] of the genset database is empty.");
        }
        return PropertiesRecord{.ID = last->first.Integer(kMember),
                                .Version = last->second[0].Text(kMember),
                                .Date = last->second[1].Text(kMember),
                                .Initials = last->second[2].Text(kMember)};
    });
}

std::unique_ptr<GensetCursor> GensetDatabase::SelectGensets(const SiteFilter& filter) {
    return Guarded([&] { return std::make_unique<DatabaseCursor>(*m_database, GensetQuery(filter)); });
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
    return Guarded([&] {
        SQLite::Statement rows(*m_database, fmt::format("Select * from [Derate Codes] where ID = {}", id));
        if (!rows.executeStep()) {
            RaiseNoRow("Derate Codes", id);
        }
        return DerateRow{.AltDerateBase = ReadNumber(rows.getColumn("AltDerateBase")),
                         .AltDerateSlope = ReadNumber(rows.getColumn("AltDerateSlope")),
                         .TempDerateBase = ReadNumber(rows.getColumn("TempDerateBase")),
                         .TempDerateSlope = ReadNumber(rows.getColumn("TempDerateSlope"))};
    });
}

AlternatorRow GensetDatabase::Alternator(std::int32_t id) {
    return Guarded([&] {
        SQLite::Statement rows(*m_database, fmt::format("Select * from [Alternators] where ID = {}", id));
        if (!rows.executeStep()) {
            RaiseNoRow("Alternators", id);
        }
        AlternatorRow row{.ID = ReadNumber(rows.getColumn("ID")),
                          .ModelNum = {},
                          .BasekW = ReadNumber(rows.getColumn("BasekW")),
                          .BaseVolts = ReadNumber(rows.getColumn("BaseVolts")),
                          .SubtransReact = ReadNumber(rows.getColumn("SubtransReact"))};
        ReadText(rows.getColumn("ModelNum"), row.ModelNum);
        return row;
    });
}

std::vector<ConnectionRecord> GensetDatabase::Connections() {
    return Guarded([this] {
        constexpr std::string_view kMember = "GensetDatabase::Connections";
        SQLite::Statement rows(*m_database, "Select * from Connections");
        std::vector<ConnectionRecord> connections;
        while (rows.executeStep()) {
            connections.push_back({.ID = ReadNumber(rows.getColumn("ID")).Integer(kMember),
                                   .caption = TextOf(rows.getColumn("Connection Type"), kMember),
                                   .phases = ReadNumber(rows.getColumn("Phases")).Integer(kMember)});
        }
        return connections;
    });
}

std::vector<std::int32_t> GensetDatabase::VoltagesLL() {
    return Guarded([this] {
        SQLite::Statement rows(*m_database, "Select distinct VoltageLL from [Gensets]");
        std::vector<std::int32_t> volts;
        while (rows.executeStep()) {
            volts.push_back(ReadNumber(rows.getColumn(0)).Integer("GensetDatabase::VoltagesLL"));
        }
        return volts;
    });
}

std::vector<CodeLetterRecord> GensetDatabase::MotorCodeLetters() {
    return Guarded([this] {
        constexpr std::string_view kMember = "GensetDatabase::MotorCodeLetters";
        SQLite::Statement rows(*m_database, "Select * from [Motor Code Letters]");
        std::vector<CodeLetterRecord> letters;
        while (rows.executeStep()) {
            letters.push_back({.CodeLetter = TextOf(rows.getColumn("CodeLetter"), kMember),
                               .LRkVAPerHP = ReadNumber(rows.getColumn("LRkVAPerHP")).Real(kMember)});
        }
        return letters;
    });
}

std::vector<double> GensetDatabase::MotorStartingMultipliers() {
    return Guarded([this] {
        SQLite::Statement rows(*m_database, "Select Multiplier from [Motor Starting Multiplier]");
        std::vector<double> multipliers;
        while (rows.executeStep()) {
            multipliers.push_back(
                ReadNumber(rows.getColumn(0)).Real("GensetDatabase::MotorStartingMultipliers"));
        }
        return multipliers;
    });
}

MotorConversions GensetDatabase::ReadMotorConversions() {
    return Guarded([this] {
        constexpr std::string_view kMember = "GensetDatabase::ReadMotorConversions";
        SQLite::Statement rows(*m_database, "Select * from [Motor Power Conversions]");
        MotorConversions tables;
        while (rows.executeStep()) {
            tables.MotorHP.push_back(ReadNumber(rows.getColumn("HP")).Real(kMember));
            tables.MotorRunningKW.push_back(ReadNumber(rows.getColumn("RunningKW")).Real(kMember));
            tables.MotorRunningKVA.push_back(ReadNumber(rows.getColumn("RunningKVA")).Real(kMember));
            tables.MotorStartPF.push_back(ReadNumber(rows.getColumn("SPF")).Real(kMember));
        }
        SortByHorsepower(tables);
        return tables;
    });
}

void GensetDatabase::RaiseNoRow(const std::string& table, std::int32_t id) const {
    throw RaisedError(kNoRowError, kSource,
                      fmt::format("The table [{}] of the genset database {} has no row whose ID is {}.",
                                  table, m_file.string(), id));
}

}  // namespace genvara
