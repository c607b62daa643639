#pragma once

#include <QFont>

#include "RichTextReader.h"

namespace genvara {

/// The font of a format, made for a drawing whose unit is the twip: its pixel size is the size in twips, so
/// that letters have the same widths on every screen and printer and at every scale. Where a face of the
/// reports is not installed, one whose letters are as wide takes its place.
[[nodiscard]] QFont ReportFont(const RichFormat& format);

}  // namespace genvara
