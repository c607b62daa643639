#include "CatalogueTable.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>

#include <utility>

#include "RaisedError.h"

namespace genvara {
namespace {

StoredField FieldAt(const SQLite::Column& column) {
    if (column.isInteger()) {
        return column.getInt64();
    }
    if (column.isFloat()) {
        return column.getDouble();
    }
    if (column.isText()) {
        return column.getString();
    }
    if (column.isBlob()) {
        return StoredBytes{column.getString()};
    }
    return {};
}

}  // namespace

CatalogueTable ReadCatalogueTable(const std::filesystem::path& database, std::string_view name) {
    try {
        const SQLite::Database connection(database.string(), SQLite::OPEN_READONLY);
        SQLite::Statement query(connection, fmt::format("SELECT * FROM [{}]", name));
        CatalogueTable table;
        for (int i = 0; i < query.getColumnCount(); ++i) {
            table.columns.emplace_back(query.getColumnName(i));
        }
        while (query.executeStep()) {
            std::vector<StoredField> row;
            row.reserve(table.columns.size());
            for (int i = 0; i < query.getColumnCount(); ++i) {
                row.push_back(FieldAt(query.getColumn(i)));
            }
            table.rows.push_back(std::move(row));
        }
        return table;
    } catch (const SQLite::Exception& failure) {
        throw RaisedError(failure.getErrorCode(), "GensetDatabase", failure.what());
    }
}

}  // namespace genvara
