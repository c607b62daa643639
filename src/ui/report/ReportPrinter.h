#pragma once

#include "ReportLayout.h"

class QPrinter;

namespace genvara {

/// Prints all pages of a report at true size on paper of the report's own size, as text, not as pictures.
/// @return false if the printer does not take the pages.
[[nodiscard]] bool PrintReport(const ReportLayout& layout, QPrinter& printer);

}  // namespace genvara
