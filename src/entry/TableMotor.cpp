#include "TableMotor.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "Kilo.h"
#include "MotorCalculator.h"
#include "NumberText.h"

namespace genvara {
namespace {

constexpr std::int32_t kOpenedLimit = 300;  // percent, of a form that is opened for a new motor

constexpr std::string_view kHorsepower = "HP";
constexpr std::string_view kRunningPower = "RunningRealPower";
constexpr std::string_view kRunAmps = "RunningAmps";
constexpr std::string_view kStartAmps = "StartingAmps";

/// A member by which a motor's size is entered.
struct SizeMember {
    std::int32_t method;
    std::string_view member;
};
constexpr std::array<SizeMember, 4> kSizes{{{motor_entry::kHorsepower, kHorsepower},
                                            {motor_entry::kRunningKW, kRunningPower},
                                            {motor_entry::kAmps, kStartAmps},
                                            {motor_entry::kAmps, kRunAmps}}};

/// The way in which a row enters the size; nothing, and a fault, for none or two.
std::optional<std::int32_t> MethodOf(RowReader& row) {
    std::optional<std::int32_t> method = row.Choice(kEntryMethodName);
    bool isGiven = false;
    for (const SizeMember& size : kSizes) {
        if (!row.Has(size.member)) {
            continue;
        }
        if (method && *method != size.method) {
            row.RefuseChoice(size.member, "is a second size. A load is entered by one.");
            return std::nullopt;
        }
        method = size.method;
        isGiven = true;
    }
    if (!isGiven) {
        row.Refuse("", "The size is missing. Enter Horsepower, Running kW, or Starting and Running Amps.");
        return std::nullopt;
    }
    return method;
}

/// What a row enters besides its size.
struct Entries {
    std::int32_t startingMethod = starting_method::kAcrossTheLine;
    bool loaded = true;
    bool firePump = false;
    std::int32_t currentLimit = kOpenedLimit;
    std::optional<std::int32_t> letter{};  ///< row of the catalogue's list
    std::optional<double> startingVA{};
    std::optional<double> startingPF{};
};

std::optional<std::int32_t> LetterOf(RowReader& row, const MotorTables& tables) {
    if (!row.Has("CodeLetter")) {
        return std::nullopt;
    }
    std::string letter = row.CellOf("CodeLetter");
    std::string known;
    for (char& character : letter) {
        character =
            character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    }
    const auto& list = tables.codeLetters;
    for (const CodeLetterRecord& record : list) {
        known += (known.empty() ? "" : ", ") + record.CodeLetter;
    }
    const auto found = std::ranges::find(list, letter, &CodeLetterRecord::CodeLetter);
    if (found == list.end()) {
        row.RefuseChoice("CodeLetter", fmt::format("is none of {}.", known));
        return std::nullopt;
    }
    return static_cast<std::int32_t>(found - list.begin());
}

Entries EntriesOf(RowReader& row, const MotorTables& tables) {
    Entries entries;
    entries.startingMethod = row.Choice("StartingMethod").value_or(entries.startingMethod);
    entries.loaded = row.Truth("StartsLoaded").value_or(entries.loaded);
    entries.firePump = row.Truth("FirePump").value_or(entries.firePump);
    entries.currentLimit = row.Whole("SolidStateCurrentLimit").value_or(entries.currentLimit);
    entries.letter = LetterOf(row, tables);
    entries.startingVA = row.Figure("StartingAppPower");
    entries.startingPF = row.Figure("StartingPF");
    if (entries.startingMethod != starting_method::kSolidState && entries.currentLimit != kOpenedLimit &&
        row.IsSound()) {
        row.RefuseChoice("SolidStateCurrentLimit", "counts for a motor with a Solid State starter alone.");
    }
    return entries;
}

/// The member that a field of the form stands for.
std::string_view MemberOf(MotorCalculator::Field field, std::int32_t method) {
    switch (field) {
        case MotorCalculator::Field::RunAmps:
            return kRunAmps;
        case MotorCalculator::Field::StartingKVA:
            return "StartingAppPower";
        case MotorCalculator::Field::StartingPF:
            return "StartingPF";
        case MotorCalculator::Field::None:
            return "CodeLetter";
        case MotorCalculator::Field::Power:
            break;
    }
    return method == motor_entry::kHorsepower  ? kHorsepower
           : method == motor_entry::kRunningKW ? kRunningPower
                                               : kStartAmps;
}

/// Enters the size and what follows from it, and then what is typed over that.
void Enter(MotorCalculator& fields, const Entries& entries, double size, std::optional<double> runAmps) {
    if (runAmps) {
        fields.RunAmpsChanged(RenderShortest(*runAmps));
    }
    fields.PowerChanged(RenderShortest(size));
    if (runAmps) {
        fields.RunAmpsLeft();
    }
    if (entries.letter) {
        fields.CodeLetterClicked(*entries.letter);
    }
    if (entries.startingVA) {
        fields.StartingKVATyped(RenderShortest(*entries.startingVA / kPerKilo));
    }
    if (entries.startingPF) {
        fields.StartingPFTyped(RenderShortest(*entries.startingPF));
    }
}

}  // namespace

void BuildMotor(RowReader& row, const CPwrSys& site, const EntryRules& rules, CMtrLoad& load) {
    const std::optional<std::int32_t> method = MethodOf(row);
    const Entries entries = EntriesOf(row, rules.motors);
    if (!method) {
        return;
    }
    const std::string_view member = MemberOf(MotorCalculator::Field::Power, *method);
    double size = row.NeededFigure(member);
    std::optional<double> runAmps;
    if (*method == motor_entry::kAmps) {
        runAmps = row.NeededFigure(kRunAmps);
    } else if (*method == motor_entry::kRunningKW) {
        size /= kPerKilo;
    }
    if (!row.IsSound()) {
        return;
    }
    MotorCalculator fields(rules.motors, site.Voltage(), site.Phases(), EntryNumbers(NumberSigns{}));
    MotorCalculator::Field current = MotorCalculator::Field::Power;
    try {
        if (load.Phases() == 0) {
            fields.ThreePhaseClicked();
        } else {
            fields.SinglePhaseClicked(load.Phases());
        }
        fields.EntryMethodClicked(*method);
        if (!entries.loaded) {
            fields.UnloadedClicked();
        }
        fields.FirePumpChecked(entries.firePump);
        (void)fields.StartMethodClicked(entries.startingMethod - 1);
        if (entries.currentLimit != kOpenedLimit) {
            fields.SolidStateCurrentLimit(entries.currentLimit);
        }
        Enter(fields, entries, size, runAmps);
        fields.StoreInLoad(load, current);
    } catch (const RaisedError& failure) {
        const std::string_view blamed = MemberOf(current, *method);
        row.Refuse(row.Has(blamed) ? blamed : member,
                   fmt::format("The load cannot be worked out: {}", failure.Description()));
    }
}

}  // namespace genvara
