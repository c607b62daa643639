#include "ErrorLog.h"

#include <cerrno>
#include <fstream>

#include "AtomicFile.h"

namespace genvara {
namespace {

constexpr std::string_view kFileName = "/err.log";
constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

ErrorLog::ErrorLog(const std::filesystem::path& programFolder)
    : m_file(programFolder.string() + std::string(kFileName)) {}

void ErrorLog::Append(std::string_view message) {
    m_text.append(message).append(kLineEnd);
    if (!m_logToFile) {
        return;
    }
    errno = 0;
    // The message's own line end and that of the write: each entry ends in a blank line.
    std::ofstream file(m_file, std::ios::binary | std::ios::app);
    file << message << kLineEnd << kLineEnd << std::flush;
    if (!file) {
        RaiseSystemError(errno != 0 ? errno : EIO, "ErrorLog");
    }
}

}  // namespace genvara
