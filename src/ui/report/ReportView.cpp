#include "ReportView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <array>
#include <cmath>

#include "ReportAccessible.h"
#include "ReportFooter.h"
#include "ReportPdf.h"
#include "ReportPrinter.h"

namespace genvara {
namespace {

constexpr double kTwipsPerInch = 1440.0;
constexpr double kSmallestZoom = 0.25;
constexpr double kLargestZoom = 5.0;
/// Bounds of the scale that follows the view's width: a page is seen in its width when the window first
/// opens, with small print of 10 points no smaller than 9 pixels on a usual screen, and a wide window does
/// not blow letters up to a poster's.
constexpr double kLeastFittingZoom = 0.7;
constexpr double kComfortableZoom = 1.5;
constexpr std::array<double, 17> kZoomSteps{0.25, 0.33, 0.5,  0.67, 0.75, 0.8, 0.9, 1.0, 1.1,
                                            1.25, 1.5,  1.75, 2.0,  2.5,  3.0, 4.0, 5.0};
/// Steps closer to the present scale than this are passed over.
constexpr double kSameZoom = 0.01;
constexpr int kLineStep = 48;   // pixels that an arrow key scrolls
constexpr int kFocusWidth = 2;  // pixels

QColor Mix(const QColor& one, const QColor& other, double share) {
    const auto part = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {part(one.red(), other.red()), part(one.green(), other.green()), part(one.blue(), other.blue())};
}

/// A grey somewhat off the theme's windows, against which white paper stands out.
QColor GroundColor(const QPalette& palette) {
    constexpr double kShareInLight = 0.18;
    constexpr double kShareInDark = 0.12;
    const QColor window = palette.color(QPalette::Window);
    const bool isLight = window.lightness() >= 128;
    return Mix(window, isLight ? Qt::black : Qt::white, isLight ? kShareInLight : kShareInDark);
}

/// Behind selected text, which stays black: the theme's highlight, thinned.
QColor SelectionColor(const QPalette& palette, bool isActive) {
    constexpr double kShare = 0.4;
    return Mix(Qt::white, isActive ? palette.color(QPalette::Active, QPalette::Highlight) : QColor(Qt::gray),
               kShare);
}

void PaintPaper(QPainter& painter, const QRect& paper) {
    constexpr int kShadowDepth = 5;
    const QColor shade(0, 0, 0, 14);
    for (int i = kShadowDepth; i > 0; --i) {
        painter.fillRect(paper.adjusted(-i, 2 - i, i, 2 + i), shade);
    }
    painter.fillRect(paper.adjusted(-1, -1, 1, 1), QColor(0, 0, 0, 60));
    painter.fillRect(paper, Qt::white);
}

}  // namespace

ReportView::ReportView(QWidget* parent) : QAbstractScrollArea(parent), m_layout(RichDocument{}) {
    InstallReportAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    viewport()->setCursor(Qt::IBeamCursor);
    Arrange({});
}

void ReportView::RichText(const std::string& bytes) {
    const bool hadSelection = !m_selection.IsEmpty();
    m_bytes = bytes;
    m_selection = {};
    m_isSelecting = false;
    m_dragTimer.stop();
    SetOnPages();
    AnnounceReport(*this);
    if (hadSelection) {
        emit SelectionChanged();
    }
}

void ReportView::FooterName(const QString& name) {
    m_footerName = name;
    viewport()->update();
}

void ReportView::Paper(const std::optional<RichPage>& paper) {
    if (paper != m_paper) {
        m_paper = paper;
        SetOnPages();
    }
}

void ReportView::SetOnPages() {
    m_layout = ReportLayout(ReadRichText(m_bytes), m_paper);
    Arrange({});
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
}

bool ReportView::Print(QPrinter& printer) const {
    return PrintReport(m_layout, m_footerName, printer);
}

QByteArray ReportView::Pdf(const DateTime& created) const {
    return ReportPdf(m_layout, m_footerName, created);
}

QString ReportView::SelectedText() const {
    return m_layout.Text().mid(m_selection.From(), SelLength());
}

void ReportView::Select(int from, int to) {
    const auto size = static_cast<int>(m_layout.Text().size());
    ReportSelection selection;
    selection.Set(std::clamp(from, 0, size), std::clamp(to, 0, size));
    Change(selection);
}

void ReportView::SelectAll() {
    Select(0, static_cast<int>(m_layout.Text().size()));
}

void ReportView::Copy() const {
    if (m_selection.IsEmpty()) {
        return;
    }
    auto* contents = new QMimeData;  // the clipboard owns it
    contents->setText(SelectedText());
    if (SelLength() == m_layout.Text().size()) {
        contents->setData("text/rtf", QByteArray::fromStdString(m_bytes));
    }
    QGuiApplication::clipboard()->setMimeData(contents);
}

double ReportView::Zoom() const noexcept {
    return m_zoom ? *m_zoom : FittingZoom();
}

void ReportView::Zoom(double scale) {
    ZoomAt({viewport()->width() / 2, 0}, scale);
}

void ReportView::ZoomIn() {
    ZoomStep({viewport()->width() / 2, 0}, true);
}

void ReportView::ZoomOut() {
    ZoomStep({viewport()->width() / 2, 0}, false);
}

/// To the next of the usual scales; what lies under a point stays there.
void ReportView::ZoomStep(QPoint fixedPoint, bool larger) {
    const double bound = Zoom() * (larger ? 1 + kSameZoom : 1 - kSameZoom);
    const auto* const behind = std::ranges::lower_bound(kZoomSteps, bound);
    const auto* const step =
        larger ? std::min(behind, kZoomSteps.end() - 1) : std::max(behind, kZoomSteps.begin() + 1) - 1;
    ZoomAt(fixedPoint, *step);
}

void ReportView::FitWidth() {
    m_zoom.reset();
    Arrange({viewport()->width() / 2, 0});
}

QRect ReportView::CursorRect(int position) const {
    const std::size_t row = m_layout.RowOf(position);
    const QRectF area = m_layout.AreaOf(row, position, position);
    return m_sheets.FromPage(m_layout.Rows()[row].page, area).translated(-Offset()).toAlignedRect();
}

int ReportView::PositionAt(QPoint point) const {
    const QPoint ground = point + Offset();
    const int page = m_sheets.PageAt(ground.y());
    const QPointF place = m_sheets.ToPage(page, ground);
    return m_layout.PositionIn(m_layout.RowAt(page, place.y()), place.x());
}

QSize ReportView::sizeHint() const {
    return {680, 520};
}

QSize ReportView::minimumSizeHint() const {
    return {240, 160};
}

/// Pixels of a twip of the layout.
double ReportView::PixelsPerTwip() const {
    return Zoom() * m_layout.Scale() * logicalDpiX() / kTwipsPerInch;
}

double ReportView::FittingZoom() const {
    const int width = viewport()->width() - 2 * SheetGeometry::kMargin;
    const double trueWidth = m_layout.Paper().width * logicalDpiX() / kTwipsPerInch;
    return std::clamp(width / trueWidth, kLeastFittingZoom, kComfortableZoom);
}

QPoint ReportView::Offset() const {
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

/// Lays the pages out anew; what lies under a point of the viewport stays there.
void ReportView::Arrange(QPoint fixedPoint) {
    const SheetGeometry before = m_sheets;
    const QPoint ground = fixedPoint + Offset();
    const int page = std::min(before.PageAt(ground.y()), m_layout.PageCount() - 1);
    const QPointF place = before.ToPage(page, ground);

    const QSize window = viewport()->size();
    m_sheets = SheetGeometry(m_layout.Page(), m_layout.PageCount(), PixelsPerTwip(), window);
    const QSize size = m_sheets.GroundSize();
    const auto setUp = [](QScrollBar& bar, int length, int shown) {
        bar.setRange(0, std::max(0, length - shown));
        bar.setPageStep(std::max(shown - kLineStep, kLineStep));
        bar.setSingleStep(kLineStep / 2);
    };
    setUp(*horizontalScrollBar(), size.width(), window.width());
    // The horizontal bar may just have come or gone, and with it some of the viewport's height.
    setUp(*verticalScrollBar(), size.height(), viewport()->height());

    const QPoint after = m_sheets.FromPage(page, {place, QSizeF()}).topLeft().toPoint() - fixedPoint;
    horizontalScrollBar()->setValue(after.x());
    // A view that stands at its beginning stays there.
    verticalScrollBar()->setValue(ground.y() == 0 ? 0 : after.y());
    viewport()->update();
}

void ReportView::ZoomAt(QPoint fixedPoint, double scale) {
    m_zoom = std::clamp(scale, kSmallestZoom, kLargestZoom);
    Arrange(fixedPoint);
}

void ReportView::ScrollTo(int position) {
    const QRect cursor = CursorRect(position);
    const auto shift = [](QScrollBar& bar, int from, int to, int shown) {
        const int past = std::max(0, to - shown);
        bar.setValue(bar.value() + (from < 0 ? from : std::min(past, from)));
    };
    shift(*verticalScrollBar(), cursor.top(), cursor.bottom() + 1, viewport()->height());
    shift(*horizontalScrollBar(), cursor.left(), cursor.right() + 1, viewport()->width());
}

void ReportView::Change(const ReportSelection& selection) {
    const bool isSame = selection.From() == m_selection.From() && selection.To() == m_selection.To();
    m_selection = selection;
    if (!isSame) {
        viewport()->update();
        AnnounceSelection(*this, m_selection.From(), m_selection.To());
        emit SelectionChanged();
    }
}

void ReportView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange) {
        viewport()->update();
    }
}

