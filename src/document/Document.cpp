#include "Document.h"

#include <utility>

#include "NumberText.h"
#include "ProgramVersion.h"

namespace genvara {

Document::Document(const CDefaults& defaults, Catalogue& catalogue, GensetSource& gensets, Clock clock)
    : m_catalogue(&catalogue),
      m_clock(std::move(clock)),
      m_project(defaults, m_clock),
      m_powerSystem(defaults),
      m_designer(gensets, m_powerSystem, m_loadProfile) {}

void Document::New(ProjectReadObserver& observer) {
    m_file.clear();
    m_powerSystem.ResetDefaults();
    observer.PowerSystemRead();
    m_project.SetCreationTime();
    m_project.ResetDefaults();
    observer.ProjectRead();
    m_loadProfile.DeleteAllLoadSteps();
    observer.StepsCleared();
    m_designer.ForgetRun();
}

ReadResult Document::Read(const std::filesystem::path& file, ProjectReadObserver& observer) {
    const ReadResult result = ReadProjectFile(file, Model(), observer);
    if (result == ReadResult::Done) {
        m_designer.ForgetRun();
        FollowConnection();
    }
    return result;
}

std::size_t Document::Write(const std::function<void()>& opened) {
    return WriteProjectFile(m_file, Model(), kProgramVersion, m_clock, opened);
}

std::filesystem::path Document::Rescue(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::string moment = RenderIso(m_clock());
    std::erase(moment, ':');
    std::filesystem::path file;
    for (int number = 1; file.empty() || std::filesystem::exists(file); ++number) {
        file = folder / ("rescued-" + moment + (number == 1 ? "" : "-" + std::to_string(number)) + ".prj");
    }
    WriteProjectFile(file, Model(), kProgramVersion, m_clock);
    return file;
}

void Document::FollowConnection() {
    if (const auto phases = m_catalogue->PhasesOf(m_powerSystem.ConnectCode())) {
        m_powerSystem.Phases(*phases);
    }
}

bool Document::KnowsConnection() const {
    return m_catalogue->PhasesOf(m_powerSystem.ConnectCode()).has_value();
}

bool Document::HasLoads() const {
    return m_loadProfile.NumLoadSteps() > 0 && m_loadProfile.LoadStep(1).NumLoads() > 0;
}

void Document::Size() {
    m_designer.SelectGensets();
    m_designer.ChooseSets();
}

ReportSources Document::Sources(bool metricUnits) const noexcept {
    return {.project = m_project, .site = m_powerSystem, .designer = m_designer, .metricUnits = metricUnits};
}

ProjectModel Document::Model() noexcept {
    return {.project = m_project,
            .powerSystem = m_powerSystem,
            .loadProfile = m_loadProfile,
            .motors = m_catalogue->Motors()};
}

}  // namespace genvara
