#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace genvara {

/// Shows on a terminal how far long work is, on one line of standard error that is written over; elsewhere,
/// and for work that is done in a moment, nothing. Used by one thread at a time.
class Progress {
  public:
    /// @param unit of what is counted, as in "projects".
    /// @param total 0 where nobody knows it.
    Progress(std::string unit, std::int64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    Progress(Progress&&) = delete;
    Progress& operator=(Progress&&) = delete;

    void Show(std::int64_t done);
    /// The same where the total is known better by now.
    void Show(std::int64_t done, std::int64_t total) {
        m_total = total;
        Show(done);
    }
    /// Makes room for other output.
    void Clear();

  private:
    using Time = std::chrono::steady_clock::time_point;

    std::string m_unit;
    std::int64_t m_total;
    bool m_isSeen;
    bool m_isShown = false;
    Time m_next;
};

}  // namespace genvara
