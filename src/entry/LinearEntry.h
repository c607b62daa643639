#pragma once

#include "LinearPower.h"
#include "NumberBounds.h"

namespace genvara {

/// Real power of a load that is entered by its power and power factor.
inline NumberBounds LinearPowerBounds() {
    return {.least = linear_limits::kRealPower.least / 1000.0,
            .most = linear_limits::kRealPower.greatest / 1000.0,
            .unit = " kW"};
}

/// Power factor of the same.
inline NumberBounds LinearFactorBounds() {
    return {.least = linear_limits::kPowerFactor.least,
            .most = linear_limits::kPowerFactor.greatest,
            .decimals = 2};
}

}  // namespace genvara
