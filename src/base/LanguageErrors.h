#pragma once

#include <cmath>
#include <string_view>

/// Arithmetic and access whose failures are raised errors rather than infinities and NaNs.
///
/// Each takes the member that computes, as in "CVFDLoad::RunningAppPower", which becomes the source of
/// the error.
namespace genvara {

/// @throws RaisedError 6 "Overflow".
[[noreturn]] void RaiseOverflow(std::string_view member);
/// @throws RaisedError 9 "Subscript out of range".
[[noreturn]] void RaiseSubscriptOutOfRange(std::string_view member);
/// @throws RaisedError 11 "Division by zero".
[[noreturn]] void RaiseDivisionByZero(std::string_view member);
/// @throws RaisedError 13 "Type mismatch".
[[noreturn]] void RaiseTypeMismatch(std::string_view member);
/// @throws RaisedError 5 "Invalid procedure call or argument".
[[noreturn]] void RaiseInvalidArgument(std::string_view member);

/// The value itself.
/// @throws RaisedError 6 "Overflow" from `member` if the value is not finite.
[[nodiscard]] inline double Finite(double value, std::string_view member) {
    if (!std::isfinite(value)) {
        RaiseOverflow(member);
    }
    return value;
}

/// numerator / denominator.
/// @throws RaisedError 11 for a denominator of 0, whatever the numerator, or 6, from `member`.
[[nodiscard]] inline double Quotient(double numerator, double denominator, std::string_view member) {
    if (denominator == 0.0) {
        RaiseDivisionByZero(member);
    }
    return Finite(numerator / denominator, member);
}

/// The square root of a value.
/// @throws RaisedError 5 for a negative value, or 6, from `member`.
[[nodiscard]] double SquareRoot(double value, std::string_view member);

/// base raised to exponent.
/// @throws RaisedError 5 for a negative base with a broken exponent, 11 for 0 with a negative exponent,
///         or 6, from `member`.
[[nodiscard]] double Power(double base, double exponent, std::string_view member);

}  // namespace genvara
