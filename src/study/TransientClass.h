#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "DesignResults.h"

namespace genvara {

/// A performance class of ISO 8528-5 with its transient limits when load is switched on.
struct TransientClass {
    std::string_view name;
    double mostVoltageDip;  ///< percent of the rated voltage
    double mostFreqDip;     ///< percent of the rated frequency
};

/// The classes, highest first. G4 is what buyer and maker agree upon, and has no figures.
inline constexpr std::array<TransientClass, 3> kTransientClasses{{
    {"G3", 15.0, 7.0},
    {"G2", 20.0, 10.0},
    {"G1", 25.0, 15.0},
}};

inline constexpr std::string_view kNoTransientClass = "none";

/// The highest class whose limits a set keeps at every step, "none" where it keeps not even the lowest;
/// nothing for a set without frequency data or that does not run on diesel, for which alone the figures are
/// meant.
[[nodiscard]] std::optional<std::string_view> TransientClassOf(const ChosenSet& set);

}  // namespace genvara
