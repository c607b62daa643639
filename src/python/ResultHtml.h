#pragma once

#include <string>

#include "SizingResult.h"

namespace genvara::python {

/// Both lists of a result as tables of HTML, as notebooks show them.
[[nodiscard]] std::string HtmlOf(const SizingResult& result);

}  // namespace genvara::python
