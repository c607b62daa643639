#include "CompressorSize.h"

#include <algorithm>

#include "CMtrLoad.h"
#include "mdlConvert.h"
#include "mdlUtility.h"

namespace genvara {
namespace {

constexpr double kWattsPerKilowatt = 1000.0;

/// Sets the size as it was entered; the horsepower that it stands for.
double SetSize(CAirCondLoad& load, std::int32_t method, double size) {
    load.DataEntryMethod(method);
    switch (method) {
        case aircond_entry::kBTU:
            load.BTU(size);
            // A size within its limit is one of at most 1000 hp, but 0.00016 is no binary fraction: the
            // largest size comes out one bit above, and the powers that follow from it would be out of range.
            return std::min(BTUToHP(size), kMostMotorHP);
        case aircond_entry::kTonnage:
            load.Tonnage(size);
            return TonsToHP(size);
        case aircond_entry::kHorsepower:
            load.HP(size);
            return size;
        default:
            return 0.0;
    }
}

}  // namespace

void StoreCompressorSize(CAirCondLoad& load, std::int32_t method, double size,
                         const MotorConversions& motors) {
    const double horsepower = SetSize(load, method, size);
    const double kW = InterpolateXY(horsepower, motors.MotorHP, motors.MotorRunningKW);
    const double kVA = InterpolateXY(kW, motors.MotorRunningKW, motors.MotorRunningKVA);
    load.RunningRealPower(kW * kWattsPerKilowatt);
    load.RunningAppPower(kVA * kWattsPerKilowatt);
    load.StartingAppPower(horsepower * LockedRotorKVAPerHP(horsepower) * kWattsPerKilowatt);
    load.StartingPF(InterpolateXY(horsepower, motors.MotorHP, motors.MotorStartPF));
}

}  // namespace genvara
