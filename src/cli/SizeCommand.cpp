#include <memory>
#include <string>

#include "CachedGensets.h"
#include "CommandLine.h"
#include "OpenCatalogue.h"
#include "Output.h"
#include "ProjectBatch.h"
#include "SizeCommand.h"
#include "SizedProject.h"
#include "SizingJson.h"
#include "SizingTable.h"
#include "SkipCounter.h"

namespace genvara {
namespace {

std::string Shown(const std::string& file, const SizedProject& sized, bool json) {
    return json ? SizingJson(file, sized) + "\n" : SizingTable(file, sized);
}

/// @throws ProjectFailure of a figure that only the output asks for, as where there are no candidates.
std::string ShownOrBlamed(const SizedProject& sized, const ShowProject& show) {
    try {
        return show(sized);
    } catch (const RaisedError& failure) {
        throw sized.Failure(failure);
    }
}

}  // namespace

ProjectOutcome SizeAndShow(const std::string& file, const ProjectArguments& arguments,
                           const SharedCatalogue& catalogue, const ShowProject& show) {
    SkipCounter skipped;
    ProjectOutcome outcome;
    std::string failureLine;
    const auto fail = [&](const ProjectFailure& failure) {
        outcome.status = failure.status;
        outcome.output = arguments.json ? ErrorJson(file, failure.error) + "\n" : std::string();
        failureLine = FailureLine(file, failure.error, failure.culprit);
    };
    try {
        SizedProject sized(file, catalogue, skipped);
        sized.Size(arguments.limits);
        outcome.output = ShownOrBlamed(sized, show);
    } catch (const ProjectFailure& failure) {
        fail(failure);
    } catch (const RaisedError& failure) {
        fail({.status = Status::RunFailed, .error = failure});
    }
    // What could not be read may well be why the run fails, and so it is told in any case.
    outcome.complaints = {skipped.Warning(file), failureLine};
    return outcome;
}

int FailAll(const ProjectArguments& arguments, const RaisedError& failure) {
    if (arguments.json) {
        for (const std::string& file : arguments.files) {
            Print(ErrorJson(file, failure) + "\n");
        }
    }
    Complain(FailureLine("genvara-cli", failure));
    return static_cast<int>(Status::Unreadable);
}

int RunSize(const ProjectArguments& arguments) {
    std::unique_ptr<OpenCatalogue> open;
    try {
        open = std::make_unique<OpenCatalogue>(arguments.database);
    } catch (const RaisedError& failure) {
        return FailAll(arguments, failure);
    }
    CachedGensets cache(open->Gensets());
    // One project alone streams its candidates; several share what has been read.
    const bool several = arguments.files.size() > 1;
    const SharedCatalogue catalogue{.catalogue = *open,
                                    .gensets = several ? static_cast<GensetSource&>(cache) : open->Gensets()};
    OutcomePrinter printer(!arguments.json);
    ProjectBatch batch(
        arguments.files, arguments.jobs,
        [&](const std::string& file) {
            return SizeAndShow(file, arguments, catalogue,
                               [&](const SizedProject& sized) { return Shown(file, sized, arguments.json); });
        },
        [&](const ProjectOutcome& outcome) { printer.Take(outcome); });
    batch.Run();
    return static_cast<int>(printer.Worst());
}

}  // namespace genvara
