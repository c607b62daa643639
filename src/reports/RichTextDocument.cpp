#include "RichTextDocument.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <utility>

#include "CodePage.h"

namespace genvara {
namespace {

/// Fonts, page and defaults.
///
/// A Letter page with margins of 3/4 inch at the sides and 1/2 inch above and below leaves 10080 twips. The
/// widest lines need it: the rules (59 underscores of 14 points, 9300 twips) and three percentages of three
/// digits behind the last column's stop (7920 + 2000 twips). Without a page of its own each reader would take
/// its own default, and the usual one, 8640 twips wide, breaks these lines. The low margins keep a sizing
/// report with several reasons for rejection on one page.
///
/// A default tab of 900 twips brings the values behind "Project" with two tabs and "Customer" with one into
/// one column; letters set wider by a tenth of a point, which nobody sees, carry the label "Step Totals" past
/// the quantity's stop, so that its figures stand under their headings.
constexpr std::string_view kPrologue =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1"
    "{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\froman\\fcharset0 Times New Roman;}}\r\n"
    "\\paperw12240\\paperh15840\\margl1080\\margr1080\\margt720\\margb720\\deftab900\\expndtw2";

/// Documents that may be alive at once. Far more than any program makes side by side: whoever gets here has
/// left documents without their end.
constexpr std::size_t kMostDocuments = 4096;

constexpr std::array<std::string_view, 2> kFaces{"Arial", "Times New Roman"};

struct FlagWord {
    std::int32_t flags;
    std::string_view word;
};
constexpr std::array<FlagWord, 2> kFlagWords{
    {{rich_text::kCentred, "\\qc"}, {rich_text::kLeftAligned, "\\ql"}}};

struct TabWord {
    std::int32_t type;
    std::string_view word;
};
constexpr std::array<TabWord, 3> kTabWords{
    {{rich_text::kLeftTab, ""}, {rich_text::kRightTab, "\\tqr"}, {rich_text::kDecimalTab, "\\tqdec"}}};

struct AttributeWord {
    std::int32_t bit;
    std::string_view on;
    std::string_view off;
};
constexpr std::array<AttributeWord, 2> kAttributeWords{
    {{rich_text::kBold, "\\b", "\\b0"}, {rich_text::kItalic, "\\i", "\\i0"}}};

/// A document in the making.
class Document {
  public:
    void Word(std::string_view word) {
        if (m_closed) {
            return;
        }
        m_text += word;
        m_afterWord = m_afterWord || !word.empty();
    }

    void BeginText() noexcept { m_takesText = !m_closed; }

    void TabStop(std::string_view type, std::int32_t position) {
        Word(fmt::format("{}\\tx{}", type, position));
    }

    void Font(std::string_view face, std::int32_t size, std::int32_t mask, std::int32_t value) {
        const auto* const found = std::ranges::find(kFaces, face);
        if (found != kFaces.end() && m_face != face) {
            m_face = *found;
            Word(fmt::format("\\f{}", found - kFaces.begin()));
        }
        if (size != 0 && m_size != size) {
            m_size = size;
            Word(fmt::format("\\fs{}", 2 * size));
        }
        for (const AttributeWord& attribute : kAttributeWords) {
            const bool on = value != rich_text::kOff;
            if ((mask & attribute.bit) != 0 && ((m_attributes & attribute.bit) != 0) != on) {
                m_attributes ^= attribute.bit;
                Word(on ? attribute.on : attribute.off);
            }
        }
    }

    void Insert(std::string_view text) {
        if (!m_takesText) {
            return;
        }
        while (!text.empty()) {
            std::size_t taken = Leading(text, IsPlain);
            if (taken > 0) {
                PlainRun(text.substr(0, taken));
            } else if (text.starts_with("\r\n")) {
                Break("\\par\r\n");
                taken = 2;
            } else {
                taken = std::max<std::size_t>(Leading(text, IsBeyondAscii), 1);
                std::ranges::for_each(DecodeUtf8(text.substr(0, taken)),
                                      [this](char32_t character) { Special(character); });
            }
            text.remove_prefix(taken);
        }
    }

    void Close() {
        if (!m_closed) {
            m_text += '}';
        }
        m_closed = true;
        m_takesText = false;
    }

    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }

  private:
    /// A character that stands for itself.
    static bool IsPlain(char byte) noexcept {
        return byte >= 0x20 && byte < 0x7F && byte != '\\' && byte != '{' && byte != '}';
    }

    static bool IsBeyondAscii(char byte) noexcept { return static_cast<unsigned char>(byte) >= 0x80; }

    /// Bytes at the front of a text that are of a kind.
    static std::size_t Leading(std::string_view text, bool (*isOfKind)(char) noexcept) {
        return static_cast<std::size_t>(std::ranges::find_if_not(text, isOfKind) - text.begin());
    }

    void PlainRun(std::string_view text) {
        if (m_afterWord) {
            m_text += ' ';
        }
        m_afterWord = false;
        m_text += text;
    }

    /// A word that ends in white space of its own.
    void Break(std::string_view word) {
        m_text += word;
        m_afterWord = false;
    }

    void Special(char32_t character) {
        if (character == U'\t') {
            Break("\\tab ");
        } else if (character == U'\r' || character == U'\n') {
            Break("\\line ");
        } else if (character == U'\\' || character == U'{' || character == U'}') {
            m_text += '\\';
            m_text += static_cast<char>(character);
            m_afterWord = false;
        } else {
            Beyond(character);
        }
    }

