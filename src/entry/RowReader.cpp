#include "RowReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "CodePage.h"
#include "MemberBounds.h"
#include "TableChoices.h"
#include "TypographicQuotes.h"

namespace genvara {
namespace {

constexpr std::size_t kMostQuoted = 24;  // characters of a cell in a sentence
constexpr char32_t kFirstPrintable = 0x20;
constexpr char32_t kDelete = 0x7F;

/// A text in one line: what parts lines and columns elsewhere is a blank here.
std::string OneLine(std::string_view text) {
    std::string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') {
            continue;
        }
        const auto byte = static_cast<unsigned char>(text[at]);
        line += byte < kFirstPrintable || byte == kDelete ? ' ' : text[at];
    }
    return Trimmed(line);
}

NumberBounds BoundsOf(std::int32_t loadType, const TableField& field) {
    NumberBounds bounds = LoadBounds(loadType, field.member);
    bounds.name = std::string(field.caption);
    return bounds;
}

/// Both readings of a number such as "1,234".
std::string BothReadings(std::string_view cell) {
    std::string whole;
    std::string broken;
    for (const char character : cell) {
        const bool isSign = character == ',' || character == '.';
        whole += isSign ? "" : std::string(1, character);
        broken += isSign ? '.' : character;
    }
    return fmt::format("{} or {}", whole, broken);
}

}  // namespace

std::string QuotedCell(std::string_view cell) {
    const std::u32string characters = DecodeUtf8(OneLine(cell));
    std::string quoted;
    for (const char32_t character : characters.substr(0, kMostQuoted)) {
        AppendUtf8(quoted, character);
    }
    return characters.size() > kMostQuoted ? quoted + "..." : quoted;
}

const TableField* TableColumn::FieldOf(std::int32_t loadType,
                                       const std::optional<TableUnit>& unit) const noexcept {
    const TableField* first = nullptr;
    for (const TableField* field : meaning.fields) {
        if (field->loadType != loadType && field->loadType != kAnyLoad) {
            continue;
        }
        if (unit && IsUnitOf(*unit, field->measure)) {
            return field;
        }
        first = first == nullptr ? field : first;
    }
    return first;
}

bool TableColumn::IsOf(std::string_view member) const noexcept {
    return std::ranges::any_of(meaning.fields, [&](const TableField* field) {
        return field->loadType == kAnyLoad && field->member == member;
    });
}

RowReader::RowReader(const TableContext& table, const TableRow& row, std::int32_t loadType,
                     std::vector<TableFault>& faults)
    : m_table(&table), m_row(&row), m_loadType(loadType), m_faults(&faults) {}

const std::string& RowReader::CellAt(std::size_t column) const {
    static const std::string nothing;
    return column < m_row->cells.size() ? m_row->cells[column] : nothing;
}

const TableField* RowReader::FieldAt(std::size_t column) const {
    const TableColumn& known = m_table->columns[column];
    const bool cellTells = !known.meaning.unit && known.meaning.fields.size() > 1 &&
                           known.meaning.fields.front()->type == CellType::Number;
    return cellTells ? known.FieldOf(m_loadType, FindTableUnit(m_table->numbers.Read(CellAt(column)).unit))
                     : known.FieldOf(m_loadType);
}

std::optional<RowReader::Place> RowReader::Find(std::string_view member) const {
    for (std::size_t column = 0; column < m_table->columns.size(); ++column) {
        const TableField* field = FieldAt(column);
        if (field != nullptr && field->member == member && !IsBlankCell(CellAt(column))) {
            return Place{column, field};
        }
    }
    return std::nullopt;
}

std::optional<RowReader::Place> RowReader::FindOnly(std::string_view member) {
    const std::optional<Place> first = Find(member);
    for (std::size_t column = first ? first->column + 1 : m_table->columns.size();
         column < m_table->columns.size(); ++column) {
        const TableField* field = FieldAt(column);
        if (field != nullptr && field->member == member && !IsBlankCell(CellAt(column))) {
            RefuseAt(column, fmt::format("{} is given by \"{}\" as well.", field->caption,
                                         QuotedCell(m_table->columns[first->column].heading)));
            return std::nullopt;
        }
    }
    return first;
}

