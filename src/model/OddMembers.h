#pragma once

#include <string>

#include "Load.h"

namespace genvara {

/// The numbers of a load that nobody can enter, though a file may hold them: a power factor above 1, a
/// negative voltage.
/// @return their plain words, "voltage and current"; empty where there are none.
[[nodiscard]] std::string OddMembers(const Load& load);

}  // namespace genvara
