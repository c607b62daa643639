#include "KeptWords.h"

#include <system_error>

#include "CDefaults.h"
#include "Catalogue.h"
#include "ProjectDifferences.h"
#include "ProjectFile.h"
#include "RaisedError.h"

namespace genvara {
namespace {

/// Records to read a project into.
class Scratch {
  public:
    Scratch(const CDefaults& defaults, Catalogue& catalogue)
        : m_project(defaults, LocalTime), m_powerSystem(defaults), m_catalogue(&catalogue) {}

    /// @throws RaisedError as `ReadProjectFile`.
    ReadResult Read(const std::filesystem::path& file) {
        ProjectReadObserver nobody;
        return ReadProjectFile(file,
                               {.project = m_project,
                                .powerSystem = m_powerSystem,
                                .loadProfile = m_loadProfile,
                                .motors = m_catalogue->Motors()},
                               nobody);
    }
    [[nodiscard]] ProjectView View() const noexcept { return {m_project, m_powerSystem, m_loadProfile}; }

  private:
    CProject m_project;
    CPwrSys m_powerSystem;
    CLoadProfile m_loadProfile;
    Catalogue* m_catalogue;
};

}  // namespace

KeptWords WordsOf(const KeptProject& kept, const CDefaults& defaults, Catalogue& catalogue) {
    KeptWords words;
    Scratch project(defaults, catalogue);
    try {
        project.Read(kept.project);
    } catch (const RaisedError& failure) {
        words.fault = failure.Description();
        return words;
    }
    const ProjectView view = project.View();
    words.name = view.project.ProjName();
    words.steps = view.loadProfile.NumLoadSteps();
    for (const CLoadStep& step : view.loadProfile) {
        words.loads += step.NumLoads();
    }
    std::error_code missing;
    if (!kept.origin.file.empty() && std::filesystem::exists(kept.origin.file, missing)) {
        Scratch file(defaults, catalogue);
        try {
            words.hasFile = file.Read(kept.origin.file) == ReadResult::Done;
        } catch (const RaisedError&) {
            // Somebody has put something else there: there is nothing to compare with.
        }
        if (words.hasFile) {
            words.differences = Differences(file.View(), view);
        }
    }
    return words;
}

}  // namespace genvara
