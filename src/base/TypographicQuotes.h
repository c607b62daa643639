#pragma once

#include <string>
#include <string_view>

namespace genvara {

/// A text with typographic quotes in place of double quotes, each as long as the other in characters: a
/// `.prj` ends a text at a double quote, and all that follows would be read as something else.
/// @param opens whether what stands before the text lets a quote at its beginning open, as a blank does.
[[nodiscard]] std::string TypographicQuotes(std::string_view text, bool opens = true);

}  // namespace genvara
