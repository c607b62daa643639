#include "SweepCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

#include "NumberText.h"
#include "Output.h"
#include "Progress.h"
#include "StudyCommand.h"
#include "SweepOutput.h"

namespace genvara {
namespace {

constexpr double kMostPoints = 1e6;
/// Nobody waits for more, and beyond it they could not be counted exactly.
constexpr double kMostPointsAtAll = 1e15;

std::vector<SweepAxis> RequireAxes(const StudiedProject& studied, const SweepArguments& arguments) {
    return CheckingArguments([&] {
        std::vector<SweepAxis> axes = ParseAxes(arguments.vary, studied.Project(), studied.Tables().rules);
        const double points = PointCount(axes);
        if (points > kMostPointsAtAll || (points > kMostPoints && !arguments.yes)) {
            RefuseArguments(fmt::format("The sweep has {} points{}.", RenderPlain(points),
                                        points > kMostPointsAtAll ? ", which is more than can be sized"
                                                                  : "; more than a million want --yes"));
        }
        return axes;
    });
}

std::unique_ptr<PointPrinter> PrinterOf(const ProjectArguments& project, const SweepArguments& arguments,
                                        const std::vector<SweepAxis>& axes) {
    const std::string& file = project.files.front();
    if (project.json) {
        return MakeJsonPrinter(file, axes);
    }
    return arguments.csv ? MakeCsvPrinter(axes) : MakeTablePrinter(file, axes);
}

Status SweepPoints(const ProjectArguments& project, const SweepArguments& arguments,
                   const StudiedProject& studied, const StopFlag& stop) {
    const std::vector<SweepAxis> axes = RequireAxes(studied, arguments);
    const std::unique_ptr<PointPrinter> printer = PrinterOf(project, arguments, axes);
    Progress progress("points", static_cast<std::int64_t>(PointCount(axes)));
    Status status = Status::Done;
    Sweep(studied.Project(), axes, studied.Tables(), project.jobs, stop,
          [&](std::int64_t index, const SweepPoint& point) {
              printer->Take(point);
              status = point.error ? Status::RunFailed : status;
              progress.Show(index + 1);
          });
    progress.Clear();
    printer->End();
    return status;
}

Status SweepBreaks(const ProjectArguments& project, const SweepArguments& arguments,
                   const StudiedProject& studied, const StopFlag& stop) {
    const std::vector<SweepAxis> axes = RequireAxes(studied, arguments);
    if (axes.size() != 1 || !axes.front().range) {
        RefuseArguments("--breaks wants one --vary of a number, as PATH=FROM:TO:BY.");
    }
    const SweepAxis& axis = axes.front();
    Progress progress("points", static_cast<std::int64_t>(PointCount(axes)));
    const std::vector<SweepStretch> stretches =
        FindBreaks(studied.Project(), axis, studied.Tables(), project.jobs, stop,
                   [&](std::int64_t done) { progress.Show(done); });
    progress.Clear();
    Print(project.json    ? StretchesJson(axis, stretches)
          : arguments.csv ? StretchesCsv(axis, stretches)
                          : StretchesTable(project.files.front(), axis, stretches));
    const bool failed =
        std::ranges::any_of(stretches, [](const SweepStretch& row) { return row.point.error.has_value(); });
    return failed ? Status::RunFailed : Status::Done;
}

}  // namespace

int RunSweep(const ProjectArguments& project, const SweepArguments& arguments) {
    return RunStudy(project, [&](const StudiedProject& studied, const StopFlag& stop) {
        return arguments.breaks ? SweepBreaks(project, arguments, studied, stop)
                                : SweepPoints(project, arguments, studied, stop);
    });
}

}  // namespace genvara
