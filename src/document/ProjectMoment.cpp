#include "ProjectMoment.h"

#include <algorithm>
#include <cstddef>

namespace genvara {
namespace {

using Step = std::shared_ptr<const CLoadStep>;

/// The step of an ID among those of a moment; null if it has none. Most steps stand where they stood.
Step FindStep(const CLoadProfile::Moment& steps, std::int32_t id, std::size_t likelyPlace) {
    if (likelyPlace < steps.size() && steps[likelyPlace]->StepID() == id) {
        return steps[likelyPlace];
    }
    const auto found = std::ranges::find(steps, id, [](const Step& step) { return step->StepID(); });
    return found == steps.end() ? nullptr : *found;
}

/// What was kept of a record if it is still as it was, else a copy.
template <typename Record>
std::shared_ptr<const Record> Shared(const Record& record, const std::shared_ptr<const Record>& before) {
    return before != nullptr && before->HoldsSame(record) ? before : std::make_shared<const Record>(record);
}

/// The first load of a step that the step before had not, or not like that; -1 if there is none.
std::int32_t FirstNewLoad(const CLoadStep& before, const CLoadStep& step) {
    for (const Load& load : step) {
        const Load* former = before.LoadItem(load.ID());
        if (former == nullptr || !former->HoldsSame(load)) {
            return load.ID();
        }
    }
    return -1;
}

}  // namespace

ProjectMoment MomentOf(const ProjectView& records, const ProjectMoment& before) {
    ProjectMoment moment{.project = Shared(records.project, before.project),
                         .powerSystem = Shared(records.powerSystem, before.powerSystem),
                         .steps = {}};
    moment.steps.reserve(static_cast<std::size_t>(records.loadProfile.NumLoadSteps()));
    for (const CLoadStep& step : records.loadProfile) {
        const Step former = FindStep(before.steps, step.StepID(), moment.steps.size());
        moment.steps.push_back(former != nullptr && former->IsSameMoment(step)
                                   ? former
                                   : std::make_shared<const CLoadStep>(step));
    }
    return moment;
}

void Restore(const ProjectMoment& moment, const ProjectModel& records) {
    records.project = *moment.project;
    records.powerSystem = *moment.powerSystem;
    records.loadProfile.Restore(moment.steps);
}

bool HoldSame(const ProjectMoment& left, const ProjectMoment& right) {
    const auto same = [](const auto& one, const auto& other) {
        return one == other || one->HoldsSame(*other);
    };
    return same(left.project, right.project) && same(left.powerSystem, right.powerSystem) &&
           std::ranges::equal(left.steps, right.steps, same);
}

ProfilePlace FirstNewPlace(const ProjectMoment& earlier, const ProjectMoment& later) {
    std::size_t place = 0;
    for (const Step& step : later.steps) {
        const Step former = FindStep(earlier.steps, step->StepID(), place++);
        if (former != step) {
            return {.stepId = step->StepID(),
                    .loadId = former == nullptr ? -1 : FirstNewLoad(*former, *step)};
        }
    }
    return {};
}

}  // namespace genvara
