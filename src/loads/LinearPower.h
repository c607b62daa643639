#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "LanguageErrors.h"
#include "NumberText.h"
#include "RangeCheck.h"
#include "mdlUtility.h"

/// Figures that several kinds of load work out alike.
namespace genvara {

/// What the setters take of a load that is entered as real power and power factor.
namespace linear_limits {
inline constexpr Range<double> kRealPower{0.0, 2000000.0};  // W
inline constexpr Range<double> kPowerFactor{0.6, 1.0};      // per unit
}  // namespace linear_limits

/// Apparent power [VA] of a real power [W]; 0 for a power factor of 0.
[[nodiscard]] inline double ApparentPower(double watts, double powerFactor, std::string_view member) {
    return powerFactor == 0.0 ? 0.0 : Finite(watts / powerFactor, member);
}

/// Imaginary power [var] of a real power [W] at a power factor.
[[nodiscard]] inline double ImaginaryOfReal(double watts, double powerFactor, std::string_view member) {
    return Quotient(std::sin(ArcCos(powerFactor, member)) * watts, powerFactor, member);
}

/// Imaginary power [var] of an apparent power [VA] at a power factor.
[[nodiscard]] inline double ImaginaryOfApparent(double voltAmperes, double powerFactor,
                                                std::string_view member) {
    return Finite(std::sin(ArcCos(powerFactor, member)) * voltAmperes, member);
}

/// Imaginary power [var] that makes up an apparent power [VA] with a real one [W].
[[nodiscard]] inline double ImaginaryRest(double voltAmperes, double watts, std::string_view member) {
    return SquareRoot(voltAmperes * voltAmperes - watts * watts, member);
}

/// A power in kW or kVA with the pattern "0.000".
[[nodiscard]] inline std::string KiloText(double power) {
    return RenderFixed(power / 1000.0, 3);
}

/// A percentage as it stands in properties.
[[nodiscard]] inline std::string PercentText(std::int32_t percent) {
    return std::to_string(percent) + "%";
}

[[nodiscard]] inline std::string_view YesNo(bool yes) {
    return yes ? "YES" : "NO";
}

/// "s" behind the name of more than one unit.
[[nodiscard]] inline std::string_view PluralEnding(std::int32_t quantity) {
    return quantity >= 2 ? "s" : "";
}

}  // namespace genvara
