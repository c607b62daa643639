#pragma once

#include "AxisTicks.h"

namespace genvara {

/// `TicksOver` from zero up, for bars.
[[nodiscard]] AxisTicks TicksFromZero(double greatest, int most);

/// Every how many labels there is room for one.
[[nodiscard]] int LabelStride(int count, double roomForEach, double labelWidth);

}  // namespace genvara
