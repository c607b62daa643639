#pragma once

#include <string>

#include "EntryNumbers.h"
#include "Load.h"

namespace genvara {

/// What a load counts for, in one line: its running and starting power in kW and kVA, of all units and, where
/// there are several, of one.
/// @throws RaisedError of the load's figures.
[[nodiscard]] std::string FiguresText(const Load& load, const EntryNumbers& numbers);

}  // namespace genvara
