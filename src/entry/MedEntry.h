#pragma once

#include <cstdint>

#include "CMedEquipLoad.h"

/// Ranges of the medical imaging form, which its loads do not check themselves.
namespace genvara {

inline constexpr double kMostContKVA = medical_limits::kEnteredContVA.greatest / 1000.0;
inline constexpr double kMostPeakKVA = medical_limits::kEnteredPeakVA.greatest / 1000.0;
inline constexpr double kMostMedPowerFactor = medical_limits::kEnteredPowerFactor.greatest;  // per unit
/// Dip from which on the image suffers [percent].
inline constexpr std::int32_t kImageVoltDip = 7;

}  // namespace genvara
