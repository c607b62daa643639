#pragma once

#include <string_view>

namespace genvara {

/// Degrees Fahrenheit to degrees Celsius.
[[nodiscard]] double FahrenheitToCelsius(double fahrenheit) noexcept;
/// Degrees Celsius to degrees Fahrenheit.
[[nodiscard]] double CelsiusToFahrenheit(double celsius) noexcept;
/// Metres to feet.
[[nodiscard]] double MetersToFeet(double metres) noexcept;
/// Feet to metres.
[[nodiscard]] double FeetToMeters(double feet) noexcept;

// An air conditioner's compressor is rated by rules of thumb of the trade, one ton for two horsepower and
// 6250 BTU/hr for one, and not by the physical constants.

/// Compressor horsepower to BTU per hour.
[[nodiscard]] double HPToBTU(double horsepower) noexcept;
/// BTU per hour to compressor horsepower.
[[nodiscard]] double BTUToHP(double btuPerHour) noexcept;
/// Compressor horsepower to tons of refrigeration.
[[nodiscard]] double HPToTons(double horsepower) noexcept;
/// Tons of refrigeration to compressor horsepower.
[[nodiscard]] double TonsToHP(double tons) noexcept;

/// Code letter that is usual for a motor of the given size [hp]; empty below 0 hp.
[[nodiscard]] std::string_view UsualCodeLetter(double horsepower) noexcept;

/// Locked-rotor kVA per horsepower of a motor of the given size [hp]; 0 below 0 hp.
[[nodiscard]] double LockedRotorKVAPerHP(double horsepower) noexcept;

}  // namespace genvara
