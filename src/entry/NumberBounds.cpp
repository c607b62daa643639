#include "NumberBounds.h"

#include <fmt/format.h>

#include <cmath>
#include <optional>

#include "CodePage.h"

namespace genvara {
namespace {

constexpr std::string_view kPercent = "%";
/// Characters of a refused text that a sentence quotes.
constexpr std::size_t kMostQuoted = 24;

std::string BoundText(double bound, const NumberBounds& bounds, const EntryNumbers& numbers) {
    return bounds.decimals < 0 ? numbers.Plain(bound) : numbers.Fixed(bound, bounds.decimals);
}

/// Unit behind a number in a sentence.
std::string UnitText(const NumberBounds& bounds) {
    return bounds.unit == kPercent ? " %" : bounds.unit;
}

/// A caption as it reads in a sentence: one blank between words, and no unit in brackets.
std::string NameText(std::string_view caption) {
    std::string name;
    for (const char character : caption.substr(0, caption.find(" (%)"))) {
        if (character != ' ' || (!name.empty() && name.back() != ' ')) {
            name += character;
        }
    }
    return Trimmed(name);
}

std::string Quoted(const std::string& text) {
    const std::u32string characters = DecodeUtf8(text);
    if (characters.size() <= kMostQuoted) {
        return text;
    }
    std::string quoted;
    for (const char32_t character : characters.substr(0, kMostQuoted)) {
        AppendUtf8(quoted, character);
    }
    return quoted + "...";
}

bool IsWithin(double number, const NumberBounds& bounds) {
    return (bounds.above ? number > bounds.least : number >= bounds.least) && number <= bounds.most;
}

}  // namespace

std::string BoundsNote(const NumberBounds& bounds, const EntryNumbers& numbers) {
    const bool percent = bounds.unit == kPercent;
    return fmt::format("( {}{} - {}{} )", BoundText(bounds.least, bounds, numbers), percent ? kPercent : "",
                       BoundText(bounds.most, bounds, numbers), bounds.unit);
}

std::string WantedText(const NumberBounds& bounds, const EntryNumbers& numbers) {
    const std::string least = BoundText(bounds.least, bounds, numbers);
    const std::string unit = UnitText(bounds);
    if (!std::isfinite(bounds.most)) {
        return bounds.above ? fmt::format("Enter a number above {}{}.", least, unit)
                            : fmt::format("Enter {}{} or more.", least, unit);
    }
    const std::string most = BoundText(bounds.most, bounds, numbers);
    return bounds.above ? fmt::format("Enter a number above {}, up to {}{}.", least, most, unit)
                        : fmt::format("Enter {} to {}{}.", least, most, unit);
}

std::string Complaint(const NumberBounds& bounds, std::string_view text, const EntryNumbers& numbers) {
    const std::string trimmed = Trimmed(text);
    const std::optional<double> number = numbers.Read(trimmed);
    std::string_view fault;
    if (trimmed.empty()) {
        return fmt::format("{} is blank. {}", NameText(bounds.name), WantedText(bounds, numbers));
    }
    if (!number) {
        fault = "is no number";
    } else if (!IsWithin(*number, bounds)) {
        fault = "is out of range";
    } else if (bounds.whole && !IsWhole(*number)) {
        fault = "is no whole number";
    } else {
        return {};
    }
    return fmt::format("{}: {} {}. {}", NameText(bounds.name), Quoted(trimmed), fault,
                       WantedText(bounds, numbers));
}

}  // namespace genvara
