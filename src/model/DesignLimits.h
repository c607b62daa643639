#pragma once

#include <cstdint>

namespace genvara {

/// The user's settings of a run.
class DesignLimits {
  public:
    /// Least loading of a recommended set [percent]; 0 and above, default 30.
    /// @throws RaisedError 13 "Invalid minimum loading level." from "CDesigner::MinLoading".
    void MinLoading(std::int32_t percent);
    [[nodiscard]] std::int32_t MinLoading() const noexcept { return m_minLoading; }

    /// Most loading of a recommended set [percent]; 100 and below, default 80.
    /// @throws RaisedError 13 "Invalid maximum loading level." from "CDesigner::MaxLoading".
    void MaxLoading(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxLoading() const noexcept { return m_maxLoading; }

    /// Length of the list of recommended sets; any value, below 0 counts as 0; default 16.
    void MaxSetsRecommended(std::int32_t sets) noexcept { m_maxSetsRecommended = sets; }
    [[nodiscard]] std::int32_t MaxSetsRecommended() const noexcept { return m_maxSetsRecommended; }

    /// Length of the list of undersized sets; any value, below 0 counts as 0; default 5.
    void MaxSetsUndersized(std::int32_t sets) noexcept { m_maxSetsUndersized = sets; }
    [[nodiscard]] std::int32_t MaxSetsUndersized() const noexcept { return m_maxSetsUndersized; }

  private:
    std::int32_t m_minLoading = 30;
    std::int32_t m_maxLoading = 80;
    std::int32_t m_maxSetsRecommended = 16;
    std::int32_t m_maxSetsUndersized = 5;
};

}  // namespace genvara
