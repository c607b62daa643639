#include "ReportCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <filesystem>

#include "AtomicFile.h"
#include "Brand.h"
#include "CReports.h"
#include "DistortionWarning.h"
#include "OpenCatalogue.h"
#include "Output.h"
#include "OutputFile.h"
#include "PdfHelper.h"
#include "ReportFiller.h"
#include "SizedProject.h"
#include "SkipCounter.h"
#include "SpecExport.h"

namespace genvara {
namespace {

// What the commands write, with the endings that tell the truth of it.
constexpr auto kReportEndings = std::to_array<std::string_view>({".rtf", ".pdf"});
constexpr auto kSpecEndings = std::to_array<std::string_view>({".gvx", ".ini", ".txt"});
constexpr OutputKind kReportFile{.meaning = "a report", .endings = kReportEndings};
constexpr OutputKind kSpecFile{.meaning = "a profile file", .endings = kSpecEndings};

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
        FillRejectedSetAfterRun(reports, sources, *arguments.undersized);
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

bool IsPdf(const std::filesystem::path& file) {
    std::string ending = file.extension().string();
    std::ranges::transform(ending, ending.begin(), [](unsigned char sign) { return std::tolower(sign); });
    return ending == ".pdf";
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
        if (failure.Number() == EPIPE) {
            throw LostOutput(EPIPE);  // a pipe by the name of a file
        }
        throw ProjectFailure{Status::Unreadable, RaisedError(failure.Number(), "",
                                                             fmt::format("{} cannot be written: {}.", file,
                                                                         failure.Description()))};
    }
}

/// The pages of a report as PDF. That they cannot be drawn is no fault of a load.
std::string Drawn(const std::string& report, const std::string& project, const std::optional<DateTime>& now) {
    try {
        return PdfOf(report, project, now);
    } catch (const RaisedError& failure) {
        throw ProjectFailure{.status = Status::RunFailed, .error = failure};
    }
}

void WriteReport(const ReportSources& sources, const CLoadProfile& profile,
                 const ReportArguments& arguments) {
    ErrorLog log(".");
    const Clock clock = [&arguments] { return arguments.now.value_or(LocalTime()); };
    CReports reports(BuiltBrand(), profile, clock, log);
    std::string report = MakeReport(reports, sources, arguments);
    if (!report.empty() && IsPdf(arguments.output)) {
        report = Drawn(report, sources.project.ProjName(), arguments.now);
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
    std::size_t lost = 0;
    Writing(arguments.output, [&] {
        if (arguments.output == kStandardOutput) {
            const EncodedText spec = SpecText("", reports, sources.project, sources.site);
            lost = spec.lostCharacters;
            Print(spec.bytes);
        } else {
            lost = ExportSpec(arguments.output, reports, sources.project, sources.site);
        }
    });
    if (lost > 0) {
        Complain(fmt::format("{}: warning: {} character{} that the file cannot hold {} written as \"?\".",
                             arguments.output, lost, lost == 1 ? "" : "s", lost == 1 ? "was" : "were"));
    }
}

/// Writes about a project that has been sized.
/// @throws ProjectFailure with what is to blame, for an error of the loads that only the report asks for.
template <typename Writer>
void WriteAbout(const SizedProject& sized, const ReportArguments& arguments, Writer writer) {
    try {
        writer(sized.Read().Sources(arguments.metric), sized.LoadProfile(), arguments);
    } catch (const RaisedError& failure) {
        throw sized.Failure(failure);
    }
}

/// Sizes the project and hands it to what writes about it.
template <typename Writer>
Status SizeAndWrite(const ProjectArguments& project, const ReportArguments& arguments, SkipCounter& skipped,
                    Writer writer) {
    OpenCatalogue catalogue(project.database);
    SizedProject sized(project.files.front(), {.catalogue = catalogue, .gensets = catalogue.Gensets()},
                       skipped);
    sized.Size(project.limits);
    WriteAbout(sized, arguments, writer);
    ComplainIfAny(DistortionWarning(project.files.front(), sized.PowerSystem()));
    return Status::Done;
}

template <typename Writer>
int Run(const ProjectArguments& project, const ReportArguments& arguments, const OutputKind& kind,
        Writer writer) {
    const std::string& file = project.files.front();
    const std::array<InputFile, 2> inputs{{{file, "the project"}, {project.database, "the genset database"}}};
    if (const std::optional<std::string> refusal = RefusalOf(arguments.output, kind, inputs)) {
        Complain(fmt::format("genvara-cli: error: {}", *refusal));
        return static_cast<int>(Status::BadArguments);
    }
    SkipCounter skipped;
    Status status = Status::Unreadable;
    std::string failureLine;
    try {
        status = SizeAndWrite(project, arguments, skipped, writer);
    } catch (const ProjectFailure& failure) {
        status = failure.status;
        failureLine = FailureLine(file, failure.error, failure.culprit);
    } catch (const RaisedError& failure) {
        failureLine = FailureLine("genvara-cli", failure);
    }
    ComplainIfAny(skipped.Warning(file));
    ComplainIfAny(failureLine);
    return static_cast<int>(status);
}

}  // namespace

int RunReport(const ProjectArguments& project, const ReportArguments& arguments) {
    return Run(project, arguments, kReportFile, WriteReport);
}

int RunExportSpec(const ProjectArguments& project, const ReportArguments& arguments) {
    return Run(project, arguments, kSpecFile, WriteSpec);
}

}  // namespace genvara
