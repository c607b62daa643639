#pragma once

#include <cstdint>
#include <limits>

/// Ranges of the site's requirements, the same for a project and for the user's defaults.
namespace genvara::site_limits {

inline constexpr double kLowestAltitude = -500.0;   // m
inline constexpr double kHighestAltitude = 4572.0;  // m, 15,000 ft
inline constexpr double kLowestAmbTemp = -40.0;     // °C
inline constexpr double kHighestAmbTemp = 66.0;     // °C
inline constexpr std::int32_t kLowestFreq = 1;      // Hz
inline constexpr std::int32_t kFewestGensets = 1;   // in parallel
inline constexpr std::int32_t kMostGensets = 16;
inline constexpr std::int32_t kLowestLimit = 5;         // percent, of every allowed dip and distortion
inline constexpr std::int32_t kHighestVoltageDip = 35;  // percent
inline constexpr std::int32_t kHighestFreqDip = 25;     // percent
inline constexpr std::int32_t kHighestHarmonics = 20;   // percent
inline constexpr std::int32_t kNoUpperLimit = std::numeric_limits<std::int32_t>::max();

}  // namespace genvara::site_limits
