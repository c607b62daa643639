#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "EntryNumbers.h"
#include "NumberBounds.h"

/// What the power system panel and the defaults dialog decide about a site's figures.
namespace genvara {

/// A figure that is stored in SI and entered in the units that the user has chosen.
enum class SiteFigure : std::uint8_t {
    Altitude,  ///< m or ft
    AmbTemp    ///< °C or °F
};

/// String of the unit that a figure is shown in.
[[nodiscard]] std::int32_t UnitString(SiteFigure figure, bool metric) noexcept;

/// A shown figure in SI.
[[nodiscard]] double InSI(SiteFigure figure, double shown, bool metric) noexcept;

/// A figure as it is shown, with at most one decimal.
/// @param stored in m or °C.
[[nodiscard]] std::string SiteText(SiteFigure figure, double stored, bool metric,
                                   const EntryNumbers& numbers);

/// The text of a figure once the other unit system is chosen; nothing for a text that is no number.
[[nodiscard]] std::optional<std::string> ConvertedText(SiteFigure figure, std::string_view text,
                                                       bool toMetric, const EntryNumbers& numbers);

/// One sentence on why a text is refused; empty for one that the site takes.
/// @param name caption of the field.
[[nodiscard]] std::string SiteComplaint(SiteFigure figure, const std::string& name, std::string_view text,
                                        bool metric, const EntryNumbers& numbers);

}  // namespace genvara
