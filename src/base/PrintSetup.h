#pragma once

#include <cstdint>
#include <string>

#include "clsTRX_Registry.h"

namespace genvara {

/// How the user wants reports on paper. Lengths are twips (1/1440 inch); the defaults are the reports' own
/// page: Letter, upright, 3/4 inch at the sides and 1/2 above and below.
struct PrintSetup {
    std::string printer{};       ///< its name; empty for the desktop's own choice
    std::int32_t width = 12240;  ///< of the paper as it lies
    std::int32_t height = 15840;
    std::int32_t left = 1080;  ///< margins
    std::int32_t right = 1080;
    std::int32_t top = 720;
    std::int32_t bottom = 720;

    bool operator==(const PrintSetup&) const = default;
};

/// What a report needs of its paper [twip].
namespace paper_limits {
/// Printers leave about 4 mm blank at each edge; 5 mm are 283 twips.
inline constexpr std::int32_t kLeastMargin = 283;
/// Holds the line at the foot of the pages: 10 mm.
inline constexpr std::int32_t kLeastBottom = 567;
/// Half of what a report is wide at true size: its letters of 10 points are then 5 points high.
inline constexpr std::int32_t kLeastTextWidth = 5040;
/// A section's rule and heading and some lines: 2 1/2 inches.
inline constexpr std::int32_t kLeastTextHeight = 3600;
/// The widest that rich text knows: 22 inches.
inline constexpr std::int32_t kLongestSide = 31680;
}  // namespace paper_limits

/// What of a setup is refused.
enum class PrintFault : std::uint8_t { kNone, kPaper, kMargins, kTextWidth, kTextHeight };
[[nodiscard]] PrintFault FaultOf(const PrintSetup& setup) noexcept;

/// The setup in the settings store, under a key of its own.
class PrintSettings {
  public:
    /// @param baseSubkey key below which this version keeps its settings. The store outlives the object.
    PrintSettings(clsTRX_Registry& registry, const std::string& baseSubkey);

    /// The setup; the defaults where there is none, it cannot be read, or is refused.
    [[nodiscard]] PrintSetup Read() const;

    /// @throws RaisedError of the settings store.
    void Write(const PrintSetup& setup) const;

  private:
    void Open(bool create) const;

    clsTRX_Registry* m_registry;
    std::string m_subkey;
};

}  // namespace genvara
