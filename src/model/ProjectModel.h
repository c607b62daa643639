#pragma once

#include "CLoadProfile.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "MotorConversions.h"

namespace genvara {

/// The records that make up a project, to be looked at.
struct ProjectView {
    const CProject& project;
    const CPwrSys& powerSystem;
    const CLoadProfile& loadProfile;
};

/// The records that make up a project, to be filled, with the motor tables by which its loads are worked out.
struct ProjectModel {
    CProject& project;
    CPwrSys& powerSystem;
    CLoadProfile& loadProfile;
    const MotorConversions& motors;

    operator ProjectView() const noexcept { return {project, powerSystem, loadProfile}; }
};

}  // namespace genvara
