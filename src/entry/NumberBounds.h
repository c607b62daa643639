#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "EntryNumbers.h"

namespace genvara {

/// What a number field may hold, as the note behind it prints it, its check enforces it, and the sentence
/// beside it tells it.
struct NumberBounds {
    std::string name{};  ///< the field's caption
    double least = 0.0;
    double most = std::numeric_limits<double>::infinity();
    bool above = false;  ///< whether the number has to be above `least`
    bool whole = false;  ///< whether the number has to be whole
    int decimals = -1;   ///< that the bounds are shown with; below 0 for a plain number
    std::string unit{};  ///< with its leading blank; "%" stands at both bounds
};

/// The text behind a field, as in "( 0 - 2000 kW )" or "( 50% - 100% )".
[[nodiscard]] std::string BoundsNote(const NumberBounds& bounds, const EntryNumbers& numbers);

/// What a field wants, as in "Enter 50 to 100 %.".
[[nodiscard]] std::string WantedText(const NumberBounds& bounds, const EntryNumbers& numbers);

/// One sentence on why a text is refused, with the field's name, what it holds, and what it wants; empty for
/// a text within the bounds.
[[nodiscard]] std::string Complaint(const NumberBounds& bounds, std::string_view text,
                                    const EntryNumbers& numbers);

}  // namespace genvara
