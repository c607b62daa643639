#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "CLoadProfile.h"
#include "CPwrSys.h"

/// What a project needs before it can be sized.
namespace genvara {

/// Phases of a winding connection; none for one that the catalogue does not have.
using PhasesOfConnection = std::function<std::optional<std::int32_t>(std::int32_t connectCode)>;

/// Gives a site the phases of its connection; one that the catalogue does not know leaves them.
/// @throws whatever `phasesOf` throws.
void FollowConnection(CPwrSys& site, const PhasesOfConnection& phasesOf);

/// Makes sure that the catalogue knows the site's connection.
/// @param whose what the sentence says behind the code, as in " of the project".
/// @throws RaisedError 0 with a sentence.
void RequireConnection(const CPwrSys& site, const PhasesOfConnection& phasesOf, std::string_view whose = {});

/// What is said where there is nothing to size.
inline constexpr const char* kNothingToSize = "At least one load and load step must be entered.";

/// Whether there is anything to size: only the first step counts, later ones may be empty.
[[nodiscard]] bool HasLoads(const CLoadProfile& profile);

/// Makes sure that there is.
/// @throws RaisedError 0 with `kNothingToSize`.
void RequireLoads(const CLoadProfile& profile);

}  // namespace genvara
