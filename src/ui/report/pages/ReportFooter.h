#pragma once

#include <QString>

#include "ReportLayout.h"

class QPainter;

namespace genvara {

/// Draws what stands in the lower margin of a page: a name, and which page of how many it is. Nothing on the
/// page of an empty document, nor in a margin that has no room for it. The painter's unit is the layout's
/// twip, its origin the page's upper left corner.
void DrawFooter(QPainter& painter, const ReportLayout& layout, int page, const QString& name);

/// Which page of how many a footer tells, from 0.
struct PageNumber {
    int page = 0;
    int count = 1;
};
/// The same on a page of one's own, whose text is drawn at a scale.
void DrawFooter(QPainter& painter, const RichPage& sheet, double scale, PageNumber number,
                const QString& name);

}  // namespace genvara
