#include "AtomicFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <ios>
#include <system_error>
#include <utility>

#include "ErrorNumbers.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::string_view kSource = "AtomicFile";
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kWhoMay = 0777;
constexpr mode_t kPrivate = 0077;
constexpr std::string_view kTemporary = ".genvara-";

/// The user's mask. The call of the system that tells it also changes it, under the feet of other threads;
/// where the system does not tell it otherwise, a new file is the user's own.
mode_t UserMask() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "Umask:") {
            unsigned mask = 0;
            status >> std::oct >> mask;
            return status ? mask : kPrivate;
        }
    }
    return kPrivate;
}

std::filesystem::path FolderOf(const std::filesystem::path& target) {
    return target.has_parent_path() ? target.parent_path() : ".";
}

/// What the names of a target's temporary files begin with: short, however long the target's name is.
std::string TemporaryPrefix(const std::filesystem::path& target) {
    // The 32-bit FNV-1a hash; two targets that share one only tidy up after each other.
    std::uint32_t hash = 2166136261U;
    const std::filesystem::path name = target.filename();
    for (const char byte : name.native()) {
        hash = (hash ^ static_cast<std::uint8_t>(byte)) * 16777619U;
    }
    return fmt::format("{}{:08x}-", kTemporary, hash);
}

/// Deletes a temporary file whose saver was ended on its way. One that is at work holds a lock; where the
/// file system has no locks, nothing is deleted.
void RemoveIfAbandoned(const std::filesystem::path& file) {
    const int descriptor = open(file.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        unlink(file.c_str());
    }
    close(descriptor);
}

void RemoveAbandoned(const std::filesystem::path& folder, std::string_view prefix) {
    std::error_code failure;
    std::filesystem::directory_iterator entry(folder, failure);
    for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        if (entry->path().filename().native().starts_with(prefix)) {
            RemoveIfAbandoned(entry->path());
        }
    }
}

/// Takes the lock that tells a new temporary file from an abandoned one.
/// @return false if another saver took it for abandoned before the lock was there.
bool Claim(int descriptor) {
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        return errno != EWOULDBLOCK;
    }
    struct stat status {};
    return fstat(descriptor, &status) != 0 || status.st_nlink > 0;
}

}  // namespace

std::filesystem::path FollowLink(const std::filesystem::path& path) {
    std::error_code failure;
    std::filesystem::path real = std::filesystem::weakly_canonical(path, failure);
    return failure || !std::filesystem::is_symlink(path, failure) ? path : real;
}

std::filesystem::perms SavedPermissions(const std::filesystem::path& target) {
    struct stat existing {};
    if (stat(target.c_str(), &existing) == 0) {
        return static_cast<std::filesystem::perms>(existing.st_mode & kWhoMay);
    }
    return static_cast<std::filesystem::perms>(kNewFileMode & ~UserMask());
}

void RemoveAbandonedFiles(const std::filesystem::path& folder) {
    RemoveAbandoned(folder, kTemporary);
}

void RaiseSystemError(int systemError, std::string_view source, std::string_view description) {
    const std::int32_t number = systemError == ENOENT ? errors::kFileNotFound : systemError;
    const std::string text =
        description.empty() ? std::generic_category().message(systemError) : std::string(description);
    throw RaisedError(number, std::string(source), text);
}

AtomicFile::AtomicFile(const std::filesystem::path& target) : m_target(FollowLink(target)) {
    struct stat existing {};
    if (stat(m_target.c_str(), &existing) != 0) {
        CreateTemporary();
        return;
    }
    if (S_ISDIR(existing.st_mode)) {
        RaiseSystemError(EISDIR, kSource);
    }
    if (access(m_target.c_str(), W_OK) != 0) {
        RaiseSystemError(errno, kSource);
    }
    if (S_ISREG(existing.st_mode)) {
        CreateTemporary();
        return;
    }
    m_descriptor = open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
    if (m_descriptor < 0) {
        RaiseSystemError(errno, kSource);
    }
}

AtomicFile::~AtomicFile() {
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
    if (!m_temporary.empty()) {
        unlink(m_temporary.c_str());
    }
}

void AtomicFile::CreateTemporary() {
    const std::filesystem::path folder = FolderOf(m_target);
    const std::string prefix = TemporaryPrefix(m_target);
    RemoveAbandoned(folder, prefix);
    while (true) {
        m_temporary = (folder / (prefix + "XXXXXX")).string();
        m_descriptor = mkostemp(m_temporary.data(), O_CLOEXEC);
        if (m_descriptor < 0) {
            m_temporary.clear();
            RaiseSystemError(errno, kSource);
        }
        if (Claim(m_descriptor)) {
            fchmod(m_descriptor, static_cast<mode_t>(SavedPermissions(m_target)));
            return;
        }
        close(m_descriptor);
    }
}

void AtomicFile::Write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = write(m_descriptor, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            RaiseSystemError(errno, kSource);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void AtomicFile::Commit() {
    if (m_temporary.empty()) {
        if (close(std::exchange(m_descriptor, -1)) != 0) {
            RaiseSystemError(errno, kSource);
        }
        return;
    }
    if (fsync(m_descriptor) != 0) {
        RaiseSystemError(errno, kSource);
    }
    // The file is closed, and its lock gone, only when nobody can take it for abandoned any more.
    if (rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        RaiseSystemError(errno, kSource);
    }
    m_temporary.clear();
    close(std::exchange(m_descriptor, -1));
}

}  // namespace genvara
