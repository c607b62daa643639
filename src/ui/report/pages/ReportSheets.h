#pragma once

#include <QPageLayout>
#include <QString>

#include "PrintSetup.h"
#include "ReportLayout.h"

class QPagedPaintDevice;

namespace genvara {

/// The page that reports are set on.
[[nodiscard]] RichPage ReportPage(const PrintSetup& setup);

/// The paper of a report as printers and PDF files have it. Its margins are the report's: the device adds
/// none.
[[nodiscard]] QPageLayout SheetOf(const RichPage& paper);

/// Paints pages of a report on a device that has its paper, with their footers, as text, not as pictures.
/// @param name that stands at the foot of each page
/// @param first, last of the pages, from 0
/// @return false if the device does not take the pages.
[[nodiscard]] bool PaintSheets(const ReportLayout& layout, const QString& name, int first, int last,
                               QPagedPaintDevice& device);

}  // namespace genvara
