#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "AlteredProject.h"
#include "Properties.h"
#include "Stopping.h"
#include "Variation.h"

/// What would let a smaller set do.
namespace genvara {

/// A member that an advice changes.
struct MemberDifference {
    std::string path;
    PropertyFacts facts;
    PropertyValue from;
    PropertyValue to;
    bool follows = false;  ///< worked out from another change
};

struct Advice {
    std::vector<Alteration> alterations;  ///< one, or a pair
    std::vector<MemberDifference>
        differences;   ///< of each alteration of a member that one, then what follows
    std::string text;  ///< a sentence with the names of the loads and both values
    Sizing sizing;
    std::optional<double> saved;  ///< rating of all sets that is saved [kW]; none where there was no set
};

struct AdviceChoice {
    std::array<bool, kAdviceKinds.size()> kinds{true, true, true, true, true, true, true, true};
    bool pairs = false;

    [[nodiscard]] bool Has(AdviceKind kind) const noexcept { return kinds[static_cast<std::size_t>(kind)]; }
};

struct AdviceList {
    Sizing now;
    bool allBelowMinLoading = false;  ///< every candidate passes and is dropped as too large
    std::vector<Advice> advice;       ///< smallest set first, then fewer changes, table, profile
};

using CountVariations = std::function<void(std::int64_t done, std::int64_t total)>;

/// Tries every change of the table, and each two of them if asked to, and lists those after which the first
/// recommended set is smaller in all, or there is one where there was none. A change that the project does
/// not take is none. Of a limit the least value for each set that it reaches is listed; every value is tried,
/// for more room need not let a smaller set do. A pair is listed if it beats both of its changes; two changes
/// of one member, two moves of one load, and an order with a move are no pairs.
/// @throws RaisedError if the project itself cannot be sized; StudyStopped.
[[nodiscard]] AdviceList Advise(const StudyProject& project, const AdviceChoice& choice,
                                const StudyTables& tables, std::int32_t jobs, const StopFlag& stop,
                                const CountVariations& count);

}  // namespace genvara
