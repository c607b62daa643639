#pragma once

#include <cstdint>

#include "CAirCondLoad.h"
#include "MotorConversions.h"

namespace genvara {

/// Works the powers out that follow from an air conditioner's size: the compressor's horsepower by the
/// trade's equivalences, running powers and starting power factor by the motor tables, starting apparent
/// power by the locked-rotor kVA of the compressor's band. A method that is none of the three has no size.
/// @throws RaisedError 17 or 18 of a power's setter, or of `InterpolateXY`. What was set before stays set.
void RebuildCompressorPowers(CAirCondLoad& load, const MotorConversions& motors);

/// Sets an air conditioner's size, and all powers that follow from it, as `RebuildCompressorPowers` does.
/// @param method code of `aircond_entry`.
/// @param size in the method's unit: BTU/hr, tons or hp.
/// @throws RaisedError 15, 20 or 21 of the size's setter, and as `RebuildCompressorPowers`.
void StoreCompressorSize(CAirCondLoad& load, std::int32_t method, double size,
                         const MotorConversions& motors);

}  // namespace genvara
