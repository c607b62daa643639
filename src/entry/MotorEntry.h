#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Load.h"
#include "MemberBounds.h"
#include "StringTable.h"

/// The main quantity of the motor form.
namespace genvara {

/// Strings of the label before the main quantity, by entry method.
inline constexpr std::array<std::int32_t, 3> kMotorPowerStrings{700, 701, 703};

/// Members of the main quantity, by entry method.
inline constexpr std::array<std::string_view, 3> kMotorPowerMembers{"HP", "RunningRealPower", "StartingAmps"};

/// The main quantity by entry method: horsepower, running kW or starting amps.
[[nodiscard]] inline NumberBounds MotorPowerBounds(std::int32_t entryMethod) {
    const auto method = static_cast<std::size_t>(entryMethod);
    NumberBounds bounds = LoadBounds(load_type::kMotor, kMotorPowerMembers.at(method));
    bounds.name = StringTable::Text(kMotorPowerStrings.at(method));
    return bounds;
}

}  // namespace genvara
