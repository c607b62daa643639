#include "NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>

namespace genvara {
namespace {

constexpr int kSignificantDigits = 15;
/// Decimal exponent from which a plain number is written with an exponent: 16 digits would be needed.
constexpr int kFirstLongExponent = 15;
/// Most places after the point that a plain number shows before it changes to an exponent.
constexpr int kMostPlaces = 15;

/// A finite value as d.ddd... x 10^exponent, 15 digits without the point.
struct Decimal {
    std::string digits;
    int exponent = 0;
};

Decimal ToDecimal(double magnitude) {
    // "d.dddddddddddddde+ddd", without a string of its own: reports render numbers by the hundred thousand.
    constexpr std::size_t kLongest = 32;
    std::array<char, kLongest> buffer{};
    const char* const begin = buffer.data();
    const char* const end =
        fmt::format_to_n(buffer.data(), buffer.size(), "{:.{}e}", magnitude, kSignificantDigits - 1).out;
    const char* const mark = std::find(begin, end, 'e');
    Decimal decimal;
    decimal.digits.assign(1, *begin).append(begin + 2, mark);
    std::from_chars(mark + (mark[1] == '+' ? 2 : 1), end, decimal.exponent);
    return decimal;
}

/// Adds one in the last place; a carry out of the first digit lengthens the text.
void Increment(std::string& digits) {
    const std::size_t last = digits.find_last_not_of('9');
    std::fill(
        last == std::string::npos ? digits.begin() : digits.begin() + static_cast<std::ptrdiff_t>(last) + 1,
        digits.end(), '0');
    if (last == std::string::npos) {
        digits.insert(0, 1, '1');
    } else {
        ++digits[last];
    }
}

/// The value times 10^decimals as digits, rounded half away from zero.
std::string ScaledDigits(const Decimal& value, int decimals) {
    const int kept = value.exponent + 1 + decimals;
    if (kept < 0) {
        return "0";
    }
    const auto count = static_cast<std::size_t>(kept);
    if (count >= value.digits.size()) {
        return value.digits + std::string(count - value.digits.size(), '0');
    }
    std::string digits = value.digits.substr(0, count);
    if (value.digits[count] >= '5') {
        Increment(digits);
    }
    return digits.empty() ? "0" : digits;
}

std::string WithSign(bool negative, const std::string& text) {
    const bool isZero = text.find_first_not_of("0.") == std::string::npos;
    return negative && !isZero ? "-" + text : text;
}

std::string RenderWithExponent(const std::string& digits, int exponent) {
    const std::string fraction = digits.size() > 1 ? "." + digits.substr(1) : "";
    return fmt::format("{}{}E{}{:02}", digits[0], fraction, exponent < 0 ? '-' : '+', std::abs(exponent));
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// True for [digits][.digits][E[sign]digits] with at least one digit before the exponent.
bool IsDecimalNumber(std::string_view text) {
    const auto skipDigits = [&text] {
        const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count;
    };
    std::size_t digits = skipDigits();
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        digits += skipDigits();
    }
    if (digits == 0) {
        return false;
    }
    if (text.starts_with('e') || text.starts_with('E')) {
        text.remove_prefix(1);
        if (text.starts_with('+') || text.starts_with('-')) {
            text.remove_prefix(1);
        }
        if (skipDigits() == 0) {
            return false;
        }
    }
    return text.empty();
}

/// Reads digits that a double cannot hold: too small counts as zero, too large as unreadable.
std::optional<double> ReadBeyondRange(std::string_view text) {
    const std::size_t mark = text.find_first_of("eE");
    const bool negativeExponent = mark != std::string_view::npos && text.substr(mark + 1).starts_with('-');
    const bool belowOne = text.starts_with('.') || text.starts_with('0');
    return negativeExponent || (belowOne && mark == std::string_view::npos) ? std::optional(0.0)
                                                                            : std::nullopt;
}

}  // namespace

std::string RenderFixed(double value, int decimals) {
    if (!std::isfinite(value)) {
        return fmt::format("{}", value);
    }
    std::string digits = ScaledDigits(ToDecimal(std::abs(value)), decimals);
    const auto places = static_cast<std::size_t>(decimals);
    if (digits.size() <= places) {
        digits.insert(0, places + 1 - digits.size(), '0');
    }
    if (places > 0) {
        digits.insert(digits.size() - places, 1, '.');
    }
    return WithSign(value < 0.0, digits);
}

std::string RenderPlain(double value) {
    if (!std::isfinite(value)) {
        return fmt::format("{}", value);
    }
    if (value == 0.0) {
        return "0";
    }
    Decimal decimal = ToDecimal(std::abs(value));
    decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);
    const int count = static_cast<int>(decimal.digits.size());
    const int places = std::max(0, count - 1 - decimal.exponent);
    const std::string sign = value < 0.0 ? "-" : "";
    if (decimal.exponent >= kFirstLongExponent || places > kMostPlaces) {
        return sign + RenderWithExponent(decimal.digits, decimal.exponent);
    }
    return sign + RenderFixed(std::abs(value), places);
}

std::string RenderShortest(double value) {
    return fmt::format("{}", value);
}

std::optional<double> ParseNumber(std::string_view text) {
    text = TrimBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    if (!IsDecimalNumber(text)) {
        return std::nullopt;
    }
    double magnitude = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (result.ec != std::errc{}) {
        const std::optional<double> beyond = ReadBeyondRange(text);
        if (!beyond) {
            return std::nullopt;
        }
        magnitude = *beyond;
    }
    return negative ? -magnitude : magnitude;
}

std::optional<std::int32_t> RoundToInteger(double value) noexcept {
    const double rounded = std::nearbyint(value);
    constexpr auto kLowest = static_cast<double>(std::numeric_limits<std::int32_t>::min());
    constexpr auto kHighest = static_cast<double>(std::numeric_limits<std::int32_t>::max());
    if (!(rounded >= kLowest && rounded <= kHighest)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

}  // namespace genvara
