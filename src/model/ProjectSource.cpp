#include "ProjectSource.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "AtomicFile.h"

namespace genvara {
namespace {

[[noreturn]] void RaiseUnreadable(int systemError, const std::filesystem::path& file,
                                  std::string_view source) {
    RaiseSystemError(systemError, source,
                     fmt::format("The project file {} cannot be opened: {}.", file.string(),
                                 std::generic_category().message(systemError)));
}

}  // namespace

FileSource::FileSource(const std::filesystem::path& file, std::string_view source)
    // A pipe without a writer must not hold the program up.
    : m_descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (m_descriptor < 0) {
        RaiseUnreadable(errno, file, source);
    }
    // Of a pipe with a writer the bytes are waited for: it is not at its end because none came yet.
    fcntl(m_descriptor, F_SETFL, 0);
    struct stat status {};
    if (fstat(m_descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        close(m_descriptor);
        RaiseUnreadable(EISDIR, file, source);
    }
}

FileSource::~FileSource() {
    close(m_descriptor);
}

std::size_t FileSource::Read(std::span<char> buffer) {
    ssize_t count = 0;
    do {
        count = read(m_descriptor, buffer.data(), buffer.size());
    } while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

std::size_t MemorySource::Read(std::span<char> buffer) {
    const std::size_t count = std::min(buffer.size(), m_bytes.size());
    std::copy_n(m_bytes.begin(), count, buffer.begin());
    m_bytes.remove_prefix(count);
    return count;
}

}  // namespace genvara
