#include "StudyOutput.h"

#include <fmt/format.h>

#include <array>
#include <optional>

#include "AtomicFile.h"
#include "DateTime.h"
#include "FileIdentity.h"
#include "JsonProject.h"
#include "PrjLosses.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"

namespace genvara {
namespace {

[[noreturn]] void Fail(const std::string& description, std::int32_t number = 0) {
    throw ProjectFailure{Status::Unreadable, RaisedError(number, "", description)};
}

std::string Rendered(const std::string& output, const StudyProject& project, const StudyTables& tables) {
    const ProjectView view{project.project, project.powerSystem, project.loadProfile};
    const DateTime now = LocalTime();
    if (FormatOfName(output) == ProjectFormat::Json) {
        return RenderJsonProject(view, now);
    }
    // What came from a .prj goes back as it was.
    if (project.format == ProjectFormat::Json) {
        if (const ProjectFaults losses = FindPrjLosses(view, tables.rules.motors.conversions); losses.Any()) {
            Fail(fmt::format("{} cannot hold the project: {}.", output, FaultsText(losses)));
        }
    }
    return RenderProject(view, kProgramVersion, now).bytes;
}

/// What sizing the project comes to once 15 digits of its numbers are all that is left of them.
Sizing SizedAsRecords(const std::string& output, const StudyProject& project, const StudyTables& tables,
                      const Sizing& promised) {
    StudyProject records = project;
    records.format = ProjectFormat::Records;
    Sizing sizing = ProjectSizer(tables).Size(Reopened(records, tables.rules));
    if (!sizing.IsSameRow(promised)) {
        Fail(fmt::format(
            "{} cannot hold the project: the 15 digits that a .prj keeps of its numbers would have "
            "it need another set.",
            output));
    }
    return sizing;
}

void Write(const std::string& output, std::string_view bytes) {
    try {
        AtomicFile target(output);
        target.Write(bytes);
        target.Commit();
    } catch (const RaisedError& failure) {
        Fail(fmt::format("{} cannot be written: {}.", output, failure.Description()), failure.Number());
    }
}

}  // namespace

void RequireProjectName(const std::string& output, const ProjectArguments& arguments) {
    if (!FormatOfName(output)) {
        RefuseArguments(
            fmt::format("The name of a project ends with .prj or .json, which {} does not.", output));
    }
    const std::array<InputFile, 2> inputs{
        {{arguments.files.front(), "the project"}, {arguments.database, "the genset database"}}};
    if (const std::optional<std::string> refusal = OverwriteRefusal(output, inputs)) {
        RefuseArguments(*refusal);
    }
}

void WriteStudied(const std::string& output, const StudyProject& project, const StudyTables& tables) {
    Write(output, Rendered(output, project, tables));
}

void WriteStudied(const std::string& output, const StudyProject& project, const StudyTables& tables,
                  Sizing& promised) {
    const std::string bytes = Rendered(output, project, tables);
    if (project.format == ProjectFormat::Json && FormatOfName(output) == ProjectFormat::Records) {
        promised = SizedAsRecords(output, project, tables, promised);
    }
    Write(output, bytes);
}

}  // namespace genvara
