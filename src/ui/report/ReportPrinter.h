#pragma once

#include "ReportLayout.h"

class QPrinter;

namespace genvara {

/// Prints a report at true size on paper of its own size, as text, not as pictures: all pages, or those that
/// the printer is told to. What else is set up for the printer stays.
/// @return false if the printer does not take the pages.
[[nodiscard]] bool PrintReport(const ReportLayout& layout, QPrinter& printer);

}  // namespace genvara
