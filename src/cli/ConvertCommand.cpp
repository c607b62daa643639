#include <fmt/format.h>

#include <array>
#include <optional>

#include "AtomicFile.h"
#include "CommandLine.h"
#include "FileIdentity.h"
#include "JsonProject.h"
#include "OpenCatalogue.h"
#include "Output.h"
#include "PrjLosses.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"
#include "SizedProject.h"
#include "SkipCounter.h"

namespace genvara {
namespace {

[[noreturn]] void Fail(Status status, const std::string& description) {
    throw ProjectFailure{status, RaisedError(0, "", description)};
}

/// Notes what of a file counts for its conversion.
class ConversionObserver final : public ProjectReadObserver {
  public:
    void FormatFound(ProjectFormat format) override {
        m_format = format;
        m_counter.FormatFound(format);
    }
    void ProjectRead() override { m_counter.ProjectRead(); }
    void Skipped(const SkippedItem& item) override {
        ++m_skipped;
        m_counter.Skipped(item);
    }
    void PhasesPassedOver(std::int32_t phases) override { m_phases = phases; }

    [[nodiscard]] bool LostSomething() const noexcept {
        return m_format == ProjectFormat::Records && m_skipped > 0;
    }
    [[nodiscard]] std::string Warning(const std::string& file) const { return m_counter.Warning(file); }
    [[nodiscard]] std::optional<std::int32_t> Phases() const noexcept { return m_phases; }

  private:
    ProjectFormat m_format = ProjectFormat::Records;
    std::int64_t m_skipped = 0;
    SkipCounter m_counter;
    std::optional<std::int32_t> m_phases;
};

/// The records of a project that is converted: as its file has them, not as a site would have them sized.
struct Records {
    CDefaults defaults;
    CProject project{defaults, LocalTime};
    CPwrSys powerSystem{defaults};
    CLoadProfile loadProfile;
};

void Read(const std::string& file, Records& records, const MotorConversions& motors,
          ConversionObserver& observer) {
    const ProjectModel model{records.project, records.powerSystem, records.loadProfile, motors};
    if (ReadProjectFile(file, model, observer) == ReadResult::Incompatible) {
        Fail(Status::Unreadable, WhyIncompatible(file));
    }
    if (observer.LostSomething()) {
        Fail(Status::Unreadable,
             fmt::format("{} has items that cannot be used and would be lost; \"check\" lists them.", file));
    }
    if (const std::int32_t phases = observer.Phases().value_or(0); phases == 1 || phases == 3) {
        records.powerSystem.Phases(phases);
    }
}

/// The project in the other format, with both of its dates as they are.
std::string Rendered(const Records& records, const MotorConversions& motors, ProjectFormat format,
                     const std::filesystem::path& output) {
    const ProjectView view{records.project, records.powerSystem, records.loadProfile};
    const DateTime savedAt = records.project.LastModified();
    if (format == ProjectFormat::Json) {
        return RenderJsonProject(view, savedAt);
    }
    if (const ProjectFaults losses = FindPrjLosses(view, motors); losses.Any()) {
        Fail(Status::Unreadable,
             fmt::format("{} cannot hold the project: {}.", output.string(), FaultsText(losses)));
    }
    return RenderProject(view, kProgramVersion, savedAt).bytes;
}

void Write(const std::filesystem::path& output, const std::string& bytes) {
    try {
        AtomicFile target(output);
        target.Write(bytes);
        target.Commit();
    } catch (const RaisedError& failure) {
        throw ProjectFailure{
            Status::Unreadable,
            RaisedError(failure.Number(), "",
                        fmt::format("{} cannot be written: {}.", output.string(), failure.Description()))};
    }
}

void Convert(const std::string& file, const std::filesystem::path& database,
             const std::filesystem::path& output) {
    const std::optional<ProjectFormat> format = FormatOfName(output);
    if (!format) {
        Fail(Status::BadArguments,
             fmt::format("The name of a project ends with .prj or .json, which {} does not.",
                         output.string()));
    }
    const std::array<InputFile, 2> inputs{{{file, "the project"}, {database, "the genset database"}}};
    if (const std::optional<std::string> refusal = OverwriteRefusal(output, inputs)) {
        Fail(Status::BadArguments, *refusal);
    }
    OpenCatalogue catalogue(database);
    const MotorConversions& motors = catalogue.Motors();
    Records records;
    ConversionObserver observer;
    Read(file, records, motors, observer);
    Write(output, Rendered(records, motors, *format, output));
    ComplainIfAny(observer.Warning(file));
}

}  // namespace

int RunConvert(const ProjectArguments& arguments, const std::filesystem::path& output) {
    const std::string& file = arguments.files.front();
    try {
        Convert(file, arguments.database, output);
        return static_cast<int>(Status::Done);
    } catch (const ProjectFailure& failure) {
        Complain(FailureLine(file, failure.error));
        return static_cast<int>(failure.status);
    } catch (const RaisedError& failure) {
        Complain(FailureLine(file, failure));
        return static_cast<int>(Status::Unreadable);
    }
}

}  // namespace genvara
