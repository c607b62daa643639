#pragma once

#include <cstdint>
#include <string_view>

#include "CMedEquipLoad.h"

/// Ranges of the medical imaging form, which its loads do not check themselves.
namespace genvara {

inline constexpr double kMostContKVA = medical_limits::kEnteredContVA.greatest / 1000.0;
inline constexpr double kMostPeakKVA = medical_limits::kEnteredPeakVA.greatest / 1000.0;
inline constexpr double kMostMedPowerFactor = medical_limits::kEnteredPowerFactor.greatest;  // per unit
/// Dip from which on the image suffers [percent].
inline constexpr std::int32_t kImageVoltDip = 7;

/// Whether a text keeps the user in its field: neither blank nor a number above 0 and not above the limit.
/// @param separator decimal separator of the user's locale.
[[nodiscard]] bool IsBadDemand(std::string_view text, double limit, std::string_view separator);

}  // namespace genvara
