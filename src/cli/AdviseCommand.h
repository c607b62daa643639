#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CommandLine.h"

namespace genvara {

/// Arguments of `advise` beside those of `size`.
struct AdviseArguments {
    bool pairs = false;
    std::string kinds;  ///< with commas between; empty for all
    std::optional<std::int32_t> apply;
    std::string output;
};

/// Lists what would let a smaller set do, or applies one piece of it; returns the exit status.
[[nodiscard]] int RunAdvise(const ProjectArguments& project, const AdviseArguments& arguments);

}  // namespace genvara
