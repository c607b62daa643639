#include "ReportPrinter.h"

#include <QPageLayout>
#include <QPrinter>
#include <algorithm>
#include <utility>

#include "ReportSheets.h"

namespace genvara {
namespace {

/// Gives a printer the report's paper, and back what its user had set up.
class PaperChange {
  public:
    PaperChange(QPrinter& printer, const RichPage& paper)
        : m_printer(printer), m_before(printer.pageLayout()), m_wasFullPage(printer.fullPage()) {
        m_printer.setPageLayout(SheetOf(paper));
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

}  // namespace

bool PrintReport(const ReportLayout& layout, const QString& name, QPrinter& printer) {
    const PaperChange paper(printer, layout.Paper());
    const auto [first, last] = PagesOf(layout, printer);
    return PaintSheets(layout, name, first, last, printer);
}

}  // namespace genvara
