#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "RichTextReader.h"

namespace genvara {

/// How firmly a line is bound to the next one. A page ends at the weakest bond that it can.
enum class LineBond : std::uint8_t {
    kNone,
    kEntries,     ///< of one table, and groups of lines with a gap between them, that are to stay together
    kParagraphs,  ///< that are to stay together
    kLines,       ///< of a paragraph that is to stay in one piece
    kEnds         ///< first two and last two lines of a paragraph
};

struct BoundLine {
    double height = 0.0;  ///< [twip]
    LineBond bond = LineBond::kNone;
};

struct LinePlace {
    int page = 0;
    double top = 0.0;  ///< [twip] from where the text begins on the page
};

/// The bond between a paragraph's last line and the next paragraph.
[[nodiscard]] LineBond BondBetween(const RichParagraph& paragraph, const RichParagraph& next);

/// Binds the lines of a paragraph to each other; the bond behind the last one stays as it is.
void BindLines(std::span<BoundLine> lines, bool isOnePiece);

/// Sets lines on pages. Lines that are bound move to the next page together where this one has no room for
/// them all; what no page can hold is parted at its weakest bonds. A line that is higher than a page has one
/// of its own.
/// @param room height that a page has for lines [twip]
[[nodiscard]] std::vector<LinePlace> PlaceOnPages(std::span<const BoundLine> lines, double room);

}  // namespace genvara
