#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "RaisedError.h"

namespace genvara {

/// Shows fields one after the other and counts those that fail, so that the caller gets one failure.
class DisplayCount {
  public:
    template <typename Statement>
    void Show(Statement&& statement) {
        try {
            std::forward<Statement>(statement)();
        } catch (const RaisedError&) {
            ++m_failures;
        }
    }

    /// @throws RaisedError 1 with the count and the text, if any field failed.
    void RaiseIfAny(std::string_view text, std::string_view source) const {
        constexpr std::int32_t kDisplayError = 1;
        if (m_failures > 0) {
            throw RaisedError(kDisplayError, std::string(source), fmt::format("{}{}", m_failures, text));
        }
    }

  private:
    int m_failures = 0;
};

}  // namespace genvara
