#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What the texts of entry fields stand for, and how figures are shown in them. `separator` is the decimal
/// separator of the user's locale throughout.
namespace genvara {

/// A text without the blanks at its ends.
[[nodiscard]] std::string Trimmed(std::string_view text);

/// The number that a text stands for.
/// @throws RaisedError 13 "Type mismatch" from "EntryText" for any other text, the empty one too.
[[nodiscard]] double NumberOf(std::string_view text, std::string_view separator);

/// The integer nearest to the number that a text stands for, halves to the even one.
/// @throws RaisedError 13 as `NumberOf`; 6 "Overflow" from "EntryText" beyond 32 bits.
[[nodiscard]] std::int32_t IntegerOf(std::string_view text, std::string_view separator);

/// The text of a field of whole numbers once it is left: "007" becomes "7". A text that stands for no such
/// number stays.
[[nodiscard]] std::string WholeNumberText(const std::string& text, std::string_view separator);

/// A rendered number in the user's decimal separator.
[[nodiscard]] std::string Shown(std::string number, std::string_view separator);

/// The bounds that stand behind a field, as in "( 0 - 2000 kW )".
/// @param unit with its leading blank, if it needs one; empty for none.
[[nodiscard]] std::string BoundsNote(std::string_view least, std::string_view most,
                                     std::string_view unit = {});

}  // namespace genvara
