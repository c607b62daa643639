#include "MemberChange.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "CMtrLoad.h"
#include "CVFDLoad.h"
#include "ChargerEntry.h"
#include "EntryNumbers.h"
#include "InputTypes.h"
#include "Kilo.h"
#include "LightEntry.h"
#include "LinearPower.h"
#include "LoadKinds.h"
#include "NumberText.h"
#include "UPSEntry.h"

namespace genvara {
namespace {

/// The signs of files and paths, whatever the user's locale.
EntryNumbers PlainNumbers() {
    return EntryNumbers(NumberSigns{});
}

/// A change of one member of one load.
struct LoadChange {
    const Property<Load>& property;
    const PropertyValue& value;
    const CPwrSys& site;
    const EntryRules& rules;

    [[nodiscard]] bool Of(std::string_view name) const { return property.facts.name == name; }
    template <typename Value>
    [[nodiscard]] const Value& As() const {
        return std::get<Value>(value);
    }
    void Set(Load& load) const { property.set(load, value); }
};

// --- motors

/// Whether the size that the entry method asks for is there.
bool IsSized(const CMtrLoad& load) {
    switch (load.DataEntryMethod()) {
        case motor_entry::kHorsepower:
            return load.HP() != kNotGiven;
        case motor_entry::kAmps:
            return load.RunningAmps() != kNotGiven && load.StartingAmps() != kNotGiven;
        default:
            return load.RunningRealPower() != kNotGiven;
    }
}

MotorCalculator EmptyFields(const LoadChange& change) {
    return {change.rules.motors, static_cast<std::int32_t>(change.site.Voltage()), change.site.Phases(),
            PlainNumbers()};
}

/// The fields of the motor's form with a load in them, by the load's own current limit.
MotorCalculator FieldsOf(const CMtrLoad& load, const LoadChange& change) {
    MotorCalculator fields = EmptyFields(change);
    fields.CurrentLoad(load);
    return fields;
}

/// The same for a load whose size is still to be entered.
MotorCalculator FieldsWithoutSize(const CMtrLoad& load, const LoadChange& change) {
    MotorCalculator fields = EmptyFields(change);
    if (load.Phases() == 0) {
        fields.ThreePhaseClicked();
    } else {
        fields.SinglePhaseClicked(load.Phases());
    }
    fields.EntryMethodClicked(load.DataEntryMethod());
    if (!load.StartsLoaded()) {
        fields.UnloadedClicked();
    }
    fields.FirePumpChecked(load.FirePump());
    (void)fields.StartMethodClicked(load.StartingMethod() - 1);
    fields.SolidStateCurrentLimit(load.SolidStateCurrentLimit());
    if (load.StartingAmps() != kNotGiven) {
        fields.PowerChanged(RenderPlain(load.StartingAmps()));
    }
    if (load.RunningAmps() != kNotGiven) {
        fields.RunAmpsChanged(RenderPlain(load.RunningAmps()));
    }
    return fields;
}

/// Stores what the fields hold.
void Store(const MotorCalculator& fields, CMtrLoad& load) {
    MotorCalculator::Field current{};
    fields.StoreInLoad(load, current);
}

double FieldNumber(const std::string& text) {
    return PlainNumbers().Number(text);
}

void ChangeSize(CMtrLoad& load, const LoadChange& change) {
    MotorCalculator fields = IsSized(load) ? FieldsOf(load, change) : FieldsWithoutSize(load, change);
    const double figure = change.As<double>();
    if (change.Of("RunningAmps")) {
        fields.RunAmpsChanged(RenderPlain(figure));
        fields.RunAmpsLeft();
    } else {
        fields.PowerChanged(RenderPlain(change.Of("RunningRealPower") ? figure / kPerKilo : figure));
    }
    change.Set(load);
    if (IsSized(load)) {  // of two currents the other may still be missing
        Store(fields, load);
        change.Set(load);  // the value itself, and not what the field shows of it
    }
}

void ChangeCodeLetter(CMtrLoad& load, const LoadChange& change) {
    change.Set(load);
    const auto& letters = change.rules.motors.codeLetters;
    const auto found = std::ranges::find(letters, load.CodeLetter(), &CodeLetterRecord::CodeLetter);
    if (found == letters.end() || !IsSized(load)) {
        return;  // the form's list lacks it, or there is no size: nothing follows
    }
    MotorCalculator fields = FieldsOf(load, change);
    fields.AdvancedClosed();
    Store(fields, load);
}

void ChangeStartingMethod(CMtrLoad& load, const LoadChange& change) {
    if (!IsSized(load)) {
        change.Set(load);
        return;
    }
    MotorCalculator fields = FieldsOf(load, change);
    (void)fields.StartMethodClicked(change.As<std::int32_t>() - 1);
    Store(fields, load);
}

void ChangeStartsLoaded(CMtrLoad& load, const LoadChange& change) {
    if (!IsSized(load)) {
        change.Set(load);
        return;
    }
    MotorCalculator fields = FieldsOf(load, change);
    if (change.As<bool>()) {
        fields.LoadedClicked();
    } else {
        fields.UnloadedClicked();
    }
    load.StartingPF(FieldNumber(fields.State().txtStartingPF));
    change.Set(load);
}

void ChangeCurrentLimit(CMtrLoad& load, const LoadChange& change) {
    change.Set(load);
    if (load.StartingMethod() == starting_method::kSolidState && IsSized(load)) {
        MotorCalculator fields = FieldsOf(load, change);
        fields.AdvancedClosed();
        load.StartingAppPower(FieldNumber(fields.State().txtStartingKVA) * kPerKilo);
    }
}

/// The form clears its fields: starting figures are worked out with the size that is still to come.
void ChangeEntryMethod(CMtrLoad& load, const LoadChange& change) {
    change.Set(load);
    load.StartingMethod(starting_method::kAcrossTheLine);
}

void ChangeMotorPhases(CMtrLoad& load, const LoadChange& change) {
    const auto code = change.As<std::int32_t>();
    const bool sizeFollows =
        load.DataEntryMethod() == motor_entry::kAmps && IsSized(load) && (load.Phases() == 0) != (code == 0);
    if (!sizeFollows) {
        change.Set(load);
    } else {
        MotorCalculator fields = FieldsOf(load, change);
        change.Set(load);
        if (code == 0) {
            fields.ThreePhaseClicked();
        } else {
            fields.SinglePhaseClicked(code);
        }
        Store(fields, load);
    }
}

// --- other kinds

void ChangeAirCondMethod(Load& load, const LoadChange& change) {
    const auto method = change.As<std::int32_t>();
    const auto rows = LoadProperties(load.LoadType());
    const auto sizeOf = [&](const Property<Load>& row) { return row.facts.method && Exists(row, load); };
    const auto old = std::ranges::find_if(rows, sizeOf);
    const PropertyValue size = old != rows.end() ? old->get(load) : PropertyValue(kNotGiven);
    change.Set(load);
    for (const Property<Load>& row : rows) {
        if (row.facts.method == method && IsGiven(row.facts, size)) {
            row.set(load, size);
        }
    }
}

void ChangeLamp(CLightLoad& load, const LoadChange& change) {
    change.Set(load);
    load.Ballast(StoredBallast(load.LightType(), ShownBallast(load.Ballast())));
    if (!LampHasBallast(load.LightType())) {
        load.RunningPowerFactor(linear_limits::kPowerFactor.greatest);
        load.StartingPowerFactor(linear_limits::kPowerFactor.greatest);
    }
}

void ChangeLampPower(CLightLoad& load, const LoadChange& change) {
    change.Set(load);
    load.StartingRealPower(load.RunningRealPower());
}

void ChangeLampPowerFactor(CLightLoad& load, const LoadChange& change) {
    change.Set(load);
    load.StartingPowerFactor(load.RunningPowerFactor());
}

/// Connection and application of a charger, each of which may bring the other.
void ChangeCharger(CBatChrgLoad& load, const LoadChange& change) {
    ChargerEntry entry(change.site.Phases(), change.site.Phases());
    entry.PhasesClicked(load.Phases());
    entry.ApplicationShown(load.ChargerType());
    if (change.Of("Phases")) {
        entry.PhasesClicked(change.As<std::int32_t>());
    } else {
        entry.ApplicationClicked(change.As<std::int32_t>());
    }
    load.Phases(entry.Shown().phases);
    load.ChargerType(entry.Shown().application);
}

/// The input stage that goes with a connection; the list opens with its first row for what had none.
template <typename Rectifier>
void FollowPhases(Rectifier& load, std::int32_t phasesBefore) {
    const std::int32_t selected = HasInputTypes(phasesBefore) ? load.InputType() : kInputTypes.front().code;
    load.InputType(StoredInputType(load.Phases(), selected));
}

/// Connection and family of a UPS, each of which may bring the other.
void ChangeUPS(CUPSLoad& load, const LoadChange& change) {
    UPSEntry entry(change.site.Phases());
    entry.PhasesClicked(load.Phases());
    entry.FamilyClicked(load.Family());
    if (change.Of("Phases")) {
        entry.PhasesClicked(change.As<std::int32_t>());
    } else {
        entry.FamilyClicked(change.As<std::int32_t>());
    }
    const std::int32_t before = load.Phases();
    load.Phases(entry.Shown().phases);
    load.Family(entry.Shown().family);
    if (load.Phases() != before) {
        FollowPhases(load, before);
    }
}

void ChangeDrivePhases(CVFDLoad& load, const LoadChange& change) {
    const std::int32_t before = load.Phases();
    change.Set(load);
    FollowPhases(load, before);
}

// --- all kinds

/// A blank name becomes that of the kind.
void ChangeName(Load& load, const LoadChange& change) {
    change.Set(load);
    const LoadKind* kind = FindLoadKind(load.LoadType());
    if (kind != nullptr && Trimmed(load.name()).empty()) {
        load.name(std::string(kind->defaultName));
    }
}

/// A member from which something follows.
struct Rule {
    std::int32_t loadType;
    std::string_view member;
    void (*change)(Load& load, const LoadChange& change);
};

template <typename Kind, void (*Change)(Kind&, const LoadChange&)>
void As(Load& load, const LoadChange& change) {
    Change(static_cast<Kind&>(load), change);
}

constexpr std::array kRules{
    Rule{load_type::kMotor, "HP", As<CMtrLoad, ChangeSize>},
    Rule{load_type::kMotor, "RunningRealPower", As<CMtrLoad, ChangeSize>},
    Rule{load_type::kMotor, "RunningAmps", As<CMtrLoad, ChangeSize>},
    Rule{load_type::kMotor, "StartingAmps", As<CMtrLoad, ChangeSize>},
    Rule{load_type::kMotor, "CodeLetter", As<CMtrLoad, ChangeCodeLetter>},
    Rule{load_type::kMotor, "StartingMethod", As<CMtrLoad, ChangeStartingMethod>},
    Rule{load_type::kMotor, "StartsLoaded", As<CMtrLoad, ChangeStartsLoaded>},
    Rule{load_type::kMotor, "SolidStateCurrentLimit", As<CMtrLoad, ChangeCurrentLimit>},
    Rule{load_type::kMotor, "DataEntryMethod", As<CMtrLoad, ChangeEntryMethod>},
    Rule{load_type::kMotor, "Phases", As<CMtrLoad, ChangeMotorPhases>},
    Rule{load_type::kAirConditioning, "DataEntryMethod", ChangeAirCondMethod},
    Rule{load_type::kLighting, "LightType", As<CLightLoad, ChangeLamp>},
    Rule{load_type::kLighting, "RunningRealPower", As<CLightLoad, ChangeLampPower>},
    Rule{load_type::kLighting, "RunningPowerFactor", As<CLightLoad, ChangeLampPowerFactor>},
    Rule{load_type::kBatteryCharger, "Phases", As<CBatChrgLoad, ChangeCharger>},
    Rule{load_type::kBatteryCharger, "ChargerType", As<CBatChrgLoad, ChangeCharger>},
    Rule{load_type::kUPS, "Phases", As<CUPSLoad, ChangeUPS>},
    Rule{load_type::kUPS, "Family", As<CUPSLoad, ChangeUPS>},
    Rule{load_type::kVFD, "Phases", As<CVFDLoad, ChangeDrivePhases>},
};

void Apply(Load& load, const LoadChange& change) {
    const auto* const rule = std::ranges::find_if(kRules, [&](const Rule& row) {
        return row.loadType == load.LoadType() && row.member == change.property.facts.name;
    });
    if (rule != kRules.end()) {
        rule->change(load, change);
    } else if (change.Of("name")) {
        ChangeName(load, change);
    } else {
        change.Set(load);
    }
}

void Change(const BoundProperty<Load>& target, const PropertyValue& value, const CPwrSys& site,
            const EntryRules& rules) {
    const LoadChange change{*target.property, value, site, rules};
    Apply(*target.record->Clone(), change);  // what refuses it refuses it here, and the load stays whole
    Apply(*target.record, change);
}

void Change(const BoundProperty<CPwrSys>& target, const PropertyValue& value, const CPwrSys& /*site*/,
            const EntryRules& rules) {
    target.property->set(*target.record, value);
    const std::string_view name = target.property->facts.name;
    if (name == "Voltage" || name == "ConnectCode") {
        FollowConnection(*target.record, rules.phasesOf);
    }
}

template <typename Record>
void Change(const BoundProperty<Record>& target, const PropertyValue& value, const CPwrSys& /*site*/,
            const EntryRules& /*rules*/) {
    target.property->set(*target.record, value);
}

}  // namespace

void ChangeMember(const PathTarget& target, const PropertyValue& value, const CPwrSys& site,
                  const EntryRules& rules) {
    if (ValueOf(target) == value) {
        return;
    }
    std::visit([&](const auto& bound) { Change(bound, value, site, rules); }, target);
}

}  // namespace genvara