    /// A character beyond plain ASCII: a byte of the code page, or its number with a question mark for
    /// readers that know no better.
    void Beyond(char32_t character) {
        m_afterWord = false;
        if (const std::optional<char> byte = EncodeCharacter(character)) {
            fmt::format_to(std::back_inserter(m_text), "\\'{:02x}", static_cast<unsigned char>(*byte));
        } else if (character < 0x10000) {
            Unit(static_cast<std::uint32_t>(character));
        } else {
            const auto rest = static_cast<std::uint32_t>(character) - 0x10000U;
            Unit(0xD800U + (rest >> 10U));
            Unit(0xDC00U + (rest & 0x3FFU));
        }
    }

    /// One 16-bit unit of a character, signed as rich text has it.
    void Unit(std::uint32_t unit) {
        fmt::format_to(std::back_inserter(m_text), "\\u{}?", static_cast<std::int16_t>(unit));
    }

    std::string m_text{kPrologue};
    std::string_view m_face;
    std::int32_t m_size = 0;
    std::int32_t m_attributes = 0;
    bool m_afterWord = true;  // the prologue ends with a word
    bool m_takesText = false;
    bool m_closed = false;
};

/// The documents that are alive, by handle.
class Documents {
  public:
    /// 0 if there is no room.
    std::int32_t Add() {
        const std::lock_guard lock(m_mutex);
        if (m_documents.size() >= kMostDocuments) {
            return 0;
        }
        do {
            m_last = m_last == std::numeric_limits<std::int32_t>::max() ? 1 : m_last + 1;
        } while (m_documents.contains(m_last));
        m_documents.emplace(m_last, std::make_shared<Document>());
        return m_last;
    }
    std::shared_ptr<Document> Find(std::int32_t handle) {
        const std::lock_guard lock(m_mutex);
        const auto found = m_documents.find(handle);
        return found == m_documents.end() ? nullptr : found->second;
    }
    bool Remove(std::int32_t handle) {
        const std::lock_guard lock(m_mutex);
        return m_documents.erase(handle) > 0;
    }
    std::size_t Count() {
        const std::lock_guard lock(m_mutex);
        return m_documents.size();
    }

  private:
    std::mutex m_mutex;
    std::int32_t m_last = 0;
    std::map<std::int32_t, std::shared_ptr<Document>> m_documents;
};

Documents& All() {
    static Documents documents;
    return documents;
}

template <typename Operation>
std::int32_t On(std::int32_t handle, Operation operation) {
    const std::shared_ptr<Document> document = All().Find(handle);
    if (document == nullptr) {
        return 0;
    }
    operation(*document);
    return 1;
}

}  // namespace

std::int32_t RcgNewDoc() {
    try {
        return All().Add();
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

std::int32_t RcgSetFlags(std::int32_t document, std::int32_t /*mask*/, std::int32_t /*value*/) {
    return On(document, [](Document&) {});
}

std::int32_t RcgInitSect(std::int32_t document) {
    return On(document, [](Document& text) { text.Word("\\sectd"); });
}

std::int32_t RcgBeginSectText(std::int32_t document) {
    return On(document, [](Document& text) { text.BeginText(); });
}

std::int32_t RcgParaFlags(std::int32_t document, std::int32_t flags) {
    return On(document, [flags](Document& text) {
        const auto* const found = std::ranges::find(kFlagWords, flags, &FlagWord::flags);
        text.Word(found == kFlagWords.end() ? "\\ql" : found->word);
    });
}

std::int32_t RcgParaTabStop(std::int32_t document, std::int32_t type, std::int32_t position,
                            std::int32_t /*leader*/) {
    return On(document, [type, position](Document& text) {
        const auto* const found = std::ranges::find(kTabWords, type, &TabWord::type);
        text.TabStop(found == kTabWords.end() ? "" : found->word, position);
    });
}

std::int32_t RcgResetParaProp(std::int32_t document) {
    return On(document, [](Document& text) { text.Word("\\pard"); });
}

std::int32_t RcgTextFont(std::int32_t document, std::string_view face, std::int32_t size, std::int32_t mask,
                         std::int32_t value) {
    return On(document, [&](Document& text) { text.Font(face, size, mask, value); });
}

std::int32_t RcgInsertText(std::int32_t document, std::string_view text) {
    return On(document, [text](Document& target) { target.Insert(text); });
}

std::int32_t RcgGetData(std::int32_t document, std::int32_t& length) {
    length = 0;
    bool fits = false;
    On(document, [&](Document& text) {
        text.Close();
        fits = std::in_range<std::int32_t>(text.Text().size());
        length = fits ? static_cast<std::int32_t>(text.Text().size()) : 0;
    });
    return fits ? document : 0;
}

std::int32_t RcgHandleToStr(std::string& buffer, std::int32_t length, std::int32_t data) {
    return On(data, [&](const Document& text) {
        const auto count =
            std::min({static_cast<std::size_t>(std::max(length, 0)), buffer.size(), text.Text().size()});
        std::copy_n(text.Text().begin(), count, buffer.begin());
    });
}

std::int32_t RcgEndDoc(std::int32_t document) {
    return All().Remove(document) ? 1 : 0;
}

std::size_t LiveRichTextDocuments() {
    return All().Count();
}

}  // namespace genvara
