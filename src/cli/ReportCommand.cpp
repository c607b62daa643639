#include "ReportCommand.h"

#include <fmt/format.h>

#include "AtomicFile.h"
#include "Brand.h"
#include "CReports.h"
#include "DistortionWarning.h"
#include "OpenCatalogue.h"
#include "Output.h"
#include "ReportFiller.h"
#include "SizedProject.h"
#include "SkipCounter.h"
#include "SpecExport.h"

namespace genvara {
namespace {

constexpr std::string_view kStandardOutput = "-";

[[noreturn]] void Fail(Status status, const std::string& description) {
    throw ProjectFailure{status, RaisedError(0, "", description)};
}

/// A position that the list does not have is a matter of the arguments.
void RequireIndex(std::int32_t index, std::int32_t count, const char* list) {
    if (index < 0 || index >= count) {
        Fail(Status::BadArguments,
             fmt::format("There is no {} set {}: the list has {}, counted from 0.", list, index, count));
    }
}

/// Copies the values of the set that the arguments ask for; whether it is an undersized one.
bool FillAskedSet(CReports& reports, const ReportSources& sources, const ReportArguments& arguments) {
    const CDesigner& designer = sources.designer;
    if (arguments.undersized) {
        RequireIndex(*arguments.undersized, designer.NumRejectedSets(), "undersized");
        // As in a panel just after the run: it has shown the first recommended set, if there was one.
        reports.Data().CalcVTHD = designer.NumChosenSets() == 0 || designer.VTHD_CalcsValid();
        FillRejectedSet(reports, sources, *arguments.undersized);
        return true;
    }
    const std::int32_t index = arguments.set.value_or(0);
    RequireIndex(index, designer.NumChosenSets(), "recommended");
    FillChosenSet(reports, sources, index);
    return false;
}

std::string MakeReport(CReports& reports, const ReportSources& sources, const ReportArguments& arguments) {
    const bool asked = arguments.set.has_value() || arguments.undersized.has_value();
    if (arguments.noMatch || (!asked && sources.designer.NumChosenSets() == 0)) {
        FillReportCommon(reports, sources);
        return reports.CreateNoMatchReport();
    }
    const bool undersized = FillAskedSet(reports, sources, arguments);
    return reports.CreateReport(arguments.type, undersized);
}

void WriteOutput(const std::string& file, const std::string& bytes) {
    if (file == kStandardOutput) {
        Print(bytes);
        return;
    }
    AtomicFile target(file);
    target.Write(bytes);
    target.Commit();
}

/// A failure to write names the file and counts as one that cannot be opened.
template <typename Work>
void Writing(const std::string& file, Work work) {
    try {
        work();
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::Unreadable, RaisedError(failure.Number(), "",
                                                             fmt::format("{} cannot be written: {}.", file,
                                                                         failure.Description()))};
    }
}

void WriteReport(const ReportSources& sources, const CLoadProfile& profile,
                 const ReportArguments& arguments) {
    ErrorLog log(".");
    const Clock clock = [&arguments] { return arguments.now.value_or(LocalTime()); };
    CReports reports(BuiltBrand(), profile, clock, log);
    std::string report;
    try {
        report = MakeReport(reports, sources, arguments);
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::RunFailed, failure};
    }
    if (report.empty()) {
        Fail(Status::RunFailed, "The report came back empty: " + log.Text());
    }
    Writing(arguments.output, [&] { WriteOutput(arguments.output, report); });
}

void WriteSpec(const ReportSources& sources, const CLoadProfile& profile, const ReportArguments& arguments) {
    const bool asked = arguments.set.has_value() || arguments.undersized.has_value();
    if (!asked && sources.designer.NumChosenSets() == 0) {
        Fail(Status::RunFailed, "No set was recommended, and so there is none to export.");
    }
    ErrorLog log(".");
    CReports reports(BuiltBrand(), profile, LocalTime, log);
    (void)FillAskedSet(reports, sources, arguments);
    Writing(arguments.output, [&] {
        if (arguments.output == kStandardOutput) {
            Print(SpecText("", reports, sources.project, sources.site).bytes);
        } else {
            ExportSpec(arguments.output, reports, sources.project, sources.site);
        }
    });
}

/// Sizes the project and hands it to what writes about it.
template <typename Writer>
int WriteAbout(const ProjectArguments& project, const ReportArguments& arguments, Writer writer) {
    const std::string& file = project.files.front();
    try {
        OpenCatalogue catalogue(project.database);
        SkipCounter skipped;
        SizedProject sized(file, {.catalogue = catalogue, .gensets = catalogue.Gensets()}, skipped);
        sized.Size(project.limits);
        writer(sized.Read().Sources(arguments.metric), sized.LoadProfile(), arguments);
        ComplainOf({skipped.Warning(file), DistortionWarning(file, sized.PowerSystem())});
        return static_cast<int>(Status::Done);
    } catch (const ProjectFailure& failure) {
        Complain(FailureLine(file, failure.error));
        return static_cast<int>(failure.status);
    } catch (const RaisedError& failure) {
        Complain(FailureLine("genvara-cli", failure));
        return static_cast<int>(Status::Unreadable);
    }
}

}  // namespace

int RunReport(const ProjectArguments& project, const ReportArguments& arguments) {
    return WriteAbout(project, arguments, WriteReport);
}

int RunExportSpec(const ProjectArguments& project, const ReportArguments& arguments) {
    return WriteAbout(project, arguments, WriteSpec);
}

}  // namespace genvara
