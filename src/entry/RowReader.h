#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "EntryNumbers.h"
#include "TableFields.h"
#include "TableNumbers.h"
#include "TableText.h"

namespace genvara {

/// A column of a table of loads.
struct TableColumn {
    std::string heading;
    HeadingMeaning meaning;

    /// What a cell is in a row of a kind; null if that has nothing of the sort.
    /// @param unit of the cell, where it has one of its own.
    [[nodiscard]] const TableField* FieldOf(std::int32_t loadType,
                                            const std::optional<TableUnit>& unit = {}) const noexcept;
    /// Whether it is the column of a member that all kinds have, or of `kStepColumn` or `kTypeColumn`.
    [[nodiscard]] bool IsOf(std::string_view member) const noexcept;
};

/// What is the matter with a table, beside the cell that it is the matter with.
struct TableFault {
    std::int32_t row = 0;     ///< as a spreadsheet counts; 0 for the table as a whole
    std::int32_t column = 0;  ///< from 1; 0 for the row as a whole
    std::string heading{};    ///< of the column
    std::string text;         ///< one sentence
};

/// What is the same for all rows of a table.
struct TableContext {
    std::vector<TableColumn> columns;
    TableNumbers numbers;
    EntryNumbers shown;  ///< how sentences show numbers
};

/// Reads the cells of a row as the members of a kind of load, and notes what is wrong with any of them: what
/// is no number, out of the bounds of the entry form's field, or no choice of its list.
class RowReader {
  public:
    /// The context and the faults outlive the reader.
    RowReader(const TableContext& table, const TableRow& row, std::int32_t loadType,
              std::vector<TableFault>& faults);

    /// Whether nothing is wrong so far.
    [[nodiscard]] bool IsSound() const noexcept { return m_isSound; }
    [[nodiscard]] std::int32_t LoadType() const noexcept { return m_loadType; }

    /// Whether a cell gives a member.
    [[nodiscard]] bool Has(std::string_view member) const;
    /// The column whose cell gives a member, and whether heading or cell name its unit.
    struct Source {
        std::size_t column = 0;
        bool hasUnit = false;
    };
    [[nodiscard]] std::optional<Source> SourceOf(std::string_view member) const;
    /// What stands in the cell; empty if none gives the member.
    [[nodiscard]] std::string CellOf(std::string_view member) const;
    /// A text in one line, in typographic quotes as all texts that are entered.
    [[nodiscard]] std::string Text(std::string_view member) const;

    // Members; nothing for one that no cell gives, or a bad one.
    /// In the model's unit.
    [[nodiscard]] std::optional<double> Figure(std::string_view member);
    [[nodiscard]] std::optional<std::int32_t> Whole(std::string_view member);
    [[nodiscard]] std::optional<std::int32_t> Choice(std::string_view member);
    [[nodiscard]] std::optional<bool> Truth(std::string_view member);
    /// The same for what the form wants entered; 0 for a member that no cell gives, which is noted.
    [[nodiscard]] double NeededFigure(std::string_view member);

    /// Notes a fault of a member's cell; of the row if it has none.
    void Refuse(std::string_view member, const std::string& sentence);
    /// Notes that a cell does not go with the rest of the row: "Ballast: Electronic is not for ...".
    void RefuseChoice(std::string_view member, std::string_view why);
    /// Notes each cell in a column that loads of the kind have nothing of.
    void RefuseStrays();

  private:
    struct Place {
        std::size_t column = 0;
        const TableField* field = nullptr;
    };
    [[nodiscard]] std::optional<Place> Find(std::string_view member) const;
    [[nodiscard]] std::optional<Place> FindOnly(std::string_view member);
    [[nodiscard]] const std::string& CellAt(std::size_t column) const;
    [[nodiscard]] const TableField* FieldAt(std::size_t column) const;
    void RefuseAt(std::size_t column, std::string sentence);
    [[nodiscard]] std::optional<double> FormFigure(const Place& place, double& model);
    [[nodiscard]] std::optional<TableUnit> UnitOf(const Place& place, const TableFigure& figure);

    const TableContext* m_table;
    const TableRow* m_row;
    std::int32_t m_loadType;
    std::vector<TableFault>* m_faults;
    bool m_isSound = true;
};

/// A cell as sentences quote it: in one line, and not too long.
[[nodiscard]] std::string QuotedCell(std::string_view cell);

}  // namespace genvara
