#include "CatalogueChecker.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "CatalogueRules.h"
#include "CodePage.h"
#include "GensetDatabase.h"
#include "GensetSchema.h"
#include "MotorTableCheck.h"
#include "RaisedError.h"

namespace genvara {
namespace {

/// Starting methods that read their multiplier from the table; that of a solid-state starter is not read.
constexpr int kStarters = 5;

// What SQLite calls the values that a reader takes as text, and as a number.
constexpr std::string_view kTextTypes = "'text', 'integer', 'real'";
constexpr std::string_view kNumberTypes = "'integer', 'real'";

class Checker {
  public:
    Checker(const std::filesystem::path& file, const FindingHandler& handler)
        : m_database(file.string(), SQLite::OPEN_READONLY), m_handler(&handler) {}

    void Check() {
        CheckFile();
        for (const TableSchema& table : kGensetSchema) {
            CheckTable(table);
        }
        if (m_complete) {
            for (const CatalogueRule& rule : CatalogueRules()) {
                CheckRule(rule);
            }
            CheckCodeLetters();
            CheckMotors();
        }
    }

  private:
    /// Pages of the file that do not fit together: a query may run into them, or pass over rows.
    void CheckFile() {
        SQLite::Statement damages(m_database, "Pragma quick_check(10)");
        while (damages.executeStep()) {
            if (const std::string damage = damages.getColumn(0).getString(); damage != "ok") {
                Tell(fmt::format("The file is damaged: {}", damage));
            }
        }
    }

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
        } else if (table.name == "Motor Starting Multiplier" && rows < kStarters) {
            Tell(fmt::format("[{}]: the table has {} rows for {} starters", table.name, rows, kStarters));
        }
    }

    void CheckColumn(const TableSchema& table, const ColumnSchema& column) {
        const bool text = column.kind == ColumnKind::Text;
        const std::string_view accepted = text ? kTextTypes : kNumberTypes;
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
        if (text) {
            CheckEncoding(table, column);
        } else {
            CheckRange(table, column);
        }
    }

    void CheckEncoding(const TableSchema& table, const ColumnSchema& column) {
        SQLite::Statement rows(m_database,
                               fmt::format("Select rowid, \"{0}\" from [{1}] where typeof(\"{0}\") = 'text'",
                                           column.name, table.name));
        while (rows.executeStep()) {
            if (!IsUtf8(rows.getColumn(1).getString())) {
                TellRow(table.name, rows.getColumn(0).getInt64(), column.name, "is no UTF-8");
            }
        }
    }

    /// Numbers that no reader can hold: infinities, broken codes, codes beyond 32 bits.
    void CheckRange(const TableSchema& table, const ColumnSchema& column) {
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

    void CheckRule(const CatalogueRule& rule) {
        const bool text = KindOf(rule) == ColumnKind::Text;
        const std::string column = fmt::format("one.\"{}\"", rule.column);
        SQLite::Statement rows(
            m_database,
            fmt::format("Select rowid, {0} from [{1}] as one where typeof({0}) in ({2}) and ({3})", column,
                        rule.table, text ? kTextTypes : kNumberTypes,
                        fmt::format(fmt::runtime(rule.condition), column)));
        while (rows.executeStep()) {
            TellRow(rule.table, rows.getColumn(0).getInt64(), rule.column,
                    fmt::format("{} {}", Quoted(rows.getColumn(1), text), rule.sentence));
        }
    }

    /// The letters that the motor form proposes by itself.
    void CheckCodeLetters() {
        constexpr std::string_view kProposed = "FGHJKLM";
        for (const char letter : kProposed) {
            SQLite::Statement rows(
                m_database, "Select 1 from [Motor Code Letters] where upper(trim(CodeLetter, ' ')) = ?");
            rows.bind(1, std::string(1, letter));
            if (!rows.executeStep()) {
                Tell(fmt::format(
                    "[Motor Code Letters], column \"CodeLetter\": {} is missing, which the program proposes "
                    "for motors of a certain size",
                    letter));
            }
        }
    }

    void CheckMotors() {
        SQLite::Statement rows(
            m_database,
            "Select rowid, HP, RunningKW, RunningKVA, SPF from [Motor Power Conversions] order by HP");
        MotorRows motors;
        while (rows.executeStep()) {
            std::array<double, 4> figures{};
            for (int i = 0; i < 4; ++i) {
                const SQLite::Column field = rows.getColumn(i + 1);
                figures.at(static_cast<std::size_t>(i)) =
                    field.isFloat() || field.isInteger() ? field.getDouble() : 0.0;
            }
            if (std::ranges::any_of(figures, [](double figure) { return !(figure > 0.0); })) {
                return;  // told already
            }
            motors.numbers.push_back(rows.getColumn(0).getInt64());
            motors.tables.MotorHP.push_back(figures[0]);
            motors.tables.MotorRunningKW.push_back(figures[1]);
            motors.tables.MotorRunningKVA.push_back(figures[2]);
            motors.tables.MotorStartPF.push_back(figures[3]);
        }
        for (const MotorFinding& finding : CheckMotorTables(motors)) {
            TellRow("Motor Power Conversions", finding.row, finding.column, finding.fault);
        }
    }

    [[nodiscard]] static ColumnKind KindOf(const CatalogueRule& rule) {
        const TableSchema& table = *std::ranges::find(kGensetSchema, rule.table, &TableSchema::name);
        return std::ranges::find(table.columns, rule.column, &ColumnSchema::name)->kind;
    }

    [[nodiscard]] static std::string Quoted(const SQLite::Column& column, bool text) {
        return text ? fmt::format("\"{}\"", Shown(column)) : Shown(column);
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
