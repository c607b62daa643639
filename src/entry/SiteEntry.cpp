#include "SiteEntry.h"

#include <array>
#include <cstddef>

#include "MemberBounds.h"
#include "StringTable.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

using Conversion = double (*)(double) noexcept;

/// Multiplied before it is divided: so the upper end of the range, 150.8 °F, comes out as 66 °C and not a
/// rounding error above it, which would be refused.
double StoredCelsius(double fahrenheit) noexcept {
    return (fahrenheit - 32.0) * 5.0 / 9.0;
}

struct FigureRow {
    std::string_view member;
    std::int32_t metricUnit;  ///< string
    std::int32_t englishUnit;
    Conversion toSI;       ///< of what is stored
    Conversion shownInSI;  ///< of what is shown anew
    Conversion toEnglish;
};

/// By figure.
constexpr std::array<FigureRow, 2> kFigures{
    {{"Altitude", 500, 501, FeetToMeters, FeetToMeters, MetersToFeet},
     {"AmbTemp", 502, 503, StoredCelsius, FahrenheitToCelsius, CelsiusToFahrenheit}}};

const FigureRow& RowOf(SiteFigure figure) noexcept {
    return kFigures[static_cast<std::size_t>(figure)];
}

double InUnits(SiteFigure figure, double stored, bool metric) noexcept {
    return metric ? stored : RowOf(figure).toEnglish(stored);
}

}  // namespace

std::int32_t UnitString(SiteFigure figure, bool metric) noexcept {
    return metric ? RowOf(figure).metricUnit : RowOf(figure).englishUnit;
}

double InSI(SiteFigure figure, double shown, bool metric) noexcept {
    return metric ? shown : RowOf(figure).toSI(shown);
}

std::string SiteText(SiteFigure figure, double stored, bool metric, const EntryNumbers& numbers) {
    return numbers.Rounded(InUnits(figure, stored, metric));
}

std::optional<std::string> ConvertedText(SiteFigure figure, std::string_view text, bool toMetric,
                                         const EntryNumbers& numbers) {
    const std::optional<double> shown = numbers.Read(text);
    if (!shown) {
        return std::nullopt;
    }
    const FigureRow& row = RowOf(figure);
    return numbers.Rounded((toMetric ? row.shownInSI : row.toEnglish)(*shown));
}

std::string SiteComplaint(SiteFigure figure, const std::string& name, std::string_view text, bool metric,
                          const EntryNumbers& numbers) {
    const NumberBounds inSI = SiteBounds(RowOf(figure).member);
    const std::optional<double> shown = numbers.Read(text);
    if (shown) {
        const double stored = InSI(figure, *shown, metric);
        if (stored >= inSI.least && stored <= inSI.most) {
            return {};
        }
    }
    const auto bound = [&](double stored) {
        return numbers.Number(SiteText(figure, stored, metric, numbers));
    };
    return Complaint({.name = name,
                      .least = bound(inSI.least),
                      .most = bound(inSI.most),
                      .unit = ' ' + std::string(StringTable::Text(UnitString(figure, metric)))},
                     text, numbers);
}

}  // namespace genvara
