#pragma once

#include <optional>
#include <utility>

#include "RaisedError.h"

namespace genvara {

/// A stretch of statements each of which runs whatever happened to the one before.
///
/// A failing statement leaves its failure pending; the next failure replaces it, so that a test sees only
/// the most recent one. Nothing but raised errors is held back: a bug still ends the program.
class FailureRegion {
  public:
    /// Runs one statement; true if it succeeded. A success leaves an earlier failure pending.
    template <typename Statement>
    bool Run(Statement&& statement) {
        try {
            std::forward<Statement>(statement)();
            return true;
        } catch (const RaisedError& failure) {
            m_pending = failure;
            return false;
        }
    }

    /// The last failure that was not cleared, if any.
    [[nodiscard]] const std::optional<RaisedError>& Pending() const noexcept { return m_pending; }

    /// Forgets the pending failure, so that a later test sees only its own.
    void Clear() noexcept { m_pending.reset(); }

  private:
    std::optional<RaisedError> m_pending;
};

}  // namespace genvara
