#pragma once

#include <cstdint>
#include <string>

/// Numbers as the user sees and types them, in the decimal separator of his locale.
namespace genvara {

/// A plain number.
[[nodiscard]] std::string ShownNumber(double value);
/// A number rounded to one decimal, half away from zero, without trailing zeros.
[[nodiscard]] std::string ShownRounded(double value);

/// The number that a text stands for.
/// @throws RaisedError 13 "Type mismatch" from "EntryText".
[[nodiscard]] double EnteredNumber(const std::string& text);

/// The 32-bit integer nearest to the number that a text stands for.
/// @throws RaisedError 13 as `EnteredNumber`; 6 "Overflow" beyond the range.
[[nodiscard]] std::int32_t EnteredInteger(const std::string& text);

/// The same for a whole number.
/// @throws RaisedError as `EnteredInteger`; 13 for a fraction of a millionth or more.
[[nodiscard]] std::int32_t EnteredWhole(const std::string& text);

}  // namespace genvara
