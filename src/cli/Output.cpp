#include "Output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "AtomicFile.h"

namespace genvara {
namespace {

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

void Print(std::string_view text) {
    if (const int failure = WriteAll(STDOUT_FILENO, text); failure != 0) {
        RaiseSystemError(
            failure, "",
            fmt::format("Standard output cannot be written: {}.", std::generic_category().message(failure)));
    }
}

void Complain(std::string_view line) noexcept {
    try {
        WriteAll(STDERR_FILENO, std::string(line) + "\n");
    } catch (const std::bad_alloc&) {
        WriteAll(STDERR_FILENO, line);
    }
}

void ComplainOf(const std::vector<std::string>& lines) noexcept {
    for (const std::string& line : lines) {
        if (!line.empty()) {
            Complain(line);
        }
    }
}

std::string FailureLine(std::string_view file, const RaisedError& failure) {
    std::string line = fmt::format("{}: error", file);
    if (failure.Number() != 0) {
        line += fmt::format(" {}", failure.Number());
    }
    if (!failure.Source().empty()) {
        line += fmt::format(" from {}", failure.Source());
    }
    return fmt::format("{}: {}", line, failure.Description());
}

}  // namespace genvara
