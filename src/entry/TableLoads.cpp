#include "TableLoads.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "COfficeLoad.h"
#include "CVFDLoad.h"
#include "ChargerEntry.h"
#include "CompressorSize.h"
#include "InputTypes.h"
#include "LightEntry.h"
#include "LinearPower.h"
#include "LoadFactory.h"
#include "LoadKinds.h"
#include "LoadTrial.h"
#include "NumberText.h"
#include "OfficeEntry.h"
#include "TableChoices.h"
#include "TableMotor.h"
#include "UPSEntry.h"

namespace genvara {
namespace {

/// Where a row's load is made.
struct Making {
    RowReader& row;
    const CPwrSys& site;
    const EntryRules& rules;
    bool givesPhases = false;  ///< whether the row tells the connection, which the load then has
};

/// A sentence's end on a field that the form has greyed.
constexpr std::string_view kNotHere = "cannot be chosen with the rest of the row.";

std::string NotWorkedOut(const RaisedError& failure) {
    return fmt::format("The load cannot be worked out: {}", failure.Description());
}

/// The connection that a row asks for; the one that the form opens with if it does not.
std::int32_t PhasesOf(RowReader& row, const CPwrSys& site) {
    const PhaseChoice offered = PhasesOffered(site.Phases());
    if (!row.Has("Phases")) {
        return offered.selected;
    }
    const std::optional<std::int32_t> phases = FindPhaseWord(row.CellOf("Phases"));
    if (!phases) {
        row.RefuseChoice("Phases", "is not known. Enter 3, A, B or C.");
    } else if (offered.single && *phases != offered.selected && *phases != kSomePhase) {
        row.RefuseChoice("Phases", "is not there at a site with one phase. Enter A.");
    } else if (!offered.single && *phases == kSomePhase) {
        row.RefuseChoice("Phases", "does not tell which phase. Enter A, B or C.");
    } else {
        return *phases == kSomePhase ? offered.selected : *phases;
    }
    return offered.selected;
}

/// Notes a cell of a field that the form has greyed, unless it holds what the load has anyway.
void RefuseUnless(bool isEnabled, RowReader& row, std::string_view member, bool holdsTheSame) {
    if (!isEnabled && row.Has(member) && !holdsTheSame && row.IsSound()) {
        row.RefuseChoice(member, kNotHere);
    }
}

/// The connection that the rest of a row leaves; a row that tells another one, or none, is refused.
void TakePhases(const Making& making, Load& load, std::int32_t phases) {
    if (phases == load.Phases() || !making.row.IsSound()) {
        return;
    }
    if (making.givesPhases) {
        making.row.RefuseChoice("Phases", kNotHere);
    } else {
        making.row.Refuse("Phases", "Phases is blank. Enter A, B or C for the rest of the row.");
    }
}

void Build(const Making& making, CMiscLoad& load) {
    RowReader& row = making.row;
    const double watts = row.NeededFigure("RunningRealPower");
    const double factor = row.Figure("RunningPowerFactor").value_or(linear_limits::kPowerFactor.greatest);
    if (row.IsSound()) {
        load.RunningRealPower(watts);
        load.RunningPowerFactor(factor);
    }
}

void Build(const Making& making, CLightLoad& load) {
    RowReader& row = making.row;
    const std::int32_t lamp = row.Choice("LightType").value_or(light_type::kIncandescent);
    const std::int32_t ballast = row.Choice("Ballast").value_or(ShownBallast(ballast::kNone));
    const double watts = row.NeededFigure("RunningRealPower");
    const double factor = row.Figure("RunningPowerFactor").value_or(linear_limits::kPowerFactor.greatest);
    RefuseUnless(LampHasBallast(lamp), row, "Ballast", ballast == ballast::kNone);
    if (LampHasBallast(lamp) && ballast == ballast::kNone && row.IsSound()) {
        row.RefuseChoice("Ballast", kNotHere);
    }
    RefuseUnless(LampHasBallast(lamp), row, "RunningPowerFactor",
                 factor == linear_limits::kPowerFactor.greatest);
    if (!row.IsSound()) {
        return;
    }
    load.LightType(lamp);
    load.RunningRealPower(watts);
    load.RunningPowerFactor(factor);
    load.StartingRealPower(load.RunningRealPower());
    load.StartingPowerFactor(load.RunningPowerFactor());
    load.Ballast(StoredBallast(lamp, ballast));
}

/// A way of entering a compressor's size.
struct SizeMember {
    std::int32_t method;
    std::string_view member;
};
constexpr std::array<SizeMember, 3> kCompressorSizes{
    {{aircond_entry::kBTU, "BTU"}, {aircond_entry::kTonnage, "Tonnage"}, {aircond_entry::kHorsepower, "HP"}}};

void Build(const Making& making, CAirCondLoad& load) {
    RowReader& row = making.row;
    const std::optional<std::int32_t> told = row.Choice(kEntryMethodName);
    const SizeMember* given = nullptr;
    for (const SizeMember& size : kCompressorSizes) {
        if (!row.Has(size.member)) {
            continue;
        }
        if (given != nullptr || (told && *told != size.method)) {
            row.RefuseChoice(size.member, "is a second size. A load is entered by one.");
            return;
        }
        given = &size;
    }
    if (given == nullptr) {
        row.Refuse("", "The size is missing. Enter BTU / hr, Tonnage or Compressor HP.");
        return;
    }
    const double size = row.NeededFigure(given->member);
    if (row.IsSound()) {
        try {
            StoreCompressorSize(load, given->method, size, making.rules.motors.conversions);
        } catch (const RaisedError& failure) {
            row.Refuse(given->member, NotWorkedOut(failure));
        }
    }
}

void Build(const Making& making, CBatChrgLoad& load) {
    RowReader& row = making.row;
    ChargerEntry entry(making.site.Phases(), making.site.Phases());
    entry.PhasesClicked(load.Phases());
    if (const std::optional<std::int32_t> application = row.Choice("ChargerType")) {
        entry.ApplicationClicked(*application);
    }
    TakePhases(making, load, entry.Shown().phases);
    const std::int32_t input = row.Choice("ChargerInput").value_or(charger_input::kFerroResonant);
    RefuseUnless(entry.Shown().inputEnabled, row, "ChargerInput", input == charger_input::kFerroResonant);
    const double volts = row.NeededFigure("BatteryVoltage");
    const double amperes = row.NeededFigure("ChargeCurrent");
    if (row.IsSound()) {
        load.ChargerType(entry.Shown().application);
        load.ChargerInput(input);
        load.BatteryVoltage(volts);
        load.ChargeCurrent(amperes);
    }
}

void Build(const Making& making, CMedEquipLoad& load) {
    RowReader& row = making.row;
    const double running = row.NeededFigure("ContVA");
    const double runningFactor = row.Figure("ContPowerFactor").value_or(load.ContPowerFactor());
    const double peak = row.NeededFigure("PeakVA");
    const double peakFactor = row.Figure("PeakPowerFactor").value_or(load.PeakPowerFactor());
    const std::int32_t dip = row.Whole("MaxPeakDemandVoltDip").value_or(load.MaxPeakDemandVoltDip());
    if (row.IsSound()) {
        load.ContPowerFactor(runningFactor);
        load.ContVA(running);
        load.PeakVA(peak);
        load.PeakPowerFactor(peakFactor);
        load.MaxPeakDemandVoltDip(dip);
    }
}

void Build(const Making& making, COfficeLoad& load) {
    RowReader& row = making.row;
    constexpr std::array<std::string_view, kOfficeCounts.size()> kMembers{"NumPCs", "NumPrinters", "NumFaxes",
                                                                          "NumCopiers"};
    if (std::ranges::none_of(kMembers, [&](std::string_view member) { return row.Has(member); })) {
        row.Refuse("", std::string(kNothingCounted));
    }
    for (std::size_t at = 0; at < kMembers.size(); ++at) {
        if (const std::optional<std::int32_t> count = row.Whole(kMembers[at])) {
            (load.*kOfficeCounts[at].store)(*count);
        }
    }
}

/// The input stage and the filter of a UPS or a drive.
template <typename Rectifier>
void TakeInput(RowReader& row, Rectifier& load, bool hasTypes, bool mayHaveFilter) {
    const std::optional<std::int32_t> given = row.Choice("InputType");
    const std::int32_t held = StoredInputType(load.Phases(), kInputTypes.front().code);
    if (given && hasTypes && *given == input_type::kSinglePhase) {
        row.RefuseChoice("InputType", kNotHere);
    }
    RefuseUnless(hasTypes, row, "InputType", given == held);
    const bool filter = row.Truth("InputFilterInstalled").value_or(false);
    RefuseUnless(mayHaveFilter, row, "InputFilterInstalled", !filter);
    load.InputType(hasTypes ? given.value_or(held) : held);
    load.InputFilterInstalled(filter);
}

void Build(const Making& making, CUPSLoad& load) {
    RowReader& row = making.row;
    const std::int32_t opened = UPSEntry(making.site.Phases()).Shown().family;
    UPSEntry entry(making.site.Phases());
    entry.PhasesClicked(load.Phases());
    const std::optional<std::int32_t> family = row.Choice("Family");
    if (family) {
        entry.FamilyClicked(*family);
    } else if (entry.Shown().family != opened && row.IsSound()) {
        row.Refuse("Family", "Family is blank. A UPS on one phase is Off Line or On Line.");
    }
    const UPSEntry::State& state = entry.Shown();
    if (making.site.Phases() != 3 && family == ups_family::kFastTransfer) {
        row.RefuseChoice("Family", "is not there at a site with one phase.");
    }
    TakePhases(making, load, state.phases);
    const double rating = row.NeededFigure("OutputRating");
    const std::int32_t loading = row.Whole("Loading").value_or(load.Loading());
    const std::int32_t charging = row.Whole("Charging").value_or(load.Charging());
    RefuseUnless(state.powerEnabled, row, "Loading", loading == load.Loading());
    RefuseUnless(state.powerEnabled, row, "Charging", charging == load.Charging());
    TakeInput(row, load, state.typeEnabled, state.filterEnabled);
    if (row.IsSound()) {
        load.Family(state.family);
        load.OutputRating(rating);
        load.Loading(loading);
        load.Charging(charging);
    }
}

void Build(const Making& making, CVFDLoad& load) {
    RowReader& row = making.row;
    TakeInput(row, load, HasInputTypes(load.Phases()), HasInputTypes(load.Phases()));
    const double rating = row.NeededFigure("MtrRating");
    const std::int32_t efficiency = row.Whole("Efficiency").value_or(load.Efficiency());
    const std::int32_t limit = row.Whole("KVALimit").value_or(load.KVALimit());
    if (row.IsSound()) {
        load.MtrRating(rating);
        load.Efficiency(efficiency);
        load.KVALimit(limit);
    }
}

void Build(const Making& making, CMtrLoad& load) {
    BuildMotor(making.row, making.site, making.rules, load);
}

template <typename Kind>
void BuildAs(const Making& making, Load& load) {
    Build(making, static_cast<Kind&>(load));
}

/// By load type.
constexpr std::array kBuilders{&BuildAs<CAirCondLoad>,  &BuildAs<CBatChrgLoad>, &BuildAs<CLightLoad>,
                               &BuildAs<CMedEquipLoad>, &BuildAs<CMiscLoad>,    &BuildAs<CMtrLoad>,
                               &BuildAs<COfficeLoad>,   &BuildAs<CUPSLoad>,     &BuildAs<CVFDLoad>};
static_assert(kBuilders.size() == load_type::kCount, "a builder for each kind");

/// Whether all that a step or a report may ask of the load can be worked out.
void Try(RowReader& row, const Load& load) {
    if (const std::optional<FailedFigure> failed = TryFigures(load)) {
        row.Refuse("", NotWorkedOut(failed->failure));
    }
}

}  // namespace

std::unique_ptr<Load> MakeTableLoad(RowReader& row, const CPwrSys& site, const EntryRules& rules) {
    const std::int32_t kind = row.LoadType();
    std::unique_ptr<Load> load = MakeLoad(kind, rules.motors.conversions);
    row.RefuseStrays();
    const std::string name = row.Text("name");
    load->name(name.empty() ? std::string(FindLoadKind(kind)->defaultName) : name);
    load->Description(row.Text("Description"));
    load->Phases(PhasesOf(row, site));
    if (const std::optional<std::int32_t> quantity = row.Whole("Quantity")) {
        load->Quantity(*quantity);
    }
    const Making making{.row = row, .site = site, .rules = rules, .givesPhases = row.Has("Phases")};
    kBuilders.at(static_cast<std::size_t>(kind))(making, *load);
    if (row.IsSound()) {
        Try(row, *load);
    }
    return row.IsSound() ? std::move(load) : nullptr;
}

}  // namespace genvara
