#pragma once

#include "CLoadProfile.h"

namespace genvara {

/// Works out every figure of every step and load, wanted or not: a load that has one which cannot be worked
/// out fails its project, whatever is asked about it.
/// @throws RaisedError of the first such figure, totals of a step before those of its loads.
void WorkOutLoads(const CLoadProfile& profile);

}  // namespace genvara
