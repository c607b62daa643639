#include "MotorPower.h"

#include <cmath>

#include "CAirCondLoad.h"
#include "CompressorSize.h"
#include "Kilo.h"
#include "LanguageErrors.h"
#include "mdlUtility.h"

namespace genvara {
namespace {

double FromKilo(double kilo, std::string_view member) {
    return Finite(kilo * kPerKilo, member);
}

/// The figure of the load that its entry method uses.
double FigureOf(const CMtrLoad& motor) {
    switch (motor.DataEntryMethod()) {
        case motor_entry::kHorsepower:
            return motor.HP();
        case motor_entry::kRunningKW:
            return motor.RunningRealPower();
        default:
            return motor.RunningAmps();
    }
}

}  // namespace

MotorPower RunningPowerOf(const MotorSize& size, const MotorConversions& motors, std::string_view member) {
    const auto kVAOf = [&](double kW) {
        return InterpolateXY(kW, motors.MotorRunningKW, motors.MotorRunningKVA);
    };
    switch (size.method) {
        case motor_entry::kHorsepower: {
            const double kW = InterpolateXY(size.figure, motors.MotorHP, motors.MotorRunningKW);
            return {.watts = FromKilo(kW, member), .voltAmperes = FromKilo(kVAOf(kW), member)};
        }
        case motor_entry::kRunningKW:
            if (size.unit == RunningUnit::Watts) {
                return {.watts = size.figure, .voltAmperes = kVAOf(size.figure)};
            }
            return {.watts = FromKilo(size.figure, member),
                    .voltAmperes = FromKilo(kVAOf(size.figure), member)};
        case motor_entry::kAmps: {
            const double kVA = RunningKVAOfAmps(size.figure, size.phases, size.volts, member);
            const double kW = InterpolateXY(kVA, motors.MotorRunningKVA, motors.MotorRunningKW);
            return {.watts = FromKilo(kW, member), .voltAmperes = FromKilo(kVA, member)};
        }
        default:
            return {};
    }
}

double RunningKVAOfAmps(double amperes, std::int32_t phases, double volts, std::string_view member) {
    const double factor = phases == 0 ? 3.0 : 1.0;
    return Finite(amperes * volts * std::sqrt(factor) / kPerKilo, member);
}

void RebuildPowers(Load& load, double volts, const MotorConversions& motors) {
    if (auto* compressor = dynamic_cast<CAirCondLoad*>(&load)) {
        RebuildCompressorPowers(*compressor, motors);
    } else if (auto* motor = dynamic_cast<CMtrLoad*>(&load)) {
        const MotorPower power = RunningPowerOf({.method = motor->DataEntryMethod(),
                                                 .figure = FigureOf(*motor),
                                                 .phases = motor->Phases(),
                                                 .volts = volts,
                                                 .unit = RunningUnit::Watts},
                                                motors, "CMtrLoad::RunningRealPower");
        motor->RunningRealPower(power.watts);
        motor->RunningAppPower(power.voltAmperes);
    }
}

}  // namespace genvara
