#pragma once

#include <cstdint>

#include "CMedEquipLoad.h"
#include "LoadForm.h"

class QLabel;

namespace genvara {

class ChoiceBox;

/// Entry form of medical imaging equipment. Its loads take any figure; the form keeps the user in a field
/// whose figure is out of range.
class frmMedLoad final : public LoadFormOf<CMedEquipLoad> {
    Q_OBJECT

  public:
    explicit frmMedLoad(const LoadFormServices& services);

  private:
    EntryField* AddDemand(const FieldLook& look);
    void AddDip();
    void AddInputType();
    bool IsBad(EntryField& field);
    void DipStepped(std::int32_t percent);

    void SetDefaults() override;
    void ShowKind(const CMedEquipLoad& load) override;
    bool StoreKind(CMedEquipLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;
    bool HoldsOk() override;

    EntryField* m_contKVA;
    EntryField* m_contPF;
    EntryField* m_peakKVA;
    EntryField* m_peakPF;
    EntryField* m_maxVoltDip = nullptr;
    QLabel* m_warning = nullptr;
    ChoiceBox* m_inputType = nullptr;
};

}  // namespace genvara
