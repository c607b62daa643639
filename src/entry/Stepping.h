#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "NumberBounds.h"

namespace genvara {

/// Bounds and step of a number that arrows change.
struct StepRange {
    std::int32_t least = 0;
    std::int32_t most = 100;
    std::int32_t step = 1;
};

/// The bounds of a field of whole numbers, for the arrows beside it.
[[nodiscard]] inline StepRange StepsWithin(const NumberBounds& bounds, std::int32_t step = 1) noexcept {
    return {.least = static_cast<std::int32_t>(bounds.least),
            .most = static_cast<std::int32_t>(bounds.most),
            .step = step};
}

/// The number so many steps on, within the bounds; the least where there is none yet.
[[nodiscard]] inline std::int32_t SteppedBy(const std::optional<double>& held, const StepRange& range,
                                            std::int32_t steps) {
    const double least = range.least;
    const double next = held ? *held + static_cast<double>(steps * range.step) : least;
    return static_cast<std::int32_t>(
        std::clamp(next, least, std::max(least, static_cast<double>(range.most))));
}

}  // namespace genvara
