#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "GensetSource.h"

namespace genvara {

/// Asks another source each question once and keeps the answer: for a batch of projects that share a
/// catalogue. Any number of threads may ask at the same time; cursors belong to one thread each.
class CachedGensets final : public GensetSource {
  public:
    /// The other source outlives this one, and nobody else asks it meanwhile.
    explicit CachedGensets(GensetSource& source) : m_source(&source) {}

    [[nodiscard]] PropertiesRecord Properties() override;
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& filter) override;
    [[nodiscard]] std::optional<std::int64_t> RowNumber(const SiteFilter& filter,
                                                        std::int64_t position) override;
    [[nodiscard]] DerateRow DerateCode(std::int32_t id) override;
    [[nodiscard]] AlternatorRow Alternator(std::int32_t id) override;

  private:
    using Rows = std::shared_ptr<const std::vector<GensetRow>>;

    Rows ReadAll(const SiteFilter& filter);

    GensetSource* m_source;
    std::mutex m_mutex;
    std::optional<PropertiesRecord> m_properties;
    std::map<SiteFilter, Rows> m_selections;
    std::map<std::int32_t, DerateRow> m_derateCodes;
    std::map<std::int32_t, AlternatorRow> m_alternators;
};

}  // namespace genvara
