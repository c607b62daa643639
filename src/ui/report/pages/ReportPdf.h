#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "DateTime.h"
#include "ReportLayout.h"

class QPagedPaintDevice;

namespace genvara {

/// A PDF file with fonts embedded and its title set; the same pages of the same moment give the same bytes in
/// the same time zone.
/// @param created local time that the file states as its own
/// @param paint paints the pages; false if that failed
/// @return nothing if the pages cannot be made.
[[nodiscard]] QByteArray PaintedPdf(const RichPage& paper, const QString& title, const DateTime& created,
                                    const std::function<bool(QPagedPaintDevice&)>& paint);

/// Title of a report, as it stands below the product's name; "" for a document that does not begin like a
/// report.
[[nodiscard]] QString ReportTitle(const ReportLayout& layout);

/// A report as a PDF file: the pages of the layout with their footers, as text in embedded fonts, with the
/// document's title. The same report of the same moment gives the same bytes in the same time zone.
/// @param name of the project; stands in the title and at the foot of each page
/// @param created local time that the file states as its own
/// @return nothing if the pages cannot be made.
[[nodiscard]] QByteArray ReportPdf(const ReportLayout& layout, const QString& name, const DateTime& created);

}  // namespace genvara
