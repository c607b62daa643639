#include "StudyCommand.h"

#include <fmt/format.h>

#include "DistortionWarning.h"
#include "Interruption.h"
#include "Output.h"
#include "SizingJson.h"
#include "SkipCounter.h"

namespace genvara {
namespace {

/// Notes a file's format beside what could not be used of it.
class StudyObserver final : public ProjectReadObserver {
  public:
    void FormatFound(ProjectFormat format) override {
        m_format = format;
        m_counter.FormatFound(format);
    }
    void ProjectRead() override { m_counter.ProjectRead(); }
    void Skipped(const SkippedItem& item) override { m_counter.Skipped(item); }

    [[nodiscard]] ProjectFormat Format() const noexcept { return m_format; }
    [[nodiscard]] std::string Warning(const std::string& file) const { return m_counter.Warning(file); }

  private:
    ProjectFormat m_format = ProjectFormat::Records;
    SkipCounter m_counter;
};

StudyProject ReadProject(std::unique_ptr<SizedProject>& read, const SharedCatalogue& shared,
                         const ProjectArguments& arguments) {
    const std::string& file = arguments.files.front();
    StudyObserver observer;
    try {
        read = std::make_unique<SizedProject>(file, shared, observer);
    } catch (const ProjectFailure&) {
        ComplainIfAny(observer.Warning(file));
        throw;
    }
    ComplainIfAny(observer.Warning(file));
    ComplainIfAny(DistortionWarning(file, read->PowerSystem()));
    return {.project = read->Project(),
            .powerSystem = read->PowerSystem(),
            .loadProfile = read->LoadProfile(),
            .limits = arguments.limits,
            .format = observer.Format()};
}

int Tell(const ProjectArguments& arguments, const ProjectFailure& failure) {
    const std::string& file = arguments.files.front();
    if (arguments.json && failure.status != Status::BadArguments) {
        Print(ErrorJson(file, failure.error) + "\n");
    }
    Complain(FailureLine(file, failure.error, failure.culprit));
    return static_cast<int>(failure.status);
}

}  // namespace

StudiedProject::StudiedProject(const ProjectArguments& arguments)
    : m_catalogue(arguments.database),
      m_gensets(m_catalogue.Gensets()),
      m_candidates(m_gensets),
      m_tables{m_catalogue.Rules(), m_candidates},
      m_project(ReadProject(m_read, {.catalogue = m_catalogue, .gensets = m_gensets}, arguments)) {}

int RunStudy(const ProjectArguments& arguments, const StudyWork& work) {
    const Interruption interruption;
    try {
        std::unique_ptr<StudiedProject> project;
        try {
            project = std::make_unique<StudiedProject>(arguments);
        } catch (const RaisedError& failure) {
            return Tell(arguments, {.status = Status::Unreadable, .error = failure});
        }
        return static_cast<int>(work(*project, interruption.Requested()));
    } catch (const StudyStopped&) {
        return kInterrupted;
    } catch (const ProjectFailure& failure) {
        return Tell(arguments, failure);
    } catch (const RaisedError& failure) {
        return Tell(arguments, {.status = Status::RunFailed, .error = failure});
    } catch (...) {
        // Whoever read the output may have been stopped by the same keys.
        if (!interruption.Requested()) {
            throw;
        }
        return kInterrupted;
    }
}

void ComplainIfNoCandidates(const std::string& file, const StudiedProject& studied) {
    if (studied.Tables().candidates.Of(FilterOf(studied.Project().powerSystem))->Rows().empty()) {
        Complain(
            fmt::format("{}: no candidates: the genset database has no set of this frequency, connection, "
                        "voltage and fuel.",
                        file));
    }
}

void RefuseArguments(const std::string& description) {
    throw ProjectFailure{Status::BadArguments, RaisedError(0, "", description)};
}

}  // namespace genvara
