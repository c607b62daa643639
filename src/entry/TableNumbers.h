#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace genvara {

/// What keeps a cell from being a number.
enum class NumberFault : std::uint8_t {
    None,
    NoNumber,
    Ambiguous  ///< "1,234" or "1.234" where nothing tells whether the sign parts thousands or decimals
};

/// A number in a cell.
struct TableFigure {
    double number = 0.0;
    std::string unit{};  ///< what stands behind it, as in "15 kW"; empty if nothing does
    NumberFault fault = NumberFault::None;
};

/// Reads the numbers of a table that nobody has told how it writes them. Most numbers tell themselves:
/// "0,85", "1.5", "1,234.5", "12 500". For one that does not, the others decide; without any, a table that
/// parts its cells by commas writes points, and of any other the user's own sign is taken, if it is known.
class TableNumbers {
  public:
    TableNumbers() = default;

    /// Looks at a cell that holds a number, to learn from it how the table writes them.
    void Learn(std::string_view cell);
    /// What is taken where no number told.
    void Usual(std::optional<char> decimal) noexcept { m_usual = decimal; }

    [[nodiscard]] TableFigure Read(std::string_view cell) const;

  private:
    [[nodiscard]] std::optional<char> Decimal() const noexcept;

    bool m_points = false;  ///< a point was seen before decimals
    bool m_commas = false;
    std::optional<char> m_usual;
};

}  // namespace genvara
