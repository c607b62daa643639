#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "CDefaults.h"
#include "CDesigner.h"
#include "CLoadProfile.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "GensetDatabase.h"
#include "MotorConversions.h"
#include "ProjectFile.h"
#include "RaisedError.h"

namespace genvara {

/// What all projects of a call share. It is only read, so that threads may share it.
struct SharedCatalogue {
    GensetSource& gensets;
    const MotorConversions& motors;
    const std::vector<ConnectionRecord>& connections;
};

/// Exit status of the program for what a project can come to.
enum class Status : std::uint8_t { Done = 0, Found = 1, BadArguments = 2, Unreadable = 3, RunFailed = 4 };

/// A failure with the exit status that it means.
struct ProjectFailure {
    Status status;
    RaisedError error;
};

/// One project, read from its file into a profile of its own that starts from the factory defaults, with the
/// designer that sizes it.
class SizedProject {
  public:
    /// Reads the file and takes the site's phases from its connection.
    /// @throws ProjectFailure if the file cannot be read or its connection is not in the catalogue.
    SizedProject(const std::filesystem::path& file, const SharedCatalogue& catalogue,
                 ProjectReadObserver& observer);

    /// Runs the design.
    /// @throws ProjectFailure if there is nothing to size or the run fails.
    void Size(const DesignLimits& limits);

    [[nodiscard]] const CProject& Project() const noexcept { return m_project; }
    [[nodiscard]] const CPwrSys& PowerSystem() const noexcept { return m_powerSystem; }
    [[nodiscard]] const CLoadProfile& LoadProfile() const noexcept { return m_loadProfile; }
    [[nodiscard]] const CDesigner& Designer() const noexcept { return m_designer; }

  private:
    CDefaults m_defaults;
    CProject m_project;
    CPwrSys m_powerSystem;
    CLoadProfile m_loadProfile;
    CDesigner m_designer;
};

}  // namespace genvara
