#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "RichTextDocument.h"

namespace genvara {

/// Takes every document that can be made, so that the next one cannot.
class AllDocuments {
  public:
    AllDocuments() {
        for (std::int32_t document = RcgNewDoc(); document != 0; document = RcgNewDoc()) {
            m_documents.push_back(document);
        }
    }
    ~AllDocuments() {
        for (const std::int32_t document : m_documents) {
            RcgEndDoc(document);
        }
    }
    AllDocuments(const AllDocuments&) = delete;
    AllDocuments& operator=(const AllDocuments&) = delete;
    AllDocuments(AllDocuments&&) = delete;
    AllDocuments& operator=(AllDocuments&&) = delete;

    [[nodiscard]] std::size_t Count() const noexcept { return m_documents.size(); }

  private:
    std::vector<std::int32_t> m_documents;
};

}  // namespace genvara
