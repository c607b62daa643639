#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "FileStamp.h"
#include "ProjectMoment.h"

/// The files of projects that are kept: each a project that can be opened like any other, with another file
/// beside it that tells where the project came from. A running program holds a lock on a third; files
/// whose lock nobody holds were left by a program that did not end.
namespace genvara {

/// Where a kept project came from.
struct KeptOrigin {
    std::string file{};                ///< its project file, full name; empty for one that was never saved
    std::optional<FileStamp> stamp{};  ///< of that file when it was read or written last

    bool operator==(const KeptOrigin&) const = default;
};

/// The name and lock of a running program in the folder, for as long as the object lives.
class RunningClaim {
  public:
    /// Takes a name of its own.
    /// @throws RaisedError with the system's number.
    explicit RunningClaim(const std::filesystem::path& folder);
    /// Takes over what a program left; nothing if it still runs or somebody else takes it over.
    [[nodiscard]] static std::optional<RunningClaim> TakeOver(const std::filesystem::path& lock);
    ~RunningClaim();
    RunningClaim(const RunningClaim&) = delete;
    RunningClaim& operator=(const RunningClaim&) = delete;
    RunningClaim(RunningClaim&& other) noexcept;
    RunningClaim& operator=(RunningClaim&&) = delete;

    /// The project's file.
    [[nodiscard]] std::filesystem::path Project() const;
    /// Removes what is kept under the name; the lock stays.
    void RemoveKept() const noexcept;
    /// Lets the lock go without removing anything: whoever starts next finds what is kept.
    void Leave() noexcept;

  private:
    RunningClaim(std::filesystem::path lock, int descriptor)
        : m_lock(std::move(lock)), m_descriptor(descriptor) {}

    std::filesystem::path m_lock;
    int m_descriptor = -1;
};

/// A project that is kept.
struct KeptProject {
    std::filesystem::path project;  ///< a project in either format
    KeptOrigin origin;
    std::chrono::system_clock::time_point keptAt;
};

/// Writes a moment and where it came from, each file whole: in JSON, which holds every character; where that
/// could not be read again, as with a load that cannot be worked out, in the records of a `.prj`.
/// @param motors by which the project's loads are worked out.
/// @throws RaisedError with the system's number.
void WriteKept(const std::filesystem::path& project, const ProjectMoment& moment, const KeptOrigin& origin,
               const MotorConversions& motors);

/// Removes a kept project.
void RemoveKept(const std::filesystem::path& project) noexcept;

/// So many projects that commands dropped are listed.
inline constexpr std::size_t kMostDropped = 10;

/// A new name for a project that a command drops; the oldest ones beyond the limit are removed.
[[nodiscard]] std::filesystem::path NameForDropped(const std::filesystem::path& folder);

/// The projects that commands dropped, the latest first.
[[nodiscard]] std::vector<KeptProject> DroppedProjects(const std::filesystem::path& folder);

/// Takes what programs left that did not end over into the list of those that commands dropped, from where it
/// can be had at any time. Two programs that start at once do not get the same.
/// @return what was taken over, the latest first.
std::vector<KeptProject> TakeOverLost(const std::filesystem::path& folder);

}  // namespace genvara
