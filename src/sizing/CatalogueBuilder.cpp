#include "CatalogueBuilder.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "AtomicFile.h"
#include "CodePage.h"
#include "CsvTable.h"
#include "GensetSchema.h"
#include "NumberText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr const char* kSource = "BuildCatalogue";
constexpr std::size_t kMostFaults = 100;
constexpr std::int64_t kProgressRows = 1000;

/// A name as SQL takes it, blanks and quotes included.
std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    for (const char byte : name) {
        quoted += byte;
        if (byte == '"') {
            quoted += byte;
        }
    }
    return quoted + "\"";
}

/// A file in the target's folder that is deleted unless it takes the target's place.
class TemporaryDatabase {
  public:
    explicit TemporaryDatabase(const std::filesystem::path& target) : m_target(FollowLink(target)) {
        const auto folder = m_target.has_parent_path() ? m_target.parent_path() : std::filesystem::path(".");
        std::error_code failure;
        const std::filesystem::file_status status = std::filesystem::status(m_target, failure);
        if (std::filesystem::is_directory(status)) {
            RaiseSystemError(EISDIR, kSource, fmt::format("{} is a folder.", m_target.string()));
        }
        if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
            // A database cannot be written to a device or pipe, and must not take its place.
            RaiseSystemError(EINVAL, kSource, fmt::format("{} is no ordinary file.", m_target.string()));
        }
        m_temporary = (folder / ".genvara-XXXXXX").string();
        const int descriptor = mkstemp(m_temporary.data());
        if (descriptor < 0) {
            RaiseFailure(errno);
        }
        close(descriptor);
    }
    ~TemporaryDatabase() {
        std::error_code ignored;
        std::filesystem::remove(m_temporary, ignored);
        std::filesystem::remove(m_temporary + "-journal", ignored);
    }
    TemporaryDatabase(const TemporaryDatabase&) = delete;
    TemporaryDatabase& operator=(const TemporaryDatabase&) = delete;
    TemporaryDatabase(TemporaryDatabase&&) = delete;
    TemporaryDatabase& operator=(TemporaryDatabase&&) = delete;

    [[nodiscard]] const std::string& File() const noexcept { return m_temporary; }

    void TakePlace() {
        std::error_code failure;
        std::filesystem::permissions(m_temporary, SavedPermissions(m_target), failure);
        std::filesystem::rename(m_temporary, m_target, failure);
        if (failure) {
            RaiseFailure(failure.value());
        }
    }

  private:
    [[noreturn]] void RaiseFailure(int systemError) const {
        RaiseSystemError(systemError, kSource,
                         fmt::format("The database {} cannot be written: {}.", m_target.string(),
                                     std::generic_category().message(systemError)));
    }

    std::filesystem::path m_target;
    std::string m_temporary;
};

/// Reads one table's file into the database.
class TableBuilder {
  public:
    TableBuilder(SQLite::Database& database, const TableSchema& table, CatalogueBuild& build,
                 const BuildProgress& progress)
        : m_database(&database),
          m_table(&table),
          m_build(&build),
          m_progress(&progress),
          m_fileName(fmt::format("{}.csv", table.name)) {}

    void Read(const std::filesystem::path& folder) {
        const std::filesystem::path file = folder / m_fileName;
        std::error_code failure;
        if (!std::filesystem::exists(file, failure)) {
            AddFault("the file is missing");
            return;
        }
        FileSource source(file, kSource);
        const std::string breach = ReadCsv(
            source,
            [this](std::int64_t line, const std::vector<std::string>& fields) { TakeRow(line, fields); });
        if (!breach.empty()) {
            AddFault(breach);
        } else if (!m_headerRead) {
            AddFault("the file is empty");
        }
        (*m_progress)(m_table->name, m_rows);
    }

  private:
    void TakeRow(std::int64_t line, const std::vector<std::string>& fields) {
        if (!m_headerRead) {
            TakeHeader(fields);
            return;
        }
        if (!m_insert) {
            return;  // the header's faults are told already
        }
        if (fields.size() != m_names.size()) {
            AddFault(fmt::format("line {}: {} fields where the header has {}", line, fields.size(),
                                 m_names.size()));
            return;
        }
        for (std::size_t i = 0; i < fields.size(); ++i) {
            Bind(line, i, fields[i]);
        }
        m_insert->exec();
        m_insert->reset();
        ++m_build->rows;
        if (++m_rows % kProgressRows == 0) {
            (*m_progress)(m_table->name, m_rows);
        }
    }

