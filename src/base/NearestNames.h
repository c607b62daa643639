#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// Whether two names are the same, capitals aside.
[[nodiscard]] bool SameLetters(std::string_view left, std::string_view right) noexcept;

/// The names that are most like a wrong one, the likest first: by the letters that one would have to change,
/// capitals aside. At least one of any list, and no more than three.
[[nodiscard]] std::vector<std::string_view> NearestNames(std::string_view wrong,
                                                         std::span<const std::string_view> names);

/// The name that a wrong one is a slip of, by one letter or by up to a third of them; empty if there is none.
[[nodiscard]] std::string_view SlipOf(std::string_view wrong, std::span<const std::string_view> names);

/// "Altitude, Voltage and Fuel".
[[nodiscard]] std::string Enumeration(std::span<const std::string_view> names);

/// "the nearest is Altitude" or "the nearest are Altitude, Voltage and Fuel".
[[nodiscard]] std::string SuggestionText(std::string_view wrong, std::span<const std::string_view> names);

}  // namespace genvara
