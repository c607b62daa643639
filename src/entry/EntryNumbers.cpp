#include "EntryNumbers.h"

#include <langinfo.h>
#include <locale.h>  // NOLINT: newlocale is not part of <clocale>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "CodePage.h"
#include "Kilo.h"
#include "LanguageErrors.h"
#include "NumberText.h"

namespace genvara {
namespace {

constexpr std::string_view kSource = "EntryNumbers";
/// Largest difference between a number and the integer that it counts as.
constexpr double kWholeTolerance = 1e-6;

/// Blanks of every width, tabs, line ends, and characters without any width, as tables and pages have them.
bool IsBlank(char32_t character) {
    constexpr std::u32string_view kBlanks =
        U" \t\r\n\v\f\u00A0\u1680\u2028\u2029\u202F\u205F\u2060\u3000\uFEFF";
    return kBlanks.find(character) != std::u32string_view::npos ||
           (character >= U'\u2000' && character <= U'\u200F');
}

bool IsDigit(char32_t character) {
    return character >= U'0' && character <= U'9';
}

std::u32string WithoutBlanksAround(const std::u32string& text) {
    const auto first = std::ranges::find_if_not(text, IsBlank);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), IsBlank).base();
    return first < last ? std::u32string(first, last) : std::u32string();
}

/// Whether a character stands between groups of digits. One blank stands for any other.
bool IsGrouping(char32_t character, const std::u32string& grouping) {
    if (grouping.size() != 1) {
        return false;
    }
    return character == grouping.front() || (IsBlank(character) && IsBlank(grouping.front()));
}

/// Whether the lengths of groups are those of a grouped number: three digits at the end, before that three
/// or, as in India, two.
bool AreGroups(const std::vector<std::size_t>& lengths) {
    constexpr std::size_t kGroup = 3;
    const bool between =
        lengths.size() < 2 || std::all_of(lengths.begin() + 1, lengths.end() - 1,
                                          [](std::size_t length) { return length == kGroup || length == 2; });
    return lengths.size() > 1 && between && lengths.back() == kGroup && lengths.front() > 0 &&
           lengths.front() <= kGroup;
}

/// A number without its grouping; as it stands if it has none, or if that is none.
std::u32string WithoutGrouping(const std::u32string& text, const NumberSigns& signs) {
    const std::u32string grouping = DecodeUtf8(signs.grouping);
    const std::size_t whole = std::min(text.find(DecodeUtf8(signs.decimal)), text.size());
    std::u32string result;
    std::vector<std::size_t> lengths{0};
    for (std::size_t i = 0; i < whole; ++i) {
        if (IsGrouping(text[i], grouping)) {
            lengths.push_back(0);
            continue;
        }
        lengths.back() += IsDigit(text[i]) ? 1U : 0U;
        result += text[i];
    }
    return AreGroups(lengths) ? result + text.substr(whole) : text;
}

std::string LocaleSign(locale_t locale, nl_item item) {
    return nl_langinfo_l(item, locale);
}

}  // namespace

NumberSigns UserNumberSigns() {
    locale_t locale = newlocale(LC_NUMERIC_MASK, "", nullptr);
    if (locale == nullptr) {
        return {};
    }
    NumberSigns signs{.decimal = LocaleSign(locale, RADIXCHAR), .grouping = LocaleSign(locale, THOUSEP)};
    freelocale(locale);
    if (signs.decimal.empty()) {
        signs.decimal = ".";
    }
    return signs;
}

std::string DecimalSeparator() {
    return UserNumberSigns().decimal;
}

bool IsWhole(double number) noexcept {
    return std::abs(number - std::nearbyint(number)) < kWholeTolerance;
}

std::string Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

EntryNumbers::EntryNumbers(NumberSigns signs) : m_signs(std::move(signs)) {}

std::optional<double> EntryNumbers::Read(std::string_view text) const {
    if (m_signs.decimal.empty() || m_signs.decimal == ".") {
        return ParseNumber(text);
    }
    // A point is no decimal separator where another one is, and so no part of a number.
    if (text.find('.') != std::string_view::npos) {
        return std::nullopt;
    }
    std::string pointed(text);
    const std::size_t place = pointed.find(m_signs.decimal);
    if (place != std::string::npos) {
        pointed.replace(place, m_signs.decimal.size(), ".");
    }
    return ParseNumber(pointed);
}

double EntryNumbers::Number(std::string_view text) const {
    const std::optional<double> number = Read(text);
    if (!number) {
        RaiseTypeMismatch(kSource);
    }
    return *number;
}

double EntryNumbers::FromKilo(std::string_view text) const {
    return Finite(Number(text) * kPerKilo, kSource);
}

std::int32_t EntryNumbers::Integer(std::string_view text) const {
    const std::optional<std::int32_t> integer = RoundToInteger(Number(text));
    if (!integer) {
        RaiseOverflow(kSource);
    }
    return *integer;
}

std::int32_t EntryNumbers::Whole(std::string_view text) const {
    const std::int32_t nearest = Integer(text);
    if (!IsWhole(Number(text))) {
        RaiseTypeMismatch(kSource);
    }
    return nearest;
}

std::string EntryNumbers::Plain(double value) const {
    return Shown(RenderPlain(value));
}

std::string EntryNumbers::Fixed(double value, int decimals) const {
    return Shown(RenderFixed(value, decimals));
}

std::string EntryNumbers::Rounded(double value) const {
    return Plain(ParseNumber(RenderFixed(value, 1)).value_or(value));
}

std::string EntryNumbers::Kilo(double power) const {
    return Plain(power / kPerKilo);
}

std::string EntryNumbers::WholeText(const std::string& text) const {
    const std::optional<double> number = Read(text);
    const std::optional<std::int32_t> integer = number ? RoundToInteger(*number) : std::nullopt;
    return integer ? std::to_string(*integer) : text;
}

std::string EntryNumbers::AsTyped(std::string_view text) const {
    constexpr char32_t kMinusSign = U'\u2212';
    std::u32string typed = WithoutGrouping(WithoutBlanksAround(DecodeUtf8(text)), m_signs);
    if (typed.starts_with(kMinusSign)) {
        typed.front() = U'-';
    }
    std::string result;
    for (const char32_t character : typed) {
        AppendUtf8(result, character);
    }
    return result;
}

std::string EntryNumbers::Shown(std::string rendered) const {
    const std::size_t point = rendered.find('.');
    return point == std::string::npos ? rendered : rendered.replace(point, 1, m_signs.decimal);
}

}  // namespace genvara
