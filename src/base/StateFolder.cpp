#include "StateFolder.h"

#include <cstdlib>

namespace genvara {

std::filesystem::path StateFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && *state == '/') {
        return std::filesystem::path(state) / "genvara";
    }
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home == nullptr ? "." : home) / ".local/state/genvara";
}

}  // namespace genvara
