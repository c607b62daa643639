#pragma once

#include <filesystem>

namespace genvara {

/// Folder for what has to outlive a failed run: `genvara` in the user's state folder ($XDG_STATE_HOME, or
/// ~/.local/state).
[[nodiscard]] std::filesystem::path StateFolder();

}  // namespace genvara
