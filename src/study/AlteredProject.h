#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "Order.h"
#include "Variation.h"

/// Projects with something changed in them.
namespace genvara {

/// What is changed, in the order of the table of advice.
enum class AdviceKind : std::uint8_t { Order, Split, Starter, Rectifier, Limit, Rise, Sets, Fuel };

/// The kinds' names, by their order.
inline constexpr std::array<std::string_view, 8> kAdviceKinds{"order", "split", "starter", "rectifier",
                                                              "limit", "rise",  "sets",    "fuel"};

[[nodiscard]] constexpr std::string_view NameOf(AdviceKind kind) noexcept {
    return kAdviceKinds[static_cast<std::size_t>(kind)];
}

/// A load that is moved to a step of its own.
struct LoadMove {
    LoadPlace load;
    bool isBefore = true;  ///< right before its step, or right behind it
};

/// One change of a project, in the numbers of the project as given: a member, a load that moves, or an order.
struct Alteration {
    AdviceKind kind = AdviceKind::Order;
    std::optional<MemberValue> member;
    std::optional<LoadMove> move;
    std::optional<LoadOrder> order;
    std::size_t place = 0;  ///< among those of its kind, in the order of the profile
};

/// The members that alterations set.
[[nodiscard]] std::vector<MemberValue> MembersOf(std::span<const Alteration> alterations);
/// Whether one of them leaves loads in other steps.
[[nodiscard]] bool MovesLoads(std::span<const Alteration> alterations);
/// The project with its loads in other steps: those of an order, or those that moves make. Members stay.
[[nodiscard]] StudyProject Moved(const StudyProject& project, std::span<const Alteration> alterations);

/// The project with one or two things changed, saved and opened again.
/// @throws RaisedError of a setter or of the reader.
[[nodiscard]] StudyProject Altered(const StudyProject& project, std::span<const Alteration> alterations,
                                   const EntryRules& rules);

}  // namespace genvara
