#include "AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "ErrorNumbers.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::string_view kSource = "AtomicFile";
constexpr mode_t kNewFileMode = 0666;

/// The mode that a new file gets under the user's mask.
mode_t DefaultMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return kNewFileMode & ~mask;
}

std::filesystem::path FollowLink(const std::filesystem::path& path) {
    std::error_code failure;
    std::filesystem::path real = std::filesystem::weakly_canonical(path, failure);
    return failure || !std::filesystem::is_symlink(path, failure) ? path : real;
}

}  // namespace

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
        fchmod(m_descriptor, DefaultMode());
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
        fchmod(m_descriptor, existing.st_mode & 07777);
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
    const std::filesystem::path folder = m_target.has_parent_path() ? m_target.parent_path() : ".";
    m_temporary = (folder / ".genvara-XXXXXX").string();
    m_descriptor = mkostemp(m_temporary.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        m_temporary.clear();
        RaiseSystemError(errno, kSource);
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
    const bool direct = m_temporary.empty();
    if (!direct && fsync(m_descriptor) != 0) {
        RaiseSystemError(errno, kSource);
    }
    if (close(std::exchange(m_descriptor, -1)) != 0) {
        RaiseSystemError(errno, kSource);
    }
    if (direct) {
        return;
    }
    if (rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        RaiseSystemError(errno, kSource);
    }
    m_temporary.clear();
}

}  // namespace genvara
