#include "DesignResults.h"

#include <cstddef>

namespace genvara {

std::vector<StepVerdicts> VerdictsOf(const ChosenSet& set, const ProfileFigures& profile,
                                     const SiteRequirements& site) {
    std::vector<StepVerdicts> verdicts;
    verdicts.reserve(profile.steps.size());
    for (std::size_t s = 0; s < profile.steps.size(); ++s) {
        const StepOutcome outcome{.freqDip = set.FreqDips[s],
                                  .voltDip = set.VoltageDips[s],
                                  .distortion = {set.StepVTHD_A[s], set.StepVTHD_B[s], set.StepVTHD_C[s]}};
        verdicts.push_back(
            VerdictsOf({.step = profile.steps[s], .set = set.figures, .outcome = outcome, .site = site}));
    }
    return verdicts;
}

}  // namespace genvara
