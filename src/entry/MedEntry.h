#pragma once

#include <cstdint>
#include <string_view>

/// Ranges of the medical imaging form, which its loads do not check themselves.
namespace genvara {

inline constexpr double kMostContKVA = 500.0;
inline constexpr double kMostPeakKVA = 5000.0;
inline constexpr double kMostMedPowerFactor = 1.0;  // per unit
/// Dip from which on the image suffers [percent].
inline constexpr std::int32_t kImageVoltDip = 7;
/// Bounds of the dip's arrows [percent]: two digits.
inline constexpr std::int32_t kLeastMedVoltDip = 1;
inline constexpr std::int32_t kMostMedVoltDip = 99;

/// Whether a text keeps the user in its field: neither blank nor a number above 0 and not above the limit.
/// @param separator decimal separator of the user's locale.
[[nodiscard]] bool IsBadDemand(std::string_view text, double limit, std::string_view separator);

}  // namespace genvara
