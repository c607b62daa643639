#pragma once

#include <string>
#include <vector>

namespace genvara {

/// Captions of one window, each with a key of its own marked by "&" where letters suffice.
///
/// A caption that has its mark keeps it. The others get a letter or digit that no caption of the window has,
/// the first of a word before one within; one that no free character is left for gets none.
[[nodiscard]] std::vector<std::string> WithMnemonics(std::vector<std::string> captions);

}  // namespace genvara
