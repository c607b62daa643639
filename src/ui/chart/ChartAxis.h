#pragma once

#include <QString>
#include <vector>

namespace genvara {

/// The values that an axis is labelled with.
struct AxisTicks {
    double least = 0.0;     ///< at the axis' beginning
    double greatest = 1.0;  ///< at its end, above `least`
    std::vector<double> values{};
    int decimals = 0;  ///< that the labels want
};

/// Round values over a range, at most so many, and the range widened to the first and last of them.
[[nodiscard]] AxisTicks TicksOver(double least, double greatest, int most);
/// The same from zero up, for bars.
[[nodiscard]] AxisTicks TicksFromZero(double greatest, int most);

/// Every how many labels there is room for one.
[[nodiscard]] int LabelStride(int count, double roomForEach, double labelWidth);

}  // namespace genvara
