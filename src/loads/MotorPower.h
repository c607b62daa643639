#pragma once

#include <cstdint>
#include <string_view>

#include "CMtrLoad.h"
#include "MotorConversions.h"

/// What a motor's size means in power, by the motor tables: the one place that knows.
namespace genvara {

/// The unit of a running power that stands for a motor's size. The motor tables are looked up with the figure
/// as it stands, although their columns are in kW and kVA.
enum class RunningUnit : std::uint8_t {
    /// kW, and so the apparent power is found in kVA: what the entry form does.
    Kilowatts,
    /// W, and so what is found far behind the table's last row is taken for VA: what reading a project has
    /// always made of it.
    Watts,
};

/// A motor's size as it was entered.
struct MotorSize {
    std::int32_t method = motor_entry::kHorsepower;  ///< code of `motor_entry`
    double figure = 0.0;      ///< by the method: hp; running power in `unit`; running current [A]
    std::int32_t phases = 0;  ///< connection code of the load
    double volts = 0.0;       ///< line-to-line voltage of the site
    RunningUnit unit = RunningUnit::Kilowatts;
};

/// What a motor draws while running.
struct MotorPower {
    double watts = 0.0;
    double voltAmperes = 0.0;
};

/// Running powers of a motor; both 0 for a method that is none of the three.
/// @throws RaisedError of `InterpolateXY` if the motor tables do not serve; 6 "Overflow" from `member`.
[[nodiscard]] MotorPower RunningPowerOf(const MotorSize& size, const MotorConversions& motors,
                                        std::string_view member);

/// Running apparent power [kVA] of a current [A]; every connection code but 0 counts as one phase.
/// @throws RaisedError 6 "Overflow" from `member`.
[[nodiscard]] double RunningKVAOfAmps(double amperes, std::int32_t phases, double volts,
                                      std::string_view member);

/// Works out anew what no project holds: the powers that follow from a motor's or a compressor's size. Other
/// kinds work theirs out whenever they are asked.
/// @param volts line-to-line voltage of the site.
/// @throws RaisedError of a setter that refuses a size or a power, and as `RunningPowerOf`.
void RebuildPowers(Load& load, double volts, const MotorConversions& motors);

}  // namespace genvara
