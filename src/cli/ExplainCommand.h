#pragma once

#include "CommandLine.h"
#include "Explain.h"

namespace genvara {

/// Arguments of `explain` beside those of `size`.
struct ExplainArguments {
    ExplainChoice choice;
    bool steps = false;  ///< the table shows every step, and not the worst alone
};

/// Explains why each set of each project is recommended or not; returns the exit status.
[[nodiscard]] int RunExplain(const ProjectArguments& project, const ExplainArguments& arguments);

}  // namespace genvara
