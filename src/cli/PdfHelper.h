#pragma once

#include <optional>
#include <string>

#include "DateTime.h"

namespace genvara {

/// A report of rich text as a PDF file, made by the program `genvara-pdf` beside this one.
/// @param name of the project, for the title and the foot of each page
/// @param created time that the file states as its own; the present one if there is none
/// @throws RaisedError with one sentence if the helper is missing or fails; what it had to say stands on
///         standard error.
[[nodiscard]] std::string PdfOf(const std::string& richText, const std::string& name,
                                const std::optional<DateTime>& created);

}  // namespace genvara
