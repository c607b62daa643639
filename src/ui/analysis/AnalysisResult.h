#pragma once

#include <memory>

#include "Explain.h"
#include "StudyDesk.h"
#include "Variation.h"

namespace genvara {

/// What the pages of the analysis show: a project, all its listed sets with their verdicts, and what further
/// studies of it are worked out by. Nothing changes it.
struct AnalysisResult {
    std::shared_ptr<const StudyProject> project;
    std::shared_ptr<const Explanation> explanation;
    std::shared_ptr<const StudyDesk> desk;

    [[nodiscard]] const ExplainedSet* Set(int index) const {
        return explanation && index >= 0 && static_cast<std::size_t>(index) < explanation->sets.size()
                   ? &explanation->sets[static_cast<std::size_t>(index)]
                   : nullptr;
    }
};

}  // namespace genvara
