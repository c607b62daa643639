#include "TableNumbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "CodePage.h"
#include "EntryNumbers.h"

namespace genvara {
namespace {

constexpr std::size_t kGroup = 3;  // digits between signs that part thousands

/// Characters that stand for another one in numbers.
constexpr std::array<std::pair<char32_t, char>, 9> kTwins{{{U'\u00A0', ' '},
                                                           {U'\u202F', ' '},
                                                           {U'\u2009', ' '},
                                                           {U'\u2007', ' '},
                                                           {U'\u2019', '\''},
                                                           {U'\u2212', '-'},
                                                           {U'\t', ' '},
                                                           {U'\r', ' '},
                                                           {U'\n', ' '}}};

/// A cell in plain signs; other characters stay.
std::string InPlainSigns(std::string_view cell) {
    std::string plain;
    for (const char32_t character : DecodeUtf8(cell)) {
        const auto* const twin = std::ranges::find(kTwins, character, &std::pair<char32_t, char>::first);
        AppendUtf8(plain, twin == kTwins.end() ? character : static_cast<char32_t>(twin->second));
    }
    return Trimmed(plain);
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Where the number of a cell ends and its unit begins.
std::size_t LengthOfNumber(std::string_view cell) {
    constexpr std::string_view kSigns = "0123456789.,' +-";
    std::size_t end = std::min(cell.find_first_not_of(kSigns), cell.size());
    if (end > 0 && end < cell.size() && (cell[end] == 'e' || cell[end] == 'E')) {
        std::size_t exponent = end + 1;
        if (exponent < cell.size() && (cell[exponent] == '+' || cell[exponent] == '-')) {
            ++exponent;
        }
        const std::size_t last = std::min(cell.find_first_not_of("0123456789", exponent), cell.size());
        end = last > exponent ? last : end;
    }
    return end;
}

/// How a number is written, as far as it tells.
struct Writing {
    std::string decimal{};   ///< empty if it has no decimals
    std::string grouping{};  ///< empty if it has no groups
    bool ambiguous = false;  ///< the one sign may be either; it stands in `grouping`
};

/// Whether the sign at a place may part thousands: up to three digits before, exactly three behind.
bool MayGroup(std::string_view number, std::size_t at) {
    const std::string_view before = number.substr(0, at);
    const std::size_t first = std::min(before.find_first_of("0123456789"), before.size());
    const std::string_view digits = before.substr(first);
    const std::string_view behind = number.substr(at + 1);
    return !digits.empty() && digits.size() <= kGroup && digits.front() != '0' && behind.size() == kGroup &&
           std::ranges::all_of(behind, IsDigit);
}

Writing WritingOf(std::string_view number) {
    const auto count = [&](char sign) { return std::ranges::count(number, sign); };
    const std::string other = count(' ') > 0 ? " " : count('\'') > 0 ? "'" : "";
    const auto points = count('.');
    const auto commas = count(',');
    if (points > 0 && commas > 0) {
        const bool pointLast = number.rfind('.') > number.rfind(',');
        return {.decimal = pointLast ? "." : ",", .grouping = pointLast ? "," : "."};
    }
    const std::string sign = points > 0 ? "." : ",";
    if (points + commas == 0) {
        return {.grouping = other};
    }
    if (!other.empty()) {
        return {.decimal = sign, .grouping = other};
    }
    if (points + commas > 1) {
        return {.grouping = sign};
    }
    return MayGroup(number, number.find(sign)) ? Writing{.grouping = sign, .ambiguous = true}
                                               : Writing{.decimal = sign};
}

std::optional<double> NumberOf(std::string_view text, const Writing& writing) {
    const std::string fallback = writing.grouping == "." ? "," : ".";
    const EntryNumbers numbers(NumberSigns{.decimal = writing.decimal.empty() ? fallback : writing.decimal,
                                           .grouping = writing.grouping});
    return numbers.Read(numbers.AsTyped(text));
}

}  // namespace

void TableNumbers::Learn(std::string_view cell) {
    const std::string plain = InPlainSigns(cell);
    const std::string number = Trimmed(std::string_view(plain).substr(0, LengthOfNumber(plain)));
    const Writing writing = WritingOf(number);
    if (writing.ambiguous || !NumberOf(number, writing)) {
        return;
    }
    // A sign that parts thousands leaves the decimals to the other.
    m_points = m_points || writing.decimal == "." || writing.grouping == ",";
    m_commas = m_commas || writing.decimal == "," || writing.grouping == ".";
}

std::optional<char> TableNumbers::Decimal() const noexcept {
    if (m_points != m_commas) {
        return m_points ? '.' : ',';
    }
    return m_points ? std::nullopt : m_usual;
}

TableFigure TableNumbers::Read(std::string_view cell) const {
    const std::string plain = InPlainSigns(cell);
    const std::size_t length = LengthOfNumber(plain);
    const std::string number = Trimmed(std::string_view(plain).substr(0, length));
    TableFigure figure{.unit = Trimmed(std::string_view(plain).substr(length))};
    Writing writing = WritingOf(number);
    if (writing.ambiguous) {
        const std::optional<char> decimal = Decimal();
        if (!decimal) {
            figure.fault = NumberFault::Ambiguous;
            return figure;
        }
        if (writing.grouping.front() == *decimal) {
            writing = {.decimal = writing.grouping};
        }
    }
    const std::optional<double> read = NumberOf(number, writing);
    figure.number = read.value_or(0.0);
    figure.fault = read ? NumberFault::None : NumberFault::NoNumber;
    return figure;
}

}  // namespace genvara
