#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// Clears the paragraph state. No paragraph's lines are parted where a page can hold them.
inline constexpr std::string_view kPlainParagraph = "\\pard\\keep";

/// A paragraph of a rich text, and what tells how it belongs to its neighbours.
struct RichTextParagraph {
    std::string text;            ///< in rich text, up to its end
    std::size_t wordsTo = 0;     ///< behind the last of the words with which it changes the paragraph state
    bool resets = false;         ///< whether they clear that state first
    std::string_view alignment;  ///< that they set; "" for none
    std::string stops;           ///< that they add
    std::int32_t size = 0;       ///< of its end [point]
    bool isBold = false;         ///< its end
    bool isEmpty = true;
    bool isRule = true;  ///< nothing but underscores, unless it is empty
    bool hasPlain = false;
    bool beginsWithTab = false;
};

/// Paragraphs that a reader shall keep on one page, and the words that tell it so.
///
/// A block is a section with its rule and heading, or a step of a table with its totals. A long one may be
/// broken between its entries, each of which ends with a line of figures.
class RichTextBlock {
  public:
    /// Whether a paragraph begins a block of its own behind those that were added.
    [[nodiscard]] bool EndsBefore(const RichTextParagraph& next) const;

    void Add(RichTextParagraph paragraph);

    /// Appends the paragraphs to a document, each with its end, and forgets them.
    void Write(std::string& document);

  private:
    [[nodiscard]] bool IsKept(std::size_t index) const;
    void FollowState(const RichTextParagraph& paragraph);

    std::vector<RichTextParagraph> m_paragraphs;
    std::string_view m_alignment;
    std::string m_stops;
};

}  // namespace genvara
