#pragma once

#include <cstdint>
#include <optional>

#include "Load.h"
#include "RaisedError.h"

namespace genvara {

/// What a load is asked for, as far as it can fail.
enum class LoadFigure : std::uint8_t {
    Running,    ///< powers while running
    Starting,   ///< powers while starting
    Harmonics,  ///< powers through rectifiers and ballasts
    Texts       ///< summary and properties
};

/// A figure that cannot be worked out, and why not.
struct FailedFigure {
    LoadFigure figure;
    RaisedError failure;
};

/// Asks a load for everything that a step, a report or a list may ask it for, for all its units together.
/// @return the first figure that fails or is beyond a double's range; nothing for a load that can be sized.
[[nodiscard]] std::optional<FailedFigure> TryFigures(const Load& load);

}  // namespace genvara
