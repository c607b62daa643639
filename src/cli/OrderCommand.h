#pragma once

#include <string>
#include <vector>

#include "CommandLine.h"

namespace genvara {

/// Arguments of `order` beside those of `size`.
struct OrderArguments {
    std::int32_t maxSteps = 0;  ///< 0 for as many as the project has
    std::vector<std::string> before;
    std::vector<std::string> together;
    double seconds = 10.0;
    std::string output;  ///< empty for none
};

/// Finds the order of loads that does with the smallest set; returns the exit status.
[[nodiscard]] int RunOrder(const ProjectArguments& project, const OrderArguments& arguments);

}  // namespace genvara
