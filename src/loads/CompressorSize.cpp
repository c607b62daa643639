#include "CompressorSize.h"

#include <algorithm>

#include "CMtrLoad.h"
#include "Kilo.h"
#include "mdlConvert.h"
#include "mdlUtility.h"

namespace genvara {
namespace {

double HorsepowerOf(const CAirCondLoad& load) {
    switch (load.DataEntryMethod()) {
        case aircond_entry::kBTU:
            // A size within its limit is one of at most 1000 hp, but 0.00016 is no binary fraction: the
            // largest size comes out one bit above, and the powers that follow from it would be out of range.
            return std::min(BTUToHP(load.BTU()), motor_limits::kHP.greatest);
        case aircond_entry::kTonnage:
            return TonsToHP(load.Tonnage());
        case aircond_entry::kHorsepower:
            return load.HP();
        default:
            return 0.0;
    }
}

}  // namespace

void RebuildCompressorPowers(CAirCondLoad& load, const MotorConversions& motors) {
    const double horsepower = HorsepowerOf(load);
    const double kW = InterpolateXY(horsepower, motors.MotorHP, motors.MotorRunningKW);
    const double kVA = InterpolateXY(kW, motors.MotorRunningKW, motors.MotorRunningKVA);
    load.RunningRealPower(kW * kPerKilo);
    load.RunningAppPower(kVA * kPerKilo);
    load.StartingAppPower(horsepower * LockedRotorKVAPerHP(horsepower) * kPerKilo);
    load.StartingPF(InterpolateXY(horsepower, motors.MotorHP, motors.MotorStartPF));
}

void StoreCompressorSize(CAirCondLoad& load, std::int32_t method, double size,
                         const MotorConversions& motors) {
    load.DataEntryMethod(method);
    switch (method) {
        case aircond_entry::kBTU:
            load.BTU(size);
            break;
        case aircond_entry::kTonnage:
            load.Tonnage(size);
            break;
        case aircond_entry::kHorsepower:
            load.HP(size);
            break;
        default:
            break;
    }
    RebuildCompressorPowers(load, motors);
}

}  // namespace genvara
