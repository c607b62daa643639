#pragma once

#include <cstdint>

/// Ranges of the medical imaging form, which its loads do not check themselves.
namespace genvara {

inline constexpr double kMostContKVA = 500.0;
inline constexpr double kMostPeakKVA = 5000.0;
inline constexpr double kMostMedPowerFactor = 1.0;  // per unit
/// Dip from which on the image suffers [percent].
inline constexpr std::int32_t kImageVoltDip = 7;
/// Bounds of the dip [percent]: two digits.
inline constexpr std::int32_t kLeastMedVoltDip = 1;
inline constexpr std::int32_t kMostMedVoltDip = 99;

}  // namespace genvara
