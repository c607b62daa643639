#pragma once

#include <string>

#include "CommandLine.h"
#include "StudyCommand.h"

namespace genvara {

/// Refuses a file that a study must not write: its ending names no format, or it is an input.
/// @throws ProjectFailure of the arguments.
void RequireProjectName(const std::string& output, const ProjectArguments& arguments);

/// Writes a project as it would be saved, in the format of the file's ending, whole or not at all.
/// @throws ProjectFailure if the format cannot hold the project, or if the file cannot be written.
void WriteStudied(const std::string& output, const StudyProject& project, const StudyTables& tables);
/// The same of a project of which it was told what sizing it comes to.
/// @param promised what sizing the project comes to; a .prj keeps 15 digits of its numbers, and what the one
///        that was written comes to takes its place
/// @throws ProjectFailure if the format cannot hold the project or would have it need another set, or if the
///         file cannot be written.
void WriteStudied(const std::string& output, const StudyProject& project, const StudyTables& tables,
                  Sizing& promised);

}  // namespace genvara
