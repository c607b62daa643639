#include "ReportPrinter.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrinter>

namespace genvara {
namespace {

constexpr double kTwipsPerPoint = 20.0;
constexpr double kTwipsPerInch = 1440.0;

QPageLayout PaperOf(const RichPage& page) {
    const QSizeF points(page.width / kTwipsPerPoint, page.height / kTwipsPerPoint);
    // A page size is always upright; a page that is wider than high is one that lies on its side.
    const bool isWide = points.width() > points.height();
    const QPageSize size(isWide ? points.transposed() : points, QPageSize::Point, {}, QPageSize::FuzzyMatch);
    QPageLayout paper(size, isWide ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    // The margins are the report's; the printer shall add none of its own.
    paper.setMode(QPageLayout::FullPageMode);
    return paper;
}

}  // namespace

bool PrintReport(const ReportLayout& layout, QPrinter& printer) {
    printer.setPageLayout(PaperOf(layout.Page()));
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    painter.scale(printer.logicalDpiX() / kTwipsPerInch, printer.logicalDpiY() / kTwipsPerInch);
    painter.setPen(Qt::black);
    const RichPage& page = layout.Page();
    for (int number = 0; number < layout.PageCount(); ++number) {
        if (number > 0 && !printer.newPage()) {
            return false;
        }
        layout.Draw(painter, number, QRectF(0, 0, page.width, page.height));
    }
    return painter.end();
}

}  // namespace genvara
