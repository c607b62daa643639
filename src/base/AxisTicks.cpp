#include "AxisTicks.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace genvara {
namespace {

/// The least round distance of at most so many ticks.
double RoundStep(double range, int most) {
    constexpr std::array<double, 4> kRound{1.0, 2.0, 5.0, 10.0};
    const double rough = range / std::max(1, most - 1);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    const auto* const found =
        std::ranges::find_if(kRound, [&](double digit) { return digit * power >= rough * (1.0 - 1e-9); });
    return (found == kRound.end() ? kRound.back() : *found) * power;
}

}  // namespace

AxisTicks TicksOver(double least, double greatest, int most) {
    if (!std::isfinite(least) || !std::isfinite(greatest)) {
        return {.least = 0.0, .greatest = 1.0, .values = {0.0, 1.0}, .decimals = 0};
    }
    if (!(greatest > least)) {
        const double room = std::max(1.0, std::abs(least) * 0.1);
        least -= room;
        greatest += room;
    }
    const double step = RoundStep(greatest - least, most);
    const double first = std::floor(least / step + 1e-9);
    const double last = std::ceil(greatest / step - 1e-9);
    AxisTicks ticks{.least = first * step, .greatest = last * step};
    const auto count = static_cast<int>(last - first) + 1;
    for (int tick = 0; tick < count; ++tick) {
        ticks.values.push_back((first + tick) * step);
    }
    ticks.decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 9);
    return ticks;
}

}  // namespace genvara
