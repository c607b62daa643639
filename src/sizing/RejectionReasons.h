#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// Bits of `RejectionReason`.
namespace rejection {
inline constexpr std::int32_t kEngineStart = 1;
inline constexpr std::int32_t kRating = 2;
inline constexpr std::int32_t kPhaseLoading = 4;
inline constexpr std::int32_t kMaxLoading = 8;
inline constexpr std::int32_t kAlternatorStart = 16;
inline constexpr std::int32_t kDistortion = 32;
/// Marks a set below its minimum loading, which is dropped: no text, and no record keeps it.
inline constexpr std::int32_t kMinLoading = 64;
inline constexpr std::int32_t kFrequencyDip = 128;
inline constexpr std::int32_t kOneStepCapability = 256;
inline constexpr std::int32_t kVoltageDip = 512;
}  // namespace rejection

struct RejectionText {
    std::int32_t bit;
    std::string_view text;
};

/// The reasons in the order in which they are printed, which is not the order of the bits.
inline constexpr std::array<RejectionText, 9> kRejectionTexts{{
    {rejection::kEngineStart, "The engine does not have enough starting power."},
    {rejection::kAlternatorStart, "The alternator does not have enough kVA to start at least one load step."},
    {rejection::kRating, "The genset rating has been exceeded."},
    {rejection::kPhaseLoading, "At least one phase of the alternator is overloaded."},
    {rejection::kMaxLoading, "The user specified max. loading was exceeded."},
    {rejection::kDistortion, "The allowed VTHD on at least one phase was exceeded."},
    {rejection::kVoltageDip, "The allowed voltage dip was exceeded on at least one load step."},
    {rejection::kFrequencyDip, "The allowed frequency dip was exceeded on at least one load step."},
    {rejection::kOneStepCapability, "At least one load step exceeded the genset's one step load capability."},
}};

/// Texts of the set bits, in the order of the table.
[[nodiscard]] inline std::vector<std::string> RejectionTexts(std::int32_t reason) {
    std::vector<std::string> texts;
    for (const RejectionText& row : kRejectionTexts) {
        if ((reason & row.bit) != 0) {
            texts.emplace_back(row.text);
        }
    }
    return texts;
}

}  // namespace genvara
