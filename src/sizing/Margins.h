#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "StepTests.h"

namespace genvara {

/// The test that comes closest to failing, or fails by most.
struct Tightest {
    std::size_t test = 0;         ///< position in `kStepTests`
    std::int32_t stepNumber = 0;  ///< counted from 1
    double margin = 0.0;          ///< percent of what is there
};

/// Takes the tests of a step, one step after the other; of equal margins the first stays.
inline void KeepTighter(std::optional<Tightest>& tightest, std::int32_t stepNumber,
                        const StepVerdicts& verdicts) noexcept {
    for (std::size_t test = 0; test < verdicts.size(); ++test) {
        const std::optional<double> margin = verdicts[test].Margin();
        if (margin && (!tightest || *margin < tightest->margin)) {
            tightest = Tightest{.test = test, .stepNumber = stepNumber, .margin = *margin};
        }
    }
}

}  // namespace genvara
