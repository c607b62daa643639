#pragma once

#include "MotorConversions.h"
#include "ProjectDraft.h"
#include "ProjectModel.h"

namespace genvara {

/// What of a project a `.prj` cannot hold: a text with a double quote or with a letter that Windows-1252
/// lacks, a value that its reader would refuse. Places are those of the project's JSON. Numbers that 15
/// digits round are none of it.
[[nodiscard]] ProjectFaults FindPrjLosses(const ProjectView& project, const MotorConversions& motors);

}  // namespace genvara
