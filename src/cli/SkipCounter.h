#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

#include "ProjectFile.h"

namespace genvara {

/// Counts what a file's reader passed over.
class SkipCounter final : public ProjectReadObserver {
  public:
    void Skipped(const SkippedItem& /*item*/) override { ++m_count; }

    /// The warning of a file; empty if nothing was passed over.
    [[nodiscard]] std::string Warning(const std::string& file) const {
        return m_count == 0
                   ? std::string()
                   : fmt::format("{}: warning: {} item{} of the file could not be used; \"check\" lists {}.",
                                 file, m_count, m_count == 1 ? "" : "s", m_count == 1 ? "it" : "them");
    }

  private:
    std::int64_t m_count = 0;
};

}  // namespace genvara
