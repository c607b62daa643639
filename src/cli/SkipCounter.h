#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>

#include "ProjectFile.h"

namespace genvara {

/// Counts what a file's reader passed over.
class SkipCounter final : public ProjectReadObserver {
  public:
    void FormatFound(ProjectFormat format) override { m_readInPart = format == ProjectFormat::Records; }
    void ProjectRead() override { m_readInPart = true; }
    void Skipped(const SkippedItem& /*item*/) override { ++m_count; }

    /// The warning of a file; empty if nothing was passed over, or all of it: a JSON project with a fault is
    /// not read, and its error tells why.
    [[nodiscard]] std::string Warning(const std::string& file) const {
        return m_count == 0 || !m_readInPart
                   ? std::string()
                   : fmt::format("{}: warning: {} item{} of the file could not be used; \"check\" lists {}.",
                                 file, m_count, m_count == 1 ? "" : "s", m_count == 1 ? "it" : "them");
    }

  private:
    std::int64_t m_count = 0;
    bool m_readInPart = true;
};

}  // namespace genvara
