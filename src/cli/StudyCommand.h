#pragma once

#include <functional>
#include <memory>
#include <string>

#include "CachedGensets.h"
#include "CommandLine.h"
#include "OpenCatalogue.h"
#include "SiteCandidates.h"
#include "SizedProject.h"
#include "Stopping.h"
#include "Variation.h"

namespace genvara {

/// A project with the catalogue that it is studied against.
class StudiedProject {
  public:
    /// Reads the project; what of it could not be used is told on standard error, once.
    /// @throws RaisedError of the catalogue; ProjectFailure of the project.
    explicit StudiedProject(const ProjectArguments& arguments);

    [[nodiscard]] const StudyProject& Project() const noexcept { return m_project; }
    [[nodiscard]] const StudyTables& Tables() const noexcept { return m_tables; }

  private:
    OpenCatalogue m_catalogue;
    CachedGensets m_gensets;
    CandidateStore m_candidates;
    StudyTables m_tables;
    std::unique_ptr<SizedProject> m_read;  ///< has what the records of the project refer to
    StudyProject m_project;
};

/// What a verb does with its project; returns the exit status.
using StudyWork = std::function<Status(const StudiedProject& project, const StopFlag& stop)>;

/// Reads the one project of a verb and does its work until the user stops it. Failures are told on standard
/// error and, as an object, on standard output if JSON is asked for; a `ProjectFailure` of the arguments on
/// standard error alone. Returns the exit status.
[[nodiscard]] int RunStudy(const ProjectArguments& arguments, const StudyWork& work);

/// Tells on standard error that the catalogue has no set for the site, which no order or load can mend.
void ComplainIfNoCandidates(const std::string& file, const StudiedProject& studied);

/// Refuses arguments with one sentence.
[[noreturn]] void RefuseArguments(const std::string& description);

/// The same for what a study finds wrong with them before it begins.
template <typename Work>
auto CheckingArguments(Work work) {
    try {
        return work();
    } catch (const RaisedError& refusal) {
        throw ProjectFailure{Status::BadArguments, refusal};
    }
}

}  // namespace genvara
