#include "OfficeEntry.h"

#include <algorithm>

#include "EntryNumbers.h"

namespace genvara {

bool IsLeftOut(std::string_view text) {
    return Trimmed(text).empty();
}

bool AllLeftOut(std::span<const std::string> texts) {
    return std::ranges::all_of(texts, IsLeftOut);
}

}  // namespace genvara
