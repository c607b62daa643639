#pragma once

#include <cstdint>

#include "CMedEquipLoad.h"

/// Ranges of the medical imaging form, which its loads do not check themselves.
namespace genvara {

/// Dip from which on the image suffers [percent].
inline constexpr std::int32_t kImageVoltDip = 7;

}  // namespace genvara
