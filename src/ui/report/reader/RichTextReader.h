#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Reads rich text into plain structures, as far as reports use it: one section of paragraphs with tab stops,
/// faces, sizes, bold and italic, and what no page may part. What it does not know it passes over.
namespace genvara {

/// How a text stands at its tab stop: it begins, ends, has its decimal point, or its middle there.
enum class RichTabKind { kLeft, kRight, kDecimal, kCentre };

struct RichTabStop {
    RichTabKind kind = RichTabKind::kLeft;
    std::int32_t position = 0;  ///< [twip] from the left margin, above 0

    bool operator==(const RichTabStop&) const = default;
};

enum class RichAlignment { kLeft, kCentre, kRight };

struct RichFormat {
    std::string face;              ///< UTF-8; "" where the document names none
    std::int32_t halfPoints = 24;  ///< size [1/2 point], 2 to 576
    bool bold = false;
    bool italic = false;
    std::int32_t spacing = 0;  ///< added behind each letter [twip], -200 to 200

    bool operator==(const RichFormat&) const = default;
};

/// Text of one format, UTF-8. A tab is a tab, a forced line break is a line feed.
struct RichRun {
    RichFormat format;
    std::string text;
};

struct RichParagraph {
    RichAlignment alignment = RichAlignment::kLeft;
    std::vector<RichTabStop> stops;  ///< rising, at most 64
    std::vector<RichRun> runs;       ///< none of them empty, neighbours of different formats
    RichFormat mark;                 ///< of the paragraph's end, which gives an empty paragraph its height
    bool isOnePiece = false;         ///< no page ends between its lines
    bool isWithNext = false;         ///< no page ends between it and the next one
};

/// All in twips. The defaults are those of the format.
struct RichPage {
    std::int32_t width = 12240;
    std::int32_t height = 15840;
    std::int32_t left = 1800;
    std::int32_t right = 1800;
    std::int32_t top = 1440;
    std::int32_t bottom = 1440;

    bool operator==(const RichPage&) const = default;
};

/// A page that can be used: margins that leave too little for the text give way to none.
[[nodiscard]] RichPage SoundPage(RichPage page);

struct RichDocument {
    RichPage page;
    std::int32_t defaultTab = 720;  ///< distance of the stops beyond a paragraph's own [twip], above 0
    std::vector<RichParagraph> paragraphs;
};

/// Reads a document whose 8-bit characters are Windows-1252. Any bytes give a document: groups that are left
/// open end with the text, and figures out of range are passed over. Bytes that do not begin like rich text
/// are taken as plain text, a paragraph a line. No bytes, no paragraphs.
[[nodiscard]] RichDocument ReadRichText(std::string_view bytes);

}  // namespace genvara
