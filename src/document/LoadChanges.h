#pragma once

#include "ProjectMoment.h"

namespace genvara {

/// Whether a later moment lacks a step, or has other loads than an earlier one: some added, edited or
/// deleted. Where loads and steps stand does not count.
[[nodiscard]] bool HasOtherLoads(const ProjectMoment& earlier, const ProjectMoment& later);

}  // namespace genvara
