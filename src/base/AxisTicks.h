#pragma once

#include <vector>

namespace genvara {

/// The round values that a scale is parted at.
struct AxisTicks {
    double least = 0.0;     ///< at the axis' beginning
    double greatest = 1.0;  ///< at its end, above `least`
    std::vector<double> values{};
    int decimals = 0;  ///< that the labels want
};

/// Round values over a range, at most so many, and the range widened to the first and last of them.
[[nodiscard]] AxisTicks TicksOver(double least, double greatest, int most);

}  // namespace genvara
