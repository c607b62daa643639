#pragma once

#include <string>
#include <vector>

#include "CommandLine.h"

namespace genvara {

/// Arguments of `sweep` beside those of `size`.
struct SweepArguments {
    std::vector<std::string> vary;  ///< "PATH=FROM:TO:BY" or "PATH=VALUE,VALUE..."
    bool csv = false;
    bool breaks = false;  ///< where the answer changes, in place of the points
    bool yes = false;     ///< more than a million points are meant
};

/// Sizes a project at every point of a grid; returns the exit status.
[[nodiscard]] int RunSweep(const ProjectArguments& project, const SweepArguments& arguments);

}  // namespace genvara
