#pragma once

#include <cstdint>

#include "CLightLoad.h"

/// What the lamp type calls for on the lighting form.
namespace genvara {

/// Whether a lamp has a ballast to choose and a power factor to enter; an incandescent one has neither.
[[nodiscard]] constexpr bool LampHasBallast(std::int32_t lightType) noexcept {
    return lightType != light_type::kIncandescent;
}

/// The ballast that is stored for a lamp, given the one that is selected.
[[nodiscard]] constexpr std::int32_t StoredBallast(std::int32_t lightType, std::int32_t selected) noexcept {
    return LampHasBallast(lightType) ? selected : ballast::kNone;
}

/// The ballast that is selected for a stored one: the magnetic one, unless it is electronic.
[[nodiscard]] constexpr std::int32_t ShownBallast(std::int32_t stored) noexcept {
    return stored == ballast::kElectronic || stored == ballast::kLowDistElectronic
               ? stored
               : ballast::kHighEffMagnetic;
}

}  // namespace genvara
