#include "CatalogueRules.h"

#include <array>

// A text beside a number is told by itself; "+ 0" keeps it from being compared as one.
//
// Why the bounds stand where they do: 1e9 kW or kVA times sixteen sets, and any quotient by 0.001 of them, is
// a number still. A step of all that a profile can hold is some 1e9 kW; by a base of 0.001 kW and an exponent
// of 10 its dip is a number still. The highest and hottest site that a project can have lies at 4,572 m and
// 66 degrees.

namespace genvara {
namespace {

constexpr std::string_view kNotPositive = "is not above 0";
constexpr std::string_view kNoSize = "is beyond any generator set";
constexpr std::string_view kTwice = "stands there twice";
constexpr std::string_view kEmpty = "is empty";
constexpr std::string_view kNoVoltage = "is beyond any generator's voltage";
constexpr std::string_view kDataInPart =
    "is given and another of the three is Null, so that the set counts as one without data of its dip";

// Conditions that several columns share; {0} is the column.
constexpr std::string_view kIsNotPositive = "{0} <= 0";
constexpr std::string_view kHasNoSize = "{0} > 0 and ({0} < 0.001 or {0} > 1e9)";
constexpr std::string_view kIsEmpty = "trim({0}) = ''";

constexpr auto kRules = std::to_array<CatalogueRule>({
    {"Gensets", "Frequency", "{0} not in (50, 60)", "is neither 50 nor 60 Hz"},
    {"Gensets", "WindingConnection", "{0} not in (Select ID from Connections where ID is not null)",
     "is no ID of Connections"},
    {"Gensets", "VoltageLL", kIsNotPositive, kNotPositive},
    {"Gensets", "VoltageLL", "{0} > 1e6", kNoVoltage},
    {"Gensets", "Fuel", "{0} not in (1, 2, 3, 4)", "is no fuel code from 1 to 4"},
    {"Gensets", "DerateCode", "{0} not in (Select ID from [Derate Codes] where ID is not null)",
     "is no ID of [Derate Codes]"},
    {"Gensets", "AltModel", "{0} not in (Select ID from [Alternators] where ID is not null)",
     "is no ID of [Alternators]"},
    {"Gensets", "GensetModel", kIsEmpty, kEmpty},
    {"Gensets", "GensetModel",
     "rowid not in (Select min(rowid) from [Gensets] group by Frequency, WindingConnection, VoltageLL, Fuel, "
     "GensetModel, AltModel)",
     "stands there twice for the same site and alternator"},
    {"Gensets", "EngineModel", kIsEmpty, kEmpty},
    {"Gensets", "Rating80C", kIsNotPositive, kNotPositive},
    {"Gensets", "Rating105C", kIsNotPositive, kNotPositive},
    {"Gensets", "Rating125C", kIsNotPositive, kNotPositive},
    {"Gensets", "Rating130C", kIsNotPositive, kNotPositive},
    {"Gensets", "Rating150C", kIsNotPositive, kNotPositive},
    {"Gensets", "Rating80C", kHasNoSize, kNoSize},
    {"Gensets", "Rating150C", kHasNoSize, kNoSize},
    {"Gensets", "Rating105C", "{0} > 0 and {0} < Rating80C + 0",
     "is below Rating80C, though the allowed rise is higher"},
    {"Gensets", "Rating125C", "{0} > 0 and {0} < Rating105C + 0",
     "is below Rating105C, though the allowed rise is higher"},
    {"Gensets", "Rating130C", "{0} > 0 and {0} < Rating125C + 0",
     "is below Rating125C, though the allowed rise is higher"},
    {"Gensets", "Rating150C", "{0} > 0 and {0} < Rating130C + 0",
     "is below Rating130C, though the allowed rise is higher"},
    {"Gensets", "LRkVA", kIsNotPositive, kNotPositive},
    {"Gensets", "LRkVA", kHasNoSize, kNoSize},
    {"Gensets", "StartingPower", kIsNotPositive, kNotPositive},
    {"Gensets", "StartingPower", kHasNoSize, kNoSize},
    {"Gensets", "BaseFreqDipKW", kIsNotPositive, "is not above 0; where there is no data it is empty"},
    {"Gensets", "BaseFreqDipKW", kHasNoSize, kNoSize},
    {"Gensets", "BaseFreqDip", "{0} not between 0 and 100",
     "is no percentage of the frequency, from 0 to 100"},
    {"Gensets", "ExpC", "{0} not between 0 and 10", "is no exponent of a dip curve, from 0 to 10"},
    {"Gensets", "BaseFreqDipKW", "BaseFreqDip is null or ExpC is null", kDataInPart},
    {"Gensets", "BaseFreqDip", "BaseFreqDipKW is null", kDataInPart},
    {"Gensets", "ExpC", "BaseFreqDipKW is null and BaseFreqDip is null", kDataInPart},

    {"Derate Codes", "ID",
     "rowid not in (Select min(rowid) from [Derate Codes] where ID is not null group by ID)", kTwice},
    {"Derate Codes", "AltDerateBase", "abs({0}) > 1e6", "is beyond any altitude"},
    {"Derate Codes", "AltDerateSlope", "{0} < 0", "is below 0: a rating would rise with the altitude"},
    {"Derate Codes", "AltDerateSlope", "{0} > 1e6", "is beyond any loss"},
    {"Derate Codes", "TempDerateBase", "abs({0}) > 1e6", "is beyond any temperature"},
    {"Derate Codes", "TempDerateSlope", "{0} < 0", "is below 0: a rating would rise with the temperature"},
    {"Derate Codes", "TempDerateSlope", "{0} > 1e6", "is beyond any loss"},
    {"Derate Codes", "TempDerateSlope",
     "{0} between 0 and 1e6 and (4572 - AltDerateBase) * AltDerateSlope / 100 > 100 and "
     "(66 - TempDerateBase) * {0} / 10 > 100",
     "takes more than the whole rating where the altitude does so too, which multiply to a rating again"},

    {"Alternators", "ID",
     "rowid not in (Select min(rowid) from [Alternators] where ID is not null group by ID)", kTwice},
    {"Alternators", "ModelNum", kIsEmpty, kEmpty},
    {"Alternators", "ModelNum", "{0} like '-%'",
     "shows as nothing: of a model the text before the first dash is shown"},
    {"Alternators", "BasekW", "{0} < 0", "is below 0"},
    {"Alternators", "BasekW",
     "{0} = 0 and ID in (Select AltModel from [Gensets] where WindingConnection in (1, 2))",
     "gives no distortion, and none is limited, for sets on connections that have one"},
    {"Alternators", "BasekW", kHasNoSize, kNoSize},
    {"Alternators", "BaseVolts", "{0} < 0", "is below 0"},
    {"Alternators", "BaseVolts",
     "{0} = 0 and ID in (Select AltModel from [Gensets] where WindingConnection in (1, 2))",
     "gives no distortion, and none is limited, for sets on connections that have one"},
    {"Alternators", "BaseVolts", "{0} > 0 and ({0} < 1 or {0} > 1e6)", kNoVoltage},
    {"Alternators", "SubtransReact", "{0} <= 0 and BasekW > 0 and BaseVolts > 0",
     "is not above 0, though the alternator has a base"},
    {"Alternators", "SubtransReact", "{0} > 0 and {0} not between 0.001 and 1",
     "is no reactance per unit, up to 1: 15 % is 0.15"},

    {"Properties", "Version", "trim({0}) = '' and rowid = (Select max(rowid) from [Properties])",
     "is empty, and reports print it"},

    {"Connections", "ID",
     "rowid not in (Select min(rowid) from Connections where ID is not null group by ID)", kTwice},
    {"Connections", "Connection Type", kIsEmpty, kEmpty},
    {"Connections", "Connection Type",
     "trim({0}) <> '' and rowid not in (Select min(rowid) from Connections group by trim(\"Connection "
     "Type\"))",
     kTwice},
    {"Connections", "Phases", "{0} not in (1, 3)", "is neither 1 nor 3"},
    {"Connections", "Phases", "{0} = 1 and ID in (1, 2)",
     "is not 3, which the connections 1 and 2 have: distortion is worked out for them"},

    {"Motor Code Letters", "CodeLetter", "length(trim({0}, ' ')) <> 1", "is not one letter"},
    {"Motor Code Letters", "CodeLetter",
     "length(trim({0}, ' ')) = 1 and rowid not in "
     "(Select min(rowid) from [Motor Code Letters] group by upper(trim(CodeLetter, ' ')))",
     kTwice},
    {"Motor Code Letters", "LRkVAPerHP", kIsNotPositive, kNotPositive},
    {"Motor Code Letters", "LRkVAPerHP", "{0} > 1000", "is beyond any motor"},
    {"Motor Code Letters", "LRkVAPerHP",
     "{0} > 0 and {0} < (Select other.LRkVAPerHP from [Motor Code Letters] as other where "
     "upper(trim(other.CodeLetter, ' ')) < upper(trim(one.CodeLetter, ' ')) "
     "order by upper(trim(other.CodeLetter, ' ')) desc limit 1)",
     "is below that of the letter before"},

    {"Motor Starting Multiplier", "Multiplier", kIsNotPositive, kNotPositive},
    {"Motor Starting Multiplier", "Multiplier", "{0} > 1",
     "is above 1: a starter lets no more through than the line"},

    {"Motor Power Conversions", "HP", kIsNotPositive, kNotPositive},
    {"Motor Power Conversions", "RunningKW", kIsNotPositive, kNotPositive},
    {"Motor Power Conversions", "RunningKVA", kIsNotPositive, kNotPositive},
    {"Motor Power Conversions", "RunningKVA", "{0} > 0 and {0} < RunningKW + 0", "is below RunningKW"},
    {"Motor Power Conversions", "SPF", "{0} <= 0 or {0} > 1", "is no power factor, above 0 and up to 1"},
});

}  // namespace

std::span<const CatalogueRule> CatalogueRules() noexcept {
    return kRules;
}

}  // namespace genvara
