#pragma once

#include <string>

#include "CommandLine.h"

namespace genvara {

/// Arguments of `import` beside the project.
struct ImportArguments {
    std::string table;   ///< "-" for standard input
    std::string output;  ///< empty to show what the table becomes, and write nothing
};

/// Adds the loads of a table to a project; returns the exit status.
[[nodiscard]] int RunImport(const ProjectArguments& project, const ImportArguments& arguments);

}  // namespace genvara
