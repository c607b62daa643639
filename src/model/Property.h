#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "DateTime.h"
#include "RangeCheck.h"
#include "StringTable.h"

namespace genvara {

/// What a member holds.
enum class PropertyType : std::uint8_t { Real, Whole, Truth, Text, Code, Moment };

/// A value of any member; of a code, its number.
using PropertyValue = std::variant<double, std::int32_t, bool, std::string, DateTime>;

/// A code with the name that people know it by, which is the caption of its control where it has one.
class CodeName {
  public:
    /// @param caption id in the string table.
    constexpr CodeName(std::int32_t code, std::int32_t caption) : m_code(code), m_caption(caption) {}
    constexpr CodeName(std::int32_t code, std::string_view name) : m_code(code), m_name(name) {}

    [[nodiscard]] constexpr std::int32_t Code() const noexcept { return m_code; }
    [[nodiscard]] std::string_view Name() const noexcept {
        return m_name.empty() ? StringTable::Text(m_caption) : m_name;
    }

  private:
    std::int32_t m_code;
    std::int32_t m_caption = 0;
    std::string_view m_name;
};

/// Values that are accepted; an absent bound is none.
struct Bounds {
    std::optional<double> least;
    std::optional<double> greatest;
    bool aboveLeast = false;  ///< the least value itself is refused

    constexpr Bounds() = default;
    constexpr Bounds(std::optional<double> lowest, std::optional<double> highest)
        : least(lowest), greatest(highest) {}
    template <typename Value>
    constexpr Bounds(Range<Value> range)
        : least(static_cast<double>(range.least)), greatest(static_cast<double>(range.greatest)) {}
    constexpr Bounds(PositiveRange range) : least(0.0), greatest(range.greatest), aboveLeast(true) {}

    [[nodiscard]] constexpr bool HoldAnything() const noexcept { return !least && !greatest; }
    /// A NaN is held by no bounds but those that hold anything.
    [[nodiscard]] constexpr bool Hold(double value) const noexcept {
        const bool above = !least || (aboveLeast ? value > *least : value >= *least);
        return above && (!greatest || value <= *greatest);
    }
};

/// What is told of a member, whatever record it belongs to.
struct PropertyFacts {
    std::string_view name;              ///< as in the model
    std::string_view words;             ///< the same in plain words, as forms and tables of loads have it
    std::string_view unit{};            ///< "m", "W", "%"; empty without one
    std::string_view meaning{};         ///< one plain sentence
    Bounds range{};                     ///< what the setter takes
    Bounds entered{};                   ///< what the entry form takes, where the setter takes more
    std::span<const CodeName> codes{};  ///< of a code; numbers that are none of them may be held all the same
    std::span<const std::int32_t> only{};  ///< the numbers that the setter takes, where they are no range
    bool oneCharacter = false;             ///< a text of one character, blanks aside
    /// The entry method that uses the member: for a load of another method it does not exist.
    std::optional<std::int32_t> method{};
    std::int32_t record = 1;                 ///< of a load in a `.prj` file: 0 the one that all kinds have
    PropertyType type = PropertyType::Real;  ///< set by `Member`

    /// What a person may enter: the form's bounds where it has its own.
    [[nodiscard]] constexpr const Bounds& Enterable() const noexcept {
        return entered.HoldAnything() ? range : entered;
    }
};

/// A member of a record: what is told of it, and the way to its value.
template <typename Record>
struct Property {
    PropertyFacts facts;
    PropertyValue (*get)(const Record& record);
    /// The value is of the member's own type.
    /// @throws RaisedError of the setter.
    void (*set)(Record& record, const PropertyValue& value);
};

/// The type of a member whose getter answers with a `Value`.
template <typename Value>
[[nodiscard]] constexpr PropertyType TypeOfValue(bool hasCodes) noexcept {
    if constexpr (std::is_same_v<Value, double>) {
        return PropertyType::Real;
    } else if constexpr (std::is_same_v<Value, std::int32_t>) {
        return hasCodes ? PropertyType::Code : PropertyType::Whole;
    } else if constexpr (std::is_same_v<Value, bool>) {
        return PropertyType::Truth;
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return PropertyType::Text;
    } else {
        static_assert(std::is_same_v<Value, DateTime>);
        return PropertyType::Moment;
    }
}

/// A row of a table of properties.
/// @tparam Owner the class that has the member, where it is one of several behind `Record`; whoever uses the
///         row sees to it that the record is of that class.
/// @param pair calls the overloaded pair of getter and setter, with a value or without one:
///        `[](auto& site, auto... metres) { return site.Altitude(metres...); }`
template <typename Record, typename Owner = Record, typename Pair>
[[nodiscard]] constexpr Property<Record> Member(PropertyFacts facts, Pair /*pair*/) {
    using Value = std::remove_cvref_t<decltype(Pair{}(std::declval<const Owner&>()))>;
    facts.type = TypeOfValue<Value>(!facts.codes.empty());
    return {facts,
            [](const Record& record) { return PropertyValue(Pair{}(static_cast<const Owner&>(record))); },
            [](Record& record, const PropertyValue& value) {
                Pair{}(static_cast<Owner&>(record), std::get<Value>(value));
            }};
}

/// The row of a name; null if the table has none.
template <typename Record>
[[nodiscard]] const Property<Record>* FindProperty(std::span<const Property<Record>> table,
                                                   std::string_view name) noexcept {
    for (const Property<Record>& row : table) {
        if (row.facts.name == name) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace genvara
