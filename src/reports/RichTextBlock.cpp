#include "RichTextBlock.h"

#include <utility>

namespace genvara {
namespace {

constexpr std::string_view kKeep = "\\keepn";

/// Paragraphs that a reader is asked to keep on one page. A common word processor moves no more than 37 lines
/// of a table to the next page, and leaves the others wherever they stand.
constexpr std::size_t kMostKept = 36;

bool IsHeading(const RichTextParagraph& paragraph) {
    return paragraph.isBold && !paragraph.hasPlain && !paragraph.isEmpty;
}

bool IsRule(const RichTextParagraph& paragraph) {
    return paragraph.isRule && !paragraph.isEmpty;
}

/// Whether a paragraph is the last line of a table's entry: figures below their label.
bool EndsEntry(const RichTextParagraph& paragraph, const RichTextParagraph& next) {
    return paragraph.beginsWithTab && !paragraph.isBold && !next.beginsWithTab && !IsRule(next);
}

}  // namespace

bool RichTextBlock::EndsBefore(const RichTextParagraph& next) const {
    if (m_paragraphs.empty()) {
        return false;
    }
    if (IsRule(next) && next.isBold) {
        return true;
    }
    const RichTextParagraph& last = m_paragraphs.back();
    const bool isGap = last.isEmpty && !last.isBold;
    return isGap && (IsRule(next) || IsHeading(next));
}

void RichTextBlock::Add(RichTextParagraph paragraph) {
    m_paragraphs.push_back(std::move(paragraph));
}

bool RichTextBlock::IsKept(std::size_t index) const {
    if (index + 1 == m_paragraphs.size()) {
        return false;
    }
    // The gap at the end of a block may stand behind the page.
    const RichTextParagraph& next = m_paragraphs[index + 1];
    if (index + 2 == m_paragraphs.size() && next.isEmpty) {
        return false;
    }
    return m_paragraphs.size() <= kMostKept || !EndsEntry(m_paragraphs[index], next);
}

void RichTextBlock::FollowState(const RichTextParagraph& paragraph) {
    if (paragraph.resets) {
        m_alignment = {};
        m_stops.clear();
    }
    m_alignment = paragraph.alignment.empty() ? m_alignment : paragraph.alignment;
    m_stops += paragraph.stops;
}

void RichTextBlock::Write(std::string& document) {
    bool wasKept = false;  // the last paragraph of a block never is
    for (std::size_t i = 0; i < m_paragraphs.size(); ++i) {
        const RichTextParagraph& paragraph = m_paragraphs[i];
        const std::string_view text = paragraph.text;
        const bool isKept = IsKept(i);
        wasKept = wasKept && !paragraph.resets;
        FollowState(paragraph);
        document += text.substr(0, paragraph.wordsTo);
        if (isKept && !wasKept) {
            document += kKeep;
        } else if (wasKept && !isKept) {
            // The word has no opposite: the whole state is given anew.
            document.append(kPlainParagraph).append(m_alignment).append(m_stops);
        }
        document += isKept != wasKept && paragraph.wordsTo == 0 ? " " : "";
        document += text.substr(paragraph.wordsTo);
        document += "\\par\r\n";
        wasKept = isKept;
    }
    m_paragraphs.clear();
}

}  // namespace genvara
