#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "RichTextReader.h"

class QPainter;
class QTextLayout;

namespace genvara {

/// A stretch of a row: a piece of text, or the gap of a tab.
struct ReportPiece {
    std::shared_ptr<QTextLayout> letters{};  ///< null for a gap; shared by pieces that look alike
    int line = 0;                            ///< of the letters
    int from = 0;                            ///< its first character in the document's text
    int count = 0;
    double x = 0.0;  ///< left edge [twip] from the left margin
    double width = 0.0;
};

/// A line as it stands on a page.
struct ReportRow {
    int page = 0;
    int from = 0;  ///< its first character in the document's text
    int to = 0;    ///< behind its last one that is shown
    std::size_t firstPiece = 0;
    std::size_t pieceCount = 0;
    double top = 0.0;  ///< [twip] from the page's upper edge
    double height = 0.0;
    double baseline = 0.0;  ///< [twip] from the page's upper edge
    double start = 0.0;     ///< where its first character stands [twip] from the left margin
};

/// A document set on pages as a word processor sets it. All lengths are twips, so that every screen and
/// printer shows the same lines, columns and pages.
///
/// The pages are the document's own, or of a paper that the user has chosen. On paper that is narrower than
/// the document's own page the text is as wide as there, so that columns and rules stay whole, and is scaled
/// down as the page is printed, to a half at most.
///
/// Tab stops hold for the text up to the next tab: it begins, ends or has its decimal point there; a text
/// without a point ends at a decimal stop. A text that is too long for its stop takes the room behind it, and
/// the next tab leads to the next stop that is still ahead. Beyond a paragraph's own stops the document's
/// default distance holds. A tab with no stop left begins a new line.
class ReportLayout {
  public:
    /// @param paper in place of the document's own page
    explicit ReportLayout(const RichDocument& document, const std::optional<RichPage>& paper = std::nullopt);

    /// Pages; at least one.
    [[nodiscard]] int PageCount() const noexcept { return m_pageCount; }
    /// The page before it is scaled.
    [[nodiscard]] const RichPage& Page() const noexcept { return m_page; }
    /// The page as it is printed.
    [[nodiscard]] const RichPage& Paper() const noexcept { return m_paper; }
    /// What a twip of the layout is on paper [twip], 0.5 to 1.
    [[nodiscard]] double Scale() const noexcept { return m_scale; }

    /// The shown text, with a line feed for each paragraph's end and each forced break. Positions below count
    /// its UTF-16 units.
    [[nodiscard]] const QString& Text() const noexcept { return m_text; }
    [[nodiscard]] const std::vector<ReportRow>& Rows() const noexcept { return m_rows; }
    [[nodiscard]] const std::vector<ReportPiece>& Pieces() const noexcept { return m_pieces; }

    /// Draws the lines of a page that touch a part of it, with the painter's pen. The painter's unit is the
    /// twip, its origin the page's upper left corner.
    void Draw(QPainter& painter, int page, const QRectF& part) const;

    /// Row that holds a position.
    [[nodiscard]] std::size_t RowOf(int position) const;
    /// Row of a page that is nearest to a height [twip]; of the page before where this one has none.
    [[nodiscard]] std::size_t RowAt(int page, double y) const;
    /// Position nearest to a point of a row [twip from the page's left edge].
    [[nodiscard]] int PositionIn(std::size_t row, double x) const;
    /// Where the character of a position begins [twip from the page's left edge], within a row.
    [[nodiscard]] double XOf(std::size_t row, int position) const;
    /// Room of the characters of a row between two positions [twip on its page].
    [[nodiscard]] QRectF AreaOf(std::size_t row, int from, int to) const;

  private:
    RichPage m_paper;
    double m_scale = 1.0;
    RichPage m_page;
    QString m_text;
    std::vector<ReportRow> m_rows;
    std::vector<ReportPiece> m_pieces;
    int m_pageCount = 1;
};

}  // namespace genvara
