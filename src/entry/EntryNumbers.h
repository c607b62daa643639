#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers in entry fields. Nothing else reads the text of a field as a number, or shows a figure in one.
namespace genvara {

/// How a locale writes numbers.
struct NumberSigns {
    std::string decimal = ".";  ///< between whole and broken part
    std::string grouping{};     ///< between groups of digits; empty for none
};

/// The signs of the user's locale, asked of the environment and not of the process's locale.
[[nodiscard]] NumberSigns UserNumberSigns();

/// Decimal separator of the user's locale.
[[nodiscard]] std::string DecimalSeparator();

/// Whether a number counts as whole: it is less than a millionth away from an integer.
[[nodiscard]] bool IsWhole(double number) noexcept;

/// A text without the blanks at its ends.
[[nodiscard]] std::string Trimmed(std::string_view text);

/// Reads and shows numbers as the user writes them. Grouping is neither shown nor read in a field: a text
/// that comes from elsewhere loses it on its way in (`AsTyped`).
class EntryNumbers {
  public:
    EntryNumbers() : EntryNumbers(UserNumberSigns()) {}
    explicit EntryNumbers(NumberSigns signs);

    [[nodiscard]] const std::string& Separator() const noexcept { return m_signs.decimal; }

    // Reading.

    /// The number that a text stands for; nothing for any other text, the empty one too.
    [[nodiscard]] std::optional<double> Read(std::string_view text) const;
    /// The same.
    /// @throws RaisedError 13 "Type mismatch" from "EntryNumbers" for a text that is no number.
    [[nodiscard]] double Number(std::string_view text) const;
    /// A text in kW or kVA, in W or VA.
    /// @throws RaisedError 13 as `Number`; 6 "Overflow" beyond a double's range.
    [[nodiscard]] double FromKilo(std::string_view text) const;
    /// The integer nearest to the number that a text stands for, halves to the even one.
    /// @throws RaisedError 13 as `Number`; 6 "Overflow" beyond 32 bits.
    [[nodiscard]] std::int32_t Integer(std::string_view text) const;
    /// The whole number that a text stands for.
    /// @throws RaisedError as `Integer`; 13 for a number that is not whole.
    [[nodiscard]] std::int32_t Whole(std::string_view text) const;

    /// Whether a text is BAD: neither empty nor a number.
    [[nodiscard]] bool IsBad(std::string_view text) const { return !text.empty() && !Read(text); }

    // Showing.

    /// A plain number.
    [[nodiscard]] std::string Plain(double value) const;
    /// A number with so many decimals.
    [[nodiscard]] std::string Fixed(double value, int decimals) const;
    /// A plain number of at most one decimal, rounded half away from zero.
    [[nodiscard]] std::string Rounded(double value) const;
    /// W or VA as a plain number of kW or kVA.
    [[nodiscard]] std::string Kilo(double power) const;

    // Texts of fields.

    /// The text of a field of whole numbers once it is left: "007" becomes "7". A text that stands for no
    /// such number stays.
    [[nodiscard]] std::string WholeText(const std::string& text) const;
    /// A text from elsewhere, as it would have been typed: without blanks, tabs, line ends and no-break
    /// spaces around it, and without the locale's grouping, if that stands where it should.
    [[nodiscard]] std::string AsTyped(std::string_view text) const;

  private:
    /// A rendered number in the user's separator.
    [[nodiscard]] std::string Shown(std::string rendered) const;

    NumberSigns m_signs;
};

}  // namespace genvara
