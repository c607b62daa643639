#pragma once

#include <CLI/CLI.hpp>

#include "CommandLine.h"

/// Options that several commands have.
namespace genvara {

/// The genset database.
void AddDatabase(CLI::App& command, ProjectArguments& arguments);
/// The project files, one or more.
void AddProjects(CLI::App& command, ProjectArguments& arguments);
/// The limits of a run, each by the designer's own check.
void AddLimits(CLI::App& command, ProjectArguments& arguments);

}  // namespace genvara
