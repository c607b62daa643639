#pragma once

#include <atomic>

namespace genvara {

/// Ends a study that was told to stop; it leaves nothing behind.
struct StudyStopped {};

/// Whether a study shall go on: looked at between two pieces of its work, set by whoever wants it to end.
using StopFlag = std::atomic<bool>;

inline void RequireGoingOn(const StopFlag& stop) {
    if (stop) {
        throw StudyStopped{};
    }
}

}  // namespace genvara