bool RowReader::Has(std::string_view member) const {
    return Find(member).has_value();
}

std::optional<RowReader::Source> RowReader::SourceOf(std::string_view member) const {
    const std::optional<Place> place = Find(member);
    if (!place) {
        return std::nullopt;
    }
    return Source{.column = place->column,
                  .hasUnit = m_table->columns[place->column].meaning.unit ||
                             !m_table->numbers.Read(CellAt(place->column)).unit.empty()};
}

std::string RowReader::CellOf(std::string_view member) const {
    const std::optional<Place> place = Find(member);
    return place ? OneLine(CellAt(place->column)) : std::string();
}

std::string RowReader::Text(std::string_view member) const {
    return TypographicQuotes(CellOf(member));
}

void RowReader::RefuseAt(std::size_t column, std::string sentence) {
    m_isSound = false;
    m_faults->push_back({.row = m_row->number,
                         .column = static_cast<std::int32_t>(column) + 1,
                         .heading = m_table->columns[column].heading,
                         .text = std::move(sentence)});
}

void RowReader::Refuse(std::string_view member, const std::string& sentence) {
    if (const std::optional<Place> place = Find(member)) {
        RefuseAt(place->column, sentence);
        return;
    }
    for (std::size_t column = 0; column < m_table->columns.size(); ++column) {
        const TableField* field = FieldAt(column);
        if (field != nullptr && field->member == member) {
            RefuseAt(column, sentence);
            return;
        }
    }
    m_isSound = false;
    m_faults->push_back({.row = m_row->number, .text = sentence});
}

void RowReader::RefuseChoice(std::string_view member, std::string_view why) {
    const TableField* field = FindTableField(m_loadType, member);
    Refuse(member, fmt::format("{}: {} {}", field->caption, QuotedCell(CellOf(member)), why));
}

void RowReader::RefuseStrays() {
    for (std::size_t column = 0; column < m_table->columns.size(); ++column) {
        const TableColumn& known = m_table->columns[column];
        if (!known.meaning.fields.empty() && known.FieldOf(m_loadType) == nullptr &&
            !IsBlankCell(CellAt(column))) {
            RefuseAt(column, fmt::format("{}: a load of type {} has no \"{}\".", QuotedCell(CellAt(column)),
                                         KindWord(m_loadType), QuotedCell(known.heading)));
        }
    }
}

std::optional<TableUnit> RowReader::UnitOf(const Place& place, const TableFigure& figure) {
    const TableField& field = *place.field;
    std::optional<TableUnit> unit = m_table->columns[place.column].meaning.unit;
    if (!figure.unit.empty()) {
        unit = FindTableUnit(figure.unit);
        if (!unit) {
            RefuseAt(place.column, fmt::format("{}: {} is no number with a unit that is known.",
                                               field.caption, QuotedCell(CellAt(place.column))));
            return std::nullopt;
        }
    }
    if (unit && !Takes(field, *unit)) {
        RefuseAt(place.column, fmt::format("{}: {} is no unit of it. {}", field.caption, unit->name,
                                           WantedText(BoundsOf(m_loadType, field), m_table->shown)));
        return std::nullopt;
    }
    if (!unit && NeedsUnit(field)) {
        const std::string_view form = field.measure == Measure::RealPower ? "kW" : "kVA";
        RefuseAt(place.column, fmt::format("{}: {} has no unit. Head the column \"{} [{}]\".", field.caption,
                                           QuotedCell(CellAt(place.column)),
                                           QuotedCell(m_table->columns[place.column].heading), form));
        return std::nullopt;
    }
    return unit ? unit : TableUnit{.measure = field.measure, .factor = PerFormUnit(field)};
}

