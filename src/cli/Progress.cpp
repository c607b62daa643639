#include "Progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

namespace genvara {
namespace {

using std::chrono::steady_clock;

/// Nobody wants to be told of what takes less, or more often.
constexpr std::chrono::milliseconds kPatience{300};
constexpr std::chrono::milliseconds kInterval{100};

}  // namespace

Progress::Progress(std::string unit, std::int64_t total)
    : m_unit(std::move(unit)),
      m_total(total),
      m_isSeen(isatty(STDERR_FILENO) != 0),
      m_next(steady_clock::now() + kPatience) {}

Progress::~Progress() {
    Clear();
}

void Progress::Show(std::int64_t done) {
    if (!m_isSeen || steady_clock::now() < m_next) {
        return;
    }
    m_next = steady_clock::now() + kInterval;
    m_isShown = true;
    const std::string total = m_total > 0 ? fmt::format(" of {}", m_total) : std::string();
    fmt::print(stderr, "\r{}{} {} ", done, total, m_unit);
}

void Progress::Clear() {
    if (std::exchange(m_isShown, false)) {
        // "erase to the end of the line", which every terminal of today knows
        fmt::print(stderr, "\r\033[K");
    }
}

}  // namespace genvara
