#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "CDefaults.h"
#include "CDesigner.h"
#include "CLoadProfile.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "Catalogue.h"
#include "DateTime.h"
#include "ProjectFile.h"
#include "ReportFiller.h"
#include "RunCulprit.h"
#include "SiteChoice.h"

namespace genvara {

/// A project being worked on: its records, the file that holds it, and the designer that sizes it. Window,
/// console and scripts are faces of it.
///
/// The records are refilled in place and never replaced, so that whoever holds one sees the project at hand.
class Document {
  public:
    /// A new project from the user's defaults. All of these outlive the document.
    /// @param gensets candidates of its runs: the catalogue's own database, or one that several documents
    /// share.
    /// @throws RaisedError of the designer, which reads the catalogue's properties.
    Document(const CDefaults& defaults, Catalogue& catalogue, GensetSource& gensets, Clock clock = LocalTime);
    Document(const CDefaults& defaults, Catalogue& catalogue, Clock clock = LocalTime)
        : Document(defaults, catalogue, catalogue.Gensets(), std::move(clock)) {}

    [[nodiscard]] CProject& Project() noexcept { return m_project; }
    [[nodiscard]] const CProject& Project() const noexcept { return m_project; }
    [[nodiscard]] CPwrSys& PowerSystem() noexcept { return m_powerSystem; }
    [[nodiscard]] const CPwrSys& PowerSystem() const noexcept { return m_powerSystem; }
    [[nodiscard]] CLoadProfile& LoadProfile() noexcept { return m_loadProfile; }
    [[nodiscard]] const CLoadProfile& LoadProfile() const noexcept { return m_loadProfile; }
    [[nodiscard]] CDesigner& Designer() noexcept { return m_designer; }
    [[nodiscard]] const CDesigner& Designer() const noexcept { return m_designer; }
    [[nodiscard]] Catalogue& Gensets() noexcept { return *m_catalogue; }

    /// Full name of the file; empty for a project that was never saved or opened.
    [[nodiscard]] const std::string& ProjectFile() const noexcept { return m_file; }
    void ProjectFile(std::string file) { m_file = std::move(file); }

    /// Begins a new project without a file, in the records' order: site, project, load profile. The observer
    /// is told of each, as by a reader. The designer forgets the project before.
    void New(ProjectReadObserver& observer);

    /// Fills the records from a file; the document's own file is the caller's to name. The designer has then
    /// forgotten the project before, and the site's phases are those of its connection, if the catalogue
    /// knows it.
    /// @throws RaisedError as `ReadProjectFile`; the records are then as before.
    ReadResult Read(const std::filesystem::path& file, ProjectReadObserver& observer);

    /// Saves the records to the document's file.
    /// @param opened called once the file can be written, to bring the records up to date.
    /// @return the number of characters that the file's code page could not hold, each now a question mark.
    /// @throws RaisedError as `WriteProjectFile`.
    std::size_t Write(const std::function<void()>& opened = {});

    // What stands in the way of a file, asked before a command begins: the end of a sentence, such as "its
    // folder does not exist"; nothing if there is nothing.
    /// Of saving the document under a name.
    [[nodiscard]] std::optional<std::string> SaveObstacle(const std::filesystem::path& file) const;
    /// Of writing a report or an export: what these are made from is not written over.
    [[nodiscard]] std::optional<std::string> OutputObstacle(const std::filesystem::path& file) const;

    /// Whether a save under a name would be the first one over a file that could not be read as a project:
    /// somebody may keep something else there.
    [[nodiscard]] bool ReplacesUnread(const std::filesystem::path& file) const;

    /// Runs a change of the records and notes that something was changed.
    /// @param name of the change, as in "Apply Advice".
    void Change(std::string name, const std::function<void()>& change);

    /// Notes that something was entered that the document's file does not hold.
    void Touch() noexcept { m_changed = true; }
    /// Whether something was entered since the document was begun, read or saved.
    [[nodiscard]] bool IsChanged() const noexcept { return m_changed; }

    /// Writes the records to a new file of a folder, which is created if need be; the document keeps its own
    /// file.
    /// @throws RaisedError with the system's number; std::filesystem::filesystem_error for the folder.
    [[nodiscard]] std::filesystem::path Rescue(const std::filesystem::path& folder);

    /// Gives the site the phases of its connection; one that the catalogue does not know leaves them.
    /// @throws RaisedError of `Catalogue::FollowConnection`.
    void FollowConnection();
    /// Whether the catalogue knows the site's connection.
    /// @throws RaisedError of `Catalogue::Connections`.
    [[nodiscard]] bool KnowsConnection() const;

    /// The site's choices that no list offers, in the order of `SiteChoice`. A list that the catalogue cannot
    /// give offers everything.
    [[nodiscard]] std::vector<UnofferedChoice> UnofferedChoices() const;

    /// Whether there is anything to size: only the first step counts, later ones may be empty.
    [[nodiscard]] bool HasLoads() const;

    /// Runs the design; its results stay with the designer.
    /// @throws RaisedError of the run; the results are then those of the run before.
    void Size();

    /// The load, the step or the row of the catalogue that brought about an error of `Size`, or of a report
    /// on its results; nothing where none of them did.
    [[nodiscard]] std::optional<RunCulprit> Culprit(const RaisedError& error) const;

    // What to tell somebody after an error: what is to blame, why, and what to do.
    /// Of `Size`.
    [[nodiscard]] std::string WhyNotSized(const RaisedError& error) const;
    /// Of a report on its results.
    [[nodiscard]] std::string WhyNotReported(const RaisedError& error) const;

    /// What reports take their values from.
    /// @param metricUnits whether they show m and °C, or ft and °F.
    [[nodiscard]] ReportSources Sources(bool metricUnits) const noexcept;

  private:
    [[nodiscard]] ProjectModel Model() noexcept;
    void ForgetUnread(const std::filesystem::path& file);

    Catalogue* m_catalogue;
    Clock m_clock;
    CProject m_project;
    CPwrSys m_powerSystem;
    CLoadProfile m_loadProfile;
    CDesigner m_designer;
    std::string m_file;
    std::vector<std::filesystem::path> m_unread;  ///< files that could not be read as projects
    bool m_changed = false;
};

/// Sentence for a document without anything to size.
inline constexpr const char* kNothingToSize = "At least one load and load step must be entered.";

}  // namespace genvara
