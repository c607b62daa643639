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
    std::string_view codeLetter;
    double kVAPerHP;
};

/// Code letter of NEMA MG 1 that is usual for a motor of the size, and the middle of the letter's band of
/// locked-rotor kVA, largest motors first; the first band that holds counts.
constexpr std::array<LockedRotorBand, 7> kLockedRotorBands{{{15.0, "F", 5.3},
                                                            {7.5, "G", 5.95},
                                                            {5.0, "H", 6.7},
                                                            {3.0, "J", 7.55},
                                                            {1.5, "K", 8.5},
                                                            {1.0, "L", 9.5},
                                                            {0.0, "M", 10.6}}};

const LockedRotorBand* FindBand(double horsepower) noexcept {
    for (const LockedRotorBand& band : kLockedRotorBands) {
        if (horsepower >= band.fromHP) {
            return &band;
        }
    }
    return nullptr;
}

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

std::string_view UsualCodeLetter(double horsepower) noexcept {
    const LockedRotorBand* band = FindBand(horsepower);
    return band != nullptr ? band->codeLetter : std::string_view{};
}

double LockedRotorKVAPerHP(double horsepower) noexcept {
    const LockedRotorBand* band = FindBand(horsepower);
    return band != nullptr ? band->kVAPerHP : 0.0;
}

}  // namespace genvara
