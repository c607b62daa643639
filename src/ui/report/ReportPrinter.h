#pragma once

#include "ReportLayout.h"

class QPrinter;

namespace genvara {

/// Prints a report on its paper, as text, not as pictures: all pages, or those that the printer is told to.
/// What else is set up for the printer stays.
/// @param name that stands at the foot of each page
/// @return false if the printer does not take the pages.
[[nodiscard]] bool PrintReport(const ReportLayout& layout, const QString& name, QPrinter& printer);

}  // namespace genvara
