#pragma once

#include <cstdint>
#include <string_view>

#include "NumberBounds.h"

/// What the fields of the forms may hold, from the one table of members.
namespace genvara {

/// Units of the model in one of its forms': 1000 for W and VA, which are entered in kW and kVA; else 1.
[[nodiscard]] double PerEntryUnit(std::string_view unit) noexcept;

/// What a person may enter for a member of a kind of load, in the unit of the form; without a name.
/// @param member of `LoadProperties`, with bounds that are numbers.
[[nodiscard]] NumberBounds LoadBounds(std::int32_t loadType, std::string_view member);

/// The same for a member of the site, in the unit of the model.
[[nodiscard]] NumberBounds SiteBounds(std::string_view member);

/// The same for a step's own voltage dip [percent]: up to what the site allows.
[[nodiscard]] NumberBounds StepDipBounds(std::int32_t siteDip);

}  // namespace genvara
