#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ProjectSource.h"

namespace genvara {

/// Called with each row of a CSV table: the line it begins on, from 1, and its fields.
using CsvRowHandler = std::function<void(std::int64_t line, const std::vector<std::string>& fields)>;

/// How a table's cells are told apart.
struct CsvRules {
    char delimiter = ',';
    bool strict = true;  ///< a quotation mark within a cell that is not quoted is a breach, and not itself
};

/// Reads comma-separated values row by row: quoted fields with doubled quotes, LF or CR LF, blank lines
/// passed over, a byte order mark at the start ignored. Holds one row at a time.
/// @return the text of the first breach of the quoting rules with its line, or an empty text.
[[nodiscard]] std::string ReadCsv(ByteSource& source, const CsvRowHandler& handler,
                                  const CsvRules& rules = {});

}  // namespace genvara
