#pragma once

#include "LinearPower.h"
#include "NumberBounds.h"

namespace genvara {

/// Real power of a load that is entered by its power and power factor.
inline NumberBounds LinearPowerBounds() {
    return {.least = 0.0, .most = kMostLinearPower / 1000.0, .unit = " kW"};
}

/// Power factor of the same.
inline NumberBounds LinearFactorBounds() {
    return {.least = kLeastPowerFactor, .most = kMostPowerFactor, .decimals = 2};
}

}  // namespace genvara