void ReportView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), GroundColor(palette()));
    const QPoint offset = Offset();
    const QRect part = event->rect().translated(offset);
    painter.save();
    painter.translate(-offset);
    const int last = m_sheets.PageAt(part.bottom());
    for (int page = m_sheets.PageAt(part.top()); page <= last; ++page) {
        PaintPage(painter, page, part);
    }
    painter.restore();
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), kFocusWidth, Qt::SolidLine, Qt::SquareCap,
                            Qt::MiterJoin));
        painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
    }
}

void ReportView::PaintPage(QPainter& painter, int page, const QRect& part) const {
    const QRect paper = m_sheets.PageRect(page);
    PaintPaper(painter, paper);
    painter.save();
    painter.setClipRect(paper);
    painter.translate(paper.topLeft());
    painter.scale(m_sheets.Scale(), m_sheets.Scale());
    const QRectF seen(m_sheets.ToPage(page, part.topLeft()), part.size() / m_sheets.Scale());
    const int from = m_selection.From();
    const int to = m_selection.To();
    const QColor highlight = SelectionColor(palette(), hasFocus());
    const auto& rows = m_layout.Rows();
    for (std::size_t row = m_layout.RowOf(from); from < to && row < rows.size() && rows[row].from < to;
         ++row) {
        if (rows[row].page == page) {
            painter.fillRect(m_layout.AreaOf(row, from, to), highlight);
        }
    }
    painter.setPen(Qt::black);
    m_layout.Draw(painter, page, seen);
    DrawFooter(painter, m_layout, page, m_footerName);
    painter.restore();
}

void ReportView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    Arrange({event->oldSize().width() / 2, 0});
}

void ReportView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}

void ReportView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void ReportView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

}  // namespace genvara
