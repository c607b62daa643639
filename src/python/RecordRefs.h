#pragma once

#include <cstdint>
#include <memory>

#include "PythonProject.h"

/// What Python holds of a record. It keeps the project, so that it never outlives its owner, and finds the
/// record by its ID, so that what was deleted from the project is told and not touched.
namespace genvara::python {

using ProjectPtr = std::shared_ptr<PythonProject>;

struct SiteRef {
    ProjectPtr project;

    [[nodiscard]] CPwrSys& Record() const { return project->PowerSystem(); }
    bool operator==(const SiteRef&) const = default;
};

struct StepRef {
    ProjectPtr project;
    std::int32_t id;

    /// The step, or null if it was deleted.
    [[nodiscard]] CLoadStep* Find() const { return project->LoadProfile().LoadStepByID(id); }
    /// @throws ReferenceError for a step that was deleted.
    [[nodiscard]] CLoadStep& Record() const;
    /// Position in the profile, from 1.
    /// @throws ReferenceError as `Record`.
    [[nodiscard]] std::int32_t Number() const;
    bool operator==(const StepRef&) const = default;
};

struct LoadRef {
    ProjectPtr project;
    std::int32_t stepId;
    std::int32_t id;

    [[nodiscard]] Load* Find() const;
    /// @throws ReferenceError for a load that was deleted, or whose step was.
    [[nodiscard]] Load& Record() const;
    [[nodiscard]] StepRef Step() const { return {project, stepId}; }
    /// Position in the step, from 1.
    /// @throws ReferenceError as `Record`.
    [[nodiscard]] std::int32_t Number() const;
    bool operator==(const LoadRef&) const = default;
};

}  // namespace genvara::python
