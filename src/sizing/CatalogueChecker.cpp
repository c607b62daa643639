#include "CatalogueChecker.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "GensetDatabase.h"
#include "GensetSchema.h"
#include "RaisedError.h"

namespace genvara {
namespace {

/// A relation that the rows of a table must keep. The query yields the rows that do not: the row's number
/// and what is shown of it.
struct Relation {
    std::string_view table;
    std::string_view column;
    const char* query;
    std::string_view fault;
};

constexpr std::array kRelations{
    Relation{"Gensets", "DerateCode",
             "Select rowid, DerateCode from [Gensets] where DerateCode is not null and "
             "DerateCode not in (Select ID from [Derate Codes] where ID is not null)",
             "is no ID of [Derate Codes]"},
    Relation{"Gensets", "AltModel",
             "Select rowid, AltModel from [Gensets] where AltModel is not null and "
             "AltModel not in (Select ID from [Alternators] where ID is not null)",
             "is no ID of [Alternators]"},
    Relation{"Gensets", "WindingConnection",
             "Select rowid, WindingConnection from [Gensets] where WindingConnection is not null and "
             "WindingConnection not in (Select ID from Connections where ID is not null)",
             "is no ID of Connections"},
    Relation{"Gensets", "Fuel", "Select rowid, Fuel from [Gensets] where Fuel not in (1, 2, 3, 4)",
             "is no fuel code from 1 to 4"},
    Relation{"Gensets", "Rating105C", "Select rowid, Rating105C from [Gensets] where Rating105C < Rating80C",
             "is below Rating80C, though the allowed rise is higher"},
    Relation{"Gensets", "Rating125C", "Select rowid, Rating125C from [Gensets] where Rating125C < Rating105C",
             "is below Rating105C, though the allowed rise is higher"},
    Relation{"Gensets", "Rating130C", "Select rowid, Rating130C from [Gensets] where Rating130C < Rating125C",
             "is below Rating125C, though the allowed rise is higher"},
    Relation{"Gensets", "Rating150C", "Select rowid, Rating150C from [Gensets] where Rating150C < Rating130C",
             "is below Rating130C, though the allowed rise is higher"},
    Relation{"Derate Codes", "ID",
             "Select rowid, ID from [Derate Codes] as one where exists "
             "(Select 1 from [Derate Codes] where ID = one.ID and rowid < one.rowid)",
             "stands there twice"},
    Relation{"Alternators", "ID",
             "Select rowid, ID from [Alternators] as one where exists "
             "(Select 1 from [Alternators] where ID = one.ID and rowid < one.rowid)",
             "stands there twice"},
    Relation{"Alternators", "SubtransReact",
             "Select rowid, SubtransReact from [Alternators] where BasekW > 0 and BaseVolts > 0 and "
             "SubtransReact <= 0",
             "is not above 0, though the alternator has a base"},
    // Any base that a generator could have; the square of one far beyond overflows.
    Relation{"Alternators", "BaseVolts",
             "Select rowid, BaseVolts from [Alternators] where typeof(BaseVolts) in ('integer', 'real') and "
             "abs(BaseVolts) > 1e6",
             "is beyond any generator's voltage"},
    // A step may be a million times the base of the dip curve, and 1e6 to the 50th is all that a number
    // holds.
    Relation{"Gensets", "ExpC",
             "Select rowid, ExpC from [Gensets] where typeof(ExpC) in ('integer', 'real') and "
             "(ExpC < -50 or ExpC > 50)",
             "is no exponent of a dip curve, from -50 to 50"},
    Relation{"Motor Power Conversions", "SPF",
             "Select rowid, SPF from [Motor Power Conversions] where typeof(SPF) in ('integer', 'real') and "
             "(SPF <= 0 or SPF > 1)",
             "is no power factor, above 0 and up to 1"},
    Relation{"Connections", "ID",
             "Select rowid, ID from Connections as one where exists "
             "(Select 1 from Connections where ID = one.ID and rowid < one.rowid)",
             "stands there twice"},
    Relation{"Connections", "Phases", "Select rowid, Phases from Connections where Phases not in (1, 3)",
             "is neither 1 nor 3"},
};

/// Columns of [Motor Power Conversions] that are looked up by value, and so must ascend with the horsepower.
constexpr std::array<std::string_view, 3> kAscendingColumns{"HP", "RunningKW", "RunningKVA"};

class Checker {
  public:
    Checker(const std::filesystem::path& file, const FindingHandler& handler)
        : m_database(file.string(), SQLite::OPEN_READONLY), m_handler(&handler) {}

    void Check() {
        for (const TableSchema& table : kGensetSchema) {
            CheckTable(table);
        }
        if (m_complete) {
            for (const Relation& relation : kRelations) {
                CheckRelation(relation);
            }
            for (const std::string_view column : kAscendingColumns) {
                CheckAscending(column);
            }
        }
    }

