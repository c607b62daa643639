// Takes a line as a path into a project and what follows as the value: what is set is there, and all else is
// refused in a sentence.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "AllKindsOfLoad.h"
#include "Paths.h"
#include "RaisedError.h"

namespace {

using namespace genvara;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

struct Records {
    CDefaults defaults;
    CProject project{defaults, [] { return DateTime{}; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    DesignLimits limits;

    Records() {
        profile.AddLoadStep("First", 20, 0);
        AddAllKinds(profile.LoadStep(1));
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Records records;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(text.find('\n'), size);
    try {
        const PathTarget target =
            FollowPath(text.substr(0, end), {records.project, records.site, records.profile, records.limits});
        const PropertyValue value = ParseValue(FactsOf(target), text.substr(std::min(end + 1, size)));
        SetValue(target, value);
        Require(ValueOf(target) == value);
    } catch (const RaisedError& refused) {
        Require(!refused.Description().empty());
    }
    return 0;
}
