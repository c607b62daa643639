#pragma once

#include <cstdint>
#include <memory>

#include "Load.h"
#include "MotorConversions.h"

namespace genvara {

/// A new load of a kind, with the kind's defaults; null for a code of no kind. The motor tables outlive it.
[[nodiscard]] std::unique_ptr<Load> MakeLoad(std::int32_t loadType, const MotorConversions& motors);

}  // namespace genvara
