#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What the columns of a table of loads may hold.
namespace genvara {

/// What a number measures, which decides its units.
enum class Measure : std::uint8_t {
    Nothing,
    RealPower,
    ApparentPower,
    Horsepower,
    Cooling,
    Refrigeration,
    Percent,
    PerUnit,
    Volts,
    Amperes
};

/// A unit of a number.
struct TableUnit {
    std::string_view name{};  ///< "kW"
    Measure measure = Measure::Nothing;
    double factor = 1.0;  ///< units of the model in one of these
};

/// The unit of a word such as "kW", "BTU / hr" or "%"; nothing for a word of none.
[[nodiscard]] std::optional<TableUnit> FindTableUnit(std::string_view word);

/// Whether a unit is one that a measure is given in: its own, or percent of a power factor.
[[nodiscard]] bool IsUnitOf(const TableUnit& unit, Measure measure) noexcept;

/// A number of a unit in the model's; W become the horsepower of a shaft.
[[nodiscard]] double InModel(double number, const TableUnit& unit, Measure measure) noexcept;

/// What a cell holds.
enum class CellType : std::uint8_t { Text, Number, Choice, Truth };

/// Members that are none of a load's own.
inline constexpr std::string_view kStepColumn = "Step";
inline constexpr std::string_view kTypeColumn = "LoadType";

/// Stands for all kinds of load.
inline constexpr std::int32_t kAnyLoad = -1;

/// Headings that mean a field besides the member's name, its words and its caption: in small letters without
/// blanks, with "|" between.
struct HeadingWords {
    std::string_view own{};
    std::string_view shared{};          ///< with other fields
    std::string_view withUnit{};        ///< that mean it with a unit of its measure; "" is a unit alone
    std::string_view sharedWithUnit{};  ///< the same, shared with other fields
    std::string_view shaft{};           ///< that mean a motor's rating with W or kW, those at its shaft
};

/// A member of a kind of load that its entry form lets one enter.
struct TableField {
    std::int32_t loadType;    ///< `kAnyLoad` for what all kinds have
    std::string_view member;  ///< name in the model, or one of the two above
    std::string_view caption;
    CellType type;
    HeadingWords words;
    Measure measure = Measure::Nothing;
};

/// All fields; those of all kinds first.
[[nodiscard]] std::span<const TableField> TableFields() noexcept;

/// The field of a member of a kind; null for a member that its form does not have.
[[nodiscard]] const TableField* FindTableField(std::int32_t loadType, std::string_view member) noexcept;

/// What a heading means.
struct HeadingMeaning {
    /// None for a heading that means nothing; several of a kind where the units of the cells have to tell.
    std::vector<const TableField*> fields;
    std::optional<TableUnit> unit;  ///< of numbers without one of their own
};

/// Understands a heading: a member's name, which means the model's unit; plain words with a unit, as in
/// "Power [kW]", "Power (kW)", "Running kW" or "kW"; plain words alone where one unit goes with them.
[[nodiscard]] HeadingMeaning MeaningOf(std::string_view heading);

/// The heading that is most like one without a meaning; empty if none is a slip away.
[[nodiscard]] std::string LikeHeading(std::string_view heading);

/// Whether a number of a unit can be entered in a field: one of its measure, and W or kW for the rating of a
/// motor.
[[nodiscard]] bool Takes(const TableField& field, const TableUnit& unit) noexcept;

/// Units of the model in one of the form's: W and VA are entered in kW and kVA.
[[nodiscard]] double PerFormUnit(const TableField& field) noexcept;

/// Whether the numbers of a field without a unit cannot be understood.
[[nodiscard]] bool NeedsUnit(const TableField& field) noexcept;

/// A text in small letters without blanks and signs, so that spellings compare; "%" and ">" stay.
[[nodiscard]] std::string PlainLetters(std::string_view text);

}  // namespace genvara
