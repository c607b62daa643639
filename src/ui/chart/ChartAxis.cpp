#include "ChartAxis.h"

#include <algorithm>
#include <cmath>

namespace genvara {

AxisTicks TicksFromZero(double greatest, int most) {
    return TicksOver(0.0, greatest > 0.0 ? greatest : 1.0, most);
}

int LabelStride(int count, double roomForEach, double labelWidth) {
    if (roomForEach <= 0.0) {
        return std::max(1, count);
    }
    return std::clamp(static_cast<int>(std::ceil(labelWidth / roomForEach)), 1, std::max(1, count));
}

}  // namespace genvara
