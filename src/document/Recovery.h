#pragma once

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "FileStamp.h"
#include "ProjectMoment.h"
#include "RecoveryFiles.h"

namespace genvara {

/// Keeps the project at hand in a folder, so that neither a crash nor a power cut loses more than the last
/// seconds of it, and what a command drops unasked, so that it can be had back.
///
/// What is to be kept is a moment, which a thread of the object's own writes: whoever hands it over does not
/// wait. Each running program has files of its own in the folder. A normal end removes them.
class Recovery {
  public:
    /// @param folder created with the first file.
    /// @param motors by which loads are worked out; they outlive the object.
    Recovery(std::filesystem::path folder, const MotorConversions& motors);
    /// Finishes what is to be written, and removes what is kept of the project at hand.
    ~Recovery();
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;
    Recovery(Recovery&&) = delete;
    Recovery& operator=(Recovery&&) = delete;

    [[nodiscard]] const std::filesystem::path& Folder() const noexcept { return m_folder; }

    /// Has a moment of the project at hand kept in place of the one before, within half a second. A folder
    /// that cannot be written is passed over.
    void Keep(ProjectMoment moment, KeptOrigin origin);
    /// Has nothing kept of the project at hand: its file holds it all.
    void Forget();
    /// Has a project kept that a command drops.
    void Drop(ProjectMoment moment, KeptOrigin origin);
    /// Waits until all of that is done.
    void Finish();

    /// Keeps a moment before it returns, and leaves it in the folder whatever becomes of the program.
    /// @return its file.
    /// @throws RaisedError with the system's number; std::filesystem::filesystem_error for the folder.
    std::filesystem::path KeepForGood(const ProjectMoment& moment, const KeptOrigin& origin);

  private:
    struct Wanted {
        ProjectMoment moment;
        KeptOrigin origin;
    };

    void Work();
    void Write(const Wanted& wanted);
    void RemoveOwn() noexcept;
    void Wake();

    std::filesystem::path m_folder;
    const MotorConversions* m_motors;
    std::mutex m_writing;                 ///< held while files are written or removed
    std::optional<RunningClaim> m_claim;  ///< there from the first file on
    bool m_forGood = false;

    std::mutex m_mutex;  ///< of all that follows
    std::condition_variable m_awaited;
    std::condition_variable m_done;
    std::optional<Wanted> m_keep;  ///< to be kept; a later one takes its place
    bool m_forget = false;
    std::deque<Wanted> m_drops;
    bool m_busy = false;
    bool m_ending = false;
    bool m_hurried = false;  ///< somebody waits
    std::thread m_thread;    ///< begun with the first work
};

}  // namespace genvara
