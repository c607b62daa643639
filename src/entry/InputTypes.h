#pragma once

#include <array>
#include <cstdint>

#include "CUPSLoad.h"

namespace genvara {

/// A row of the list of input stages of UPSs and drives.
struct InputTypeRow {
    std::int32_t code;  ///< of `input_type`
    const char* text;
};

/// In the list's order. A single-phase rectifier is none of them: it follows from the phases.
inline constexpr std::array<InputTypeRow, 4> kInputTypes{{{input_type::kSixPulse, "6 pulse"},
                                                          {input_type::kTwelvePulse, "12 pulse"},
                                                          {input_type::kAboveTwelvePulse, ">12 pulse"},
                                                          {input_type::kActive, "Active"}}};

/// Whether the list and an input filter are for loads of a connection code.
[[nodiscard]] constexpr bool HasInputTypes(std::int32_t phases) noexcept {
    return phases == 0;
}

/// The input stage that a load is stored with.
/// @param phases connection code of the load.
/// @param selected code of the list's row.
[[nodiscard]] constexpr std::int32_t StoredInputType(std::int32_t phases, std::int32_t selected) noexcept {
    return HasInputTypes(phases) ? selected : input_type::kSinglePhase;
}

}  // namespace genvara
