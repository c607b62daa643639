#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "Load.h"

namespace genvara {

/// What tells a kind from the others in lists of kinds and in its entry form.
struct LoadKind {
    std::int32_t loadType;          ///< code of `load_type`
    std::int32_t listString;        ///< its name in lists
    std::string_view picture;       ///< name of the drawing beside that
    std::string_view form;          ///< name of the form
    std::string_view title;         ///< of its window
    std::string_view defaultName;   ///< of a load whose name is left blank
    std::int32_t balancedString;    ///< caption of the button of phases code 0
    std::string_view blankMessage;  ///< for an empty field where a number belongs
    std::string_view notANumber;    ///< for any other text there
};

/// Strings of what all forms show.
namespace form_strings {
inline constexpr std::int32_t kStepNumber = 620;
inline constexpr std::int32_t kQuantity = 621;
inline constexpr std::int32_t kName = 622;
inline constexpr std::int32_t kDescription = 623;
inline constexpr std::int32_t kThreePhase = 624;
inline constexpr std::int32_t kPhaseA = 625;
inline constexpr std::int32_t kPhaseB = 626;
inline constexpr std::int32_t kPhaseC = 627;
inline constexpr std::int32_t kEvenlyDistributed = 628;
inline constexpr std::int32_t kPhases = 142;
}  // namespace form_strings

/// All kinds, in the order of their codes.
[[nodiscard]] std::span<const LoadKind> LoadKinds() noexcept;

/// The kind of a code; null for a code of no kind.
[[nodiscard]] const LoadKind* FindLoadKind(std::int32_t loadType) noexcept;

/// Which phase buttons a new load is offered, and which is selected.
struct PhaseChoice {
    bool single = false;        ///< nothing but phase A is offered
    std::int32_t selected = 0;  ///< connection code
};

/// The choice in a system of so many phases; anything but 3 counts as one.
[[nodiscard]] constexpr PhaseChoice PhasesOffered(std::int32_t systemPhases) noexcept {
    return systemPhases == 3 ? PhaseChoice{.single = false, .selected = 0}
                             : PhaseChoice{.single = true, .selected = 1};
}

}  // namespace genvara
