#pragma once

#include "Candidate.h"
#include "ProfileFigures.h"

/// Where a run may leave a candidate out: nothing that is worked out for it could have raised.
///
/// A figure out of the ordinary (infinite, negative where it is a power, far beyond any machine) proves
/// nothing, and the run then takes every candidate through every step, in the order of the catalogue. With a
/// profile and a set that cannot fail no step raises: quotients and powers of the dips stay below 1e200,
/// distortion has shares of 1 or less and a positive impedance.
namespace genvara {

/// Whether no step of a profile raises for a set that cannot fail either.
[[nodiscard]] bool CannotFail(const ProfileFigures& profile) noexcept;

/// Whether a set raises at no step of a profile that cannot fail either.
[[nodiscard]] bool CannotFail(const Candidate& set) noexcept;

}  // namespace genvara
