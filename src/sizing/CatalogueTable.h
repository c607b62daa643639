#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace genvara {

/// Bytes that the database stores as such.
struct StoredBytes {
    std::string bytes;
};

/// A field as the database stores it; the first alternative is a Null.
using StoredField = std::variant<std::monostate, std::int64_t, double, std::string, StoredBytes>;

/// A table of a genset database as it stands there, in no particular order.
struct CatalogueTable {
    std::vector<std::string> columns;
    std::vector<std::vector<StoredField>> rows;  ///< a field a column
};

/// Reads a table by its name, one of `kGensetSchema`, on a connection of its own.
/// @throws RaisedError with the database's own number from "GensetDatabase".
[[nodiscard]] CatalogueTable ReadCatalogueTable(const std::filesystem::path& database, std::string_view name);

}  // namespace genvara
