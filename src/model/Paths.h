#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "DesignLimits.h"
#include "ProjectModel.h"
#include "Properties.h"

/// Places in a project by name: `PowerSystem.Altitude`, `Step[2].Load[1].StartingMethod`,
/// `Designer.MaxLoading`. Names are those of the model; positions count from 1, in the order of the profile.
namespace genvara {

/// A path, taken apart; its names may be of nothing.
struct PropertyPath {
    std::string record;     ///< "PowerSystem"; "Step" and "Load" for what has a position
    std::int32_t step = 0;  ///< position from 1; 0 for what is of no step
    std::int32_t load = 0;  ///< position in the step from 1; 0 for what is of no load
    std::string member;
};

/// @throws RaisedError 0 with a sentence for a text that is no path.
[[nodiscard]] PropertyPath ParsePath(std::string_view text);

/// What paths lead into.
struct PathRoots {
    CProject& project;
    CPwrSys& powerSystem;
    CLoadProfile& loadProfile;
    DesignLimits& designer;
};

/// A member of one record.
template <typename Record>
struct BoundProperty {
    const Property<Record>* property;
    Record* record;
};

/// The member that a path leads to.
using PathTarget = std::variant<BoundProperty<CProject>, BoundProperty<CPwrSys>, BoundProperty<DesignLimits>,
                                BoundProperty<CLoadStep>, BoundProperty<Load>>;

/// Follows a path.
/// @throws RaisedError 0 with a sentence that names what does not exist and what is nearest to it. A member
///         that the load's entry method does not use does not exist.
[[nodiscard]] PathTarget FollowPath(const PropertyPath& path, const PathRoots& roots);
[[nodiscard]] PathTarget FollowPath(std::string_view path, const PathRoots& roots);

[[nodiscard]] const PropertyFacts& FactsOf(const PathTarget& target);
[[nodiscard]] PropertyValue ValueOf(const PathTarget& target);
/// Sets the member, and nothing that would follow from it in an entry form.
/// @throws RaisedError of the setter.
void SetValue(const PathTarget& target, const PropertyValue& value);

/// The value that a text stands for: a number, `true` or `false`, a text, of a code its number or its name,
/// capitals aside. Only values that a person may enter count, and only codes that have a name.
/// @throws RaisedError 0 with a sentence that names the value and what is expected, or the nearest codes.
[[nodiscard]] PropertyValue ParseValue(const PropertyFacts& facts, std::string_view text);

}  // namespace genvara
