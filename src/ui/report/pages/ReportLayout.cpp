#include "ReportLayout.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "ReportComposer.h"

namespace genvara {
namespace {

/// Width of a line's end in a selection [twip], so that empty lines show that they are selected.
constexpr double kLineEndWidth = 90.0;
/// Letters of 10 points are still read at 5.
constexpr double kLeastScale = 0.5;

std::span<const ReportPiece> PiecesOf(const std::vector<ReportPiece>& pieces, const ReportRow& row) {
    return std::span(pieces).subspan(row.firstPiece, row.pieceCount);
}

/// Left edge of a character within its piece.
double XWithin(const ReportPiece& piece, int position) {
    if (piece.letters == nullptr) {
        return position <= piece.from ? 0.0 : piece.width;
    }
    const QTextLine line = piece.letters->lineAt(piece.line);
    return line.cursorToX(line.textStart() + position - piece.from);
}

int PositionWithin(const ReportPiece& piece, double x) {
    if (piece.letters == nullptr) {
        return x < piece.width / 2 ? piece.from : piece.from + piece.count;
    }
    const QTextLine line = piece.letters->lineAt(piece.line);
    return piece.from + line.xToCursor(x) - line.textStart();
}

double TextWidth(const RichPage& page) {
    return page.width - page.left - page.right;
}

/// A page of which each length is some times as long.
RichPage Enlarged(const RichPage& page, double times) {
    const auto enlarge = [times](double length) {
        return static_cast<std::int32_t>(std::lround(length * times));
    };
    RichPage enlarged{.height = enlarge(page.height),
                      .left = enlarge(page.left),
                      .right = enlarge(page.right),
                      .top = enlarge(page.top),
                      .bottom = enlarge(page.bottom)};
    enlarged.width = enlarged.left + enlarge(TextWidth(page)) + enlarged.right;
    return enlarged;
}

}  // namespace

ReportLayout::ReportLayout(const RichDocument& document, const std::optional<RichPage>& paper)
    : m_paper(SoundPage(paper.value_or(document.page))),
      m_scale(std::clamp(TextWidth(m_paper) / TextWidth(document.page), kLeastScale, 1.0)),
      m_page(Enlarged(m_paper, 1.0 / m_scale)) {
    ReportComposer composer(document, m_page);
    composer.Compose();
    m_text = composer.TakeText();
    m_rows = composer.TakeRows();
    m_pieces = composer.TakePieces();
    m_pageCount = m_rows.back().page + 1;
}

void ReportLayout::Draw(QPainter& painter, int page, const QRectF& part) const {
    const auto first = std::ranges::lower_bound(m_rows, page, {}, &ReportRow::page);
    for (auto row = first; row != m_rows.end() && row->page == page; ++row) {
        if (row->top + row->height < part.top() || row->top > part.bottom()) {
            continue;
        }
        for (const ReportPiece& piece : PiecesOf(m_pieces, *row)) {
            if (piece.letters != nullptr) {
                const QTextLine line = piece.letters->lineAt(piece.line);
                line.draw(&painter, {m_page.left + piece.x, row->baseline - line.ascent()});
            }
        }
    }
}

std::size_t ReportLayout::RowOf(int position) const {
    const auto behind = std::ranges::upper_bound(m_rows, position, {}, &ReportRow::from);
    return behind == m_rows.begin() ? 0 : static_cast<std::size_t>(behind - m_rows.begin()) - 1;
}

std::size_t ReportLayout::RowAt(int page, double y) const {
    const auto behind = std::ranges::find_if(m_rows, [&](const ReportRow& row) {
        return row.page > page || (row.page == page && row.top + row.height > y);
    });
    const bool isOnPage = behind != m_rows.end() && (behind->page == page || behind == m_rows.begin());
    return static_cast<std::size_t>(behind - m_rows.begin()) - (isOnPage ? 0 : 1);
}

int ReportLayout::PositionIn(std::size_t row, double x) const {
    const double inset = x - m_page.left;
    for (const ReportPiece& piece : PiecesOf(m_pieces, m_rows.at(row))) {
        if (inset < piece.x + piece.width) {
            return std::clamp(PositionWithin(piece, inset - piece.x), piece.from, piece.from + piece.count);
        }
    }
    return m_rows.at(row).to;
}

double ReportLayout::XOf(std::size_t row, int position) const {
    double x = m_rows.at(row).start;
    for (const ReportPiece& piece : PiecesOf(m_pieces, m_rows.at(row))) {
        if (position < piece.from) {
            break;
        }
        x = piece.x + XWithin(piece, std::min(position, piece.from + piece.count));
    }
    return m_page.left + x;
}

QRectF ReportLayout::AreaOf(std::size_t row, int from, int to) const {
    const ReportRow& line = m_rows.at(row);
    const double left = XOf(row, std::clamp(from, line.from, line.to));
    const double right = XOf(row, std::clamp(to, line.from, line.to)) + (to > line.to ? kLineEndWidth : 0.0);
    return {left, line.top, right - left, line.height};
}

}  // namespace genvara
