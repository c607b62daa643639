#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace genvara {

/// A tab stop of a block.
struct TabStop {
    std::int32_t position;  ///< twips
    std::int32_t type;
};

/// Line end and tab of a report's texts.
inline constexpr std::string_view kLineEnd = "\r\n";
inline constexpr std::string_view kTab = "\t";

/// A document that ends with its owner, finished or abandoned.
class OwnedDocument {
  public:
    OwnedDocument();
    ~OwnedDocument();
    OwnedDocument(const OwnedDocument&) = delete;
    OwnedDocument& operator=(const OwnedDocument&) = delete;
    OwnedDocument(OwnedDocument&&) = delete;
    OwnedDocument& operator=(OwnedDocument&&) = delete;

    /// 0 if no document could be made.
    [[nodiscard]] std::int32_t Handle() const noexcept { return m_handle; }

  private:
    std::int32_t m_handle;
};

/// The document of one report: the idioms in which reports are written, and the end of the document. A writer
/// that is left before its report is finished frees the document.
class ReportWriter {
  public:
    /// Opens a document and writes its title block: product and title, centred.
    ReportWriter(std::string_view product, std::string_view title);

    /// False if no document could be made: the report is then the empty text.
    [[nodiscard]] bool IsOpen() const noexcept { return Document() != 0; }

    /// Handle of the document, for what has no idiom.
    [[nodiscard]] std::int32_t Document() const noexcept { return m_document.Handle(); }

    /// Text in the present state.
    void Text(std::string_view text) const;
    void Bold() const;
    void Plain() const;

    /// A bold piece, then a plain one; the row after it begins bold again.
    void Row(std::string_view bold, std::string_view plain) const;

    /// Section heading and an empty line.
    void Heading(std::string_view text) const;
    /// Font of the text under a heading, bold, without the heading's second emphasis.
    void Body(std::string_view face, std::int32_t size) const;
    /// Clears the paragraph's state and sets a block's stops.
    void TabStops(std::span<const TabStop> stops) const;

    /// The rich text; the document is then gone.
    [[nodiscard]] std::string Finish() const;

  private:
    OwnedDocument m_document;
};

}  // namespace genvara
