#pragma once

#include <string>
#include <vector>

#include "ProjectModel.h"

namespace genvara {

/// What one project has other than another, a line each, as a person would tell it: "Step 2, "Pumps", added
/// with 3 loads", "Load "Fan" of step 1: quantity 1, now 2", "Altitude: 0 m, now 1500 m". Figures that differ
/// by less than they are shown with count as the same, and so do times and what follows from other members.
/// @param most lines at most; what is beyond is counted in a last one.
[[nodiscard]] std::vector<std::string> Differences(const ProjectView& before, const ProjectView& now,
                                                   std::size_t most = 12);

}  // namespace genvara
