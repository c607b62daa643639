#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CMtrLoad.h"
#include "EntryNumbers.h"
#include "MotorConversions.h"

namespace genvara {

/// Strings of the starting methods in the order of the list, so that the index is the code less one.
inline constexpr std::array<std::int32_t, 6> kStartMethodStrings{750, 751, 752, 753, 754, 755};

/// String of the message that the first reduced-voltage starter brings.
inline constexpr std::int32_t kStarterWarningString = 800;

/// Tables of the genset database that a motor is worked out by. They outlive the calculator.
struct MotorTables {
    const MotorConversions& conversions;
    const std::vector<CodeLetterRecord>& codeLetters;  ///< in table order, as in the list
    const std::vector<double>& multipliers;            ///< starting over locked-rotor kVA, by list index
};

/// The motor's entry fields and what follows from them while the user types, apart from any screen.
///
/// Fields hold text as the user sees it, in the user's decimal separator. Each operation is what one event
/// does. Errors of the motor tables pass through, and a figure beyond a double's range raises 6 "Overflow"
/// from the member that works it out; a field that would have shown it keeps its text.
class MotorCalculator {
  public:
    /// Texts and selections of the screen.
    struct Fields {
        std::string txtPower;        ///< horsepower, running kW or starting amps
        std::string txtRunAmps;      ///< running amps
        std::string txtStartingKVA;  ///< kVA
        std::string txtStartingPF;   ///< per unit
        std::int32_t codeLetterIndex = -1;
        std::int32_t startMethodIndex = 0;
        std::int32_t entryMethod = motor_entry::kHorsepower;
        std::int32_t phases = 0;  ///< connection code of the radio buttons
        bool loaded = true;
        bool firePump = false;
        bool advancedEnabled = false;
    };

    /// Field that a failed store highlights.
    enum class Field { None, Power, RunAmps, StartingKVA, StartingPF };

    /// @param voltage line-to-line volts of the site.
    /// @param systemPhases phases of the site, 1 or 3.
    /// @param numbers how the user writes numbers.
    MotorCalculator(const MotorTables& tables, std::int32_t voltage, std::int32_t systemPhases,
                    EntryNumbers numbers);

    [[nodiscard]] const Fields& State() const noexcept { return m_fields; }

    /// Limit of the solid-state starter [percent of running current]; 300 on opening.
    [[nodiscard]] std::int32_t SolidStateCurrentLimit() const noexcept { return m_currentLimit; }
    /// Takes a limit over from the starter's own dialog and works the starting kVA out anew.
    void SolidStateCurrentLimit(std::int32_t percent);
    /// What follows when the starter's own dialog closes, whether by OK or by Cancel: the starting kVA is
    /// worked out anew, and so a value typed over it is lost.
    void AdvancedClosed() { UpdateStartingKVA(); }

    // Typing.
    void PowerChanged(std::string text);
    void PowerLeft() { Recompute(); }
    void RunAmpsChanged(std::string text);
    void RunAmpsLeft();
    void StartingKVATyped(std::string text);
    void StartingPFTyped(std::string text);
    void FirePumpChecked(bool firePump) noexcept { m_fields.firePump = firePump; }

    // Clicks.
    void CodeLetterClicked(std::int32_t index);
    /// @return true if the starter's warning is to be shown: once an opening, and not after a change of
    ///         the data entry method.
    [[nodiscard]] bool StartMethodClicked(std::int32_t index);
    void LoadedClicked();
    void UnloadedClicked();
    void ThreePhaseClicked();
    void SinglePhaseClicked(std::int32_t phase);
    void EntryMethodClicked(std::int32_t method);

    /// Fills the fields from a stored load. Choosing its start method works the starting kVA out anew, by a
    /// limit of 300 because the load's own is read last.
    void CurrentLoad(const CMtrLoad& load);

    /// Writes the motor's own fields into a load.
    /// @param current the field at hand, which a failure highlights.
    /// @throws RaisedError 13 "Type mismatch" for a text that is no number; the setters' own.
    void StoreInLoad(CMtrLoad& load, Field& current) const;

  private:
    void SetDefaultCodeLetter(double hp);
    void SelectLetter(std::int32_t index) noexcept;
    /// Leaves the selection as it is if the list lacks the letter.
    void SelectLetter(std::string_view letter) noexcept;
    void ApplyHorsepower(double hp);
    void ApplyRunningKVA(double runningKVA);
    void UpdateStartingKVA();
    void Recompute();
    void ClearPowerFields();
    void ChangeStartingPF(double (*change)(double));
    void StoreSize(CMtrLoad& load, Field& current) const;

    /// Horsepower and running kVA by the entry method; nothing while a field is no number.
    struct Size {
        double hp = 0.0;
        double runningKVA = 0.0;
    };
    [[nodiscard]] std::optional<Size> EnteredSize() const;
    [[nodiscard]] double KVAOfAmps(double amperes) const;
    [[nodiscard]] double HorsepowerOfKVA(double runningKVA) const;

    MotorTables m_tables;
    double m_voltage;
    EntryNumbers m_numbers;
    Fields m_fields;
    std::int32_t m_currentLimit = 300;
    double m_phaseFactor;
    bool m_warningDue = true;
    std::string m_rememberedPower;
    std::string m_rememberedRunAmps;
    std::int32_t m_rememberedLetter = -1;
    std::int32_t m_rememberedMethod = 0;
};

/// The limit of a solid-state starter that a text stands for, a broken number rounded; nothing if it is no
/// number or out of `motor_limits::kEnteredCurrentLimit`.
[[nodiscard]] std::optional<std::int32_t> ParseCurrentLimit(std::string_view text,
                                                            const EntryNumbers& numbers);

}  // namespace genvara
