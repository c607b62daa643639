#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "DateTime.h"
#include "ProjectFormat.h"
#include "ProjectModel.h"
#include "ProjectSource.h"

/// A project's file: JSON, or a `.prj`: text in Windows-1252, records of delimited values, CR LF. The
/// position of a value is its meaning.
namespace genvara {

/// Something that the reader passed over.
struct SkippedItem {
    std::int64_t line = 0;  ///< where it stands, from 1
    /// "power system A", "step 2", "load 3 of step 1 (CMtrLoad)", ...; in a JSON project a JSON pointer
    std::string record;
    std::string expected;  ///< what should have stood there
    std::string found;     ///< what stood there
};

/// Told of what a reader does, in its order. Members may raise; the reader goes on.
class ProjectReadObserver {
  public:
    virtual ~ProjectReadObserver() = default;
    virtual void FormatFound(ProjectFormat /*format*/) {}
    virtual void ProjectRead() {}
    virtual void PowerSystemRead() {}
    virtual void StepsCleared() {}
    virtual void StepAdded(std::int32_t /*stepId*/) {}
    virtual void LoadAdded(std::int32_t /*stepNumber*/, std::int32_t /*loadId*/) {}
    virtual void Skipped(const SkippedItem& /*item*/) {}
    /// The phases that a `.prj` states, which do not count: they follow the connection.
    virtual void PhasesPassedOver(std::int32_t /*phases*/) {}
};

enum class ReadResult : std::uint8_t {
    Done,          ///< read as far as it could be
    Incompatible,  ///< no project of a compatible version; nothing was changed
};

/// What is told of a file that `Incompatible` was the answer to.
[[nodiscard]] std::string WhyIncompatible(const std::filesystem::path& file);

/// Fills a model from a project file of either format. What of a `.prj` cannot be read is passed over, and
/// the observer told; a JSON project with a fault is not read at all.
/// @throws RaisedError 53 for a missing file, else the system's number, from "frmMain::ReadProjectFile",
///         and as `ReadJsonProject`; the model is then as before.
ReadResult ReadProjectFile(const std::filesystem::path& file, const ProjectModel& model,
                           ProjectReadObserver& observer);

/// The same from any source that holds a `.prj`.
ReadResult ReadProject(ByteSource& source, const ProjectModel& model, ProjectReadObserver& observer);

/// Version of the file format, the only one that there is.
inline constexpr std::int32_t kProjectFormat = 1;

/// Version that a file's first record states: major, minor, revision of the program.
using ProgramVersion = std::array<std::int32_t, 3>;

/// Text of a project file with the number of characters that the code page could not hold.
struct ProjectText {
    std::string bytes;
    std::size_t lostCharacters = 0;
};

/// The file's content. All that a file holds are inputs as they are stored, which cannot fail to be fetched.
[[nodiscard]] ProjectText RenderProject(const ProjectView& project, const ProgramVersion& version,
                                        const DateTime& savedAt);

/// Saves a model, in JSON if the file's name ends so; the old file stays whole until the new one stands.
/// @param opened called once the file can be written and before anything of the model is fetched, to bring
///        the model up to date; a save that cannot be opened leaves the model as it was.
/// @return the number of characters that the code page could not hold, each now a question mark.
/// @throws RaisedError with the system's number from "frmMain::WriteProjectFile": "Error opening ", the
///         file, a line break, the system's description; "Error writing " where it was open already.
std::size_t WriteProjectFile(const std::filesystem::path& file, const ProjectView& project,
                             const ProgramVersion& version, const Clock& clock,
                             const std::function<void()>& opened = {});

}  // namespace genvara
