#pragma once

#include <string_view>
#include <vector>

namespace genvara {

/// Piecewise linear interpolation of Y over ascending X, with the first and last segment carried on
/// beyond the ends. A point on a knot gives the stored value bit for bit. X is not checked for order.
///
/// @param member source of the language's arithmetic errors, for a caller that has a name of its own.
/// @throws RaisedError 0x80040002 "Value array are not the same size." or 0x80040003 "Value arrays have
///         only one point." from "InterpolateXY"; 11 or 6 from `member`, for repeated X or an overflow.
[[nodiscard]] double InterpolateXY(double x, const std::vector<double>& X, const std::vector<double>& Y,
                                   std::string_view member = "InterpolateXY");

/// Inverse cosine in radians: exactly 0 for 1, and 3.14159265358979 for -1 and below.
/// @throws RaisedError 5 "Invalid procedure call or argument" from `member` for a value above 1.
[[nodiscard]] double ArcCos(double c, std::string_view member = "ArcCos");

}  // namespace genvara
