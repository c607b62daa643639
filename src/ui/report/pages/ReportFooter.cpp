#include "ReportFooter.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>

#include "ReportFonts.h"

namespace genvara {
namespace {

constexpr double kPixelsPerPoint = 20.0;  // a pixel of the layout is a twip
constexpr double kSize = 8.0;             // points, on paper
/// Share of what is free in the margin that lies above the line: farther from the paper's edge, where
/// printers do not print, than from the text.
constexpr double kShareAbove = 0.4;
constexpr double kGap = 240.0;  // twips between name and number
constexpr QRgb kColour = 0xFF404040;

}  // namespace

void DrawFooter(QPainter& painter, const ReportLayout& layout, int page, const QString& name) {
    if (!layout.Text().isEmpty()) {
        DrawFooter(painter, layout.Page(), layout.Scale(), {.page = page, .count = layout.PageCount()}, name);
    }
}

void DrawFooter(QPainter& painter, const RichPage& sheet, double scale, PageNumber number,
                const QString& name) {
    QFont font = ReportFont({.face = "Arial"});
    font.setPixelSize(qRound(kSize * kPixelsPerPoint / scale));
    const QFontMetricsF letters(font);
    const double free = sheet.bottom - letters.height();
    if (free <= 0.0) {
        return;
    }
    const QString text =
        QCoreApplication::translate("Report", "Page %1 of %2").arg(number.page + 1).arg(number.count);
    const double right = sheet.width - sheet.right;
    const double numberWidth = letters.horizontalAdvance(text);
    const double baseline = sheet.height - sheet.bottom + free * kShareAbove + letters.ascent();
    const QString shown = letters.elidedText(QString(name).simplified(), Qt::ElideRight,
                                             right - sheet.left - numberWidth - kGap);
    painter.save();
    painter.setFont(font);
    painter.setPen(QColor::fromRgba(kColour));
    painter.drawText(QPointF(sheet.left, baseline), shown);
    painter.drawText(QPointF(right - numberWidth, baseline), text);
    painter.restore();
}

}  // namespace genvara
