#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace genvara {

/// A file that is replaced whole or not at all.
///
/// What is written goes to a temporary file in the same folder; `Commit` flushes it to the disk and renames
/// it over the target. Abandoned before that, it leaves the target as it was. A link is followed, the
/// permissions of an existing file are kept (`SavedPermissions`), and a file that the user may not write is
/// not replaced. A target that is no ordinary file (a device, a pipe) is written directly. A temporary file
/// is locked while it is written; one without a lock is what a program left that was killed, and the next
/// save deletes it.
class AtomicFile {
  public:
    /// @throws RaisedError 53 for a missing folder, else the system's number, from "AtomicFile"; the
    ///         description is the system's own.
    explicit AtomicFile(const std::filesystem::path& target);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    AtomicFile(AtomicFile&&) = delete;
    AtomicFile& operator=(AtomicFile&&) = delete;

    /// @throws RaisedError as the constructor, for instance on a full disk.
    void Write(std::string_view bytes) const;

    /// Puts the new content in the target's place.
    /// @throws RaisedError as the constructor; the target is then unchanged.
    void Commit();

  private:
    void CreateTemporary();

    std::filesystem::path m_target;
    std::string m_temporary;
    int m_descriptor = -1;
};

/// What a link leads to, so that a save leaves the link one; other paths as they are.
[[nodiscard]] std::filesystem::path FollowLink(const std::filesystem::path& path);

/// Who may read, write and run a file once it was saved: as before, or of a new file what the user's mask
/// leaves. As whom the old file ran does not pass on to the new one, which may have another owner.
/// @param target no link.
[[nodiscard]] std::filesystem::perms SavedPermissions(const std::filesystem::path& target);

/// Deletes the temporary files of a folder whose programs were killed while they wrote, whatever they wrote.
void RemoveAbandonedFiles(const std::filesystem::path& folder);

/// Raises the failure of a system call: 53 where no such file exists, else the system's number as it is.
/// @param systemError an errno value.
/// @param description if empty, the system's own text for the number.
[[noreturn]] void RaiseSystemError(int systemError, std::string_view source,
                                   std::string_view description = {});

}  // namespace genvara
