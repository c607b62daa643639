#include "mdlConvert.h"

#include <array>

namespace genvara {
namespace {

/// Feet in a metre, and metres in a foot; the two are rounded on their own.
constexpr double kFeetPerMetre = 3.28084;
constexpr double kMetresPerFoot = 0.3048;

constexpr double kBTUPerHP = 6250.0;
constexpr double kHPPerBTU = 0.00016;
constexpr double kTonsPerHP = 0.5;

struct LockedRotorBand {
    double fromHP;
    double kVAPerHP;
};

/// Middle of the locked-rotor band of the code letter that is usual for a motor of the size
/// (F, G, H, J, K, L, M of NEMA MG 1), largest motors first; the first band that holds counts.
constexpr std::array<LockedRotorBand, 7> kLockedRotorBands{
    {{15.0, 5.3}, {7.5, 5.95}, {5.0, 6.7}, {3.0, 7.55}, {1.5, 8.5}, {1.0, 9.5}, {0.0, 10.6}}};

}  // namespace

double FahrenheitToCelsius(double fahrenheit) noexcept {
    return (fahrenheit - 32.0) * (5.0 / 9.0);
}

double CelsiusToFahrenheit(double celsius) noexcept {
    return (9.0 / 5.0) * celsius + 32.0;
}

double MetersToFeet(double metres) noexcept {
    return metres * kFeetPerMetre;
}

double FeetToMeters(double feet) noexcept {
    return feet * kMetresPerFoot;
}

double HPToBTU(double horsepower) noexcept {
    return horsepower * kBTUPerHP;
}

double BTUToHP(double btuPerHour) noexcept {
    return btuPerHour * kHPPerBTU;
}

double HPToTons(double horsepower) noexcept {
    return horsepower * kTonsPerHP;
}

double TonsToHP(double tons) noexcept {
    return tons + tons;
}

double LockedRotorKVAPerHP(double horsepower) noexcept {
    for (const LockedRotorBand& band : kLockedRotorBands) {
        if (horsepower >= band.fromHP) {
            return band.kVAPerHP;
        }
    }
    return 0.0;
}

}  // namespace genvara