std::optional<double> RowReader::FormFigure(const Place& place, double& model) {
    const TableField& field = *place.field;
    const std::string& cell = CellAt(place.column);
    const TableFigure figure = m_table->numbers.Read(cell);
    if (figure.fault == NumberFault::Ambiguous) {
        RefuseAt(place.column, fmt::format("{}: {} can mean {}. Write it without a sign between thousands.",
                                           field.caption, QuotedCell(cell), BothReadings(QuotedCell(cell))));
        return std::nullopt;
    }
    if (figure.fault == NumberFault::NoNumber) {
        RefuseAt(place.column, fmt::format("{}: {} is no number. {}", field.caption, QuotedCell(cell),
                                           WantedText(BoundsOf(m_loadType, field), m_table->shown)));
        return std::nullopt;
    }
    if (field.measure == Measure::Nothing) {
        if (!figure.unit.empty()) {
            RefuseAt(place.column, fmt::format("{}: {} is no number. {}", field.caption, QuotedCell(cell),
                                               WantedText(BoundsOf(m_loadType, field), m_table->shown)));
            return std::nullopt;
        }
        model = figure.number;
        return model;
    }
    const std::optional<TableUnit> unit = UnitOf(place, figure);
    if (!unit) {
        return std::nullopt;
    }
    model = InModel(figure.number, *unit, field.measure);
    return unit->factor == PerFormUnit(field) && unit->measure == field.measure ? figure.number
                                                                                : model / PerFormUnit(field);
}

std::optional<double> RowReader::Figure(std::string_view member) {
    const std::optional<Place> place = FindOnly(member);
    double model = 0.0;
    const std::optional<double> form = place ? FormFigure(*place, model) : std::nullopt;
    if (!form) {
        return std::nullopt;
    }
    const NumberBounds bounds = BoundsOf(m_loadType, *place->field);
    const std::string complaint = Complaint(bounds, m_table->shown.Plain(*form), m_table->shown);
    if (!complaint.empty()) {
        // A figure that was worked out from another unit has more digits than anybody wants to read.
        constexpr double kReadable = 100.0;  // two decimals
        const double rounded = std::round(*form * kReadable) / kReadable;
        const std::string readable = Complaint(bounds, m_table->shown.Plain(rounded), m_table->shown);
        RefuseAt(place->column, readable.empty() ? complaint : readable);
        return std::nullopt;
    }
    return model;
}

double RowReader::NeededFigure(std::string_view member) {
    if (!Has(member)) {
        const TableField* field = FindTableField(m_loadType, member);
        Refuse(member, Complaint(BoundsOf(m_loadType, *field), {}, m_table->shown));
        return 0.0;
    }
    return Figure(member).value_or(0.0);
}

std::optional<std::int32_t> RowReader::Whole(std::string_view member) {
    const std::optional<double> figure = Figure(member);
    return figure ? std::optional(static_cast<std::int32_t>(std::nearbyint(*figure))) : std::nullopt;
}

std::optional<std::int32_t> RowReader::Choice(std::string_view member) {
    const std::optional<Place> place = FindOnly(member);
    if (!place) {
        return std::nullopt;
    }
    const std::string& cell = CellAt(place->column);
    const std::optional<std::int32_t> code = FindChoiceWord(*place->field, m_loadType, cell);
    if (!code) {
        RefuseAt(place->column, fmt::format("{}: {} is not known. Enter {}.", place->field->caption,
                                            QuotedCell(cell), ChoiceWords(*place->field, m_loadType)));
    }
    return code;
}

std::optional<bool> RowReader::Truth(std::string_view member) {
    const std::optional<Place> place = FindOnly(member);
    if (!place) {
        return std::nullopt;
    }
    const std::optional<bool> truth = FindTruthWord(CellAt(place->column));
    if (!truth) {
        RefuseAt(place->column, fmt::format("{}: {} is not known. Enter yes or no.", place->field->caption,
                                            QuotedCell(CellAt(place->column))));
    }
    return truth;
}

}  // namespace genvara
