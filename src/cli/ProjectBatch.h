#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "SizedProject.h"

namespace genvara {

/// What one project came to, ready to be printed.
struct ProjectOutcome {
    Status status = Status::Done;
    std::string output;
    std::array<std::string, 2> complaints;  ///< for standard error, if not empty: warning and failure
};

/// Works on every project, on as many threads as asked for. Outcomes are handed over in the order of the
/// projects, by whichever thread finishes the one whose turn it is.
class ProjectBatch {
  public:
    /// Called by any thread; nothing for a project that is given up, which ends the batch.
    using Work = std::function<std::optional<ProjectOutcome>(const std::string& file)>;
    using Consumer = std::function<void(const ProjectOutcome&)>;

    ProjectBatch(const std::vector<std::string>& files, std::int32_t jobs, Work work, Consumer consumer);

    /// @throws LostOutput of the consumer.
    void Run();

  private:
    void WorkOn();
    void HandOver();

    const std::vector<std::string>* m_files;
    std::size_t m_jobs;
    Work m_work;
    Consumer m_consumer;
    std::vector<std::optional<ProjectOutcome>> m_outcomes;
    std::atomic<std::size_t> m_next{0};
    std::mutex m_mutex;
    std::size_t m_due = 0;
    std::exception_ptr m_failure;
};

/// Prints outcomes as they come, tables with a blank line between, and remembers the highest status.
class OutcomePrinter {
  public:
    /// @param apart whether a blank line stands between two outputs.
    explicit OutcomePrinter(bool apart) : m_apart(apart) {}

    /// @throws LostOutput if standard output cannot be written.
    void Take(const ProjectOutcome& outcome);
    [[nodiscard]] Status Worst() const noexcept { return m_worst; }

  private:
    bool m_apart;
    bool m_isFirst = true;
    Status m_worst = Status::Done;
};

}  // namespace genvara
