#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A document generator in twelve operations on a handle, which writes rich text. Text comes in as UTF-8 and
/// goes out as Windows-1252; threads may make documents side by side.
namespace genvara {

/// Values of the operations' arguments.
namespace rich_text {
inline constexpr std::int32_t kBold = 2;
inline constexpr std::int32_t kItalic = 4;
inline constexpr std::int32_t kOn = -1;
inline constexpr std::int32_t kOff = 0;
inline constexpr std::int32_t kCentred = 1;
inline constexpr std::int32_t kLeftAligned = 1024;
inline constexpr std::int32_t kLeftTab = 0;
inline constexpr std::int32_t kRightTab = 1;
inline constexpr std::int32_t kDecimalTab = 3;
inline constexpr std::int32_t kNoLeader = 0;
}  // namespace rich_text

/// Starts a document; its handle, or 0 if there is no memory or thousands of documents are alive already.
[[nodiscard]] std::int32_t RcgNewDoc();

// Each of these returns 1 for a live document and 0 otherwise; a dead handle does nothing, and nothing is
// added to a document whose text is closed.

/// Sets flags of the whole document; they have no visible effect.
std::int32_t RcgSetFlags(std::int32_t document, std::int32_t mask, std::int32_t value);
/// Prepares the one section, with the document's page: Letter, 3/4 inch at the sides, 1/2 above and below.
std::int32_t RcgInitSect(std::int32_t document);
/// Opens the section's text: from here on text is taken.
std::int32_t RcgBeginSectText(std::int32_t document);
/// Replaces the flags of the paragraphs that follow: `kCentred` or `kLeftAligned`.
std::int32_t RcgParaFlags(std::int32_t document, std::int32_t flags);
/// Adds a tab stop [twips from the left margin] to the paragraphs that follow; positions rise.
std::int32_t RcgParaTabStop(std::int32_t document, std::int32_t type, std::int32_t position,
                            std::int32_t leader);
/// Clears flags and tab stops of the paragraphs that follow; the text state stays.
std::int32_t RcgResetParaProp(std::int32_t document);
/// Changes the text state: the face unless "", the size [points] unless 0, and the attribute bits of the
/// mask, all on or all off.
std::int32_t RcgTextFont(std::int32_t document, std::string_view face, std::int32_t size, std::int32_t mask,
                         std::int32_t value);
/// Appends text. CR LF ends the paragraph, a tab moves to the next stop, a CR or LF alone breaks the line;
/// other control characters stand in the document as their code.
std::int32_t RcgInsertText(std::int32_t document, std::string_view text);

/// Closes the text; the number of bytes of the rich text goes to `length`. The data handle, or 0 for a dead
/// document and for one that is longer than a length can tell.
std::int32_t RcgGetData(std::int32_t document, std::int32_t& length);
/// Copies the rich text behind a data handle into a buffer that is long enough.
std::int32_t RcgHandleToStr(std::string& buffer, std::int32_t length, std::int32_t data);
/// Frees the document; what was copied stays.
std::int32_t RcgEndDoc(std::int32_t document);

/// Documents that are alive, for tests.
[[nodiscard]] std::size_t LiveRichTextDocuments();

}  // namespace genvara
