#pragma once

#include "CMtrLoad.h"
#include "CPwrSys.h"
#include "MemberChange.h"
#include "RowReader.h"

namespace genvara {

/// Fills a motor from a row by the fields of its entry form: size, starter and the rest are entered there as
/// somebody would, so that code letter, starting kVA and power factor follow.
/// @param load with name, phases and quantity.
void BuildMotor(RowReader& row, const CPwrSys& site, const EntryRules& rules, CMtrLoad& load);

}  // namespace genvara
