#include "Properties.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "AllKindsOfLoad.h"
#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "LoadFactory.h"
#include "RaisedError.h"

namespace genvara {
namespace {

using Values = std::map<std::string_view, PropertyValue>;

template <typename Record>
Values ValuesOf(std::span<const Property<Record>> table, const Record& record) {
    Values values;
    for (const Property<Record>& row : table) {
        values.emplace(row.facts.name, row.get(record));
    }
    return values;
}

Values ValuesOf(const Load& load) {
    return ValuesOf(LoadProperties(load.LoadType()), load);
}

/// Calls a question for the facts of every member, with the kind of its record.
template <typename Question>
void ForAllFacts(Question question) {
    for (const RecordKind& kind : RecordKinds()) {
        for (const PropertyFacts* facts : kind.members) {
            SCOPED_TRACE(std::string(kind.name) + "." + std::string(facts->name));
            question(*facts);
        }
    }
}

TEST(Properties, AreThoseOfThirteenKindsOfRecord) {
    std::vector<std::string_view> names;
    for (const RecordKind& kind : RecordKinds()) {
        names.push_back(kind.name);
    }
    EXPECT_THAT(names, testing::ElementsAre("Project", "PowerSystem", "Designer", "Step", "AirConditioner",
                                            "BatteryCharger", "Lighting", "MedicalImaging", "Miscellaneous",
                                            "Motor", "Office", "UPS", "Drive"));
}

TEST(Properties, AreToldInFull) {
    for (const RecordKind& kind : RecordKinds()) {
        std::set<std::string_view> names;
        std::set<std::string_view> words;
        for (const PropertyFacts* facts : kind.members) {
            EXPECT_TRUE(names.insert(facts->name).second) << facts->name;
            EXPECT_TRUE(words.insert(facts->words).second) << facts->words;
        }
    }
    ForAllFacts([](const PropertyFacts& facts) {
        EXPECT_FALSE(facts.words.empty());
        EXPECT_TRUE(facts.meaning.ends_with(".")) << facts.meaning;
        EXPECT_EQ(facts.type == PropertyType::Code, !facts.codes.empty());
        std::set<std::string_view> codeNames;
        std::set<std::int32_t> codes;
        for (const CodeName& code : facts.codes) {
            EXPECT_FALSE(code.Name().empty()) << code.Code();
            EXPECT_TRUE(codeNames.insert(code.Name()).second) << code.Name();
            EXPECT_TRUE(codes.insert(code.Code()).second) << code.Code();
        }
        if (!facts.entered.HoldAnything() && facts.range.least && facts.entered.least) {
            EXPECT_GE(*facts.entered.least, *facts.range.least);
        }
    });
}

/// A value of a member's type.
PropertyValue Number(const PropertyFacts& facts, double number) {
    if (facts.type == PropertyType::Real) {
        return number;
    }
    return static_cast<std::int32_t>(number);
}

/// The next value of a member's type, up or down.
double Beside(const PropertyFacts& facts, double number, double towards) {
    const double step = towards > number ? 1.0 : -1.0;
    return facts.type == PropertyType::Real ? std::nextafter(number, towards) : number + step;
}

/// Whether the setter takes a number; a value that it takes must come back.
template <typename Record>
bool Takes(Record& record, const Property<Record>& row, double number) {
    const PropertyValue before = row.get(record);
    const PropertyValue value = Number(row.facts, number);
    try {
        row.set(record, value);
    } catch (const RaisedError&) {
        EXPECT_EQ(row.get(record), before) << "a refused value changes nothing";
        return false;
    }
    EXPECT_EQ(row.get(record), value);
    return true;
}

/// Holds what a table says of bounds against what setters do, on both sides of each edge.
template <typename Record>
void ExpectBounds(std::span<const Property<Record>> table, Record& record) {
    constexpr double kFar = 1e300;
    for (const Property<Record>& row : table) {
        const PropertyFacts& facts = row.facts;
        SCOPED_TRACE(std::string(facts.name));
        if (facts.type != PropertyType::Real && facts.type != PropertyType::Whole &&
            facts.type != PropertyType::Code) {
            EXPECT_TRUE(facts.range.HoldAnything());
            continue;
        }
        const bool real = facts.type == PropertyType::Real;
        const double lowest = real ? -kFar : std::numeric_limits<std::int32_t>::min();
        const double highest = real ? kFar : std::numeric_limits<std::int32_t>::max();
        const double least = facts.range.least.value_or(lowest);
        const double greatest = facts.range.greatest.value_or(highest);
        EXPECT_EQ(Takes(record, row, least), !facts.range.aboveLeast);
        EXPECT_TRUE(Takes(record, row, Beside(facts, least, kFar)) || !facts.only.empty());
        EXPECT_TRUE(Takes(record, row, greatest));
        if (facts.range.least) {
            EXPECT_FALSE(Takes(record, row, Beside(facts, least, -kFar)));
        }
        if (facts.range.greatest) {
            EXPECT_FALSE(Takes(record, row, Beside(facts, greatest, kFar)));
        }
        for (double number = least; !facts.only.empty() && number <= greatest; ++number) {
            const bool listed =
                std::ranges::find(facts.only, static_cast<std::int32_t>(number)) != facts.only.end();
            EXPECT_EQ(Takes(record, row, number), listed) << number;
        }
        for (const CodeName& code : facts.codes) {
            EXPECT_TRUE(Takes(record, row, code.Code()));
        }
    }
}

TEST(Properties, HaveTheBoundsOfTheirSetters) {
    const CDefaults defaults;
    CPwrSys site(defaults);
    ExpectBounds(PowerSystemProperties(), site);
    DesignLimits limits;
    ExpectBounds(DesignerProperties(), limits);
    CLoadStep step;
    ExpectBounds(StepProperties(), step);
    const MotorConversions motors;
    for (const LoadKindRow& kind : LoadKindRows()) {
        SCOPED_TRACE(std::string(kind.name));
        const std::unique_ptr<Load> load = kind.make(motors);
        ExpectBounds(LoadProperties(kind.loadType), *load);
    }
}

TEST(Properties, OfProjectAndSiteAreTheMembersOfTheirNames) {
    CDefaults defaults;
    CProject project(defaults, [] { return DateTime{}; });
    project.ProjName("a");
    project.Customer("b");
    project.Description("c");
    project.UserName("d");
    project.Created({2001, 2, 3, 4, 5, 6});
    project.LastModified({2002, 3, 4, 5, 6, 7});
    EXPECT_EQ(ValuesOf(ProjectProperties(), project),
              (Values{{"ProjName", "a"},
                      {"Customer", "b"},
                      {"Description", "c"},
                      {"UserName", "d"},
                      {"Created", DateTime{2001, 2, 3, 4, 5, 6}},
                      {"LastModified", DateTime{2002, 3, 4, 5, 6, 7}}}));
    CPwrSys site(defaults);
    site.Altitude(1.5);
    site.AmbTemp(2.5);
    site.Freq(50);
    site.GensetsInParallel(4);
    site.Phases(1);
    site.Fuel(2);
    site.RiseDutyCode(0);
    site.Voltage(208);
    site.ConnectCode(6);
    site.MaxFreqDipEnabled(true);
    site.MaxHarmonicsEnabled(false);
    site.MaxVoltageDip(31);
    site.MaxFreqDip(24);
    site.MaxHarmonics(19);
    const Values values{{"Altitude", 1.5},
                        {"AmbTemp", 2.5},
                        {"Freq", 50},
                        {"GensetsInParallel", 4},
                        {"Phases", 1},
                        {"Fuel", 2},
                        {"RiseDutyCode", 0},
                        {"Voltage", 208},
                        {"ConnectCode", 6},
                        {"MaxFreqDipEnabled", true},
                        {"MaxHarmonicsEnabled", false},
                        {"MaxVoltageDip", 31},
                        {"MaxFreqDip", 24},
                        {"MaxHarmonics", 19}};
    EXPECT_EQ(ValuesOf(PowerSystemProperties(), site), values);
    // And the same the other way round.
    CPwrSys other(defaults);
    for (const Property<CPwrSys>& row : PowerSystemProperties()) {
        row.set(other, values.at(row.facts.name));
    }
    EXPECT_EQ(other.MaxFreqDipEnabled(), true);
    EXPECT_EQ(other.MaxHarmonicsEnabled(), false);
    EXPECT_EQ(ValuesOf(PowerSystemProperties(), other), values);
}

TEST(Properties, OfStepAndLimitsAreTheMembersOfTheirNames) {
    CLoadStep step;
    step.Description("x");
    step.MaxVoltageDipOverride(17);
    EXPECT_EQ(ValuesOf(StepProperties(), step),
              (Values{{"Description", "x"}, {"MaxVoltageDipOverride", 17}}));
    DesignLimits limits;
    limits.MinLoading(1);
    limits.MaxLoading(2);
    limits.MaxSetsRecommended(3);
    limits.MaxSetsUndersized(4);
    EXPECT_EQ(
        ValuesOf(DesignerProperties(), limits),
        (Values{{"MinLoading", 1}, {"MaxLoading", 2}, {"MaxSetsRecommended", 3}, {"MaxSetsUndersized", 4}}));
}

/// What every load of `AddAllKinds` holds of what all kinds have, with the members of its own.
Values WithCommon(std::string name, Values own) {
    own.insert(
        {{"name", std::move(name)}, {"Description", "behind the tank"}, {"Quantity", 3}, {"Phases", 2}});
    return own;
}

TEST(Properties, OfLoadsAreTheMembersOfTheirNames) {
    CLoadStep step;
    AddAllKinds(step);
    const std::vector<Values> expected{
        WithCommon("A", {{"DataEntryMethod", 1}, {"BTU", -10.0}, {"Tonnage", 5.5}, {"HP", -10.0}}),
        WithCommon(
            "B",
            {{"BatteryVoltage", 48.0}, {"ChargeCurrent", 100.0}, {"ChargerInput", 0}, {"ChargerType", 2}}),
        WithCommon("C", {{"LightType", 2},
                         {"Ballast", 1},
                         {"RunningRealPower", 4000.0},
                         {"RunningPowerFactor", 0.9},
                         {"StartingRealPower", 5000.0},
                         {"StartingPowerFactor", 0.8}}),
        WithCommon("D", {{"ContVA", 8000.0},
                         {"PeakVA", 80000.0},
                         {"ContPowerFactor", 0.7},
                         {"PeakPowerFactor", 0.8},
                         {"MaxPeakDemandVoltDip", 7},
                         {"InputType", 2}}),
        WithCommon("E", {{"RunningRealPower", 1234.5}, {"RunningPowerFactor", 0.85}}),
        WithCommon("F", {{"DataEntryMethod", 2},
                         {"CodeLetter", "G"},
                         {"StartingMethod", 6},
                         {"StartsLoaded", false},
                         {"FirePump", true},
                         {"HP", -10.0},
                         {"RunningRealPower", 40000.0},
                         {"RunningAmps", 60.0},
                         {"StartingAmps", 350.0},
                         {"StartingAppPower", 250000.0},
                         {"StartingPF", 0.3},
                         {"SolidStateCurrentLimit", 400}}),
        WithCommon("G", {{"NumPCs", 4}, {"NumPrinters", 5}, {"NumFaxes", 6}, {"NumCopiers", 7}}),
        WithCommon("H", {{"InputType", 2},
                         {"Family", 1},
                         {"OutputRating", 70000.0},
                         {"Loading", 75},
                         {"Charging", 15},
                         {"InputFilterInstalled", true}}),
        WithCommon("I", {{"InputType", 1},
                         {"MtrRating", 30.0},
                         {"Efficiency", 92},
                         {"KVALimit", 110},
                         {"InputFilterInstalled", true}})};
    for (const Load& load : step) {
        SCOPED_TRACE(load.name());
        const Values& values = expected.at(static_cast<std::size_t>(load.LoadType()));
        EXPECT_EQ(ValuesOf(load), values);
        // The same the other way round, as a reader sets them: the values that are given.
        const std::unique_ptr<Load> other = MakeLoad(load.LoadType(), kCopyMotors);
        for (const Property<Load>& row : LoadProperties(load.LoadType())) {
            if (Exists(row, load)) {
                row.set(*other, values.at(row.facts.name));
                EXPECT_EQ(row.get(*other), row.get(load)) << row.facts.name;
            }
        }
    }
}

TEST(Properties, OfAnOfficeTellTheWattsThatItsMachinesTake) {
    for (const std::string_view machine : {"NumPCs", "NumPrinters", "NumFaxes", "NumCopiers"}) {
        const std::unique_ptr<Load> office = MakeLoad(load_type::kOffice, kCopyMotors);
        std::string meaning;
        for (const Property<Load>& row : LoadProperties(load_type::kOffice)) {
            if (row.facts.name.starts_with("Num")) {
                const bool isCounted = row.facts.name == machine;
                row.set(*office, isCounted ? 1 : 0);
                meaning += isCounted ? row.facts.meaning : "";
            }
        }
        EXPECT_THAT(meaning,
                    testing::EndsWith(fmt::format(", of {:.0f} W each.", office->RunningRealPower())));
    }
}

std::vector<std::string_view> ExistingOf(const Load& load) {
    std::vector<std::string_view> names;
    for (const Property<Load>& row : LoadProperties(load.LoadType())) {
        if (row.facts.method && Exists(row, load)) {
            names.push_back(row.facts.name);
        }
    }
    return names;
}

TEST(Properties, ThatTheEntryMethodDoesNotUseDoNotExist) {
    using testing::ElementsAre;
    CMtrLoad motor;
    EXPECT_THAT(ExistingOf(motor), ElementsAre("HP"));
    motor.DataEntryMethod(motor_entry::kRunningKW);
    EXPECT_THAT(ExistingOf(motor), ElementsAre("RunningRealPower"));
    motor.DataEntryMethod(motor_entry::kAmps);
    EXPECT_THAT(ExistingOf(motor), ElementsAre("RunningAmps", "StartingAmps"));
    motor.DataEntryMethod(3);
    EXPECT_THAT(ExistingOf(motor), ElementsAre());
    CAirCondLoad aircond;
    EXPECT_THAT(ExistingOf(aircond), ElementsAre("BTU"));
    aircond.DataEntryMethod(aircond_entry::kTonnage);
    EXPECT_THAT(ExistingOf(aircond), ElementsAre("Tonnage"));
    aircond.DataEntryMethod(aircond_entry::kHorsepower);
    EXPECT_THAT(ExistingOf(aircond), ElementsAre("HP"));
}

TEST(Properties, OfANewLoadTellWhichWereNotGiven) {
    const MotorConversions motors;
    std::vector<std::string> missing;
    for (const LoadKindRow& kind : LoadKindRows()) {
        const std::unique_ptr<Load> load = kind.make(motors);
        for (const Property<Load>& row : LoadProperties(kind.loadType)) {
            if (!IsGiven(row.facts, row.get(*load))) {
                missing.push_back(std::string(kind.name) + "." + std::string(row.facts.name));
            }
        }
    }
    EXPECT_THAT(missing,
                testing::ElementsAre("AirConditioner.BTU", "AirConditioner.Tonnage", "AirConditioner.HP",
                                     "Motor.CodeLetter", "Motor.HP", "Motor.RunningRealPower",
                                     "Motor.StartingAppPower", "Drive.MtrRating"));
}

}  // namespace
}  // namespace genvara
