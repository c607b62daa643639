#pragma once

#include "MotorCalculator.h"
#include "Paths.h"
#include "Sizable.h"

/// Changes of members that act like the same change in the entry forms: what a form works out anew is worked
/// out anew, and nothing else.
namespace genvara {

/// What changes of members are worked out by.
struct EntryRules {
    MotorTables motors;
    PhasesOfConnection phasesOf;
};

/// Changes a member and what its form works out from it:
/// - another size, code letter or starting method of a motor gives code letter, starting power factor and
///   starting kVA as its fields show them, by the load's own current limit; `StartsLoaded` multiplies or
///   divides the starting power factor by 0.65; another entry method begins with an across-the-line start
///   and no size;
/// - a lamp brings its ballast and, without one, a power factor of 1; a lamp starts with what it runs with;
/// - connection, family and application of rectifiers bring what goes with them;
/// - a number that stands as an air conditioner's size stays there in another unit, where the unit allows it;
/// - a load without a name has that of its kind;
/// - another voltage or connection gives the site the phases of its connection.
///
/// A change to the value that stands changes nothing.
/// @param site where the load is, or the site of the target itself.
/// @throws RaisedError of a setter or of the motor tables, 13 for a motor whose fields lack a number; the
///         record is then as before.
void ChangeMember(const PathTarget& target, const PropertyValue& value, const CPwrSys& site,
                  const EntryRules& rules);

}  // namespace genvara
