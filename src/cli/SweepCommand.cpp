#include "SweepCommand.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "NumberText.h"
#include "Output.h"
#include "Progress.h"
#include "PropertyText.h"
#include "StudyCommand.h"
#include "SweepOutput.h"
#include "TextTable.h"

namespace genvara {
namespace {

constexpr double kMostPoints = 1e6;
/// Nobody waits for more, and beyond it they could not be counted exactly.
constexpr double kMostPointsAtAll = 1e15;
constexpr std::size_t kLongestPlace = 120;

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

/// Counts what could not be sized and keeps the first of it.
class Failures {
  public:
    void Take(const std::vector<PropertyValue>& at, const std::optional<RaisedError>& error) {
        ++m_all;
        if (error && m_count++ == 0) {
            m_firstAt = at;
            m_first = error;
        }
    }

    /// Tells them on standard error.
    /// @param what is counted, as in "points".
    [[nodiscard]] Status Told(const std::string& file, const std::vector<SweepAxis>& axes,
                              std::string_view what) const {
        if (!m_first) {
            return Status::Done;
        }
        Complain(FailureLine(fmt::format("{}: {} of {} {} could not be sized, the first at {}", file, m_count,
                                         m_all, what, PlaceText(axes, m_firstAt)),
                             *m_first));
        return Status::RunFailed;
    }

  private:
    static std::string PlaceText(const std::vector<SweepAxis>& axes, const std::vector<PropertyValue>& at) {
        std::string text;
        for (std::size_t i = 0; i < axes.size(); ++i) {
            text += fmt::format("{}{}={}", i == 0 ? "" : ", ", axes[i].path, ValueText(axes[i].facts, at[i]));
        }
        return OneLine(text, kLongestPlace);
    }

    std::int64_t m_all = 0;
    std::int64_t m_count = 0;
    std::vector<PropertyValue> m_firstAt;
    std::optional<RaisedError> m_first;
};

Status SweepPoints(const ProjectArguments& project, const SweepArguments& arguments,
                   const StudiedProject& studied, const StopFlag& stop) {
    const std::vector<SweepAxis> axes = RequireAxes(studied, arguments);
    const std::unique_ptr<PointPrinter> printer = PrinterOf(project, arguments, axes);
    Progress progress("points", static_cast<std::int64_t>(PointCount(axes)));
    Failures failures;
    Sweep(studied.Project(), axes, studied.Tables(), project.jobs, stop,
          [&](std::int64_t index, const SweepPoint& point) {
              printer->Take(point);
              failures.Take(point.at, point.error);
              progress.Show(index + 1);
          });
    progress.Clear();
    printer->End();
    return failures.Told(project.files.front(), axes, "points");
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
    Failures failures;
    for (const SweepStretch& stretch : stretches) {
        failures.Take(stretch.point.at, stretch.point.error);
    }
    return failures.Told(project.files.front(), axes, "stretches");
}

}  // namespace

int RunSweep(const ProjectArguments& project, const SweepArguments& arguments) {
    return RunStudy(project, [&](const StudiedProject& studied, const StopFlag& stop) {
        return arguments.breaks ? SweepBreaks(project, arguments, studied, stop)
                                : SweepPoints(project, arguments, studied, stop);
    });
}

}  // namespace genvara
