#pragma once

#include <functional>
#include <string>

#include "CommandLine.h"
#include "ProjectBatch.h"
#include "SizedProject.h"

/// What the commands share that size projects and show something of them.
namespace genvara {

/// The output for a project that was sized.
/// @throws ProjectFailure, or RaisedError for one that counts as a run's.
using ShowProject = std::function<std::string(const SizedProject&)>;

/// Reads a project, sizes it and shows it; whatever fails becomes its outcome.
[[nodiscard]] ProjectOutcome SizeAndShow(const std::string& file, const ProjectArguments& arguments,
                                         const SharedCatalogue& catalogue, const ShowProject& show);

/// Lets every project answer with the failure of the database that they share; the exit status.
[[nodiscard]] int FailAll(const ProjectArguments& arguments, const RaisedError& failure);

}  // namespace genvara
