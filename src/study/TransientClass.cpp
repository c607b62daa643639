#include "TransientClass.h"

#include <algorithm>

#include "CPwrSys.h"

namespace genvara {

std::optional<std::string_view> TransientClassOf(const ChosenSet& set) {
    if (!set.FreqDipAvail || set.FuelType != fuel::kDiesel) {
        return std::nullopt;
    }
    const auto keeps = [&set](const TransientClass& limits) {
        return std::ranges::all_of(set.VoltageDips,
                                   [&](double dip) { return dip <= limits.mostVoltageDip; }) &&
               std::ranges::all_of(set.FreqDips, [&](double dip) { return dip <= limits.mostFreqDip; });
    };
    const auto highest = std::ranges::find_if(kTransientClasses, keeps);
    return highest == kTransientClasses.end() ? kNoTransientClass : highest->name;
}

}  // namespace genvara
