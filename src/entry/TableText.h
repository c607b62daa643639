#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

class ByteSource;

/// What a table of text may come to; a program that takes more takes something else for a table.
inline constexpr std::size_t kMostTableBytes = 16'777'216;  ///< 16 MB
inline constexpr std::size_t kMostTableRows = 10000;        ///< behind the heading
inline constexpr std::size_t kMostTableColumns = 256;
inline constexpr std::size_t kLongestTableCell = 32767;  ///< bytes; what spreadsheets take

/// A row of a table.
struct TableRow {
    std::int32_t number = 0;  ///< from 1, as a spreadsheet counts; empty rows count
    std::vector<std::string> cells;
};

/// A table that was read from text.
struct TableText {
    std::vector<TableRow> rows;  ///< those with anything in them, the heading first
    char delimiter = ',';        ///< comma, semicolon or tab
    std::string fault;           ///< one sentence on why there are no rows; empty if there are
};

/// All bytes of a table, or some more than a table may have, which `ReadTableText` refuses.
/// @throws whatever the source does.
[[nodiscard]] std::string TableBytes(ByteSource& source);

/// Reads a table of comma-, semicolon- or tab-separated cells, told apart by the heading row, or by a line
/// "sep=;" before it. The text is UTF-8, UTF-16 with a byte order mark, or else Windows-1252. Cells may stand
/// in quotation marks, doubled inside; in tables with tabs, as the clipboard has them, a mark within a cell
/// stands for itself. Nothing in a table is ever carried out: a formula is text.
[[nodiscard]] TableText ReadTableText(std::string_view bytes);

}  // namespace genvara
