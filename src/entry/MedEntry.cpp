#include "MedEntry.h"

#include <optional>

#include "EntryText.h"
#include "KeyFilters.h"
#include "NumberText.h"

namespace genvara {

bool IsBadDemand(std::string_view text, double limit, std::string_view separator) {
    if (Trimmed(text).empty()) {
        return false;
    }
    const std::optional<double> number = ParseNumber(WithPoint(text, separator));
    return !number || *number <= 0.0 || *number > limit;
}

}  // namespace genvara
