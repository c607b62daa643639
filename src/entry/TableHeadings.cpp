// What headings and units mean.

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "Kilo.h"
#include "NearestNames.h"
#include "Properties.h"
#include "TableFields.h"

namespace genvara {
namespace {

constexpr double kPercents = 100.0;
/// W of a mechanical horsepower: 550 foot-pounds a second.
constexpr double kWattsPerHorsepower = 745.69987158227022;

struct UnitRow {
    std::string_view word;  // in plain letters
    TableUnit unit;
};
constexpr std::array<UnitRow, 30> kUnits{{{"w", {"W", Measure::RealPower, 1.0}},
                                          {"watt", {"W", Measure::RealPower, 1.0}},
                                          {"watts", {"W", Measure::RealPower, 1.0}},
                                          {"kw", {"kW", Measure::RealPower, kPerKilo}},
                                          {"va", {"VA", Measure::ApparentPower, 1.0}},
                                          {"kva", {"kVA", Measure::ApparentPower, kPerKilo}},
                                          {"hp", {"hp", Measure::Horsepower, 1.0}},
                                          {"horsepower", {"hp", Measure::Horsepower, 1.0}},
                                          {"btuhr", {"BTU/hr", Measure::Cooling, 1.0}},
                                          {"btuh", {"BTU/hr", Measure::Cooling, 1.0}},
                                          {"btuhour", {"BTU/hr", Measure::Cooling, 1.0}},
                                          {"btuperhour", {"BTU/hr", Measure::Cooling, 1.0}},
                                          {"btu", {"BTU/hr", Measure::Cooling, 1.0}},
                                          {"tons", {"tons", Measure::Refrigeration, 1.0}},
                                          {"ton", {"tons", Measure::Refrigeration, 1.0}},
                                          {"tr", {"tons", Measure::Refrigeration, 1.0}},
                                          {"%", {"%", Measure::Percent, 1.0}},
                                          {"percent", {"%", Measure::Percent, 1.0}},
                                          {"pu", {"per unit", Measure::PerUnit, 1.0}},
                                          {"perunit", {"per unit", Measure::PerUnit, 1.0}},
                                          {"v", {"V", Measure::Volts, 1.0}},
                                          {"vdc", {"V", Measure::Volts, 1.0}},
                                          {"volt", {"V", Measure::Volts, 1.0}},
                                          {"volts", {"V", Measure::Volts, 1.0}},
                                          {"a", {"A", Measure::Amperes, 1.0}},
                                          {"adc", {"A", Measure::Amperes, 1.0}},
                                          {"amp", {"A", Measure::Amperes, 1.0}},
                                          {"amps", {"A", Measure::Amperes, 1.0}},
                                          {"ampere", {"A", Measure::Amperes, 1.0}},
                                          {"amperes", {"A", Measure::Amperes, 1.0}}}};

/// How a word names a field.
enum class Naming : std::uint8_t {
    Member,    ///< by its name in the model, whose unit it then has
    Words,     ///< plainly
    WithUnit,  ///< only with a unit of its measure
    Shaft      ///< only with W or kW
};

/// A heading of a field.
struct HeadingRow {
    std::string words;
    const TableField* field;
    Naming naming;
};

void AddWords(std::vector<HeadingRow>& rows, std::string_view words, const TableField& field, Naming naming) {
    for (std::size_t begin = 0; begin <= words.size();) {
        const std::size_t end = std::min(words.find('|', begin), words.size());
        rows.push_back({std::string(words.substr(begin, end - begin)), &field, naming});
        begin = end + 1;
    }
}

/// The words that the table of all properties has for a member.
std::string_view WordsOf(const TableField& field) {
    const std::int32_t kind = field.loadType == kAnyLoad ? load_type::kMiscellaneous : field.loadType;
    const Property<Load>* property = FindProperty(LoadProperties(kind), field.member);
    return property == nullptr ? std::string_view() : property->facts.words;
}

std::vector<HeadingRow> AllHeadings() {
    std::vector<HeadingRow> rows;
    for (const TableField& field : TableFields()) {
        rows.push_back({PlainLetters(field.member), &field, Naming::Member});
    }
    for (const TableField& field : TableFields()) {
        const Naming plain = NeedsUnit(field) ? Naming::WithUnit : Naming::Words;
        for (const std::string_view words : {WordsOf(field), field.caption}) {
            if (const std::string letters = PlainLetters(words); !letters.empty()) {
                rows.push_back({letters, &field, plain});
            }
        }
        for (const std::string_view words : {field.words.own, field.words.shared}) {
            if (!words.empty()) {
                AddWords(rows, words, field, plain);
            }
        }
        for (const std::string_view words : {field.words.withUnit, field.words.sharedWithUnit}) {
            if (!words.empty()) {
                AddWords(rows, words, field, Naming::WithUnit);
            }
        }
        if (!field.words.shaft.empty()) {
            AddWords(rows, field.words.shaft, field, Naming::Shaft);
        }
    }
    return rows;
}

const std::vector<HeadingRow>& Headings() {
    static const std::vector<HeadingRow> rows = AllHeadings();
    return rows;
}

/// Words of a heading, parted at whatever is neither letter, digit nor percent sign.
std::vector<std::string_view> WordsIn(std::string_view heading) {
    std::vector<std::string_view> words;
    std::size_t begin = 0;
    for (std::size_t at = 0; at <= heading.size(); ++at) {
        const unsigned char c = at < heading.size() ? static_cast<unsigned char>(heading[at]) : ' ';
        if (std::isalnum(c) == 0 && c != '%' && c < 0x80U) {
            if (at > begin) {
                words.push_back(heading.substr(begin, at - begin));
            }
            begin = at + 1;
        }
    }
    return words;
}

/// A way to read a heading.
struct Reading {
    std::string words;  ///< in plain letters
    std::optional<TableUnit> unit;
    bool isCut = false;  ///< whether something in brackets was left out, which may be a unit
};

/// The heading as a whole, as words before a unit, and without what stands in brackets.
std::vector<Reading> ReadingsOf(std::string_view heading) {
    std::vector<Reading> readings{{PlainLetters(heading), std::nullopt}};
    const std::vector<std::string_view> words = WordsIn(heading);
    for (const std::size_t length : {2U, 1U}) {
        if (words.size() < length) {
            continue;
        }
        const char* const begin = words[words.size() - length].data();
        const std::string_view last(begin, static_cast<std::size_t>(heading.data() + heading.size() - begin));
        if (const std::optional<TableUnit> unit = FindTableUnit(last)) {
            const auto before = static_cast<std::size_t>(begin - heading.data());
            readings.push_back({PlainLetters(heading.substr(0, before)), unit});
        }
    }
    const std::size_t bracket = heading.find_first_of("([");
    if (readings.size() == 1 && bracket != std::string_view::npos) {
        readings.push_back({PlainLetters(heading.substr(0, bracket)), std::nullopt, true});
    }
    return readings;
}

bool Means(const HeadingRow& row, const Reading& reading) {
    if (row.words != reading.words) {
        return false;
    }
    if (row.naming == Naming::Shaft) {
        return reading.unit && reading.unit->measure == Measure::RealPower;
    }
    if (reading.isCut) {
        return row.field->measure == Measure::Nothing;
    }
    return reading.unit ? IsUnitOf(*reading.unit, row.field->measure) : row.naming != Naming::WithUnit;
}

/// Adds a field, unless its kind has one already.
void Add(HeadingMeaning& meaning, const HeadingRow& row) {
    const auto clashes = [&](const TableField* known) {
        return known->loadType == row.field->loadType || known->loadType == kAnyLoad ||
               row.field->loadType == kAnyLoad;
    };
    if (std::ranges::none_of(meaning.fields, clashes)) {
        meaning.fields.push_back(row.field);
        if (row.naming == Naming::Member && PerFormUnit(*row.field) != 1.0 && !meaning.unit) {
            meaning.unit = TableUnit{.measure = row.field->measure};
        }
    }
}

}  // namespace

std::string PlainLetters(std::string_view text) {
    std::string plain;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || byte >= 0x80U || byte == '%' || byte == '>') {
            plain += static_cast<char>(byte < 0x80U ? std::tolower(byte) : byte);
        }
    }
    return plain;
}

