#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "CMtrLoad.h"
#include "NumberBounds.h"
#include "StringTable.h"

/// What the fields of the motor form may hold. Its loads enforce all but the power factor.
namespace genvara {

/// Strings of the label before the main quantity, by entry method.
inline constexpr std::array<std::int32_t, 3> kMotorPowerStrings{700, 701, 703};

/// Largest starting apparent power [kVA].
inline constexpr double kMostMotorStartingKVA = motor_limits::kStartingAppPower.greatest / 1000.0;

/// The main quantity by entry method: horsepower, running kW or starting amps.
[[nodiscard]] inline NumberBounds MotorPowerBounds(std::int32_t entryMethod) {
    struct Row {
        double most;
        const char* unit;
    };
    constexpr std::array<Row, 3> kRows{{{motor_limits::kHP.greatest, " HP"},
                                        {motor_limits::kRunningRealPower.greatest / 1000.0, " kW"},
                                        {std::numeric_limits<double>::infinity(), " A"}}};
    const auto method = static_cast<std::size_t>(entryMethod);
    return {.name = std::string(StringTable::Text(kMotorPowerStrings[method])),
            .most = kRows[method].most,
            .above = true,
            .unit = kRows[method].unit};
}

[[nodiscard]] inline NumberBounds MotorRunAmpsBounds() {
    return {.above = true, .unit = " A"};
}

[[nodiscard]] inline NumberBounds MotorStartingKVABounds() {
    return {.most = kMostMotorStartingKVA, .above = true, .unit = " kVA"};
}

/// Beyond 1 there is no imaginary power to work out.
[[nodiscard]] inline NumberBounds MotorStartingPFBounds() {
    return {.least = 0.0, .most = 1.0};
}

}  // namespace genvara
