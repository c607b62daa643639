#include <fmt/format.h>

#include <algorithm>

#include "CommandLine.h"
#include "OpenCatalogue.h"
#include "Output.h"
#include "SizedProject.h"

namespace genvara {
namespace {

/// Prints each item that a file's reader passed over.
class SkipPrinter final : public ProjectReadObserver {
  public:
    explicit SkipPrinter(const std::string& file) : m_file(&file) {}

    void Skipped(const SkippedItem& item) override {
        ++m_count;
        Print(fmt::format("{}:{}: {}: expected {}, found {}\n", *m_file, item.line, item.record,
                          item.expected, item.found.empty() ? "nothing" : item.found));
    }
    [[nodiscard]] std::int64_t Count() const noexcept { return m_count; }

  private:
    const std::string* m_file;
    std::int64_t m_count = 0;
};

Status CheckOne(const std::string& file, const SharedCatalogue& catalogue) {
    try {
        SkipPrinter printer(file);
        const SizedProject project(file, catalogue, printer);
        if (printer.Count() > 0) {
            return Status::Found;
        }
        Print(fmt::format("{}: read without a gap\n", file));
        return Status::Done;
    } catch (const ProjectFailure& failure) {
        Complain(FailureLine(file, failure.error));
        return failure.status;
    }
}

}  // namespace

int RunCheck(const ProjectArguments& arguments) {
    Status worst = Status::Done;
    try {
        OpenCatalogue open(arguments.database);
        const SharedCatalogue catalogue{.catalogue = open, .gensets = open.Gensets()};
        for (const std::string& file : arguments.files) {
            worst = std::max(worst, CheckOne(file, catalogue));
        }
    } catch (const RaisedError& failure) {
        Complain(FailureLine("genvara-cli", failure));
        worst = Status::Unreadable;
    }
    return static_cast<int>(worst);
}

}  // namespace genvara
