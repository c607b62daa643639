#include "PrinterLayout.h"

#include <QRectF>
#include <cmath>
#include <cstdint>

#include "ReportSheets.h"

namespace genvara {
namespace {

constexpr double kTwipsPerPoint = 20.0;

std::int32_t Twips(double points) {
    return static_cast<std::int32_t>(std::lround(points * kTwipsPerPoint));
}

}  // namespace

QPageLayout PrinterLayout(const PrintSetup& setup) {
    const auto points = [](std::int32_t twips) { return twips / kTwipsPerPoint; };
    QPageLayout layout = SheetOf(ReportPage(setup));
    layout.setMode(QPageLayout::StandardMode);
    layout.setUnits(QPageLayout::Point);
    layout.setMargins({points(setup.left), points(setup.top), points(setup.right), points(setup.bottom)});
    return layout;
}

void TakeLayout(PrintSetup& setup, const QPageLayout& before, const QPageLayout& after) {
    PrintSetup taken = setup;
    const auto take = [](std::int32_t& length, double was, double is) {
        constexpr double kSame = 0.5;  // points
        length = std::abs(is - was) < kSame ? length : Twips(is);
    };
    const QRectF oldSheet = before.fullRect(QPageLayout::Point);
    const QRectF sheet = after.fullRect(QPageLayout::Point);
    take(taken.width, oldSheet.width(), sheet.width());
    take(taken.height, oldSheet.height(), sheet.height());
    const QMarginsF oldMargins = before.margins(QPageLayout::Point);
    const QMarginsF margins = after.margins(QPageLayout::Point);
    take(taken.left, oldMargins.left(), margins.left());
    take(taken.right, oldMargins.right(), margins.right());
    take(taken.top, oldMargins.top(), margins.top());
    take(taken.bottom, oldMargins.bottom(), margins.bottom());
    setup = FaultOf(taken) == PrintFault::kNone ? taken : setup;
}

}  // namespace genvara
