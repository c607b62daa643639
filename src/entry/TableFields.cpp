#include "TableFields.h"

#include <algorithm>
#include <array>
#include <limits>

#include "AirCondEntry.h"
#include "CVFDLoad.h"
#include "InputTypes.h"
#include "LinearEntry.h"
#include "LoadKinds.h"
#include "MedEntry.h"
#include "MotorEntry.h"
#include "Properties.h"

namespace genvara {
namespace {

constexpr double kPerKilo = 1000.0;

using load_type::kAirConditioning;
using load_type::kBatteryCharger;
using load_type::kLighting;
using load_type::kMedicalImaging;
using load_type::kMiscellaneous;
using load_type::kMotor;
using load_type::kOffice;
using load_type::kUPS;
using load_type::kVFD;

// Bounds of the forms' fields.

NumberBounds Quantity() {
    return {.least = kLeastQuantity, .most = kMostQuantity, .whole = true};
}
NumberBounds Count() {
    return {.most = std::numeric_limits<std::int32_t>::max(), .whole = true};
}
template <std::size_t Method>
NumberBounds AirCondSize() {
    return SizeBounds(kSizeMethods[Method]);
}
NumberBounds BatteryVolts() {
    return {.unit = " V"};
}
NumberBounds ChargeAmperes() {
    return {.unit = " A"};
}
NumberBounds ContKVA() {
    return {.most = kMostContKVA, .above = true, .unit = " kVA"};
}
NumberBounds PeakKVA() {
    return {.most = kMostPeakKVA, .above = true, .unit = " kVA"};
}
NumberBounds MedFactor() {
    return {.most = kMostMedPowerFactor, .above = true};
}
NumberBounds MedDip() {
    return PercentBounds(medical_limits::kEnteredVoltDip);
}
template <std::int32_t Method>
NumberBounds MotorSize() {
    return MotorPowerBounds(Method);
}
NumberBounds CurrentLimit() {
    return PercentBounds(motor_limits::kEnteredCurrentLimit);
}
NumberBounds Rating() {
    return {.least = 1, .most = ups_limits::kOutputRating.greatest / kPerKilo, .whole = true, .unit = " kVA"};
}
NumberBounds Loading() {
    return PercentBounds(ups_limits::kLoading);
}
NumberBounds Charging() {
    return PercentBounds(ups_limits::kCharging);
}
NumberBounds MotorRating() {
    return {.most = motor_limits::kHP.greatest, .above = true, .unit = " HP"};
}
NumberBounds Efficiency() {
    return PercentBounds(drive_limits::kEfficiency);
}
NumberBounds KVALimit() {
    return PercentBounds(drive_limits::kKVALimit);
}

/// A text, a choice or a yes.
constexpr TableField Cell(std::int32_t loadType, std::string_view member, std::string_view caption,
                          CellType type, HeadingWords words = {}) {
    return {.loadType = loadType, .member = member, .caption = caption, .type = type, .words = words};
}

constexpr TableField Figure(std::int32_t loadType, std::string_view member, std::string_view caption,
                            HeadingWords words, Measure measure, NumberBounds (*bounds)(),
                            double perFormUnit = 1.0) {
    return {.loadType = loadType,
            .member = member,
            .caption = caption,
            .type = CellType::Number,
            .words = words,
            .measure = measure,
            .bounds = bounds,
            .perFormUnit = perFormUnit};
}

// Words of headings. Those that need a unit mean a load's size in whatever unit stands with them; the empty
// one among them is a heading of a unit alone.
constexpr std::string_view kSize =
    "|power|ratedpower|rating|size|capacity|load|running|runningpower|runpower|run|demand";
/// What a motor takes from the line.
constexpr std::string_view kDrawn = "|power|load|running|runningpower|runpower|run|demand";
/// What a motor gives at its shaft, by which it is sold.
constexpr std::string_view kShaft = "motorrating|motorsize|motorpower|rating|ratedpower|size|capacity";
constexpr std::string_view kCooling =
    "|power|ratedpower|rating|size|capacity|load|coolingpower|coolingcapacity|cooling";
constexpr std::string_view kStart = "starting|start|startingpower|startpower|startingcurrent|startcurrent";
constexpr std::string_view kFactor = "pf|powerfactor|runningpf|runpf|runningpowerfactor|cosphi|cosfi";
constexpr std::string_view kFilter =
    "inputfilter|inputfilteringinstalled|inputfiltering|filter|filterinstalled";
constexpr std::string_view kRectifier = "inputtype|typeofinput|input|inputstage|rectifier";
constexpr std::string_view kMotorSize = "horsepower|motorrating|motorsize|motorpower";

constexpr std::array kFields{
    Cell(kAnyLoad, kStepColumn, "Step", CellType::Text,
         {.own = "stepnumber|stepno|stepname|loadstep|loadstepnumber"}),
    Cell(kAnyLoad, kTypeColumn, "Type", CellType::Choice, {.own = "kind|typeofload|kindofload|loadkind"}),
    Cell(kAnyLoad, "name", "Name", CellType::Text, {.own = "loadname|load|item|tag|equipment"}),
    Cell(kAnyLoad, "Description", "Description", CellType::Text,
         {.own = "notes|note|remarks|remark|comment|comments"}),
    Figure(kAnyLoad, "Quantity", "Quantity", {.own = "qty|count|number|units|noofunits"}, Measure::Nothing,
           Quantity),
    Cell(kAnyLoad, "Phases", "Phases", CellType::Choice, {.own = "phase|connection"}),

    Cell(kAirConditioning, kEntryMethodName, "Entry method", CellType::Choice),
    Figure(kAirConditioning, "BTU", "BTU / hr", {.sharedWithUnit = kCooling}, Measure::Cooling,
           AirCondSize<aircond_entry::kBTU>),
    Figure(kAirConditioning, "Tonnage", "Tonnage", {.sharedWithUnit = kCooling}, Measure::Refrigeration,
           AirCondSize<aircond_entry::kTonnage>),
    Figure(kAirConditioning, "HP", "Compressor HP",
           {.own = "horsepower",
            .withUnit = "compressor|compressorsize|compressorpower",
            .sharedWithUnit = kSize},
           Measure::Horsepower, AirCondSize<aircond_entry::kHorsepower>),

    Figure(kBatteryCharger, "BatteryVoltage", "Battery Voltage",
           {.own = "batteryvolts", .withUnit = "battery"}, Measure::Volts, BatteryVolts),
    Figure(kBatteryCharger, "ChargeCurrent", "Charge Current",
           {.own = "chargingcurrent", .withUnit = "charge|charging"}, Measure::Amperes, ChargeAmperes),
    Cell(kBatteryCharger, "ChargerInput", "Charger Input", CellType::Choice, {.shared = kRectifier}),
    Cell(kBatteryCharger, "ChargerType", "Application", CellType::Choice, {.own = "chargerapplication"}),

    Cell(kLighting, "LightType", "Lamp", CellType::Choice, {.own = "lamptype"}),
    Cell(kLighting, "Ballast", "Ballast", CellType::Choice, {.own = "ballasttype"}),
    Figure(kLighting, "RunningRealPower", "Running kW", {.sharedWithUnit = kSize}, Measure::RealPower,
           LinearPowerBounds, kPerKilo),
    Figure(kLighting, "RunningPowerFactor", "Running pF", {.shared = kFactor}, Measure::PerUnit,
           LinearFactorBounds),

    Figure(kMedicalImaging, "ContVA", "Continuous kVA",
           {.withUnit = "continuous|continuouspower|cont", .sharedWithUnit = kSize}, Measure::ApparentPower,
           ContKVA, kPerKilo),
    Figure(kMedicalImaging, "PeakVA", "Max. Peak kVA",
           {.withUnit = "peak|peakpower|maxpeak|maxmomentary", .sharedWithUnit = kStart},
           Measure::ApparentPower, PeakKVA, kPerKilo),
    Figure(kMedicalImaging, "ContPowerFactor", "Continuous pF", {.own = "contpf", .shared = kFactor},
           Measure::PerUnit, MedFactor),
    Figure(kMedicalImaging, "PeakPowerFactor", "Peak pF", {.own = "startingpf|startingpowerfactor"},
           Measure::PerUnit, MedFactor),
    Figure(kMedicalImaging, "MaxPeakDemandVoltDip", "Max. Voltage Dip",
           {.own = "maxvoltdip|voltagedip|peakvoltagedip|dip"}, Measure::Percent, MedDip),

    Figure(kMiscellaneous, "RunningRealPower", "kW", {.sharedWithUnit = kSize}, Measure::RealPower,
           LinearPowerBounds, kPerKilo),
    Figure(kMiscellaneous, "RunningPowerFactor", "pF", {.shared = kFactor}, Measure::PerUnit,
           LinearFactorBounds),

    Cell(kMotor, kEntryMethodName, "Entry method", CellType::Choice),
    Figure(kMotor, "HP", "Horsepower", {.shared = kMotorSize, .sharedWithUnit = kSize, .shaft = kShaft},
           Measure::Horsepower, MotorSize<motor_entry::kHorsepower>),
    Figure(kMotor, "RunningRealPower", "Running kW", {.sharedWithUnit = kDrawn}, Measure::RealPower,
           MotorSize<motor_entry::kRunningKW>, kPerKilo),
    Figure(kMotor, "RunningAmps", "Running Amps",
           {.own = "runamps|runningcurrent|fullloadamps|fla", .withUnit = "running|run"}, Measure::Amperes,
           MotorRunAmpsBounds),
    Figure(kMotor, "StartingAmps", "Starting Amps",
           {.own = "startamps|lockedrotoramps|lra", .sharedWithUnit = kStart}, Measure::Amperes,
           MotorSize<motor_entry::kAmps>),
    Cell(kMotor, "CodeLetter", "Code Letter", CellType::Text, {.own = "code|nemacode|nemacodeletter"}),
    Cell(kMotor, "StartingMethod", "Starting Method", CellType::Choice,
         {.own = "start|starter|startmethod|starting|startertype"}),
    Cell(kMotor, "StartsLoaded", "Starts Loaded", CellType::Truth,
         {.own = "loaded|startloaded|loadedunloaded|loadedunloadedstarting|loadedstart"}),
    Cell(kMotor, "FirePump", "Fire Pump", CellType::Truth, {.own = "firepumpmotor"}),
    Figure(kMotor, "StartingAppPower", "Starting kVA", {.sharedWithUnit = kStart}, Measure::ApparentPower,
           MotorStartingKVABounds, kPerKilo),
    Figure(kMotor, "StartingPF", "Starting pF", {.own = "startpf"}, Measure::PerUnit, MotorStartingPFBounds),
    Figure(kMotor, "SolidStateCurrentLimit", "Current Limit", {.own = "startcurrentlimit"}, Measure::Percent,
           CurrentLimit),

    Figure(kOffice, "NumPCs", "Num. Desktop Computers", {.own = "computers|pcs|desktops"}, Measure::Nothing,
           Count),
    Figure(kOffice, "NumPrinters", "Num. Printers", {}, Measure::Nothing, Count),
    Figure(kOffice, "NumFaxes", "Num. Fax Machines", {.own = "faxes"}, Measure::Nothing, Count),
    Figure(kOffice, "NumCopiers", "Num. Copiers", {}, Measure::Nothing, Count),

    Cell(kUPS, "InputType", "UPS Type", CellType::Choice, {.shared = kRectifier}),
    Cell(kUPS, "Family", "Family", CellType::Choice, {.own = "upsfamily"}),
    Figure(kUPS, "OutputRating", "Rating", {.own = "upsrating|ratedoutput", .sharedWithUnit = kSize},
           Measure::ApparentPower, Rating, kPerKilo),
    Figure(kUPS, "Loading", "Loading", {.own = "upsloading"}, Measure::Percent, Loading),
    Figure(kUPS, "Charging", "Battery Charger", {.own = "charging"}, Measure::Percent, Charging),
    Cell(kUPS, "InputFilterInstalled", "Input Filtering Installed", CellType::Truth, {.shared = kFilter}),

    Cell(kVFD, "InputType", "VFD Type", CellType::Choice, {.own = "drivetype", .shared = kRectifier}),
    Figure(kVFD, "MtrRating", "Motor Rating",
           {.shared = kMotorSize, .sharedWithUnit = kSize, .shaft = kShaft}, Measure::Horsepower,
           MotorRating),
    Figure(kVFD, "Efficiency", "Efficiency", {.own = "driveefficiency|eff|driveeff"}, Measure::Percent,
           Efficiency),
    Figure(kVFD, "KVALimit", "Start kVA Limit", {.own = "startingkvalimit|runstartkvalimit"},
           Measure::Percent, KVALimit),
    Cell(kVFD, "InputFilterInstalled", "Input Filtering Installed", CellType::Truth, {.shared = kFilter}),
};

constexpr bool EveryKindHasFields() {
    for (std::int32_t kind = 0; kind < load_type::kCount; ++kind) {
        if (std::ranges::find(kFields, kind, &TableField::loadType) == kFields.end()) {
            return false;
        }
    }
    return true;
}
static_assert(EveryKindHasFields(), "no table could bring a kind without fields");

}  // namespace

std::span<const TableField> TableFields() noexcept {
    return kFields;
}

const TableField* FindTableField(std::int32_t loadType, std::string_view member) noexcept {
    const auto* const found = std::ranges::find_if(kFields, [&](const TableField& field) {
        return field.member == member && (field.loadType == loadType || field.loadType == kAnyLoad);
    });
    return found == kFields.end() ? nullptr : found;
}

bool Takes(const TableField& field, const TableUnit& unit) noexcept {
    return IsUnitOf(unit, field.measure) ||
           (unit.measure == Measure::RealPower && !field.words.shaft.empty());
}

bool NeedsUnit(const TableField& field) noexcept {
    // The form's rating of a UPS stands without one, and is always in kVA.
    return (field.measure == Measure::RealPower || field.measure == Measure::ApparentPower) &&
           field.member != "OutputRating";
}

}  // namespace genvara
