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

constexpr std::size_t kMostPeeked = 4096;

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

PeekedSource::PeekedSource(ByteSource& source) : m_source(&source) {
    while (FirstMark() == 0 && m_head.size() < kMostPeeked) {
        std::vector<char> piece(kMostPeeked - m_head.size());
        const std::size_t count = source.Read(piece);
        if (count == 0) {
            return;
        }
        m_head.insert(m_head.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
    }
}

char PeekedSource::FirstMark() const noexcept {
    // Some editors begin a text of UTF-8 with a mark of their own.
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    const std::string_view head(m_head.data(), m_head.size());
    const std::size_t from = head.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    const std::size_t mark = head.find_first_not_of(" \t\r\n", from);
    return mark == std::string_view::npos ? '\0' : head[mark];
}

std::size_t PeekedSource::Read(std::span<char> buffer) {
    if (m_next == m_head.size()) {
        return m_source->Read(buffer);
    }
    const std::size_t count = std::min(buffer.size(), m_head.size() - m_next);
    std::copy_n(m_head.begin() + static_cast<std::ptrdiff_t>(m_next), count, buffer.begin());
    m_next += count;
    return count;
}

std::size_t MemorySource::Read(std::span<char> buffer) {
    const std::size_t count = std::min(buffer.size(), m_bytes.size());
    std::copy_n(m_bytes.begin(), count, buffer.begin());
    m_bytes.remove_prefix(count);
    return count;
}

}  // namespace genvara