    void TakeHeader(const std::vector<std::string>& names) {
        m_headerRead = true;
        m_names = names;
        bool complete = true;
        const auto refuse = [&](const std::string& fault) {
            AddFault(fault);
            complete = false;
        };
        for (const ColumnSchema& column : m_table->columns) {
            if (std::ranges::none_of(names,
                                     [&](const std::string& name) { return SameName(name, column.name); })) {
                refuse(fmt::format("line 1: the column \"{}\" is missing", column.name));
            }
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto twin =
                std::find_if(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i),
                             [&](const std::string& name) { return SameName(name, names[i].c_str()); });
            if (names[i].empty() || names[i].find('\0') != std::string::npos) {
                refuse(fmt::format("line 1: column {} has no name", i + 1));
            } else if (twin != names.begin() + static_cast<std::ptrdiff_t>(i)) {
                refuse(fmt::format("line 1: the column \"{}\" stands there twice", names[i]));
            }
        }
        if (complete) {
            CreateTable();
        }
    }

    void CreateTable() {
        std::string columns;
        std::string places;
        for (const std::string& name : m_names) {
            const std::optional<ColumnKind> kind = KindOf(name);
            m_kinds.push_back(kind);
            columns += fmt::format("{}{} {}", columns.empty() ? "" : ", ", Quoted(name), TypeName(kind));
            places += places.empty() ? "?" : ", ?";
        }
        m_database->exec(fmt::format("Create table {} ({})", Quoted(m_table->name), columns));
        m_insert.emplace(*m_database,
                         fmt::format("Insert into {} values ({})", Quoted(m_table->name), places));
    }

    void Bind(std::int64_t line, std::size_t column, const std::string& field) {
        const int place = static_cast<int>(column) + 1;
        const std::optional<ColumnKind> kind = m_kinds[column];
        if (field.empty()) {
            m_insert->bind(place);
        } else if (kind == ColumnKind::Text && !IsUtf8(field)) {
            AddFault(fmt::format("line {}, column \"{}\": the text is no UTF-8", line, m_names[column]));
        } else if (!kind || kind == ColumnKind::Text) {
            m_insert->bind(place, field);
        } else if (const std::optional<double> number = ParseNumber(field); !number) {
            AddFault(
                fmt::format("line {}, column \"{}\": \"{}\" is no number", line, m_names[column], field));
        } else if (kind == ColumnKind::Integer) {
            const std::optional<std::int32_t> integer = RoundToInteger(*number);
            if (!integer || *integer != *number) {
                AddFault(fmt::format("line {}, column \"{}\": \"{}\" is no whole number", line,
                                     m_names[column], field));
            } else {
                m_insert->bind(place, *integer);
            }
        } else {
            m_insert->bind(place, *number);
        }
    }

    [[nodiscard]] std::optional<ColumnKind> KindOf(const std::string& name) const {
        for (const ColumnSchema& column : m_table->columns) {
            if (SameName(name, column.name)) {
                return column.kind;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] static std::string_view TypeName(std::optional<ColumnKind> kind) {
        if (!kind) {
            return "";
        }
        switch (*kind) {
            case ColumnKind::Integer:
                return "INTEGER";
            case ColumnKind::Text:
                return "TEXT";
            default:
                return "REAL";
        }
    }

    [[nodiscard]] static bool SameName(const std::string& name, const char* other) {
        return sqlite3_stricmp(name.c_str(), other) == 0;
    }

    void AddFault(const std::string& fault) {
        if (m_build->faults.size() < kMostFaults) {
            m_build->faults.push_back(fmt::format("{}: {}", m_fileName, fault));
        } else if (m_build->faults.size() == kMostFaults) {
            m_build->faults.emplace_back("Further faults are not listed.");
        }
    }

    SQLite::Database* m_database;
    const TableSchema* m_table;
    CatalogueBuild* m_build;
    const BuildProgress* m_progress;
    std::string m_fileName;
    bool m_headerRead = false;
    std::vector<std::string> m_names;
    std::vector<std::optional<ColumnKind>> m_kinds;
    std::optional<SQLite::Statement> m_insert;
    std::int64_t m_rows = 0;
};

}  // namespace

CatalogueBuild BuildCatalogue(const std::filesystem::path& folder, const std::filesystem::path& database,
                              const BuildProgress& progress) {
    std::error_code failure;
    if (!std::filesystem::is_directory(folder, failure)) {
        RaiseSystemError(failure ? failure.value() : ENOTDIR, kSource,
                         fmt::format("The catalogue folder {} cannot be read.", folder.string()));
    }
    CatalogueBuild build;
    TemporaryDatabase target(database);
    try {
        SQLite::Database connection(target.File(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        SQLite::Transaction transaction(connection);
        for (const TableSchema& table : kGensetSchema) {
            TableBuilder(connection, table, build, progress).Read(folder);
        }
        if (!build.faults.empty()) {
            return build;
        }
        transaction.commit();
    } catch (const SQLite::Exception& cause) {
        throw RaisedError(
            cause.getErrorCode(), kSource,
            fmt::format("The database {} cannot be written: {}.", database.string(), cause.what()));
    }
    target.TakePlace();
    return build;
}

}  // namespace genvara
