#include "Interruption.h"

#include <csignal>

namespace genvara {
namespace {

StopFlag g_stop{false};
static_assert(StopFlag::is_always_lock_free, "a signal's handler may touch it");

void Stop(int /*signal*/) {
    g_stop = true;
}

}  // namespace

Interruption::Interruption() {
    g_stop = false;
    struct sigaction action {};
    action.sa_handler = Stop;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
}

Interruption::~Interruption() {
    std::signal(SIGINT, SIG_DFL);
}

const StopFlag& Interruption::Requested() const noexcept {
    return g_stop;
}

}  // namespace genvara
