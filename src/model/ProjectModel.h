#pragma once

#include "CLoadProfile.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "MotorConversions.h"

namespace genvara {

/// The records that make up a project, with the motor tables by which its loads are worked out.
struct ProjectModel {
    CProject& project;
    CPwrSys& powerSystem;
    CLoadProfile& loadProfile;
    const MotorConversions& motors;
};

}  // namespace genvara
