#include "Output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "TextTable.h"

namespace genvara {
namespace {

constexpr std::size_t kLongestCulprit = 200;  // characters

/// Writes all of a text; the system's error number, or 0.
int WriteAll(int descriptor, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t count = write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return 0;
}

}  // namespace

LostOutput::LostOutput(int systemError)
    : m_systemError(systemError),
      m_text(fmt::format("Standard output cannot be written: {}.",
                         std::generic_category().message(systemError))) {}

bool LostOutput::ReaderIsGone() const noexcept {
    return m_systemError == EPIPE;
}

void Print(std::string_view text) {
    if (const int failure = WriteAll(STDOUT_FILENO, text); failure != 0) {
        throw LostOutput(failure);
    }
}

void Complain(std::string_view line) noexcept {
    try {
        WriteAll(STDERR_FILENO, std::string(line) + "\n");
    } catch (const std::bad_alloc&) {
        WriteAll(STDERR_FILENO, line);
    }
}

void ComplainIfAny(std::string_view line) noexcept {
    if (!line.empty()) {
        Complain(line);
    }
}

std::string FailureLine(std::string_view file, const RaisedError& failure,
                        const std::optional<RunCulprit>& culprit) {
    std::string line = fmt::format("{}: error", file);
    if (failure.Number() != 0) {
        line += fmt::format(" {}", failure.Number());
    }
    if (!failure.Source().empty()) {
        line += fmt::format(" from {}", failure.Source());
    }
    line += fmt::format(": {}", failure.Description());
    return culprit ? fmt::format("{} ({})", line, OneLine(CulpritText(*culprit), kLongestCulprit)) : line;
}

}  // namespace genvara
