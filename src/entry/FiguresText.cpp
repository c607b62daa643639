#include "FiguresText.h"

#include <fmt/format.h>

#include "Kilo.h"

namespace genvara {
namespace {

constexpr int kDecimals = 2;

/// "37.50 kW, 41.67 kVA (3 × 12.50, 13.89)".
std::string PowerText(double watts, double voltAmperes, std::int32_t quantity, const EntryNumbers& numbers) {
    const auto kilo = [&](double power) { return numbers.Fixed(power / kPerKilo, kDecimals); };
    const std::string all =
        fmt::format("{} kW, {} kVA", kilo(watts * quantity), kilo(voltAmperes * quantity));
    return quantity == 1 ? all
                         : fmt::format("{} ({} × {}, {})", all, quantity, kilo(watts), kilo(voltAmperes));
}

}  // namespace

std::string FiguresText(const Load& load, const EntryNumbers& numbers) {
    const auto text = [&](double watts, double voltAmperes) {
        return PowerText(watts, voltAmperes, load.Quantity(), numbers);
    };
    return fmt::format("Running {}. Starting {}.", text(load.RunningRealPower(), load.RunningAppPower()),
                       text(load.StartingRealPower(), load.StartingAppPower()));
}

}  // namespace genvara
