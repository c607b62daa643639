#include "TableFields.h"

#include <algorithm>
#include <array>

#include "Load.h"
#include "MemberBounds.h"
#include "Properties.h"

namespace genvara {
namespace {

using load_type::kAirConditioning;
using load_type::kBatteryCharger;
using load_type::kLighting;
using load_type::kMedicalImaging;
using load_type::kMiscellaneous;
using load_type::kMotor;
using load_type::kOffice;
using load_type::kUPS;
using load_type::kVFD;

/// A text, a choice or a yes.
constexpr TableField Cell(std::int32_t loadType, std::string_view member, std::string_view caption,
                          CellType type, HeadingWords words = {}) {
    return {.loadType = loadType, .member = member, .caption = caption, .type = type, .words = words};
}

constexpr TableField Figure(std::int32_t loadType, std::string_view member, std::string_view caption,
                            HeadingWords words, Measure measure) {
    return {.loadType = loadType,
            .member = member,
            .caption = caption,
            .type = CellType::Number,
            .words = words,
            .measure = measure};
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
    Figure(kAnyLoad, "Quantity", "Quantity", {.own = "qty|count|number|units|noofunits"}, Measure::Nothing),
    Cell(kAnyLoad, "Phases", "Phases", CellType::Choice, {.own = "phase|connection"}),

    Cell(kAirConditioning, kEntryMethodName, "Entry method", CellType::Choice),
    Figure(kAirConditioning, "BTU", "BTU / hr", {.sharedWithUnit = kCooling}, Measure::Cooling),
    Figure(kAirConditioning, "Tonnage", "Tonnage", {.sharedWithUnit = kCooling}, Measure::Refrigeration),
    Figure(kAirConditioning, "HP", "Compressor HP",
           {.own = "horsepower",
            .withUnit = "compressor|compressorsize|compressorpower",
            .sharedWithUnit = kSize},
           Measure::Horsepower),

    Figure(kBatteryCharger, "BatteryVoltage", "Battery Voltage",
           {.own = "batteryvolts", .withUnit = "battery"}, Measure::Volts),
    Figure(kBatteryCharger, "ChargeCurrent", "Charge Current",
           {.own = "chargingcurrent", .withUnit = "charge|charging"}, Measure::Amperes),
    Cell(kBatteryCharger, "ChargerInput", "Charger Input", CellType::Choice, {.shared = kRectifier}),
    Cell(kBatteryCharger, "ChargerType", "Application", CellType::Choice, {.own = "chargerapplication"}),

    Cell(kLighting, "LightType", "Lamp", CellType::Choice, {.own = "lamptype"}),
    Cell(kLighting, "Ballast", "Ballast", CellType::Choice, {.own = "ballasttype"}),
    Figure(kLighting, "RunningRealPower", "Running kW", {.sharedWithUnit = kSize}, Measure::RealPower),
    Figure(kLighting, "RunningPowerFactor", "Running pF", {.shared = kFactor}, Measure::PerUnit),

    Figure(kMedicalImaging, "ContVA", "Continuous kVA",
           {.withUnit = "continuous|continuouspower|cont", .sharedWithUnit = kSize}, Measure::ApparentPower),
    Figure(kMedicalImaging, "PeakVA", "Max. Peak kVA",
           {.withUnit = "peak|peakpower|maxpeak|maxmomentary", .sharedWithUnit = kStart},
           Measure::ApparentPower),
    Figure(kMedicalImaging, "ContPowerFactor", "Continuous pF", {.own = "contpf", .shared = kFactor},
           Measure::PerUnit),
    Figure(kMedicalImaging, "PeakPowerFactor", "Peak pF", {.own = "startingpf|startingpowerfactor"},
           Measure::PerUnit),
    Figure(kMedicalImaging, "MaxPeakDemandVoltDip", "Max. Voltage Dip",
           {.own = "maxvoltdip|voltagedip|peakvoltagedip|dip"}, Measure::Percent),

    Figure(kMiscellaneous, "RunningRealPower", "kW", {.sharedWithUnit = kSize}, Measure::RealPower),
    Figure(kMiscellaneous, "RunningPowerFactor", "pF", {.shared = kFactor}, Measure::PerUnit),

    Cell(kMotor, kEntryMethodName, "Entry method", CellType::Choice),
    Figure(kMotor, "HP", "Horsepower", {.shared = kMotorSize, .sharedWithUnit = kSize, .shaft = kShaft},
           Measure::Horsepower),
    Figure(kMotor, "RunningRealPower", "Running kW", {.sharedWithUnit = kDrawn}, Measure::RealPower),
    Figure(kMotor, "RunningAmps", "Running Amps",
           {.own = "runamps|runningcurrent|fullloadamps|fla", .withUnit = "running|run"}, Measure::Amperes),
    Figure(kMotor, "StartingAmps", "Starting Amps",
           {.own = "startamps|lockedrotoramps|lra", .sharedWithUnit = kStart}, Measure::Amperes),
    Cell(kMotor, "CodeLetter", "Code Letter", CellType::Text, {.own = "code|nemacode|nemacodeletter"}),
    Cell(kMotor, "StartingMethod", "Starting Method", CellType::Choice,
         {.own = "start|starter|startmethod|starting|startertype"}),
    Cell(kMotor, "StartsLoaded", "Starts Loaded", CellType::Truth,
         {.own = "loaded|startloaded|loadedunloaded|loadedunloadedstarting|loadedstart"}),
    Cell(kMotor, "FirePump", "Fire Pump", CellType::Truth, {.own = "firepumpmotor"}),
    Figure(kMotor, "StartingAppPower", "Starting kVA", {.sharedWithUnit = kStart}, Measure::ApparentPower),
    Figure(kMotor, "StartingPF", "Starting pF", {.own = "startpf"}, Measure::PerUnit),
    Figure(kMotor, "SolidStateCurrentLimit", "Current Limit", {.own = "startcurrentlimit"}, Measure::Percent),

    Figure(kOffice, "NumPCs", "Num. Desktop Computers", {.own = "computers|pcs|desktops"}, Measure::Nothing),
    Figure(kOffice, "NumPrinters", "Num. Printers", {}, Measure::Nothing),
    Figure(kOffice, "NumFaxes", "Num. Fax Machines", {.own = "faxes"}, Measure::Nothing),
    Figure(kOffice, "NumCopiers", "Num. Copiers", {}, Measure::Nothing),

    Cell(kUPS, "InputType", "UPS Type", CellType::Choice, {.shared = kRectifier}),
    Cell(kUPS, "Family", "Family", CellType::Choice, {.own = "upsfamily"}),
    Figure(kUPS, "OutputRating", "Rating", {.own = "upsrating|ratedoutput", .sharedWithUnit = kSize},
           Measure::ApparentPower),
    Figure(kUPS, "Loading", "Loading", {.own = "upsloading"}, Measure::Percent),
    Figure(kUPS, "Charging", "Battery Charger", {.own = "charging"}, Measure::Percent),
    Cell(kUPS, "InputFilterInstalled", "Input Filtering Installed", CellType::Truth, {.shared = kFilter}),

    Cell(kVFD, "InputType", "VFD Type", CellType::Choice, {.own = "drivetype", .shared = kRectifier}),
    Figure(kVFD, "MtrRating", "Motor Rating",
           {.shared = kMotorSize, .sharedWithUnit = kSize, .shaft = kShaft}, Measure::Horsepower),
    Figure(kVFD, "Efficiency", "Efficiency", {.own = "driveefficiency|eff|driveeff"}, Measure::Percent),
    Figure(kVFD, "KVALimit", "Start kVA Limit", {.own = "startingkvalimit|runstartkvalimit"},
           Measure::Percent),
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

double PerFormUnit(const TableField& field) noexcept {
    const auto* const property = FindProperty(LoadProperties(field.loadType), field.member);
    return property == nullptr ? 1.0 : PerEntryUnit(property->facts.unit);
}

bool NeedsUnit(const TableField& field) noexcept {
    // The form's rating of a UPS stands without one, and is always in kVA.
    return PerFormUnit(field) != 1.0 && field.member != "OutputRating";
}

}  // namespace genvara
