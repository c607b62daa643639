#include "ReportSheets.h"

#include <QPagedPaintDevice>
#include <QPainter>

#include "ReportFooter.h"

namespace genvara {
namespace {

constexpr double kTwipsPerPoint = 20.0;
constexpr double kTwipsPerInch = 1440.0;

}  // namespace

RichPage ReportPage(const PrintSetup& setup) {
    return {.width = setup.width,
            .height = setup.height,
            .left = setup.left,
            .right = setup.right,
            .top = setup.top,
            .bottom = setup.bottom};
}

QPageLayout SheetOf(const RichPage& paper) {
    const QSizeF points(paper.width / kTwipsPerPoint, paper.height / kTwipsPerPoint);
    // A page size is always upright; a page that is wider than high is one that lies on its side.
    const bool isWide = points.width() > points.height();
    const QPageSize size(isWide ? points.transposed() : points, QPageSize::Point, {}, QPageSize::FuzzyMatch);
    QPageLayout sheet(size, isWide ? QPageLayout::Landscape : QPageLayout::Portrait, {});
    sheet.setMode(QPageLayout::FullPageMode);
    return sheet;
}

bool PaintSheets(const ReportLayout& layout, const QString& name, int first, int last,
                 QPagedPaintDevice& device) {
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    const double scale = layout.Scale() / kTwipsPerInch;
    painter.scale(device.logicalDpiX() * scale, device.logicalDpiY() * scale);
    painter.setPen(Qt::black);
    const QRectF whole(0, 0, layout.Page().width, layout.Page().height);
    for (int page = first; page <= last; ++page) {
        if (page > first && !device.newPage()) {
            return false;
        }
        layout.Draw(painter, page, whole);
        DrawFooter(painter, layout, page, name);
    }
    return painter.end();
}

}  // namespace genvara
