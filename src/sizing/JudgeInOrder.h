#pragma once

#include <cstddef>
#include <cstdint>

#include "PreparedSite.h"
#include "ProfileFigures.h"
#include "StepJudge.h"

namespace genvara {

/// Takes every candidate in the order of the catalogue through every step, as a run over the database does.
/// @param judge has begun with the profile at the prepared site.
/// @param visit takes position, fate and bits of the failed tests of each.
/// @throws RaisedError as that run would, at the same candidate.
template <typename Visit>
void JudgeInOrder(const PreparedSite& prepared, const ProfileFigures& profile, StepJudge& judge,
                  Visit visit) {
    for (std::size_t i = 0; i < prepared.Sets().size(); ++i) {
        const Candidate& set = prepared.Sets()[i];
        const std::int32_t reason = judge.Judge(set);
        const Fate fate = FateOf(reason, set, prepared.Site(), profile);
        if (fate != Fate::BelowMinLoading) {
            (void)prepared.NamesOf(i);
        }
        visit(i, fate, reason);
    }
    if (prepared.Failure()) {
        throw RaisedError(*prepared.Failure());
    }
}

}  // namespace genvara
