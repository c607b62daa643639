#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as text and text as numbers: the only place that formats a number for a user or a file.
/// Nothing here depends on the process's locale.
namespace genvara {

/// The patterns "0" (no decimals) to "0.000": at least one digit before the point, no thousands separator.
///
/// Rounds half away from zero on the decimal form of the value at 15 significant digits, so that 0.285
/// shows as 0.29 although the nearest double lies below it. A value that rounds to zero has no sign.
[[nodiscard]] std::string RenderFixed(double value, int decimals);

/// A plain number: at most 15 significant digits, no trailing zeros, "0.85" below one; "1E+20" and "1E-16"
/// where 15 digits before or 15 places after the point do not suffice.
[[nodiscard]] std::string RenderPlain(double value);

/// The shortest text that reads back to the very same double.
[[nodiscard]] std::string RenderShortest(double value);

/// Reads a whole text as a decimal number: sign, digits, point, exponent; blanks around it allowed.
/// Nothing for any other text ("", "nan", "inf", "0x10", "1,000") and for a number beyond a double's range.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);

/// The 32-bit integer nearest to a value, halves to the even one; nothing outside the range.
[[nodiscard]] std::optional<std::int32_t> RoundToInteger(double value) noexcept;

}  // namespace genvara
