#include "ReportPrinter.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <utility>

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

/// Gives a printer the report's paper, and back what its user had set up.
class PaperChange {
  public:
    PaperChange(QPrinter& printer, const RichPage& page)
        : m_printer(printer), m_before(printer.pageLayout()), m_wasFullPage(printer.fullPage()) {
        m_printer.setPageLayout(PaperOf(page));
        m_printer.setFullPage(true);
    }
    ~PaperChange() {
        m_printer.setFullPage(m_wasFullPage);
        m_printer.setPageLayout(m_before);
    }
    PaperChange(const PaperChange&) = delete;
    PaperChange& operator=(const PaperChange&) = delete;
    PaperChange(PaperChange&&) = delete;
    PaperChange& operator=(PaperChange&&) = delete;

  private:
    QPrinter& m_printer;
    QPageLayout m_before;
    bool m_wasFullPage;
};

/// First and last page to print, from 0: all, unless the printer's user wants some of them.
std::pair<int, int> PagesOf(const ReportLayout& layout, const QPrinter& printer) {
    const int last = layout.PageCount() - 1;
    if (printer.printRange() != QPrinter::PageRange || printer.fromPage() <= 0) {
        return {0, last};
    }
    const int from = std::min(printer.fromPage() - 1, last);
    return {from, std::clamp(printer.toPage() - 1, from, last)};
}

bool PrintPages(const ReportLayout& layout, QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    painter.scale(printer.logicalDpiX() / kTwipsPerInch, printer.logicalDpiY() / kTwipsPerInch);
    painter.setPen(Qt::black);
    const QRectF whole(0, 0, layout.Page().width, layout.Page().height);
    const auto [first, last] = PagesOf(layout, printer);
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage()) {
            return false;
        }
        layout.Draw(painter, page, whole);
    }
    return painter.end();
}

}  // namespace

bool PrintReport(const ReportLayout& layout, QPrinter& printer) {
    const PaperChange paper(printer, layout.Page());
    return PrintPages(layout, printer);
}

}  // namespace genvara
