#include "RichTextDocument.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "RichTextBuilder.h"

namespace genvara {
namespace {

/// Documents that may be alive at once. Far more than any program makes side by side: whoever gets here has
/// left documents without their end.
constexpr std::size_t kMostDocuments = 4096;

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
        m_documents.emplace(m_last, std::make_shared<RichTextBuilder>());
        return m_last;
    }
    std::shared_ptr<RichTextBuilder> Find(std::int32_t handle) {
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
    std::map<std::int32_t, std::shared_ptr<RichTextBuilder>> m_documents;
};

Documents& All() {
    static Documents documents;
    return documents;
}

template <typename Operation>
std::int32_t On(std::int32_t handle, Operation operation) {
    const std::shared_ptr<RichTextBuilder> document = All().Find(handle);
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
    return On(document, [](RichTextBuilder&) {});
}

std::int32_t RcgInitSect(std::int32_t document) {
    return On(document, [](RichTextBuilder& text) { text.BeginSection(); });
}

std::int32_t RcgBeginSectText(std::int32_t document) {
    return On(document, [](RichTextBuilder& text) { text.BeginText(); });
}

std::int32_t RcgParaFlags(std::int32_t document, std::int32_t flags) {
    return On(document, [flags](RichTextBuilder& text) {
        const auto* const found = std::ranges::find(kFlagWords, flags, &FlagWord::flags);
        text.Alignment(found == kFlagWords.end() ? "\\ql" : found->word);
    });
}

std::int32_t RcgParaTabStop(std::int32_t document, std::int32_t type, std::int32_t position,
                            std::int32_t /*leader*/) {
    return On(document, [type, position](RichTextBuilder& text) {
        const auto* const found = std::ranges::find(kTabWords, type, &TabWord::type);
        text.TabStop(found == kTabWords.end() ? "" : found->word, position);
    });
}

std::int32_t RcgResetParaProp(std::int32_t document) {
    return On(document, [](RichTextBuilder& text) { text.ResetParagraph(); });
}

std::int32_t RcgTextFont(std::int32_t document, std::string_view face, std::int32_t size, std::int32_t mask,
                         std::int32_t value) {
    return On(document, [&](RichTextBuilder& text) { text.Font(face, size, mask, value); });
}

std::int32_t RcgInsertText(std::int32_t document, std::string_view text) {
    return On(document, [text](RichTextBuilder& target) { target.Insert(text); });
}

std::int32_t RcgGetData(std::int32_t document, std::int32_t& length) {
    length = 0;
    bool fits = false;
    On(document, [&](RichTextBuilder& text) {
        text.Close();
        fits = std::in_range<std::int32_t>(text.Text().size());
        length = fits ? static_cast<std::int32_t>(text.Text().size()) : 0;
    });
    return fits ? document : 0;
}

std::int32_t RcgHandleToStr(std::string& buffer, std::int32_t length, std::int32_t data) {
    return On(data, [&](const RichTextBuilder& text) {
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
