#include <algorithm>
#include <array>
#include <cstddef>

#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "COfficeLoad.h"
#include "CVFDLoad.h"
#include "LinearPower.h"
#include "LoadCodes.h"
#include "LoadFactory.h"
#include "Properties.h"

// A lambda of a row calls the pair of getter and setter: with a value it sets, without one it gets.

namespace genvara {
namespace {

using LoadProperty = Property<Load>;

// What forms take where setters take any number.
constexpr Bounds kNotNegative{0.0, std::nullopt};
constexpr Bounds kAboveZero = [] {
    Bounds bounds = kNotNegative;
    bounds.aboveLeast = true;
    return bounds;
}();

/// Row of a member of one kind.
template <typename Kind, typename Pair>
constexpr LoadProperty Of(PropertyFacts facts, Pair pair) {
    return Member<Load, Kind>(facts, pair);
}

/// A kind's own members behind those that all kinds share.
template <std::size_t PhaseCount, std::size_t Count>
constexpr std::array<LoadProperty, Count + 4> WithCommon(const std::array<CodeName, PhaseCount>& phases,
                                                         const std::array<LoadProperty, Count>& own) {
    const std::array common{
        Of<Load>({.name = "name",
                  .words = "name",
                  .meaning = "Name of the load, as reports show it.",
                  .record = 0},
                 [](auto& load, auto... text) { return load.name(text...); }),
        Of<Load>({.name = "Description", .words = "description", .meaning = "Free text.", .record = 0},
                 [](auto& load, auto... text) { return load.Description(text...); }),
        Of<Load>({.name = "Quantity",
                  .words = "quantity",
                  .meaning = "Number of identical units that start together.",
                  .range = kLoadQuantity,
                  .record = 0},
                 [](auto& load, auto... units) { return load.Quantity(units...); }),
        Of<Load>({.name = "Phases",
                  .words = "phases",
                  .meaning = "How the load is connected.",
                  .range = kLoadPhases,
                  .codes = phases,
                  .record = 0},
                 [](auto& load, auto... code) { return load.Phases(code...); }),
    };
    return [&]<std::size_t... Shared, std::size_t... Own>(std::index_sequence<Shared...>,
                                                          std::index_sequence<Own...>) {
        return std::array<LoadProperty, Count + 4>{common[Shared]..., own[Own]...};
    }
    (std::make_index_sequence<4>(), std::make_index_sequence<Count>());
}

constexpr auto kAirConditioner =
    WithCommon(load_codes::kPhases,
               std::array{
                   Of<CAirCondLoad>({.name = "DataEntryMethod",
                                     .words = "entry method",
                                     .meaning = "How the size is given.",
                                     .codes = load_codes::kAirCondEntries},
                                    [](auto& load, auto... code) { return load.DataEntryMethod(code...); }),
                   Of<CAirCondLoad>({.name = "BTU",
                                     .words = "cooling power",
                                     .unit = "BTU/hr",
                                     .meaning = "Cooling power.",
                                     .range = aircond_limits::kBTU,
                                     .method = aircond_entry::kBTU},
                                    [](auto& load, auto... btu) { return load.BTU(btu...); }),
                   Of<CAirCondLoad>({.name = "Tonnage",
                                     .words = "tons of refrigeration",
                                     .unit = "tons",
                                     .meaning = "Cooling power in tons of refrigeration.",
                                     .range = aircond_limits::kTonnage,
                                     .method = aircond_entry::kTonnage},
                                    [](auto& load, auto... tons) { return load.Tonnage(tons...); }),
                   Of<CAirCondLoad>({.name = "HP",
                                     .words = "horsepower of the compressor",
                                     .unit = "hp",
                                     .meaning = "Rated power of the compressor.",
                                     .range = aircond_limits::kHP,
                                     .method = aircond_entry::kHorsepower},
                                    [](auto& load, auto... hp) { return load.HP(hp...); }),
               });

constexpr auto kBatteryCharger = WithCommon(
    load_codes::kPhases,
    std::array{
        Of<CBatChrgLoad>({.name = "BatteryVoltage",
                          .words = "battery voltage",
                          .unit = "V DC",
                          .meaning = "Nominal voltage of the battery.",
                          .entered = kNotNegative},
                         [](auto& load, auto... volts) { return load.BatteryVoltage(volts...); }),
        Of<CBatChrgLoad>({.name = "ChargeCurrent",
                          .words = "charge current",
                          .unit = "A DC",
                          .meaning = "Current into the battery.",
                          .entered = kNotNegative},
                         [](auto& load, auto... amperes) { return load.ChargeCurrent(amperes...); }),
        Of<CBatChrgLoad>({.name = "ChargerInput",
                          .words = "type of charger",
                          .meaning = "Input stage; an SCR's counts for distortion.",
                          .codes = load_codes::kChargerInputs},
                         [](auto& load, auto... code) { return load.ChargerInput(code...); }),
        Of<CBatChrgLoad>({.name = "ChargerType",
                          .words = "application",
                          .meaning = "Application, which decides efficiency and power factor.",
                          .codes = load_codes::kChargerTypes},
                         [](auto& load, auto... code) { return load.ChargerType(code...); }),
    });

constexpr auto kLighting = WithCommon(
    load_codes::kSpreadPhases,
    std::array{
        Of<CLightLoad>({.name = "LightType",
                        .words = "type of lamp",
                        .meaning = "Kind of lamp.",
                        .codes = load_codes::kLamps},
                       [](auto& load, auto... code) { return load.LightType(code...); }),
        Of<CLightLoad>({.name = "Ballast",
                        .words = "ballast",
                        .meaning = "Ballast, which decides what counts for distortion.",
                        .codes = load_codes::kBallasts},
                       [](auto& load, auto... code) { return load.Ballast(code...); }),
        Of<CLightLoad>({.name = "RunningRealPower",
                        .words = "running power",
                        .unit = "W",
                        .meaning = "Real power of one unit while running.",
                        .range = linear_limits::kRealPower},
                       [](auto& load, auto... watts) { return load.RunningRealPower(watts...); }),
        Of<CLightLoad>({.name = "RunningPowerFactor",
                        .words = "running power factor",
                        .meaning = "Power factor while running.",
                        .range = linear_limits::kPowerFactor},
                       [](auto& load, auto... perUnit) { return load.RunningPowerFactor(perUnit...); }),
        Of<CLightLoad>({.name = "StartingRealPower",
                        .words = "starting power",
                        .unit = "W",
                        .meaning = "Real power of one unit while starting.",
                        .range = linear_limits::kRealPower},
                       [](auto& load, auto... watts) { return load.StartingRealPower(watts...); }),
        Of<CLightLoad>({.name = "StartingPowerFactor",
                        .words = "starting power factor",
                        .meaning = "Power factor while starting.",
                        .range = linear_limits::kPowerFactor},
                       [](auto& load, auto... perUnit) { return load.StartingPowerFactor(perUnit...); }),
    });

constexpr auto kMedicalImaging = WithCommon(
    load_codes::kPhases,
    std::array{
        Of<CMedEquipLoad>({.name = "ContVA",
                           .words = "continuous demand",
                           .unit = "VA",
                           .meaning = "Apparent power of one unit between exposures.",
                           .entered = medical_limits::kEnteredContVA},
                          [](auto& load, auto... va) { return load.ContVA(va...); }),
        Of<CMedEquipLoad>({.name = "PeakVA",
                           .words = "peak demand",
                           .unit = "VA",
                           .meaning = "Apparent power of one unit during an exposure.",
                           .entered = medical_limits::kEnteredPeakVA},
                          [](auto& load, auto... va) { return load.PeakVA(va...); }),
        Of<CMedEquipLoad>({.name = "ContPowerFactor",
                           .words = "continuous power factor",
                           .meaning = "Power factor between exposures.",
                           .entered = medical_limits::kEnteredPowerFactor},
                          [](auto& load, auto... perUnit) { return load.ContPowerFactor(perUnit...); }),
        Of<CMedEquipLoad>({.name = "PeakPowerFactor",
                           .words = "peak power factor",
                           .meaning = "Power factor during an exposure.",
                           .entered = medical_limits::kEnteredPowerFactor},
                          [](auto& load, auto... perUnit) { return load.PeakPowerFactor(perUnit...); }),
        Of<CMedEquipLoad>({.name = "MaxPeakDemandVoltDip",
                           .words = "maximum voltage dip during the peak",
                           .unit = "%",
                           .meaning = "Voltage dip that the equipment tolerates during an exposure.",
                           .entered = medical_limits::kEnteredVoltDip,
                           .record = 2},
                          [](auto& load, auto... percent) { return load.MaxPeakDemandVoltDip(percent...); }),
        Of<CMedEquipLoad>({.name = "InputType",
                           .words = "input type",
                           .meaning = "Code of an input stage, which is kept and used by nothing.",
                           .record = 2},
                          [](auto& load, auto... code) { return load.InputType(code...); }),
    });

constexpr auto kMiscellaneous = WithCommon(
    load_codes::kPhases,
    std::array{
        Of<CMiscLoad>({.name = "RunningRealPower",
                       .words = "power",
                       .unit = "W",
                       .meaning = "Real power of one unit, running and starting.",
                       .range = linear_limits::kRealPower},
                      [](auto& load, auto... watts) { return load.RunningRealPower(watts...); }),
        Of<CMiscLoad>({.name = "RunningPowerFactor",
                       .words = "power factor",
                       .meaning = "Power factor, running and starting.",
                       .range = linear_limits::kPowerFactor},
                      [](auto& load, auto... perUnit) { return load.RunningPowerFactor(perUnit...); }),
    });

constexpr auto kMotor = WithCommon(
    load_codes::kPhases,
    std::array{
        Of<CMtrLoad>({.name = "DataEntryMethod",
                      .words = "entry method",
                      .meaning = "How the size is given.",
                      .codes = load_codes::kMotorEntries},
                     [](auto& load, auto... code) { return load.DataEntryMethod(code...); }),
        Of<CMtrLoad>({.name = "CodeLetter",
                      .words = "code letter",
                      .meaning = "Letter of the motor's locked-rotor kVA per horsepower.",
                      .oneCharacter = true},
                     [](auto& load, auto... letter) { return load.CodeLetter(letter...); }),
        Of<CMtrLoad>({.name = "StartingMethod",
                      .words = "starting method",
                      .meaning = "How the motor is started.",
                      .codes = load_codes::kStartingMethods},
                     [](auto& load, auto... code) { return load.StartingMethod(code...); }),
        Of<CMtrLoad>({.name = "StartsLoaded",
                      .words = "starts loaded",
                      .meaning = "Whether the motor starts under load."},
                     [](auto& load, auto... loaded) { return load.StartsLoaded(loaded...); }),
        Of<CMtrLoad>({.name = "FirePump",
                      .words = "fire pump",
                      .meaning = "Whether the motor drives a fire pump, whose step may dip by 15 % at most."},
                     [](auto& load, auto... pump) { return load.FirePump(pump...); }),
        Of<CMtrLoad>({.name = "HP",
                      .words = "horsepower",
                      .unit = "hp",
                      .meaning = "Rated power.",
                      .range = motor_limits::kHP,
                      .method = motor_entry::kHorsepower,
                      .record = 2},
                     [](auto& load, auto... hp) { return load.HP(hp...); }),
        Of<CMtrLoad>({.name = "RunningRealPower",
                      .words = "running power",
                      .unit = "W",
                      .meaning = "Real power of one unit while running.",
                      .range = motor_limits::kRunningRealPower,
                      .method = motor_entry::kRunningKW,
                      .record = 2},
                     [](auto& load, auto... watts) { return load.RunningRealPower(watts...); }),
        Of<CMtrLoad>({.name = "RunningAmps",
                      .words = "running amps",
                      .unit = "A",
                      .meaning = "Current of one unit while running.",
                      .entered = kAboveZero,
                      .method = motor_entry::kAmps,
                      .record = 2},
                     [](auto& load, auto... amperes) { return load.RunningAmps(amperes...); }),
        Of<CMtrLoad>({.name = "StartingAmps",
                      .words = "starting amps",
                      .unit = "A",
                      .meaning = "Current of one unit at standstill.",
                      .entered = kAboveZero,
                      .method = motor_entry::kAmps,
                      .record = 2},
                     [](auto& load, auto... amperes) { return load.StartingAmps(amperes...); }),
        Of<CMtrLoad>({.name = "StartingAppPower",
                      .words = "starting apparent power",
                      .unit = "VA",
                      .meaning = "Apparent power of one unit while starting.",
                      .range = motor_limits::kStartingAppPower,
                      .record = 3},
                     [](auto& load, auto... va) { return load.StartingAppPower(va...); }),
        Of<CMtrLoad>({.name = "StartingPF",
                      .words = "starting power factor",
                      .meaning = "Power factor while starting.",
                      .entered = Range<double>{0.0, 1.0},
                      .record = 3},
                     [](auto& load, auto... perUnit) { return load.StartingPF(perUnit...); }),
        Of<CMtrLoad>(
            {.name = "SolidStateCurrentLimit",
             .words = "current limit of the solid-state starter",
             .unit = "%",
             .meaning = "Starting current that a solid-state starter allows, of the running current.",
             .entered = motor_limits::kEnteredCurrentLimit,
             .record = 3},
            [](auto& load, auto... percent) { return load.SolidStateCurrentLimit(percent...); }),
    });

/// A count of office machines.
constexpr PropertyFacts Machines(std::string_view name, std::string_view words, std::string_view meaning) {
    return {.name = name, .words = words, .meaning = meaning, .range = Bounds(0.0, std::nullopt)};
}

constexpr auto kOffice = WithCommon(
    load_codes::kSpreadPhases,
    std::array{
        Of<COfficeLoad>(Machines("NumPCs", "desktop computers", "Desktop computers, of 300 W each."),
                        [](auto& load, auto... count) { return load.NumPCs(count...); }),
        Of<COfficeLoad>(Machines("NumPrinters", "printers", "Printers, of 600 W each."),
                        [](auto& load, auto... count) { return load.NumPrinters(count...); }),
        Of<COfficeLoad>(Machines("NumFaxes", "fax machines", "Fax machines, of 600 W each."),
                        [](auto& load, auto... count) { return load.NumFaxes(count...); }),
        Of<COfficeLoad>(Machines("NumCopiers", "copiers", "Copiers, of 1200 W each."),
                        [](auto& load, auto... count) { return load.NumCopiers(count...); }),
    });

constexpr auto kUPS = WithCommon(
    load_codes::kPhases,
    std::array{
        Of<CUPSLoad>({.name = "InputType",
                      .words = "type of input",
                      .meaning = "Input stage, which decides what counts for distortion.",
                      .codes = load_codes::kInputTypes},
                     [](auto& load, auto... code) { return load.InputType(code...); }),
        Of<CUPSLoad>({.name = "Family",
                      .words = "family",
                      .meaning = "How the supply works; only one on line follows loading and charging.",
                      .codes = load_codes::kUPSFamilies},
                     [](auto& load, auto... code) { return load.Family(code...); }),
        Of<CUPSLoad>({.name = "OutputRating",
                      .words = "rating",
                      .unit = "VA",
                      .meaning = "Rated output of one unit.",
                      .range = ups_limits::kOutputRating},
                     [](auto& load, auto... va) { return load.OutputRating(va...); }),
        Of<CUPSLoad>({.name = "Loading",
                      .words = "loading",
                      .unit = "%",
                      .meaning = "Share of the rating that is in use.",
                      .range = ups_limits::kLoading},
                     [](auto& load, auto... percent) { return load.Loading(percent...); }),
        Of<CUPSLoad>({.name = "Charging",
                      .words = "battery charging",
                      .unit = "%",
                      .meaning = "Power that charges the battery, of the load in use.",
                      .range = ups_limits::kCharging},
                     [](auto& load, auto... percent) { return load.Charging(percent...); }),
        Of<CUPSLoad>({.name = "InputFilterInstalled",
                      .words = "input filter",
                      .meaning = "Whether an input filter is installed."},
                     [](auto& load, auto... filter) { return load.InputFilterInstalled(filter...); }),
    });

constexpr auto kDrive = WithCommon(
    load_codes::kPhases,
    std::array{
        Of<CVFDLoad>({.name = "InputType",
                      .words = "type of input",
                      .meaning = "Input stage, which decides what counts for distortion.",
                      .codes = load_codes::kInputTypes},
                     [](auto& load, auto... code) { return load.InputType(code...); }),
        Of<CVFDLoad>({.name = "MtrRating",
                      .words = "motor rating",
                      .unit = "hp",
                      .meaning = "Rated power of the motor.",
                      .range = motor_limits::kHP},
                     [](auto& load, auto... hp) { return load.MtrRating(hp...); }),
        Of<CVFDLoad>({.name = "Efficiency",
                      .words = "efficiency",
                      .unit = "%",
                      .meaning = "Efficiency of the drive.",
                      .range = drive_limits::kEfficiency},
                     [](auto& load, auto... percent) { return load.Efficiency(percent...); }),
        Of<CVFDLoad>({.name = "KVALimit",
                      .words = "start kVA limit",
                      .unit = "%",
                      .meaning = "Starting kVA that the drive allows, of the running kVA.",
                      .range = drive_limits::kKVALimit},
                     [](auto& load, auto... percent) { return load.KVALimit(percent...); }),
        Of<CVFDLoad>({.name = "InputFilterInstalled",
                      .words = "input filter",
                      .meaning = "Whether an input filter is installed."},
                     [](auto& load, auto... filter) { return load.InputFilterInstalled(filter...); }),
    });

/// By load type.
constexpr std::array<std::span<const LoadProperty>, load_type::kCount> kKinds{
    kAirConditioner, kBatteryCharger, kLighting, kMedicalImaging, kMiscellaneous,
    kMotor,          kOffice,         kUPS,      kDrive};
static_assert(!kKinds.back().empty(), "a table for each kind");

}  // namespace

std::span<const LoadProperty> LoadProperties(std::int32_t loadType) noexcept {
    const bool known = loadType >= 0 && loadType < static_cast<std::int32_t>(kKinds.size());
    return known ? kKinds[static_cast<std::size_t>(loadType)] : std::span<const LoadProperty>();
}

}  // namespace genvara
