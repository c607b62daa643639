#pragma once

#include "Stopping.h"

namespace genvara {

/// Exit status after Ctrl+C: 128 and the signal's number, as shells have it.
inline constexpr int kInterrupted = 130;

/// Turns Ctrl+C into a request to stop as long as it lives. A second one ends the program at once, as it
/// would without this: whatever holds the work up need not hold up the user.
class Interruption {
  public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    Interruption(Interruption&&) = delete;
    Interruption& operator=(Interruption&&) = delete;

    [[nodiscard]] const StopFlag& Requested() const noexcept;
};

}  // namespace genvara
