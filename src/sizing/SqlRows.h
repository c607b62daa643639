#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "DbValue.h"

struct sqlite3;
struct sqlite3_stmt;

namespace genvara {

/// The rows of one query, read through the database library's own interface: over thousands of rows a wrapper
/// around each field costs as much as the field.
///
/// Failures carry the database's own number and the source "GensetDatabase". A row's fields are read from the
/// thread that asked for the row.
class SqlRows {
  public:
    /// The connection outlives the rows.
    /// @throws RaisedError if the query cannot be prepared.
    SqlRows(sqlite3* connection, const std::string& query);
    ~SqlRows();
    SqlRows(const SqlRows&) = delete;
    SqlRows& operator=(const SqlRows&) = delete;
    SqlRows(SqlRows&&) = delete;
    SqlRows& operator=(SqlRows&&) = delete;

    /// Goes to the next row; false behind the last one.
    /// @throws RaisedError if it cannot be read.
    [[nodiscard]] bool Next();

    /// Where a column of the query stands. Names count without case, as everywhere in the database.
    /// @throws RaisedError if there is none of the name.
    [[nodiscard]] int Column(const char* name) const;

    // The field of the present row in a column.
    [[nodiscard]] DbNumber Number(int column) const;
    [[nodiscard]] DbNumber Number(const char* name) const { return Number(Column(name)); }
    /// The 32-bit integer that is stored there as a number; nothing where there is something else, even a
    /// text that reads as one.
    [[nodiscard]] std::optional<std::int32_t> StoredInteger(int column) const;
    void ReadText(int column, DbText& target) const;
    [[nodiscard]] DbText Text(const char* name) const;

  private:
    sqlite3* m_connection;
    sqlite3_stmt* m_statement = nullptr;
};

}  // namespace genvara
