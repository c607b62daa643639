#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "RichTextBlock.h"

namespace genvara {

/// A rich text in the making: what it was given, as the bytes of the format.
///
/// Paragraphs are held back until their block is whole, and then written with the words that keep them on
/// one page.
class RichTextBuilder {
  public:
    RichTextBuilder();

    void BeginSection();
    void BeginText() noexcept { m_takesText = !m_closed; }

    // What changes the paragraphs that follow.
    void Alignment(std::string_view word);
    void TabStop(std::string_view type, std::int32_t position);
    void ResetParagraph();

    void Font(std::string_view face, std::int32_t size, std::int32_t mask, std::int32_t value);
    void Insert(std::string_view text);
    void Close();

    /// Whole once the text is closed.
    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }

  private:
    void Word(std::string_view word);
    void ParagraphWord(std::string_view word);
    void EndParagraph();
    void PlainRun(std::string_view text);
    void Break(std::string_view word);
    void Special(char32_t character);
    void Beyond(char32_t character);
    void Unit(std::uint32_t unit);

    std::string m_text;
    RichTextBlock m_block;
    RichTextParagraph m_paragraph;
    std::string_view m_face;
    std::int32_t m_size = 0;
    std::int32_t m_attributes = 0;
    bool m_afterWord = true;  // the prologue ends with a word
    bool m_takesText = false;
    bool m_closed = false;
};

}  // namespace genvara
