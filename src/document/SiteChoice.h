#pragma once

#include <cstdint>

namespace genvara {

/// What a site chooses from a list of the catalogue, or of the program.
enum class SiteChoice : std::uint8_t { Voltage, Connection, Frequency, Fuel, RiseDuty };

/// A choice of the site that no list offers: a file of another catalogue, or of another program, may hold any
/// value.
struct UnofferedChoice {
    SiteChoice choice;
    std::int32_t value;  ///< V, Hz, or a code

    bool operator==(const UnofferedChoice&) const = default;
};

}  // namespace genvara
