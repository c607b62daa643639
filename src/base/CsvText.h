#pragma once

#include <string>
#include <string_view>

namespace genvara {

/// A text as a spreadsheet takes it for a text: one that it would take for a formula, and might carry out,
/// gets an apostrophe before it. Numbers stay numbers.
[[nodiscard]] std::string WithoutFormula(std::string_view text);

/// A cell of comma-separated values: in quotes where its content needs them, and without formulas.
[[nodiscard]] std::string CsvCell(std::string_view text);

}  // namespace genvara
