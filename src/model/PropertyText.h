#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Property.h"

/// Values of members as text, and what of it is accepted in words.
namespace genvara {

/// The name of a code, if it has one.
[[nodiscard]] std::optional<std::string_view> NameOfCode(const PropertyFacts& facts, std::int32_t code);
/// The code of a name, letter for letter.
[[nodiscard]] std::optional<std::int32_t> CodeOfName(const PropertyFacts& facts, std::string_view name);

/// "number", "integer", "boolean", "text", "code" or "date".
[[nodiscard]] std::string_view TypeName(PropertyType type) noexcept;

/// "-500 to 4572", "above 0 to 1000", "1 and above"; empty for bounds that hold anything.
[[nodiscard]] std::string BoundsText(const Bounds& bounds);

/// What a setter takes, for a message: "a number from -500 to 4572", "true or false", "a text".
[[nodiscard]] std::string ExpectedText(const PropertyFacts& facts);

/// A value as a person writes it: a code by its name, a number in the shortest text that reads back to it, a
/// date as "yyyy-mm-ddThh:mm:ss".
[[nodiscard]] std::string ValueText(const PropertyFacts& facts, const PropertyValue& value);

/// Reads "yyyy-mm-ddThh:mm:ss"; nothing for any other text or a date that does not exist.
[[nodiscard]] std::optional<DateTime> ParseIso(std::string_view text);

}  // namespace genvara
