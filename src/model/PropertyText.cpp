#include "PropertyText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "NumberText.h"

namespace genvara {
namespace {

constexpr std::size_t kIsoLength = 19;
constexpr std::size_t kIsoMark = 10;

/// Bounds behind the words for what lies in them.
std::string WithBounds(std::string_view words, const Bounds& bounds) {
    if (bounds.HoldAnything()) {
        return std::string(words);
    }
    const bool between = bounds.least && bounds.greatest && !bounds.aboveLeast;
    return fmt::format("{}{}{}", words, between ? " from " : " ", BoundsText(bounds));
}

std::string NumbersText(std::span<const std::int32_t> numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        text += fmt::format("{}{}", i == 0 ? "" : i + 1 == numbers.size() ? " or " : ", ", numbers[i]);
    }
    return text;
}

std::string CodesText(const PropertyFacts& facts) {
    std::string text;
    for (const CodeName& code : facts.codes) {
        text += fmt::format("{}\"{}\"", text.empty() ? "" : ", ", code.Name());
    }
    return facts.range.HoldAnything()
               ? fmt::format("a code: {} or a number", text)
               : fmt::format("a code: {} or a number from {}", text, BoundsText(facts.range));
}

}  // namespace

std::optional<std::string_view> NameOfCode(const PropertyFacts& facts, std::int32_t code) {
    const auto found = std::ranges::find(facts.codes, code, &CodeName::Code);
    return found != facts.codes.end() ? std::optional(found->Name()) : std::nullopt;
}

std::optional<std::int32_t> CodeOfName(const PropertyFacts& facts, std::string_view name) {
    const auto found = std::ranges::find(facts.codes, name, &CodeName::Name);
    return found != facts.codes.end() ? std::optional(found->Code()) : std::nullopt;
}

std::string_view TypeName(PropertyType type) noexcept {
    constexpr std::array<std::string_view, 6> kNames{"number", "integer", "boolean", "text", "code", "date"};
    return kNames.at(static_cast<std::size_t>(type));
}

std::string BoundsText(const Bounds& bounds) {
    const auto text = [](double bound) { return RenderPlain(bound); };
    if (bounds.least && bounds.greatest) {
        return bounds.aboveLeast
                   ? fmt::format("above {} up to {}", text(*bounds.least), text(*bounds.greatest))
                   : fmt::format("{} to {}", text(*bounds.least), text(*bounds.greatest));
    }
    if (bounds.least) {
        return bounds.aboveLeast ? fmt::format("above {}", text(*bounds.least))
                                 : fmt::format("{} and above", text(*bounds.least));
    }
    return bounds.greatest ? fmt::format("{} and below", text(*bounds.greatest)) : std::string();
}

std::string ExpectedText(const PropertyFacts& facts) {
    switch (facts.type) {
        case PropertyType::Real:
            return WithBounds("a number", facts.range);
        case PropertyType::Whole:
            return facts.only.empty() ? WithBounds("a whole number", facts.range) : NumbersText(facts.only);
        case PropertyType::Truth:
            return "true or false";
        case PropertyType::Text:
            return facts.oneCharacter ? "a text of one character" : "a text";
        case PropertyType::Code:
            return CodesText(facts);
        case PropertyType::Moment:
            break;
    }
    return "a date as \"yyyy-mm-ddThh:mm:ss\"";
}

std::string ValueText(const PropertyFacts& facts, const PropertyValue& value) {
    struct Words {
        const PropertyFacts* facts;
        std::string operator()(double number) const { return RenderShortest(number); }
        std::string operator()(std::int32_t number) const {
            const std::optional<std::string_view> name = NameOfCode(*facts, number);
            return name ? std::string(*name) : fmt::format("{}", number);
        }
        std::string operator()(bool truth) const { return truth ? "true" : "false"; }
        std::string operator()(const std::string& text) const { return text; }
        std::string operator()(const DateTime& moment) const { return RenderIso(moment); }
    };
    return std::visit(Words{&facts}, value);
}

std::optional<DateTime> ParseIso(std::string_view text) {
    if (text.size() != kIsoLength || text[kIsoMark] != 'T') {
        return std::nullopt;
    }
    std::string withBlank(text);
    withBlank[kIsoMark] = ' ';
    return ParseDateTime(withBlank);
}

}  // namespace genvara
