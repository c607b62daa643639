#include "EntryNumbers.h"

#include <cmath>

#include "EntryText.h"
#include "KeyFilters.h"
#include "LanguageErrors.h"
#include "NumberText.h"

namespace genvara {
namespace {

/// Largest difference between a number and the integer that it counts as.
constexpr double kWholeTolerance = 1e-6;

}  // namespace

std::string ShownNumber(double value) {
    return Shown(RenderPlain(value), DecimalSeparator());
}

std::string ShownRounded(double value) {
    return ShownNumber(ParseNumber(RenderFixed(value, 1)).value_or(value));
}

double EnteredNumber(const std::string& text) {
    return NumberOf(text, DecimalSeparator());
}

std::int32_t EnteredInteger(const std::string& text) {
    return IntegerOf(text, DecimalSeparator());
}

std::int32_t EnteredWhole(const std::string& text) {
    const std::int32_t whole = EnteredInteger(text);
    if (!(std::abs(EnteredNumber(text) - whole) < kWholeTolerance)) {
        RaiseTypeMismatch("EnteredWhole");
    }
    return whole;
}

}  // namespace genvara
