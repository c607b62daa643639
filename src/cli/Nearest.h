#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// The known word that a mistyped one is most likely meant to be, or an empty text where none comes near: the
/// fewest letters to add, drop, change or swap with a neighbour; one, or up to a third of the word, and never
/// more than three.
[[nodiscard]] std::string Nearest(std::string_view word, const std::vector<std::string>& known);

}  // namespace genvara
