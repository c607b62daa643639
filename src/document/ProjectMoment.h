#pragma once

#include <cstdint>
#include <memory>

#include "ProjectModel.h"

namespace genvara {

/// A project as it stood at a moment. Nothing of it changes any more, so that moments share what is the same
/// in them, and threads may look at one while the project goes on.
struct ProjectMoment {
    std::shared_ptr<const CProject> project;
    std::shared_ptr<const CPwrSys> powerSystem;
    CLoadProfile::Moment steps;

    /// Whether both stand for the same moment: every part is the one object.
    bool operator==(const ProjectMoment&) const = default;
};

/// The records as they are now.
/// @param before a moment with which parts are shared that are as they were then.
[[nodiscard]] ProjectMoment MomentOf(const ProjectView& records, const ProjectMoment& before = {});

/// Brings the records back to a moment of theirs.
void Restore(const ProjectMoment& moment, const ProjectModel& records);

/// Whether two moments hold the same, as their files would: IDs do not count.
[[nodiscard]] bool HoldSame(const ProjectMoment& left, const ProjectMoment& right);

/// A step of the profile, or one of its loads, by the IDs; neither where they are below 0.
struct ProfilePlace {
    std::int32_t stepId = -1;
    std::int32_t loadId = -1;

    bool operator==(const ProfilePlace&) const = default;
    /// Whether it names anything.
    [[nodiscard]] explicit operator bool() const noexcept { return stepId >= 0; }
};

/// The first step or load that a later moment has and an earlier one has not, or not like that.
[[nodiscard]] ProfilePlace FirstNewPlace(const ProjectMoment& earlier, const ProjectMoment& later);

}  // namespace genvara
