#pragma once

#include <memory>
#include <string>

#include "CLoadProfile.h"
#include "CMtrLoad.h"

namespace genvara {

// The largest profile that anybody draws up: as many steps as there may be, each of a switchboard's motors.
inline constexpr int kSteps = 256;
inline constexpr int kLoads = 50;

/// Motors with names as long as people give them.
inline void FillProfile(CLoadProfile& profile) {
    for (int step = 1; step <= kSteps; ++step) {
        profile.AddLoadStep("Load Step #" + std::to_string(step), 20, 0);
        for (int load = 0; load < kLoads; ++load) {
            auto motor = std::make_unique<CMtrLoad>();
            motor->name("Cooling water pump " + std::to_string(load));
            motor->Description("behind the tank, second floor");
            motor->RunningRealPower(1000 + load);
            motor->RunningAppPower(1200 + load);
            motor->StartingAppPower(7000 + load);
            motor->StartingPF(0.4);
            profile.LoadStep(step).AddLoad(std::move(motor));
        }
    }
}

}  // namespace genvara
