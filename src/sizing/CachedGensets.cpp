#include "CachedGensets.h"

#include <cstddef>
#include <utility>

namespace genvara {
namespace {

class MemoryCursor final : public GensetCursor {
  public:
    explicit MemoryCursor(std::shared_ptr<const std::vector<GensetRow>> rows) : m_rows(std::move(rows)) {}

    const GensetRow* Next() override { return m_next < m_rows->size() ? &(*m_rows)[m_next++] : nullptr; }

  private:
    std::shared_ptr<const std::vector<GensetRow>> m_rows;
    std::size_t m_next = 0;
};

/// The kept answer to a key, asked for at the first call.
template <typename Answer, typename Key, typename Question>
Answer& Remembered(std::map<Key, Answer>& kept, const Key& key, Question question) {
    const auto found = kept.find(key);
    return found != kept.end() ? found->second : kept.emplace(key, question()).first->second;
}

}  // namespace

PropertiesRecord CachedGensets::Properties() {
    const std::lock_guard lock(m_mutex);
    if (!m_properties) {
        m_properties = m_source->Properties();
    }
    return *m_properties;
}

std::unique_ptr<GensetCursor> CachedGensets::SelectGensets(const SiteFilter& filter) {
    const std::lock_guard lock(m_mutex);
    return std::make_unique<MemoryCursor>(Remembered(m_selections, filter, [&] { return ReadAll(filter); }));
}

std::optional<std::int64_t> CachedGensets::RowNumber(const SiteFilter& filter, std::int64_t position) {
    const std::lock_guard lock(m_mutex);
    return m_source->RowNumber(filter, position);
}

DerateRow CachedGensets::DerateCode(std::int32_t id) {
    const std::lock_guard lock(m_mutex);
    return Remembered(m_derateCodes, id, [&] { return m_source->DerateCode(id); });
}

AlternatorRow CachedGensets::Alternator(std::int32_t id) {
    const std::lock_guard lock(m_mutex);
    return Remembered(m_alternators, id, [&] { return m_source->Alternator(id); });
}

CachedGensets::Rows CachedGensets::ReadAll(const SiteFilter& filter) {
    auto rows = std::make_shared<std::vector<GensetRow>>();
    const std::unique_ptr<GensetCursor> cursor = m_source->SelectGensets(filter);
    while (const GensetRow* row = cursor->Next()) {
        rows->push_back(*row);
    }
    return rows;
}

}  // namespace genvara
