#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "CMtrLoad.h"
#include "LoadForm.h"
#include "MotorCalculator.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace genvara {

class ChoiceBox;

/// Entry form of motors. What follows from each keystroke and click is the calculator's; the form hands it
/// the events and shows its state.
class frmMtrLoad final : public LoadFormOf<CMtrLoad> {
    Q_OBJECT

  public:
    explicit frmMtrLoad(const LoadFormServices& services);

    /// Working limit of the solid-state starter [percent of running current]; 300 on opening.
    [[nodiscard]] std::int32_t SolidStateCurrentLimit() const noexcept;
    void SolidStateCurrentLimit(std::int32_t percent);

  private:
    void ReadTables();
    void AddSizeFields();
    void AddStarterFields();
    void AddOptions();
    void FillLists();
    void Connect();
    void ConnectFields();

    /// Runs an operation of the calculator and shows what became of it. A number too large to work with
    /// changes nothing, as do tables that cannot be used, which is told beside the main quantity.
    void Do(const std::function<void()>& operation);
    void Refresh();
    void ShowEntryMethod();
    /// Shows the error of a starting power factor that no motor has.
    void ShowStartingPF();

    void EntryMethodClicked(std::int32_t method);
    void PhasesClicked(std::int32_t code);
    void StartMethodClicked(std::int32_t row);
    void AdvancedClicked();

    void ShowKind(const CMtrLoad& load) override;
    bool StoreKind(CMtrLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;
    bool HoldsOk() override;
    [[nodiscard]] EntryField* FieldOf(MotorCalculator::Field field) const;

    std::vector<CodeLetterRecord> m_codeLetters;
    std::vector<double> m_multipliers;
    MotorCalculator m_calculator;
    bool m_refreshing = false;
    OptionFrame* m_entry;
    QLabel* m_powerLabel;
    EntryField* m_power;
    QLabel* m_runAmpsLabel;
    EntryField* m_runAmps;
    ChoiceBox* m_codeLetter;
    ChoiceBox* m_startMethod;
    QPushButton* m_advanced;
    EntryField* m_startingKVA;
    EntryField* m_startingPF;
    OptionFrame* m_loaded;
    QCheckBox* m_firePump;
};

}  // namespace genvara
