#include "SizedProject.h"

#include <fmt/format.h>

#include <algorithm>

namespace genvara {
namespace {

/// The site's phases follow its connection.
std::int32_t PhasesOf(std::int32_t connectCode, const std::filesystem::path& file,
                      const SharedCatalogue& catalogue) {
    const auto found = std::ranges::find(catalogue.connections, connectCode, &ConnectionRecord::ID);
    if (found == catalogue.connections.end()) {
        throw ProjectFailure{
            Status::Unreadable,
            RaisedError(
                0, "",
                fmt::format("The connection code {} of the project file {} is not in the genset database.",
                            connectCode, file.string()))};
    }
    return found->phases;
}

}  // namespace

SizedProject::SizedProject(const std::filesystem::path& file, const SharedCatalogue& catalogue,
                           ProjectReadObserver& observer)
    : m_project(m_defaults, LocalTime),
      m_powerSystem(m_defaults),
      m_designer(catalogue.gensets, m_powerSystem, m_loadProfile) {
    const ProjectModel model{.project = m_project,
                             .powerSystem = m_powerSystem,
                             .loadProfile = m_loadProfile,
                             .motors = catalogue.motors};
    try {
        if (ReadProjectFile(file, model, observer) == ReadResult::Incompatible) {
            throw RaisedError(0, "frmMain::ReadProjectFile",
                              fmt::format("{} is no project file of a compatible version.", file.string()));
        }
        m_powerSystem.Phases(PhasesOf(m_powerSystem.ConnectCode(), file, catalogue));
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::Unreadable, failure};
    }
}

void SizedProject::Size(const DesignLimits& limits) {
    try {
        if (m_loadProfile.NumLoadSteps() < 1 || m_loadProfile.LoadStep(1).NumLoads() < 1) {
            throw RaisedError(0, "", "At least one load and load step must be entered.");
        }
        m_designer.TakeLimits(limits);
        m_designer.SelectGensets();
        m_designer.ChooseSets();
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::RunFailed, failure};
    }
}

}  // namespace genvara
