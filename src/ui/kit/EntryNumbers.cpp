#include "EntryNumbers.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "KeyFilters.h"
#include "LanguageErrors.h"
#include "NumberText.h"

namespace genvara {
namespace {

/// Largest difference between a number and the integer that it counts as.
constexpr double kWholeTolerance = 1e-6;

std::string WithUserSeparator(std::string number) {
    const std::size_t point = number.find('.');
    return point == std::string::npos ? number : number.replace(point, 1, DecimalSeparator());
}

}  // namespace

std::string ShownNumber(double value) {
    return WithUserSeparator(RenderPlain(value));
}

std::string ShownRounded(double value) {
    return ShownNumber(ParseNumber(RenderFixed(value, 1)).value_or(value));
}

double EnteredNumber(const std::string& text) {
    const std::optional<double> value = ParseNumber(WithPoint(text, DecimalSeparator()));
    if (!value) {
        RaiseTypeMismatch("EnteredNumber");
    }
    return *value;
}

std::int32_t EnteredInteger(const std::string& text) {
    const std::optional<std::int32_t> value = RoundToInteger(EnteredNumber(text));
    if (!value) {
        RaiseOverflow("EnteredInteger");
    }
    return *value;
}

std::int32_t EnteredWhole(const std::string& text) {
    const std::int32_t whole = EnteredInteger(text);
    if (!(std::abs(EnteredNumber(text) - whole) < kWholeTolerance)) {
        RaiseTypeMismatch("EnteredWhole");
    }
    return whole;
}

}  // namespace genvara
