#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "CachedGensets.h"
#include "CommandLine.h"
#include "OpenCatalogue.h"
#include "Output.h"
#include "SizedProject.h"
#include "SizingJson.h"
#include "SizingTable.h"
#include "SkipCounter.h"

namespace genvara {
namespace {

/// What one project came to, ready to be printed.
struct Outcome {
    Status status = Status::Done;
    std::string output;
    std::array<std::string, 2> complaints;  ///< for standard error, if not empty: warning and failure
};

/// @throws ProjectFailure of a figure that only the output asks for, as where there are no candidates.
std::string Shown(const std::string& file, const SizedProject& sized, bool json) {
    try {
        return json ? SizingJson(file, sized) + "\n" : SizingTable(file, sized);
    } catch (const RaisedError& failure) {
        throw sized.Failure(failure);
    }
}

Outcome SizeOne(const std::string& file, const ProjectArguments& arguments,
                const SharedCatalogue& catalogue) {
    SkipCounter skipped;
    Outcome outcome;
    std::string failureLine;
    const auto fail = [&](const ProjectFailure& failure) {
        outcome.status = failure.status;
        outcome.output = arguments.json ? ErrorJson(file, failure.error) + "\n" : std::string();
        failureLine = FailureLine(file, failure.error, failure.culprit);
    };
    try {
        SizedProject sized(file, catalogue, skipped);
        sized.Size(arguments.limits);
        outcome.output = Shown(file, sized, arguments.json);
    } catch (const ProjectFailure& failure) {
        fail(failure);
    } catch (const RaisedError& failure) {
        fail({.status = Status::RunFailed, .error = failure});
    }
    // What could not be read may well be why the run fails, and so it is told in any case.
    outcome.complaints = {skipped.Warning(file), failureLine};
    return outcome;
}

/// Sizes every project, on as many threads as asked for. Outcomes are handed over in the order of the
/// arguments, by whichever thread finishes the one whose turn it is.
class Batch {
  public:
    using Consumer = std::function<void(const Outcome&)>;

    Batch(const ProjectArguments& arguments, const SharedCatalogue& catalogue, Consumer consumer)
        : m_arguments(&arguments),
          m_catalogue(&catalogue),
          m_consumer(std::move(consumer)),
          m_outcomes(arguments.files.size()) {}

    /// @throws LostOutput of the consumer.
    void Run() {
        {
            const auto threads = std::min(static_cast<std::size_t>(m_arguments->jobs), m_outcomes.size());
            std::vector<std::jthread> workers;
            for (std::size_t i = 1; i < threads; ++i) {
                workers.emplace_back([this] { Work(); });
            }
            Work();
        }
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
    }

  private:
    void Work() {
        for (std::size_t i = m_next++; i < m_outcomes.size(); i = m_next++) {
            Outcome outcome = SizeOne(m_arguments->files[i], *m_arguments, *m_catalogue);
            const std::lock_guard lock(m_mutex);
            m_outcomes[i] = std::move(outcome);
            HandOver();
        }
    }

    void HandOver() {
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

    const ProjectArguments* m_arguments;
    const SharedCatalogue* m_catalogue;
    Consumer m_consumer;
    std::vector<std::optional<Outcome>> m_outcomes;
    std::atomic<std::size_t> m_next{0};
    std::mutex m_mutex;
    std::size_t m_due = 0;
    std::exception_ptr m_failure;
};

/// Every project answers with the failure of the database that they share.
int FailAll(const ProjectArguments& arguments, const RaisedError& failure) {
    if (arguments.json) {
        for (const std::string& file : arguments.files) {
            Print(ErrorJson(file, failure) + "\n");
        }
    }
    Complain(FailureLine("genvara-cli", failure));
    return static_cast<int>(Status::Unreadable);
}

}  // namespace

int RunSize(const ProjectArguments& arguments) {
    std::unique_ptr<OpenCatalogue> open;
    try {
        open = std::make_unique<OpenCatalogue>(arguments.database);
    } catch (const RaisedError& failure) {
        return FailAll(arguments, failure);
    }
    CachedGensets cache(open->Gensets());
    // One project alone streams its candidates; several share what has been read.
    const bool several = arguments.files.size() > 1;
    const SharedCatalogue catalogue{.catalogue = *open,
                                    .gensets = several ? static_cast<GensetSource&>(cache) : open->Gensets()};
    Status worst = Status::Done;
    bool first = true;
    Batch batch(arguments, catalogue, [&](const Outcome& outcome) {
        const bool separate = !arguments.json && !first && !outcome.output.empty();
        Print(separate ? "\n" + outcome.output : outcome.output);
        std::ranges::for_each(outcome.complaints, ComplainIfAny);
        worst = std::max(worst, outcome.status);
        first = first && outcome.output.empty();
    });
    batch.Run();
    return static_cast<int>(worst);
}

}  // namespace genvara
