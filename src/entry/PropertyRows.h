#pragma once

#include <string>
#include <string_view>

#include "EntryNumbers.h"

namespace genvara {

/// A row of a load's or a step's properties, as a list shows it.
struct ShownProperty {
    std::string label;
    std::string value;
};

/// Parts a row at its tab. Figures stand in the user's decimal separator, like those that are entered beside
/// the list; what the user has written himself stands as he wrote it.
[[nodiscard]] ShownProperty ShowProperty(std::string_view row, const EntryNumbers& numbers);

}  // namespace genvara
