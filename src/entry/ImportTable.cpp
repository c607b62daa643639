#include "ImportTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "Kilo.h"
#include "TableChoices.h"
#include "TableLoads.h"
#include "TableText.h"

namespace genvara {
namespace {

constexpr std::size_t kMostFaults = 1000;

ImportedFigures FiguresOf(const Load& load) {
    const double scale = load.Quantity() / kPerKilo;
    return {.runningKW = load.RunningRealPower() * scale,
            .runningKVA = load.RunningAppPower() * scale,
            .startingKW = load.StartingRealPower() * scale,
            .startingKVA = load.StartingAppPower() * scale};
}

std::string Plural(std::size_t count, std::string_view noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

/// Reads one table.
class TableReader {
  public:
    TableReader(const CLoadProfile& profile, const CPwrSys& site, const EntryRules& rules,
                const ImportOptions& options)
        : m_site(&site),
          m_rules(&rules),
          m_steps(profile, site, options.stepAtHand),
          m_context{.columns = {}, .numbers = {}, .shown = options.shown},
          m_usual(options.usualDecimal) {}

    ImportedTable Read(const TableText& text) {
        if (!text.fault.empty()) {
            Refuse(text.fault);
            return std::move(m_table);
        }
        ReadHeadings(text.rows.front().cells);
        const std::span<const TableRow> rows(text.rows.begin() + 1, text.rows.end());
        if (m_table.faults.empty() && rows.empty()) {
            Refuse("The table has no row behind its headings.");
        }
        if (m_table.faults.empty()) {
            NoteNameless(rows);
            LearnNumbers(rows, text.delimiter);
            FindSteps(rows);
            for (std::size_t at = 0; at < rows.size(); ++at) {
                ReadRow(rows[at], at);
            }
        }
        m_table.columns = m_context.columns;
        std::ranges::stable_sort(m_table.faults, {},
                                 [](const TableFault& fault) { return std::tuple(fault.row, fault.column); });
        if (m_table.faults.size() > kMostFaults) {
            m_table.faults.resize(kMostFaults);
        }
        return std::move(m_table);
    }

  private:
    void Refuse(std::string sentence) { m_table.faults.push_back({.text = std::move(sentence)}); }

    void ReadHeadings(const std::vector<std::string>& headings) {
        bool isKnown = false;
        for (const std::string& heading : headings) {
            m_context.columns.push_back({.heading = heading, .meaning = MeaningOf(heading)});
            const bool means = !m_context.columns.back().meaning.fields.empty();
            isKnown = isKnown || means;
            if (!means && !IsBlankCell(heading)) {
                const std::string like = LikeHeading(heading);
                m_table.notes.push_back(fmt::format(
                    "The column \"{}\" means nothing here and is passed over.{}", QuotedCell(heading),
                    like.empty() ? "" : fmt::format(" Is it \"{}\"?", like)));
            }
        }
        const auto isType = [](const TableColumn& column) { return column.IsOf(kTypeColumn); };
        if (!isKnown) {
            Refuse("The first row has no heading that is known, such as Step, Type, Name, Qty, HP or kW.");
        } else if (std::ranges::none_of(m_context.columns, isType)) {
            Refuse(fmt::format("No column tells the type of the loads. Head one \"Type\", with {}.",
                               KindWords()));
        }
    }

    /// Tells of cells without a heading above them.
    void NoteNameless(std::span<const TableRow> rows) {
        std::size_t width = m_context.columns.size();
        for (const TableRow& row : rows) {
            width = std::max(width, row.cells.size());
        }
        for (std::size_t column = 0; column < width; ++column) {
            const bool named =
                column < m_context.columns.size() && !IsBlankCell(m_context.columns[column].heading);
            const auto isFilled = [&](const TableRow& row) {
                return column < row.cells.size() && !IsBlankCell(row.cells[column]);
            };
            if (!named && std::ranges::any_of(rows, isFilled)) {
                m_table.notes.push_back(
                    fmt::format("Column {} has no heading and is passed over.", column + 1));
            }
        }
    }

    void LearnNumbers(std::span<const TableRow> rows, char delimiter) {
        for (std::size_t column = 0; column < m_context.columns.size(); ++column) {
            const auto& fields = m_context.columns[column].meaning.fields;
            if (fields.empty() || fields.front()->type != CellType::Number) {
                continue;
            }
            for (const TableRow& row : rows) {
                if (column < row.cells.size()) {
                    m_context.numbers.Learn(row.cells[column]);
                }
            }
        }
        m_context.numbers.Usual(delimiter == ',' ? std::optional('.') : m_usual);
    }

    void FindSteps(std::span<const TableRow> rows) {
        for (const TableRow& row : rows) {
            RowReader reader(m_context, row, kAnyLoad, m_table.faults);
            if (const std::string fault = m_steps.Take(reader.CellOf(kStepColumn), m_context.numbers);
                !fault.empty()) {
                reader.Refuse(kStepColumn, fault);
            }
        }
        m_steps.Settle();
        m_table.newSteps = m_steps.Added();
    }

    void ReadRow(const TableRow& row, std::size_t at) {
        ImportedRow imported{.number = row.number, .cells = row.cells};
        RowReader reader(m_context, row, kAnyLoad, m_table.faults);
        imported.step = m_steps.StepOf(at);
        if (!m_steps.FaultOf(at).empty()) {
            reader.Refuse(kStepColumn, m_steps.FaultOf(at));
        } else if (imported.step > 0) {
            imported.stepDescription = m_steps.Description(imported.step);
            if (!m_steps.TakeLoad(imported.step)) {
                reader.Refuse(kStepColumn, "Step: Maximum number of loads per step exceeded.");
            }
        }
        if (const std::optional<std::int32_t> kind = KindOf(reader)) {
            imported.kind = KindWord(*kind);
            RowReader cells(m_context, row, *kind, m_table.faults);
            imported.load = MakeTableLoad(cells, *m_site, *m_rules);
            if (imported.load) {
                imported.figures = FiguresOf(*imported.load);
                NoteReading(cells);
            }
        }
        m_table.rows.push_back(std::move(imported));
    }

    /// Tells once for each column how a motor's size was read, where others would read it otherwise.
    void NoteReading(const RowReader& row) {
        const auto note = [&](std::size_t column, std::string_view sentence) {
            if (m_noted.insert(column).second) {
                m_table.notes.push_back(
                    fmt::format(fmt::runtime(sentence), QuotedCell(m_context.columns[column].heading)));
            }
        };
        const auto says = [&](std::size_t column, std::string_view word) {
            return PlainLetters(m_context.columns[column].heading).find(word) != std::string::npos;
        };
        const auto isRated = [&](const TableField& field) {
            return field.loadType == row.LoadType() && !field.words.shaft.empty();
        };
        if (std::ranges::none_of(TableFields(), isRated)) {
            return;
        }
        for (const TableField& field : TableFields()) {
            const auto source = field.loadType == row.LoadType() ? row.SourceOf(field.member) : std::nullopt;
            if (!source) {
                continue;
            }
            if (field.measure == Measure::RealPower && !says(source->column, "run")) {
                note(source->column,
                     "\"{}\" is read as what a motor takes from the line while it runs. Head the column "
                     "\"Motor rating [kW]\" if it is what the motor gives at its shaft.");
            }
            if (isRated(field) && !source->hasUnit && !says(source->column, "hp") &&
                !says(source->column, "horsepower")) {
                note(source->column,
                     "\"{0}\" names no unit and is read in hp. Head the column \"{0} [kW]\" if it is in kW.");
            }
        }
    }

    static std::optional<std::int32_t> KindOf(RowReader& reader) {
        const std::string word = reader.CellOf(kTypeColumn);
        const std::optional<std::int32_t> kind = FindKindWord(word);
        if (!kind) {
            reader.Refuse(kTypeColumn, word.empty() ? fmt::format("Type is blank. Enter {}.", KindWords())
                                                    : fmt::format("Type: {} is not known. Enter {}.",
                                                                  QuotedCell(word), KindWords()));
        }
        return kind;
    }

    const CPwrSys* m_site;
    const EntryRules* m_rules;
    TableSteps m_steps;
    TableContext m_context;
    std::optional<char> m_usual;
    ImportedTable m_table;
    std::set<std::size_t> m_noted;  ///< columns whose reading was told
};

}  // namespace

ImportedTable ReadLoadTable(std::string_view bytes, const CLoadProfile& profile, const CPwrSys& site,
                            const EntryRules& rules, const ImportOptions& options) {
    return TableReader(profile, site, rules, options).Read(ReadTableText(bytes));
}

void AddTable(const ImportedTable& table, CLoadProfile& profile) {
    for (const NewStep& step : table.newSteps) {
        profile.AddLoadStep(step.description, step.maxVoltageDip, 0);
    }
    for (const ImportedRow& row : table.rows) {
        profile.LoadStep(row.step).AddLoad(row.load->Clone());
    }
}

std::string ImportName(const ImportedTable& table) {
    return fmt::format("Import {} Load{}", table.rows.size(), table.rows.size() == 1 ? "" : "s");
}

std::string ImportSummary(const ImportedTable& table) {
    if (table.CanBeAdded()) {
        return fmt::format("{} in order{}.", Plural(table.rows.size(), "load"),
                           table.newSteps.empty()
                               ? ""
                               : fmt::format(", with {}", Plural(table.newSteps.size(), "new step")));
    }
    if (table.faults.empty() || table.faults.front().row == 0) {
        return table.faults.empty() ? "The table is empty." : table.faults.front().text;
    }
    std::size_t rows = 0;
    std::int32_t last = 0;
    for (const TableFault& fault : table.faults) {
        rows += fault.row == last ? 0U : 1U;
        last = fault.row;
    }
    return fmt::format("{} in {} of {}: nothing is imported until all is right.",
                       Plural(table.faults.size(), "fault"), Plural(rows, "row"), table.rows.size());
}

std::string FaultLine(const TableFault& fault) {
    if (fault.row == 0) {
        return fault.text;
    }
    return fault.column == 0 ? fmt::format("Row {}: {}", fault.row, fault.text)
                             : fmt::format("Row {}, column {}: {}", fault.row, fault.column, fault.text);
}

}  // namespace genvara
