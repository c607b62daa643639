#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// A table of plain text whose columns are as wide as their widest entry.
class TextTable {
  public:
    enum class Align { Left, Right };

    struct Column {
        std::string title;
        Align align = Align::Right;
    };

    explicit TextTable(std::vector<Column> columns);

    void AddRow(std::vector<std::string> cells);

    /// The titles, a rule, and the rows, each line indented by two blanks.
    [[nodiscard]] std::string Text() const;

  private:
    [[nodiscard]] std::string Line(const std::vector<std::string>& cells,
                                   const std::vector<std::size_t>& widths) const;

    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

/// Characters that a UTF-8 text shows.
[[nodiscard]] std::size_t DisplayWidth(std::string_view text) noexcept;

/// The text with control characters shown as blanks, cut to a number of characters.
[[nodiscard]] std::string OneLine(std::string_view text, std::size_t most);

}  // namespace genvara
