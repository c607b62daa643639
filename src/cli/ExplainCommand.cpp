#include "ExplainCommand.h"

#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "CachedGensets.h"
#include "ExplainJson.h"
#include "ExplainTable.h"
#include "Interruption.h"
#include "OpenCatalogue.h"
#include "Progress.h"
#include "ProjectBatch.h"
#include "SiteCandidates.h"
#include "SizeCommand.h"
#include "WorkOutLoads.h"

namespace genvara {
namespace {

/// Explains projects against one catalogue; any number of threads at the same time.
class ProjectExplainer {
  public:
    ProjectExplainer(const ProjectArguments& project, const ExplainArguments& arguments,
                     const SharedCatalogue& catalogue, const StopFlag& stop)
        : m_project(&project),
          m_arguments(&arguments),
          m_catalogue(catalogue),
          m_stop(&stop),
          m_candidates(catalogue.gensets) {}

    /// Nothing once the user has stopped the program.
    [[nodiscard]] std::optional<ProjectOutcome> Explained(const std::string& file) {
        try {
            RequireGoingOn(*m_stop);
            ProjectOutcome outcome = SizeAndShow(
                file, *m_project, m_catalogue, [&](const SizedProject& sized) { return Shown(file, sized); });
            RequireGoingOn(*m_stop);  // a file that could not be read for it is not complained of
            return outcome;
        } catch (const StudyStopped&) {
            return std::nullopt;
        }
    }

  private:
    [[nodiscard]] std::string Shown(const std::string& file, const SizedProject& sized) {
        WorkOutLoads(sized.LoadProfile());
        const Explanation explanation =
            Explain(m_candidates.Of(FilterOf(sized.PowerSystem())), sized.PowerSystem(), sized.LoadProfile(),
                    m_project->limits, m_arguments->choice, *m_stop);
        if (!explanation.unknownModels.empty()) {
            RefuseModel(explanation.unknownModels.front(), file);
        }
        return m_project->json
                   ? ExplanationJson(file, explanation) + "\n"
                   : ExplanationTable(file, sized, explanation, *m_arguments, m_project->limits.MinLoading());
    }

    [[noreturn]] void RefuseModel(const std::string& model, const std::string& file) const {
        const bool isKnown = m_catalogue.catalogue.Gensets().HasModel(model);
        const std::string text =
            isKnown ? fmt::format(
                          "The model \"{}\" is in the genset database, but no set of it is a candidate for "
                          "the site of {}.",
                          model, file)
                    : fmt::format("The model \"{}\" is not in the genset database.", model);
        throw ProjectFailure{Status::BadArguments, RaisedError(0, "", text)};
    }

    const ProjectArguments* m_project;
    const ExplainArguments* m_arguments;
    SharedCatalogue m_catalogue;
    const StopFlag* m_stop;
    CandidateStore m_candidates;
};

}  // namespace

int RunExplain(const ProjectArguments& project, const ExplainArguments& arguments) {
    const Interruption interruption;
    std::unique_ptr<OpenCatalogue> open;
    try {
        open = std::make_unique<OpenCatalogue>(project.database);
    } catch (const RaisedError& failure) {
        return FailAll(project, failure);
    }
    CachedGensets shared(open->Gensets());
    ProjectExplainer explainer(project, arguments, {.catalogue = *open, .gensets = shared},
                               interruption.Requested());
    OutcomePrinter printer(!project.json);
    Progress progress("projects", static_cast<std::int64_t>(project.files.size()));
    std::int64_t done = 0;
    ProjectBatch batch(
        project.files, project.jobs, [&](const std::string& file) { return explainer.Explained(file); },
        [&](const ProjectOutcome& outcome) {
            progress.Clear();
            printer.Take(outcome);
            progress.Show(++done);
        });
    try {
        batch.Run();
    } catch (...) {
        // Whoever read the output may have been stopped by the same keys.
        if (!interruption.Requested()) {
            throw;
        }
    }
    return interruption.Requested() ? kInterrupted : static_cast<int>(printer.Worst());
}

}  // namespace genvara
