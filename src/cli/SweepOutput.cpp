#include "SweepOutput.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "CsvText.h"
#include "ExplainJson.h"
#include "JsonText.h"
#include "NumberText.h"
#include "Output.h"
#include "PropertyText.h"
#include "SizingJson.h"
#include "StepTests.h"
#include "TextTable.h"
#include "ValueJson.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

constexpr std::size_t kLongestCell = 60;
constexpr std::size_t kFullBuffer = 65536;

/// Gathers text so that not every line costs a call of the system.
class Gathered {
  public:
    void Add(std::string_view text) {
        m_text += text;
        if (m_text.size() >= kFullBuffer) {
            Flush();
        }
    }
    void Flush() {
        Print(m_text);
        m_text.clear();
    }

  private:
    std::string m_text;
};

std::string CsvLine(const std::vector<std::string>& cells) {
    std::string line;
    for (const std::string& cell : cells) {
        line += (line.empty() ? "" : ",") + CsvCell(cell);
    }
    return line + "\n";
}

/// What an answer reads as, member by member; all but the error are empty where there is none.
struct AnswerCells {
    std::string model;
    std::string alternator;
    std::string nominal;
    std::string derated;
    std::string count;
    std::string test;
    std::string step;
    std::string margin;
    std::string error;
};

AnswerCells CellsOf(const SweepPoint& point) {
    AnswerCells cells;
    if (point.error) {
        cells.error = point.error->Description();
        return cells;
    }
    cells.count = fmt::format("{}", point.sizing.numChosenSets);
    if (point.sizing.set) {
        cells.model = point.sizing.set->ModelNum;
        cells.alternator = point.sizing.set->AltNum;
        cells.nominal = RenderShortest(point.sizing.set->NominalRating);
        cells.derated = RenderShortest(point.sizing.set->DeratedRating);
    }
    if (const auto& tightest = point.sizing.tightest) {
        cells.test = kStepTests[tightest->test].name;
        cells.step = fmt::format("{}", tightest->stepNumber);
        cells.margin = RenderShortest(tightest->margin);
    }
    return cells;
}

class JsonPrinter final : public PointPrinter {
  public:
    JsonPrinter(std::string file, const std::vector<SweepAxis>& axes)
        : m_file(std::move(file)), m_axes(&axes) {}

    void Take(const SweepPoint& point) override {
        JsonText json;
        json.BeginObject().Member("File", m_file).Key("At").BeginObject();
        for (std::size_t i = 0; i < m_axes->size(); ++i) {
            const SweepAxis& axis = (*m_axes)[i];
            ValueMember(json, axis.path, axis.facts, point.at[i]);
        }
        json.EndObject();
        if (point.error) {
            ErrorMember(json, *point.error);
        } else {
            SetMember(json, "Set", point.sizing.set);
            json.Member("NumChosenSets", point.sizing.numChosenSets);
            TightestMember(json, point.sizing.tightest);
        }
        m_output.Add(json.EndObject().Text() + "\n");
    }
    void End() override { m_output.Flush(); }

  private:
    std::string m_file;
    const std::vector<SweepAxis>* m_axes;
    Gathered m_output;
};

class CsvPrinter final : public PointPrinter {
  public:
    explicit CsvPrinter(const std::vector<SweepAxis>& axes) : m_axes(&axes) {
        std::vector<std::string> titles;
        titles.reserve(axes.size());
        for (const SweepAxis& axis : axes) {
            titles.push_back(axis.path);
        }
        for (const char* title : {"ModelNum", "AltNum", "NominalRating", "DeratedRating", "NumChosenSets",
                                  "TightestTest", "TightestStep", "TightestMargin", "Error"}) {
            titles.emplace_back(title);
        }
        m_output.Add(CsvLine(titles));
    }

    void Take(const SweepPoint& point) override {
        std::vector<std::string> cells;
        for (std::size_t i = 0; i < m_axes->size(); ++i) {
            cells.push_back(ValueText((*m_axes)[i].facts, point.at[i]));
        }
        const AnswerCells answer = CellsOf(point);
        for (const std::string* cell :
             {&answer.model, &answer.alternator, &answer.nominal, &answer.derated, &answer.count,
              &answer.test, &answer.step, &answer.margin, &answer.error}) {
            cells.push_back(*cell);
        }
        m_output.Add(CsvLine(cells));
    }
    void End() override { m_output.Flush(); }

  private:
    const std::vector<SweepAxis>* m_axes;
    Gathered m_output;
};

/// "Altitude" with its unit behind it.
std::string TitleOf(const SweepAxis& axis) {
    return axis.facts.unit.empty() ? axis.path : fmt::format("{} [{}]", axis.path, axis.facts.unit);
}

using Align = TextTable::Align;

Align AlignOf(const SweepAxis& axis) {
    const bool isNumber = axis.facts.type == PropertyType::Real || axis.facts.type == PropertyType::Whole;
    return isNumber ? Align::Right : Align::Left;
}

/// Adds the columns of an answer, which `AnswerRow` fills.
void AddAnswerColumns(std::vector<TextTable::Column>& columns) {
    for (const char* title : {"Set", "Alternator"}) {
        columns.push_back({title, Align::Left});
    }
    columns.push_back({"Rating [kW]", Align::Right});
    columns.push_back({"At the site [kW]", Align::Right});
    columns.push_back({"Tightest", Align::Left});
    columns.push_back({"Left [%]", Align::Right});
}

