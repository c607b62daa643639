#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// Captions of one window, each with a key of its own marked by "&" where letters suffice.
///
/// A caption that has its mark keeps it. The others get a letter or digit that no caption of the window has,
/// the first of a word before one within; one that no free character is left for gets none.
/// @param taken keys that are in use already, upper-case letters and digits.
[[nodiscard]] std::vector<std::string> WithMnemonics(std::vector<std::string> captions,
                                                     std::string_view taken = {});

}  // namespace genvara
