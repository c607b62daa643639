#include "MotorCalculator.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Kilo.h"
#include "LanguageErrors.h"
#include "MotorPower.h"
#include "NumberText.h"
#include "mdlConvert.h"
#include "mdlUtility.h"

namespace genvara {
namespace {

/// Share of the starting power factor that an unloaded start keeps.
constexpr double kUnloadedFactor = 0.65;
/// Root of 3 as the click on the three-phase button has it; elsewhere the root itself is taken.
constexpr double kRootOfThree = 1.73205;
constexpr std::int32_t kNoIndex = -1;
constexpr std::int32_t kSolidStateIndex = starting_method::kSolidState - 1;

}  // namespace

MotorCalculator::MotorCalculator(const MotorTables& tables, std::int32_t voltage, std::int32_t systemPhases,
                                 EntryNumbers numbers)
    : m_tables(tables),
      m_voltage(voltage),
      m_numbers(std::move(numbers)),
      m_phaseFactor(systemPhases == 3 ? 3.0 : 1.0) {
    m_fields.phases = systemPhases == 3 ? 0 : 1;
}

void MotorCalculator::SolidStateCurrentLimit(std::int32_t percent) {
    m_currentLimit = percent;
    UpdateStartingKVA();
}

void MotorCalculator::PowerChanged(std::string text) {
    m_fields.txtPower = std::move(text);
    if (Trimmed(m_fields.txtPower).empty()) {
        m_fields.txtStartingKVA.clear();
        m_fields.txtStartingPF.clear();
        m_rememberedPower.clear();  // the same size, typed again, brings its figures back
        return;
    }
    Recompute();
}

void MotorCalculator::RunAmpsChanged(std::string text) {
    m_fields.txtRunAmps = std::move(text);
}

void MotorCalculator::RunAmpsLeft() {
    m_fields.txtRunAmps = Trimmed(m_fields.txtRunAmps);
    // The neighbour's text is what the remembered one is held against.
    if (m_fields.txtPower == m_rememberedRunAmps) {
        return;
    }
    const std::optional<double> amperes = m_numbers.Read(m_fields.txtRunAmps);
    if (amperes && m_numbers.Read(m_fields.txtPower)) {
        ApplyRunningKVA(KVAOfAmps(*amperes));
        m_rememberedRunAmps = m_fields.txtRunAmps;
    }
}

void MotorCalculator::StartingKVATyped(std::string text) {
    m_fields.txtStartingKVA = std::move(text);
}

void MotorCalculator::StartingPFTyped(std::string text) {
    m_fields.txtStartingPF = std::move(text);
}

void MotorCalculator::CodeLetterClicked(std::int32_t index) {
    m_fields.codeLetterIndex = index;
    if (index != m_rememberedLetter) {
        UpdateStartingKVA();
        m_rememberedLetter = index;
    }
}

bool MotorCalculator::StartMethodClicked(std::int32_t index) {
    m_fields.startMethodIndex = index;
    if (index == m_rememberedMethod) {
        return false;
    }
    UpdateStartingKVA();
    m_fields.advancedEnabled = index == kSolidStateIndex;
    const bool warn = m_warningDue && index != 0;
    m_warningDue = m_warningDue && !warn;
    m_rememberedMethod = index;
    return warn;
}

void MotorCalculator::LoadedClicked() {
    m_fields.loaded = true;
    // Divided, and not multiplied by an inverse, to take an unloaded start's factor back.
    ChangeStartingPF([](double factor) { return factor / kUnloadedFactor; });
}

void MotorCalculator::UnloadedClicked() {
    m_fields.loaded = false;
    ChangeStartingPF([](double factor) { return factor * kUnloadedFactor; });
}

void MotorCalculator::ThreePhaseClicked() {
    m_fields.phases = 0;
    if (m_phaseFactor == 3.0) {
        return;
    }
    m_phaseFactor = 3.0;
    const std::optional<double> amperes = m_numbers.Read(m_fields.txtRunAmps);
    if (m_fields.entryMethod == motor_entry::kAmps && amperes && m_numbers.Read(m_fields.txtPower)) {
        ApplyRunningKVA(*amperes * m_voltage * kRootOfThree / kPerKilo);
    }
}

void MotorCalculator::SinglePhaseClicked(std::int32_t phase) {
    m_fields.phases = phase;
    if (m_phaseFactor == 1.0) {
        return;
    }
    m_phaseFactor = 1.0;
    const std::optional<double> amperes = m_numbers.Read(m_fields.txtRunAmps);
    if (m_fields.entryMethod == motor_entry::kAmps && amperes && m_numbers.Read(m_fields.txtPower)) {
        ApplyRunningKVA(*amperes * m_voltage / kPerKilo);
    }
}

void MotorCalculator::EntryMethodClicked(std::int32_t method) {
    m_fields.entryMethod = method;
    ClearPowerFields();
}

void MotorCalculator::CurrentLoad(const CMtrLoad& load) {
    m_fields.phases = load.Phases();
    m_phaseFactor = load.Phases() == 0 ? 3.0 : 1.0;
    m_fields.loaded = load.StartsLoaded();
    const std::int32_t entry = load.DataEntryMethod();
    // No button stands for a method that is none of the three, and so none is clicked.
    if (entry != m_fields.entryMethod && entry >= motor_entry::kHorsepower && entry <= motor_entry::kAmps) {
        EntryMethodClicked(entry);
    }
    switch (entry) {
        case motor_entry::kHorsepower:
            PowerChanged(m_numbers.Plain(load.HP()));
            break;
        case motor_entry::kRunningKW:
            PowerChanged(m_numbers.Kilo(load.RunningRealPower()));
            break;
        case motor_entry::kAmps:
            PowerChanged(m_numbers.Plain(load.StartingAmps()));
            RunAmpsChanged(m_numbers.Plain(load.RunningAmps()));
            break;
        default:
            break;
    }
    // A letter that the list lacks leaves no selection rather than the size's usual letter in its place.
    SelectLetter(kNoIndex);
    SelectLetter(load.CodeLetter());
    m_fields.txtStartingKVA = m_numbers.Kilo(load.StartingAppPower());
    m_fields.txtStartingPF = m_numbers.Plain(load.StartingPF());
    m_fields.firePump = load.FirePump();
    // A file may hold any number: one that stands for no method leaves the one that is chosen.
    const std::int32_t number = load.StartingMethod();
    if (number >= starting_method::kAcrossTheLine && number <= starting_method::kSolidState &&
        number - 1 != m_fields.startMethodIndex) {
        const bool warningDue = std::exchange(m_warningDue, false);
        (void)StartMethodClicked(number - 1);
        m_warningDue = warningDue;
    }
    m_currentLimit = load.SolidStateCurrentLimit();
}

void MotorCalculator::StoreInLoad(CMtrLoad& load, Field& current) const {
    current = Field::None;
    load.StartsLoaded(m_fields.loaded);
    StoreSize(load, current);
    current = Field::StartingKVA;
    load.StartingAppPower(m_numbers.FromKilo(m_fields.txtStartingKVA));
    current = Field::StartingPF;
    load.StartingPF(m_numbers.Number(m_fields.txtStartingPF));
    current = Field::None;
    const auto letter = static_cast<std::size_t>(m_fields.codeLetterIndex);
    load.CodeLetter(m_fields.codeLetterIndex >= 0 && letter < m_tables.codeLetters.size()
                        ? m_tables.codeLetters[letter].CodeLetter
                        : "");
    load.FirePump(m_fields.firePump);
    load.StartingMethod(m_fields.startMethodIndex + 1);
    load.SolidStateCurrentLimit(m_currentLimit);
}

/// The data entry block: the method, its inputs, and the running powers that follow.
void MotorCalculator::StoreSize(CMtrLoad& load, Field& current) const {
    load.DataEntryMethod(m_fields.entryMethod);
    current = Field::Power;
    double figure = m_numbers.Number(m_fields.txtPower);
    if (m_fields.entryMethod == motor_entry::kAmps) {
        load.StartingAmps(figure);
        current = Field::RunAmps;
        figure = m_numbers.Number(m_fields.txtRunAmps);
        load.RunningAmps(figure);
    } else if (m_fields.entryMethod == motor_entry::kHorsepower) {
        load.HP(figure);
    }
    const MotorPower running = RunningPowerOf({.method = m_fields.entryMethod,
                                               .figure = figure,
                                               .phases = m_fields.phases,
                                               .volts = m_voltage,
                                               .unit = RunningUnit::Kilowatts},
                                              m_tables.conversions, "MotorCalculator::StoreInLoad");
    current = Field::Power;
    load.RunningRealPower(running.watts);
    load.RunningAppPower(running.voltAmperes);
}

void MotorCalculator::SetDefaultCodeLetter(double hp) {
    if (const std::string_view letter = UsualCodeLetter(hp); !letter.empty()) {
        SelectLetter(letter);
    }
}

void MotorCalculator::SelectLetter(std::int32_t index) noexcept {
    m_fields.codeLetterIndex = index;
    m_rememberedLetter = index;
}

void MotorCalculator::SelectLetter(std::string_view letter) noexcept {
    const auto& list = m_tables.codeLetters;
    const auto found = std::ranges::find(list, letter, &CodeLetterRecord::CodeLetter);
    if (found != list.end()) {
        SelectLetter(static_cast<std::int32_t>(found - list.begin()));
    }
}

void MotorCalculator::ApplyHorsepower(double hp) {
    SetDefaultCodeLetter(hp);
    const MotorConversions& motors = m_tables.conversions;
    const std::string rounded = RenderFixed(InterpolateXY(hp, motors.MotorHP, motors.MotorStartPF), 2);
    const double factor = ParseNumber(rounded).value_or(0.0) * (m_fields.loaded ? 1.0 : kUnloadedFactor);
    m_fields.txtStartingPF = m_numbers.Plain(factor);
    UpdateStartingKVA();
}

void MotorCalculator::ApplyRunningKVA(double runningKVA) {
    ApplyHorsepower(HorsepowerOfKVA(runningKVA));
}

void MotorCalculator::UpdateStartingKVA() {
    constexpr std::string_view kMember = "MotorCalculator::UpdateStartingKVA";
    const std::optional<Size> size = EnteredSize();
    const auto letter = static_cast<std::size_t>(m_fields.codeLetterIndex);
    if (!size || m_fields.codeLetterIndex < 0 || letter >= m_tables.codeLetters.size()) {
        return;
    }
    const double lockedKVA = size->hp * m_tables.codeLetters[letter].LRkVAPerHP;
    const auto method = static_cast<std::size_t>(m_fields.startMethodIndex);
    double startingKVA = 0.0;
    if (m_fields.startMethodIndex == kSolidStateIndex) {
        const double limited = m_currentLimit * size->runningKVA / 100.0;
        startingKVA = limited < lockedKVA ? limited : lockedKVA;
    } else {
        if (m_fields.startMethodIndex < 0 || method >= m_tables.multipliers.size()) {
            RaiseSubscriptOutOfRange(kMember);
        }
        startingKVA = lockedKVA * m_tables.multipliers[method];
    }
    m_fields.txtStartingKVA = m_numbers.Fixed(Finite(startingKVA, kMember), 2);
}

void MotorCalculator::Recompute() {
    m_fields.txtPower = Trimmed(m_fields.txtPower);
    if (m_fields.txtPower == m_rememberedPower) {
        return;
    }
    if (const std::optional<double> power = m_numbers.Read(m_fields.txtPower)) {
        const MotorConversions& motors = m_tables.conversions;
        double hp = *power;
        if (m_fields.entryMethod == motor_entry::kAmps) {
            const std::optional<double> amperes = m_numbers.Read(m_fields.txtRunAmps);
            if (!amperes) {
                return;
            }
            hp = HorsepowerOfKVA(KVAOfAmps(*amperes));
        } else if (m_fields.entryMethod == motor_entry::kRunningKW) {
            hp = InterpolateXY(*power, motors.MotorRunningKW, motors.MotorHP);
        }
        ApplyHorsepower(hp);
    }
    m_rememberedPower = m_fields.txtPower;
}

void MotorCalculator::ClearPowerFields() {
    m_fields.txtPower.clear();
    m_fields.txtRunAmps.clear();
    m_fields.txtStartingKVA.clear();
    m_fields.txtStartingPF.clear();
    SelectLetter(kNoIndex);
    m_fields.startMethodIndex = 0;
    m_fields.advancedEnabled = false;
    m_rememberedPower.clear();
    m_rememberedMethod = kNoIndex;
    m_warningDue = false;
}

void MotorCalculator::ChangeStartingPF(double (*change)(double)) {
    if (const std::optional<double> shown = m_numbers.Read(m_fields.txtStartingPF)) {
        m_fields.txtStartingPF = m_numbers.Plain(Finite(change(*shown), "MotorCalculator::ChangeStartingPF"));
    }
}

std::optional<MotorCalculator::Size> MotorCalculator::EnteredSize() const {
    const MotorConversions& motors = m_tables.conversions;
    const std::optional<double> power = m_numbers.Read(m_fields.txtPower);
    if (!power) {
        return std::nullopt;
    }
    if (m_fields.entryMethod == motor_entry::kAmps) {
        const std::optional<double> amperes = m_numbers.Read(m_fields.txtRunAmps);
        if (!amperes) {
            return std::nullopt;
        }
        const double runningKVA = KVAOfAmps(*amperes);
        return Size{.hp = HorsepowerOfKVA(runningKVA), .runningKVA = runningKVA};
    }
    const double hp = m_fields.entryMethod == motor_entry::kRunningKW
                          ? InterpolateXY(*power, motors.MotorRunningKW, motors.MotorHP)
                          : *power;
    return Size{.hp = hp, .runningKVA = InterpolateXY(hp, motors.MotorHP, motors.MotorRunningKVA)};
}

double MotorCalculator::KVAOfAmps(double amperes) const {
    return RunningKVAOfAmps(amperes, m_fields.phases, m_voltage, "MotorCalculator::KVAOfAmps");
}

double MotorCalculator::HorsepowerOfKVA(double runningKVA) const {
    return InterpolateXY(runningKVA, m_tables.conversions.MotorRunningKVA, m_tables.conversions.MotorHP);
}

std::optional<std::int32_t> ParseCurrentLimit(std::string_view text, const EntryNumbers& numbers) {
    const std::optional<double> number = numbers.Read(text);
    const std::optional<std::int32_t> limit = number ? RoundToInteger(*number) : std::nullopt;
    const bool within = limit && *limit >= motor_limits::kEnteredCurrentLimit.least &&
                        *limit <= motor_limits::kEnteredCurrentLimit.greatest;
    return within ? limit : std::nullopt;
}

}  // namespace genvara
