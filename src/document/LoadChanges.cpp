#include "LoadChanges.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

namespace genvara {
namespace {

using Steps = CLoadProfile::Moment;
using LoadsByName = std::multimap<std::string_view, const Load*>;

/// The loads of the steps that another moment has not got as they are.
LoadsByName LoadsOfOthers(const Steps& steps, const Steps& others) {
    const std::set<std::shared_ptr<const CLoadStep>> shared(others.begin(), others.end());
    LoadsByName loads;
    for (const auto& step : steps) {
        if (!shared.contains(step)) {
            for (const Load& load : *step) {
                loads.emplace(load.name(), &load);
            }
        }
    }
    return loads;
}

bool HasLostStep(const Steps& earlier, const Steps& later) {
    std::set<std::int32_t> ids;
    for (const auto& step : later) {
        ids.insert(step->StepID());
    }
    return std::ranges::any_of(earlier, [&](const auto& step) { return !ids.contains(step->StepID()); });
}

}  // namespace

bool HasOtherLoads(const ProjectMoment& earlier, const ProjectMoment& later) {
    LoadsByName before = LoadsOfOthers(earlier.steps, later.steps);
    const LoadsByName after = LoadsOfOthers(later.steps, earlier.steps);
    if (before.size() != after.size() || HasLostStep(earlier.steps, later.steps)) {
        return true;
    }
    return std::ranges::any_of(after, [&](const auto& entry) {
        auto [first, last] = before.equal_range(entry.first);
        const auto same = std::find_if(
            first, last, [&](const auto& former) { return former.second->HoldsSame(*entry.second); });
        if (same == last) {
            return true;
        }
        before.erase(same);
        return false;
    });
}

}  // namespace genvara
