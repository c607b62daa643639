#pragma once

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace genvara {

/// A date and time of day without a zone, to the second. A new one is the zero date.
struct DateTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;

    auto operator<=>(const DateTime&) const = default;  // NOLINT(modernize-use-nullptr): none is meant
};

/// Tells the present time; handed to whoever needs it, so that files and reports can be reproduced.
using Clock = std::function<DateTime()>;

/// The user's local time.
[[nodiscard]] DateTime LocalTime();

/// True for a day of the calendar and a time of day; years 100 to 9999.
[[nodiscard]] bool IsValid(const DateTime& moment) noexcept;

/// "yyyy-mm-ddThh:mm:ss".
[[nodiscard]] std::string RenderIso(const DateTime& moment);

/// "yyyy-mm-dd hh:mm:ss", or "yyyy-mm-dd" alone for a value at midnight, as project files hold it.
[[nodiscard]] std::string RenderFileDate(const DateTime& moment);

/// The pattern "mmmm d, yyyy", with English month names.
[[nodiscard]] std::string RenderLongDate(const DateTime& moment);

/// The pattern "hh:mm:ss AM/PM".
[[nodiscard]] std::string RenderClockTime(const DateTime& moment);

/// Reads "yyyy-mm-dd" or "yyyy-mm-dd hh:mm:ss"; nothing for any other text or a date that does not exist.
[[nodiscard]] std::optional<DateTime> ParseDateTime(std::string_view text);

}  // namespace genvara