  private:
    void CheckTable(const TableSchema& table) {
        std::vector<std::string> present;
        SQLite::Statement columns(m_database, "Select name from pragma_table_info(?)");
        columns.bind(1, std::string(table.name));
        while (columns.executeStep()) {
            present.push_back(columns.getColumn(0).getString());
        }
        if (present.empty()) {
            m_complete = false;
            Tell(fmt::format("[{}]: the table is missing", table.name));
            return;
        }
        for (const ColumnSchema& column : table.columns) {
            const bool found = std::ranges::any_of(present, [&column](const std::string& name) {
                return sqlite3_stricmp(name.c_str(), column.name) == 0;
            });
            if (found) {
                CheckColumn(table, column);
            } else {
                m_complete = false;
                Tell(fmt::format("[{}]: the column \"{}\" is missing", table.name, column.name));
            }
        }
        CheckRows(table);
    }

    void CheckRows(const TableSchema& table) {
        const int rows = m_database.execAndGet(fmt::format("Select count(*) from [{}]", table.name)).getInt();
        if (rows == 0) {
            Tell(fmt::format("[{}]: the table has no rows", table.name));
        } else if (table.name == "Motor Power Conversions" && rows == 1) {
            Tell(fmt::format("[{}]: the table has only one row", table.name));
        }
    }

    void CheckColumn(const TableSchema& table, const ColumnSchema& column) {
        const bool text = column.kind == ColumnKind::Text;
        const char* accepted = text ? "'text', 'integer', 'real'" : "'integer', 'real'";
        SQLite::Statement rows(
            m_database, fmt::format("Select rowid, \"{0}\" from [{1}] where typeof(\"{0}\") not in ({2})",
                                    column.name, table.name, accepted));
        while (rows.executeStep()) {
            const bool isNull = rows.getColumn(1).isNull();
            if (isNull && column.kind == ColumnKind::OptionalReal) {
                continue;
            }
            TellRow(table.name, rows.getColumn(0).getInt64(), column.name,
                    isNull ? std::string("is Null")
                           : fmt::format("\"{}\" is no number", Shown(rows.getColumn(1))));
        }
        CheckRange(table, column);
    }

    /// Numbers that no reader can hold: infinities, broken codes, codes beyond 32 bits.
    void CheckRange(const TableSchema& table, const ColumnSchema& column) {
        if (column.kind == ColumnKind::Text) {
            return;
        }
        const char* condition = column.kind == ColumnKind::Integer
                                    ? "(\"{0}\" <> round(\"{0}\") or abs(\"{0}\") > 2147483647)"
                                    : "abs(\"{0}\") > 1.7e308";
        SQLite::Statement rows(
            m_database,
            fmt::format(
                "Select rowid, \"{0}\" from [{1}] where typeof(\"{0}\") in ('integer', 'real') and {2}",
                column.name, table.name, fmt::format(fmt::runtime(condition), column.name)));
        while (rows.executeStep()) {
            TellRow(table.name, rows.getColumn(0).getInt64(), column.name,
                    fmt::format(
                        "{} is no {}", Shown(rows.getColumn(1)),
                        column.kind == ColumnKind::Integer ? "whole number of 32 bits" : "finite number"));
        }
    }

    void CheckRelation(const Relation& relation) {
        SQLite::Statement rows(m_database, relation.query);
        while (rows.executeStep()) {
            TellRow(relation.table, rows.getColumn(0).getInt64(), relation.column,
                    fmt::format("{} {}", Shown(rows.getColumn(1)), relation.fault));
        }
    }

    void CheckAscending(std::string_view column) {
        SQLite::Statement rows(
            m_database,
            fmt::format("Select rowid, \"{}\" from [Motor Power Conversions] order by HP", column));
        std::optional<double> before;
        while (rows.executeStep()) {
            const double value = rows.getColumn(1).getDouble();
            if (before && value <= *before) {
                TellRow("Motor Power Conversions", rows.getColumn(0).getInt64(), column,
                        fmt::format("{} does not ascend", Shown(rows.getColumn(1))));
            }
            before = value;
        }
    }

    [[nodiscard]] static std::string Shown(const SQLite::Column& column) {
        constexpr std::size_t kLongest = 40;
        std::string text = column.getString();
        return text.size() > kLongest ? text.substr(0, kLongest) + "..." : text;
    }

    void TellRow(std::string_view table, std::int64_t row, std::string_view column,
                 const std::string& fault) {
        Tell(fmt::format("[{}], row {}, column \"{}\": {}", table, row, column, fault));
    }

    void Tell(const std::string& finding) const { (*m_handler)(finding); }

    SQLite::Database m_database;
    const FindingHandler* m_handler;
    bool m_complete = true;
};

}  // namespace

void CheckCatalogue(const std::filesystem::path& database, const FindingHandler& handler) {
    const GensetDatabase readable(database);  // a file that cannot be read is refused with its own words
    try {
        Checker(database, handler).Check();
    } catch (const SQLite::Exception& cause) {
        throw RaisedError(
            cause.getErrorCode(), "CheckCatalogue",
            fmt::format("The genset database {} cannot be read: {}.", database.string(), cause.what()));
    }
}

}  // namespace genvara
