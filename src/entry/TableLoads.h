#pragma once

#include <memory>

#include "CPwrSys.h"
#include "Load.h"
#include "MemberChange.h"
#include "RowReader.h"

namespace genvara {

/// Makes a load of a row as its entry form would of the same entries: what a cell leaves open is what the
/// form opens with, what follows from an entry follows, and what the form does not let one enter is refused.
/// @param row of the kind that the load is to be.
/// @return null if anything is wrong with the row; it has then noted what.
[[nodiscard]] std::unique_ptr<Load> MakeTableLoad(RowReader& row, const CPwrSys& site,
                                                  const EntryRules& rules);

}  // namespace genvara
