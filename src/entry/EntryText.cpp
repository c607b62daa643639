#include "EntryText.h"

#include <fmt/format.h>

#include <optional>

#include "KeyFilters.h"
#include "LanguageErrors.h"
#include "NumberText.h"

namespace genvara {
namespace {

constexpr std::string_view kSource = "EntryText";

}  // namespace

std::string Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

double NumberOf(std::string_view text, std::string_view separator) {
    const std::optional<double> number = ParseNumber(WithPoint(text, separator));
    if (!number) {
        RaiseTypeMismatch(kSource);
    }
    return *number;
}

std::int32_t IntegerOf(std::string_view text, std::string_view separator) {
    const std::optional<std::int32_t> integer = RoundToInteger(NumberOf(text, separator));
    if (!integer) {
        RaiseOverflow(kSource);
    }
    return *integer;
}

std::string WholeNumberText(const std::string& text, std::string_view separator) {
    const std::optional<double> number = ParseNumber(WithPoint(text, separator));
    const std::optional<std::int32_t> integer = number ? RoundToInteger(*number) : std::nullopt;
    return integer ? std::to_string(*integer) : text;
}

std::string Shown(std::string number, std::string_view separator) {
    const std::size_t point = number.find('.');
    return point == std::string::npos ? number : number.replace(point, 1, separator);
}

std::string BoundsNote(std::string_view least, std::string_view most, std::string_view unit) {
    return fmt::format("( {} - {}{} )", least, most, unit);
}

}  // namespace genvara
