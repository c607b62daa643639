#include "AlteredProject.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace genvara {
namespace {

/// Moves loads to steps of their own; each has the limit of the step that it leaves.
StudyProject Split(const StudyProject& project, const std::vector<LoadMove>& moves) {
    StudyProject split{.project = project.project,
                       .powerSystem = project.powerSystem,
                       .loadProfile = {},
                       .limits = project.limits,
                       .format = project.format};
    CLoadProfile& profile = split.loadProfile;
    std::int32_t number = 0;
    for (const CLoadStep& step : project.loadProfile) {
        ++number;
        const auto addOwn = [&](bool before) {
            for (const LoadMove& move : moves) {
                if (move.load.step == number && move.isBefore == before) {
                    const Load& load = *std::next(step.begin(), move.load.load - 1);
                    profile.AddLoadStep(load.name(), step.MaxVoltageDipOverride(), 0);
                    profile.LoadStep(profile.NumLoadSteps()).AddLoad(load.Clone());
                }
            }
        };
        addOwn(true);
        profile.AddLoadStep(step.Description(), step.MaxVoltageDipOverride(), 0);
        CLoadStep& rest = profile.LoadStep(profile.NumLoadSteps());
        std::int32_t position = 0;
        for (const Load& load : step) {
            const LoadPlace place{number, ++position};
            if (std::ranges::none_of(moves, [&](const LoadMove& move) { return move.load == place; })) {
                rest.AddLoad(load.Clone());
            }
        }
        addOwn(false);
    }
    return split;
}

}  // namespace

std::vector<MemberValue> MembersOf(std::span<const Alteration> alterations) {
    std::vector<MemberValue> changes;
    for (const Alteration& alteration : alterations) {
        if (alteration.member) {
            changes.push_back(*alteration.member);
        }
    }
    return changes;
}

bool MovesLoads(std::span<const Alteration> alterations) {
    return std::ranges::any_of(
        alterations, [](const Alteration& alteration) { return alteration.move || alteration.order; });
}

StudyProject Moved(const StudyProject& project, std::span<const Alteration> alterations) {
    std::vector<LoadMove> moves;
    for (const Alteration& alteration : alterations) {
        if (alteration.order) {
            return Reordered(project, *alteration.order);
        }
        if (alteration.move) {
            moves.push_back(*alteration.move);
        }
    }
    return Split(project, moves);
}

StudyProject Altered(const StudyProject& project, std::span<const Alteration> alterations,
                     const EntryRules& rules) {
    StudyProject altered = project;
    for (const MemberValue& change : MembersOf(alterations)) {
        Change(altered, change, rules);
    }
    return Reopened(MovesLoads(alterations) ? Moved(altered, alterations) : altered, rules);
}

}  // namespace genvara
