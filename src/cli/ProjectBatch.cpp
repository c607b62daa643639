#include "ProjectBatch.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "Output.h"

namespace genvara {

ProjectBatch::ProjectBatch(const std::vector<std::string>& files, std::int32_t jobs, Work work,
                           Consumer consumer)
    : m_files(&files),
      m_jobs(std::min(static_cast<std::size_t>(jobs), files.size())),
      m_work(std::move(work)),
      m_consumer(std::move(consumer)),
      m_outcomes(files.size()) {}

void ProjectBatch::Run() {
    {
        std::vector<std::jthread> workers;
        for (std::size_t i = 1; i < m_jobs; ++i) {
            workers.emplace_back([this] { WorkOn(); });
        }
        WorkOn();
    }
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
}

void ProjectBatch::WorkOn() {
    for (std::size_t i = m_next++; i < m_outcomes.size(); i = m_next++) {
        std::optional<ProjectOutcome> outcome = m_work((*m_files)[i]);
        if (!outcome) {
            m_next = m_outcomes.size();
            return;
        }
        const std::lock_guard lock(m_mutex);
        m_outcomes[i] = std::move(outcome);
        HandOver();
    }
}

void ProjectBatch::HandOver() {
    while (m_due < m_outcomes.size() && m_outcomes[m_due] && !m_failure) {
        try {
            m_consumer(*m_outcomes[m_due]);
        } catch (...) {
            m_failure = std::current_exception();
            m_next = m_outcomes.size();  // nobody reads what is still to come
        }
        m_outcomes[m_due++].reset();
    }
}

void OutcomePrinter::Take(const ProjectOutcome& outcome) {
    const bool separate = m_apart && !m_isFirst && !outcome.output.empty();
    Print(separate ? "\n" + outcome.output : outcome.output);
    std::ranges::for_each(outcome.complaints, ComplainIfAny);
    m_worst = std::max(m_worst, outcome.status);
    m_isFirst = m_isFirst && outcome.output.empty();
}

}  // namespace genvara
