#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "CDefaults.h"
#include "Document.h"
#include "RaisedError.h"
#include "RunCulprit.h"

namespace genvara {

/// What all projects of a call share; nobody changes it, so that threads may share it.
struct SharedCatalogue {
    Catalogue& catalogue;
    GensetSource& gensets;  ///< candidates of the runs
};

/// Exit status of the program for what a project can come to.
enum class Status : std::uint8_t { Done = 0, Found = 1, BadArguments = 2, Unreadable = 3, RunFailed = 4 };

/// A failure with the exit status that it means.
struct ProjectFailure {
    Status status;
    RaisedError error;
    std::optional<RunCulprit> culprit = {};
};

/// A document that starts from the factory defaults, read from its file; its failures are those of a command.
class SizedProject {
  public:
    /// @throws ProjectFailure if the file cannot be read or its connection is not in the catalogue.
    SizedProject(const std::filesystem::path& file, const SharedCatalogue& shared,
                 ProjectReadObserver& observer);

    /// Runs the design.
    /// @throws ProjectFailure if there is nothing to size or the run fails.
    void Size(const DesignLimits& limits);

    /// What an error of the run, or of a report on it, comes to: with the load or the row to blame.
    [[nodiscard]] ProjectFailure Failure(const RaisedError& error) const;

    [[nodiscard]] const Document& Read() const noexcept { return m_document; }
    [[nodiscard]] const CProject& Project() const noexcept { return m_document.Project(); }
    [[nodiscard]] const CPwrSys& PowerSystem() const noexcept { return m_document.PowerSystem(); }
    [[nodiscard]] const CLoadProfile& LoadProfile() const noexcept { return m_document.LoadProfile(); }
    [[nodiscard]] const CDesigner& Designer() const noexcept { return m_document.Designer(); }

  private:
    CDefaults m_defaults;
    Document m_document;
};

}  // namespace genvara
