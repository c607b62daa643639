#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CDefaults.h"
#include "CDesigner.h"
#include "CLoadProfile.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "Catalogue.h"
#include "DateTime.h"
#include "FileStamp.h"
#include "ProjectFile.h"
#include "ProjectMoment.h"
#include "ReportFiller.h"
#include "RunCulprit.h"
#include "SiteChoice.h"
#include "Sizable.h"
#include "UndoHistory.h"

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

    // Changes. The document keeps the moment behind each, so that it can be taken back and made again. A new
    // project and one that has been read have nothing to take back; a save leaves what there is.
    /// Runs a change of the records, and keeps it under its name: "Delete Step 2". One within another is
    /// part of it. What was written into the records before, beside any change, belongs to no change.
    /// @throws whatever the change throws; what it had done by then is kept all the same.
    void Change(std::string name, const std::function<void()>& change);
    /// Keeps what has been written into the records since the last moment as a change of its own.
    /// @return false if nothing has.
    bool Keep(std::string name);
    /// Takes what has been written into the records since the last moment for part of that moment: what a
    /// panel stores without anything having been entered is no change.
    void Settle();

    /// Name of the change that can be taken back, or made again; nothing if there is none.
    [[nodiscard]] std::optional<std::string> UndoName() const { return m_history.UndoName(); }
    [[nodiscard]] std::optional<std::string> RedoName() const { return m_history.RedoName(); }

    /// A change that has been taken back or made again, and where it is to be seen.
    struct Undone {
        std::string name;
        bool project = false;      ///< the project's texts have changed
        bool powerSystem = false;  ///< the site has
        bool loadProfile = false;  ///< steps or loads have
        ProfilePlace place;        ///< what to select of the profile, if anything
    };
    /// Takes the last change back; nothing where there is none.
    std::optional<Undone> Undo();
    /// Makes the last change that was taken back again; nothing where there is none.
    std::optional<Undone> Redo();

    /// Who tells what of the profile is selected, for taking a change back to it.
    void SelectionTeller(std::function<ProfilePlace()> teller) { m_selection = std::move(teller); }

    /// The records as they stood behind the last change; threads may look at it.
    [[nodiscard]] const ProjectMoment& Moment() const noexcept { return m_history.Now(); }
    /// Who is told when the document came to another moment: by a change, one taken back or made again, a new
    /// project, a file read or written.
    void MomentTeller(std::function<void()> teller) { m_momentTeller = std::move(teller); }

    /// Fills the records from what was kept of a project that was lost. Its file is the document's own again,
    /// and holds something else.
    /// @param stamp of that file when it was read or written last.
    /// @throws RaisedError as `ReadProjectFile`; the document is then as before.
    void Recover(const std::filesystem::path& kept, const std::string& file,
                 const std::optional<FileStamp>& stamp, ProjectReadObserver& observer);

    /// Whether a save under a name would replace what another program wrote into the document's file since it
    /// was read or written.
    [[nodiscard]] bool ReplacesAnothers(const std::filesystem::path& file) const;
    /// The file that the document was read from or saved to last; empty for none.
    [[nodiscard]] const std::string& StampedFile() const noexcept { return m_stampedFile; }
    /// What that file was like then.
    [[nodiscard]] const std::optional<FileStamp>& Stamp() const noexcept { return m_stamp; }

    /// Notes that something is being entered that no change holds yet.
    void Touch() noexcept { m_touched = true; }
    /// Whether the document holds something else than it did when it was begun, read or saved last, or
    /// something is being entered.
    [[nodiscard]] bool IsChanged() const {
        return m_touched || !m_saved || !HoldSame(m_history.Now(), *m_saved);
    }

    /// Gives the site the phases of its connection; one that the catalogue does not know leaves them.
    /// @throws RaisedError of `Catalogue::FollowConnection`.
    void FollowConnection();
    /// Makes sure that the catalogue knows the site's connection.
    /// @throws RaisedError of `genvara::RequireConnection`, or of `Catalogue::Connections`.
    void RequireConnection(std::string_view whose) const;

    /// The site's choices that no list offers, in the order of `SiteChoice`. A list that the catalogue cannot
    /// give offers everything.
    [[nodiscard]] std::vector<UnofferedChoice> UnofferedChoices() const;

    /// Whether there is anything to size.
    [[nodiscard]] bool HasLoads() const { return genvara::HasLoads(m_loadProfile); }

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
    [[nodiscard]] ProjectMoment Now();
    bool Add(std::string name, ProfilePlace place);
    /// The document holds what its file holds, or nothing yet.
    void BeginHistory();
    void StampFile(const std::string& file, const std::optional<FileStamp>& stamp);
    void TellMoment() const;
    [[nodiscard]] Undone GoTo(const UndoHistory::Passed& passed);

    Catalogue* m_catalogue;
    Clock m_clock;
    CProject m_project;
    CPwrSys m_powerSystem;
    CLoadProfile m_loadProfile;
    CDesigner m_designer;
    std::string m_file;
    std::vector<std::filesystem::path> m_unread;  ///< files that could not be read as projects
    UndoHistory m_history;
    std::optional<ProjectMoment> m_saved;  ///< as the file has it, or as the project was begun
    std::function<void()> m_momentTeller;
    std::string m_stampedFile;
    std::optional<FileStamp> m_stamp;
    std::function<ProfilePlace()> m_selection;
    bool m_changing = false;
    bool m_touched = false;
};

}  // namespace genvara