std::optional<TableUnit> FindTableUnit(std::string_view word) {
    const auto* const found = std::ranges::find(kUnits, PlainLetters(word), &UnitRow::word);
    return found == kUnits.end() ? std::nullopt : std::optional(found->unit);
}

bool IsUnitOf(const TableUnit& unit, Measure measure) noexcept {
    return measure != Measure::Nothing &&
           (unit.measure == measure || (unit.measure == Measure::Percent && measure == Measure::PerUnit));
}

double InModel(double number, const TableUnit& unit, Measure measure) noexcept {
    if (unit.measure == Measure::Percent && measure == Measure::PerUnit) {
        return number / kPercents;
    }
    const double model = number * unit.factor;
    return unit.measure == Measure::RealPower && measure == Measure::Horsepower ? model / kWattsPerHorsepower
                                                                                : model;
}

HeadingMeaning MeaningOf(std::string_view heading) {
    HeadingMeaning meaning;
    const std::vector<Reading> readings = ReadingsOf(heading);
    for (const Reading& reading : readings) {
        for (const HeadingRow& row : Headings()) {
            if (Means(row, reading)) {
                Add(meaning, row);
                meaning.unit = reading.unit ? reading.unit : meaning.unit;
            }
        }
    }
    if (meaning.fields.empty()) {
        // Its cells may bring their units themselves, which then tell what they mean.
        for (const HeadingRow& row : Headings()) {
            if (row.words == readings.front().words && !row.words.empty()) {
                meaning.fields.push_back(row.field);
            }
        }
    }
    return meaning;
}

std::string LikeHeading(std::string_view heading) {
    std::vector<std::string_view> captions;
    for (const TableField& field : TableFields()) {
        captions.push_back(field.caption);
    }
    return std::string(SlipOf(heading, captions));
}

}  // namespace genvara
