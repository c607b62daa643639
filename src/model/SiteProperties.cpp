#include <algorithm>
#include <array>

#include "Properties.h"
#include "SiteLimits.h"

// A lambda of a row calls the pair of getter and setter: with a value it sets, without one it gets.

namespace genvara {
namespace {

using namespace site_limits;

/// Names of a table of codes with captions.
template <std::size_t Count, typename Row>
constexpr std::array<CodeName, Count> NamesOf(const std::array<Row, Count>& rows) {
    return [&]<std::size_t... Index>(std::index_sequence<Index...>) {
        return std::array<CodeName, Count>{CodeName(rows[Index].code, rows[Index].caption)...};
    }
    (std::make_index_sequence<Count>());
}

constexpr auto kFuelNames = NamesOf(kFuels);
constexpr auto kRiseDutyNames = NamesOf(kRiseDuties);
constexpr std::array<std::int32_t, 2> kPhaseCounts{1, 3};

constexpr std::array kProject{
    Member<CProject>({.name = "ProjName", .words = "project name", .meaning = "Name of the project."},
                     [](auto& project, auto... text) { return project.ProjName(text...); }),
    Member<CProject>({.name = "Customer", .words = "customer", .meaning = "Name of the customer."},
                     [](auto& project, auto... text) { return project.Customer(text...); }),
    Member<CProject>({.name = "Description", .words = "description", .meaning = "Free text."},
                     [](auto& project, auto... text) { return project.Description(text...); }),
    Member<CProject>({.name = "UserName", .words = "user name", .meaning = "Name of the engineer."},
                     [](auto& project, auto... text) { return project.UserName(text...); }),
    Member<CProject>({.name = "Created", .words = "created", .meaning = "When the project was begun."},
                     [](auto& project, auto... moment) { return project.Created(moment...); }),
    Member<CProject>(
        {.name = "LastModified", .words = "last saved", .meaning = "When the project was last saved."},
        [](auto& project, auto... moment) { return project.LastModified(moment...); }),
};

constexpr std::array kPowerSystem{
    Member<CPwrSys>({.name = "Altitude",
                     .words = "altitude",
                     .unit = "m",
                     .meaning = "Altitude of the site above sea level.",
                     .range = Range<double>{kLowestAltitude, kHighestAltitude}},
                    [](auto& site, auto... metres) { return site.Altitude(metres...); }),
    Member<CPwrSys>({.name = "AmbTemp",
                     .words = "ambient temperature",
                     .unit = "°C",
                     .meaning = "Ambient temperature at the site.",
                     .range = Range<double>{kLowestAmbTemp, kHighestAmbTemp}},
                    [](auto& site, auto... celsius) { return site.AmbTemp(celsius...); }),
    Member<CPwrSys>({.name = "Freq",
                     .words = "frequency",
                     .unit = "Hz",
                     .meaning = "Frequency of the site; catalogues have sets for 50 and 60 Hz.",
                     .range = Bounds(kLowestFreq, std::nullopt)},
                    [](auto& site, auto... hertz) { return site.Freq(hertz...); }),
    Member<CPwrSys>({.name = "GensetsInParallel",
                     .words = "gensets in parallel",

                     .meaning = "Number of equal sets that share the load.",
                     .range = Range<std::int32_t>{kFewestGensets, kMostGensets}},
                    [](auto& site, auto... sets) { return site.GensetsInParallel(sets...); }),
    Member<CPwrSys>(
        {.name = "Phases",
         .words = "phases of the site",

         .meaning = "Phases of the site's connection, which they follow whenever the project is sized.",
         .range = Range<std::int32_t>{1, 3},
         .only = kPhaseCounts},
        [](auto& site, auto... count) { return site.Phases(count...); }),
    Member<CPwrSys>({.name = "Fuel",
                     .words = "fuel",

                     .meaning = "Fuel of the sets.",
                     .codes = kFuelNames},
                    [](auto& site, auto... code) { return site.Fuel(code...); }),
    Member<CPwrSys>({.name = "RiseDutyCode",
                     .words = "temperature rise and duty",

                     .meaning = "Allowed temperature rise of the alternator, and the duty that goes with it.",
                     .codes = kRiseDutyNames},
                    [](auto& site, auto... code) { return site.RiseDutyCode(code...); }),
    Member<CPwrSys>({.name = "Voltage",
                     .words = "voltage",
                     .unit = "V",
                     .meaning = "Line-to-line voltage; what there are sets for, the catalogue says."},
                    [](auto& site, auto... volts) { return site.Voltage(volts...); }),
    Member<CPwrSys>({.name = "ConnectCode",
                     .words = "connection",

                     .meaning = "Winding connection: the ID of its row in the catalogue."},
                    [](auto& site, auto... code) { return site.ConnectCode(code...); }),
    Member<CPwrSys>({.name = "MaxFreqDipEnabled",
                     .words = "frequency dip is limited",

                     .meaning = "Whether MaxFreqDip is a requirement."},
                    [](auto& site, auto... enabled) { return site.MaxFreqDipEnabled(enabled...); }),
    Member<CPwrSys>({.name = "MaxHarmonicsEnabled",
                     .words = "distortion is limited",

                     .meaning = "Whether MaxHarmonics is a requirement."},
                    [](auto& site, auto... enabled) { return site.MaxHarmonicsEnabled(enabled...); }),
    Member<CPwrSys>({.name = "MaxVoltageDip",
                     .words = "maximum voltage dip",
                     .unit = "%",
                     .meaning = "Allowed voltage dip of every step.",
                     .range = Range<std::int32_t>{kLowestLimit, kHighestVoltageDip}},
                    [](auto& site, auto... percent) { return site.MaxVoltageDip(percent...); }),
    Member<CPwrSys>({.name = "MaxFreqDip",
                     .words = "maximum frequency dip",
                     .unit = "%",
                     .meaning = "Allowed frequency dip of every step.",
                     .range = Range<std::int32_t>{kLowestLimit, kHighestFreqDip}},
                    [](auto& site, auto... percent) { return site.MaxFreqDip(percent...); }),
    Member<CPwrSys>({.name = "MaxHarmonics",
                     .words = "maximum harmonics",
                     .unit = "%",
                     .meaning = "Allowed distortion of the voltage, THD.",
                     .range = Range<std::int32_t>{kLowestLimit, kHighestHarmonics}},
                    [](auto& site, auto... percent) { return site.MaxHarmonics(percent...); }),
};

constexpr std::array kDesigner{
    Member<DesignLimits>({.name = "MinLoading",
                          .words = "minimum loading",
                          .unit = "%",
                          .meaning = "Least loading of a recommended set.",
                          .range = Bounds(0.0, std::nullopt)},
                         [](auto& limits, auto... percent) { return limits.MinLoading(percent...); }),
    Member<DesignLimits>({.name = "MaxLoading",
                          .words = "maximum loading",
                          .unit = "%",
                          .meaning = "Most loading of a recommended set.",
                          .range = Bounds(std::nullopt, 100.0)},
                         [](auto& limits, auto... percent) { return limits.MaxLoading(percent...); }),
    Member<DesignLimits>({.name = "MaxSetsRecommended",
                          .words = "recommended sets to list",

                          .meaning = "Length of the list of recommended sets; below 0 counts as 0."},
                         [](auto& limits, auto... sets) { return limits.MaxSetsRecommended(sets...); }),
    Member<DesignLimits>({.name = "MaxSetsUndersized",
                          .words = "undersized sets to list",

                          .meaning = "Length of the list of undersized sets; below 0 counts as 0."},
                         [](auto& limits, auto... sets) { return limits.MaxSetsUndersized(sets...); }),
};

constexpr std::array kStep{
    Member<CLoadStep>({.name = "Description",
                       .words = "description of the step",

                       .meaning = "Name of the step, as reports show it."},
                      [](auto& step, auto... text) { return step.Description(text...); }),
    Member<CLoadStep>({.name = "MaxVoltageDipOverride",
                       .words = "maximum voltage dip of the step",
                       .unit = "%",
                       .meaning = "Allowed voltage dip of this step; a new step has that of the site.",
                       .range = kStepVoltageDip},
                      [](auto& step, auto... percent) { return step.MaxVoltageDipOverride(percent...); }),
};

}  // namespace

std::span<const Property<CProject>> ProjectProperties() noexcept {
    return kProject;
}

std::span<const Property<CPwrSys>> PowerSystemProperties() noexcept {
    return kPowerSystem;
}

std::span<const Property<DesignLimits>> DesignerProperties() noexcept {
    return kDesigner;
}

std::span<const Property<CLoadStep>> StepProperties() noexcept {
    return kStep;
}

}  // namespace genvara
