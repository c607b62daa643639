#pragma once

#include <string>
#include <vector>

#include "Advise.h"

namespace genvara {

/// A limit in whole percent, which may be raised.
struct LimitAxis {
    std::string path;
    std::int32_t now = 0;
    std::int32_t most = 0;
};

/// The changes of the table but numeric limits and the order, in the order of table and profile.
[[nodiscard]] std::vector<Alteration> PlainAlterations(const StudyProject& project,
                                                       const AdviceChoice& choice, const EntryRules& rules);
/// The limits that hold and may be higher, in the same order.
[[nodiscard]] std::vector<LimitAxis> LimitAxes(const StudyProject& project, const AdviceChoice& choice);

/// A sentence, without its full stop.
[[nodiscard]] std::string SentenceOf(const StudyProject& project, const Alteration& alteration);

/// The members that alterations set, and what follows from them.
[[nodiscard]] std::vector<MemberDifference> DifferencesOf(const StudyProject& project,
                                                          std::span<const Alteration> alterations,
                                                          const EntryRules& rules);

}  // namespace genvara
