#pragma once

#include <cstddef>

#include "CDesigner.h"
#include "TextGrid.h"

namespace genvara {

/// Position of the column that tells why a set is listed where it is.
inline constexpr int kVerdictColumn = 8;

/// All listed sets of a run, recommended ones first: rating, what is left of it at the site, loading,
/// starting kVA, worst dips and distortion, verdict.
[[nodiscard]] TextGrid SetsGrid(const CDesigner& designer);

}  // namespace genvara
