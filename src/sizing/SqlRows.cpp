#include "SqlRows.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <cstddef>
#include <string_view>

#include "NumberText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

[[noreturn]] void Raise(sqlite3* connection, int number) {
    throw RaisedError(number, "GensetDatabase", sqlite3_errmsg(connection));
}

std::string_view TextOf(sqlite3_stmt* statement, int column) {
    // The text comes first: asking for it is what makes a text of a field of another kind.
    const unsigned char* text = sqlite3_column_text(statement, column);
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    return {reinterpret_cast<const char*>(text), text == nullptr ? 0 : length};
}

}  // namespace

SqlRows::SqlRows(sqlite3* connection, const std::string& query) : m_connection(connection) {
    const int status = sqlite3_prepare_v2(connection, query.c_str(), static_cast<int>(query.size()) + 1,
                                          &m_statement, nullptr);
    if (status != SQLITE_OK) {
        Raise(connection, status);
    }
}

SqlRows::~SqlRows() {
    sqlite3_finalize(m_statement);
}

bool SqlRows::Next() {
    const int status = sqlite3_step(m_statement);
    if (status != SQLITE_ROW && status != SQLITE_DONE) {
        Raise(m_connection, status);
    }
    return status == SQLITE_ROW;
}

int SqlRows::Column(const char* name) const {
    const int count = sqlite3_column_count(m_statement);
    for (int column = 0; column < count; ++column) {
        if (sqlite3_stricmp(sqlite3_column_name(m_statement, column), name) == 0) {
            return column;
        }
    }
    throw RaisedError(SQLITE_ERROR, "GensetDatabase",
                      fmt::format("The genset database lacks the column \"{}\".", name));
}

DbNumber SqlRows::Number(int column) const {
    // One call finds the field; type and number are then at hand.
    sqlite3_value* field = sqlite3_column_value(m_statement, column);
    switch (sqlite3_value_type(field)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return DbNumber(sqlite3_value_double(field));
        case SQLITE_NULL:
            return {};
        case SQLITE_TEXT: {
            const std::optional<double> number = ParseNumber(TextOf(m_statement, column));
            return number ? DbNumber(*number) : DbNumber::Unreadable();
        }
        default:
            return DbNumber::Unreadable();
    }
}

std::optional<std::int32_t> SqlRows::StoredInteger(int column) const {
    sqlite3_value* field = sqlite3_column_value(m_statement, column);
    const int kind = sqlite3_value_type(field);
    if (kind != SQLITE_INTEGER && kind != SQLITE_FLOAT) {
        return std::nullopt;
    }
    const double value = sqlite3_value_double(field);
    const std::optional<std::int32_t> nearest = RoundToInteger(value);
    return nearest && *nearest == value ? nearest : std::nullopt;
}

void SqlRows::ReadText(int column, DbText& target) const {
    switch (sqlite3_column_type(m_statement, column)) {
        case SQLITE_NULL:
            target.AssignNull();
            break;
        case SQLITE_FLOAT:
            target.Assign(RenderPlain(sqlite3_column_double(m_statement, column)));
            break;
        default:
            target.Assign(TextOf(m_statement, column));
    }
}

DbText SqlRows::Text(const char* name) const {
    DbText text;
    ReadText(Column(name), text);
    return text;
}

}  // namespace genvara
