#include "DateTime.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <ctime>

namespace genvara {
namespace {

constexpr std::array<std::string_view, 12> kMonthNames{"January",   "February", "March",    "April",
                                                       "May",       "June",     "July",     "August",
                                                       "September", "October",  "November", "December"};

/// One number of a fixed width in a date text.
struct DateField {
    std::size_t position;
    std::size_t width;
    int DateTime::*target;
};

constexpr std::array<DateField, 6> kDateFields{{{0, 4, &DateTime::year},
                                                {5, 2, &DateTime::month},
                                                {8, 2, &DateTime::day},
                                                {11, 2, &DateTime::hour},
                                                {14, 2, &DateTime::minute},
                                                {17, 2, &DateTime::second}}};

constexpr std::string_view kDateShape = "0000-00-00 00:00:00";
constexpr std::size_t kDateOnlyLength = 10;

bool HasDateShape(std::string_view text) {
    const bool lengthFits = text.size() == kDateShape.size() || text.size() == kDateOnlyLength;
    return lengthFits && std::equal(text.begin(), text.end(), kDateShape.begin(), [](char given, char shape) {
               return shape == '0' ? given >= '0' && given <= '9' : given == shape;
           });
}

}  // namespace

DateTime LocalTime() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    return {.year = local.tm_year + 1900,
            .month = local.tm_mon + 1,
            .day = local.tm_mday,
            .hour = local.tm_hour,
            .minute = local.tm_min,
            .second = std::min(local.tm_sec, 59)};
}

bool IsValid(const DateTime& moment) noexcept {
    const std::chrono::year_month_day date{std::chrono::year{moment.year},
                                           std::chrono::month{static_cast<unsigned>(moment.month)},
                                           std::chrono::day{static_cast<unsigned>(moment.day)}};
    const bool timeFits = moment.hour >= 0 && moment.hour < 24 && moment.minute >= 0 && moment.minute < 60 &&
                          moment.second >= 0 && moment.second < 60;
    return moment.year >= 100 && moment.year <= 9999 && date.ok() && timeFits;
}

std::string RenderIso(const DateTime& moment) {
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", moment.year, moment.month, moment.day,
                       moment.hour, moment.minute, moment.second);
}

std::string RenderFileDate(const DateTime& moment) {
    const std::string date = fmt::format("{:04}-{:02}-{:02}", moment.year, moment.month, moment.day);
    if (moment.hour == 0 && moment.minute == 0 && moment.second == 0) {
        return date;
    }
    return fmt::format("{} {:02}:{:02}:{:02}", date, moment.hour, moment.minute, moment.second);
}

std::string RenderLongDate(const DateTime& moment) {
    const auto month = static_cast<std::size_t>(std::clamp(moment.month, 1, 12) - 1);
    return fmt::format("{} {}, {:04}", kMonthNames.at(month), moment.day, moment.year);
}

std::string RenderClockTime(const DateTime& moment) {
    const int hour = moment.hour % 12 == 0 ? 12 : moment.hour % 12;
    return fmt::format("{:02}:{:02}:{:02} {}", hour, moment.minute, moment.second,
                       moment.hour < 12 ? "AM" : "PM");
}

std::optional<DateTime> ParseDateTime(std::string_view text) {
    if (!HasDateShape(text)) {
        return std::nullopt;
    }
    DateTime moment;
    for (const DateField& field : kDateFields) {
        if (field.position < text.size()) {
            const char* first = text.data() + field.position;
            std::from_chars(first, first + field.width, moment.*field.target);
        }
    }
    return IsValid(moment) ? std::optional(moment) : std::nullopt;
}

}  // namespace genvara