void AddAnswerCells(std::vector<std::string>& row, const SweepPoint& point) {
    if (point.error) {
        row.push_back(OneLine("error: " + point.error->Description(), kLongestCell));
        row.resize(row.size() + 5);
        return;
    }
    const Sizing& sizing = point.sizing;
    if (!sizing.set) {
        row.emplace_back("none");
        row.resize(row.size() + 5);
        return;
    }
    row.push_back(OneLine(sizing.set->ModelNum, kLongestCell));
    row.push_back(OneLine(sizing.set->AltNum, kLongestCell));
    row.push_back(RenderPlain(sizing.set->NominalRating));
    row.push_back(RenderFixed(sizing.set->DeratedRating, 1));
    if (const auto& tightest = sizing.tightest) {
        row.push_back(fmt::format("{}, step {}", CaptionOf(tightest->test), tightest->stepNumber));
        row.push_back(RenderFixed(tightest->margin, 1));
    } else {
        row.resize(row.size() + 2);
    }
}

class TablePrinter final : public PointPrinter {
  public:
    TablePrinter(std::string file, const std::vector<SweepAxis>& axes)
        : m_file(std::move(file)), m_axes(&axes), m_table(Columns(axes)) {}

    void Take(const SweepPoint& point) override {
        std::vector<std::string> row;
        for (std::size_t i = 0; i < m_axes->size(); ++i) {
            row.push_back(OneLine(ValueText((*m_axes)[i].facts, point.at[i]), kLongestCell));
        }
        const bool changes = m_before && !IsSameAnswer(*m_before, point);
        m_changes += changes ? 1 : 0;
        row.emplace_back(changes ? "*" : "");
        AddAnswerCells(row, point);
        m_table.AddRow(std::move(row));
        m_before = point;
    }
    void End() override {
        Print(fmt::format("{}\n{}{}", m_file, m_table.Text(),
                          m_changes == 0 ? "" : "  * another answer than in the line above\n"));
    }

  private:
    static std::vector<TextTable::Column> Columns(const std::vector<SweepAxis>& axes) {
        std::vector<TextTable::Column> columns;
        columns.reserve(axes.size());
        for (const SweepAxis& axis : axes) {
            columns.push_back({TitleOf(axis), AlignOf(axis)});
        }
        columns.push_back({"", Align::Left});
        AddAnswerColumns(columns);
        return columns;
    }

    std::string m_file;
    const std::vector<SweepAxis>* m_axes;
    TextTable m_table;
    std::optional<SweepPoint> m_before;
    std::int64_t m_changes = 0;
};

}  // namespace

std::unique_ptr<PointPrinter> MakeJsonPrinter(const std::string& file, const std::vector<SweepAxis>& axes) {
    return std::make_unique<JsonPrinter>(file, axes);
}

std::unique_ptr<PointPrinter> MakeCsvPrinter(const std::vector<SweepAxis>& axes) {
    return std::make_unique<CsvPrinter>(axes);
}

std::unique_ptr<PointPrinter> MakeTablePrinter(const std::string& file, const std::vector<SweepAxis>& axes) {
    return std::make_unique<TablePrinter>(file, axes);
}

std::string StretchesJson(const SweepAxis& axis, const std::vector<SweepStretch>& stretches) {
    std::string lines;
    for (const SweepStretch& stretch : stretches) {
        JsonText json;
        json.BeginObject();
        ValueMember(json, "From", axis.facts, stretch.from);
        ValueMember(json, "To", axis.facts, stretch.to);
        if (stretch.point.error) {
            ErrorMember(json, *stretch.point.error);
        } else {
            SetMember(json, "Set", stretch.point.sizing.set);
        }
        lines += json.EndObject().Text() + "\n";
    }
    return lines;
}

std::string StretchesCsv(const SweepAxis& axis, const std::vector<SweepStretch>& stretches) {
    std::string lines = CsvLine({"From", "To", "ModelNum", "AltNum", "NominalRating", "Error"});
    for (const SweepStretch& stretch : stretches) {
        const AnswerCells answer = CellsOf(stretch.point);
        lines += CsvLine({ValueText(axis.facts, stretch.from), ValueText(axis.facts, stretch.to),
                          answer.model, answer.alternator, answer.nominal, answer.error});
    }
    return lines;
}

std::string StretchesTable(const std::string& file, const SweepAxis& axis,
                           const std::vector<SweepStretch>& stretches) {
    std::vector<TextTable::Column> columns{{"From", Align::Right}, {"To", Align::Right}};
    AddAnswerColumns(columns);
    TextTable table(std::move(columns));
    for (const SweepStretch& stretch : stretches) {
        std::vector<std::string> row{ValueText(axis.facts, stretch.from), ValueText(axis.facts, stretch.to)};
        AddAnswerCells(row, stretch.point);
        table.AddRow(std::move(row));
    }
    return fmt::format("{}: {}\n{}  The figures of a set are those at From.\n", file, TitleOf(axis),
                       table.Text());
}

}  // namespace genvara
