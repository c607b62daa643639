#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace genvara {

/// A bar in a cell: how much of what there is a figure takes up.
struct CellBar {
    double value = 0.0;
    double limit = 0.0;  ///< where the mark stands
    double most = 0.0;   ///< at the end of the cell
    bool fails = false;

    bool operator==(const CellBar&) const = default;
};

struct GridCell {
    QString text{};                  ///< as it is shown, in the user's separator
    std::optional<double> number{};  ///< of a cell that is sorted and saved as a number
    std::optional<CellBar> bar{};
    QString tip{};
    bool isBold = false;
};

struct GridColumn {
    QString caption{};
    bool isNumber = false;
    QString tip{};
};

/// A table of texts: what is shown, copied, saved as CSV and printed, and what a screen reader finds behind a
/// chart. Its first column names the rows.
struct TextGrid {
    QString title{};
    std::vector<GridColumn> columns{};
    std::vector<std::vector<GridCell>> rows{};  ///< each as long as `columns`
};

/// A number with so many decimals, in the user's separator.
[[nodiscard]] QString ShownNumber(double value, int decimals);
/// A plain number in the user's separator.
[[nodiscard]] QString ShownPlain(double value);
/// Decimal separator of the user.
[[nodiscard]] const std::string& ShownSeparator();

[[nodiscard]] GridCell TextCell(QString text);
/// A number with so many decimals, and what stands behind it.
[[nodiscard]] GridCell NumberCell(double value, int decimals, const QString& behind = {});

/// The table with tabs and line ends, as spreadsheets take it from the clipboard. Tabs and line ends within a
/// cell become blanks. No text is a formula there.
[[nodiscard]] QString TabText(const TextGrid& grid);

/// The table as comma-separated values in UTF-8. Numbers have a point and all their digits, and no text is a
/// formula.
[[nodiscard]] QByteArray CsvText(const TextGrid& grid);

}  // namespace genvara
