#pragma once

#include <cstdint>
#include <string_view>

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
    /// A figure with its limit.
    struct Demand {
        EntryField* field;
        double limit;
    };

    /// @param unit of the limit, with its leading blank; empty for none.
    Demand AddDemand(const FieldLook& look, double limit, std::string_view unit);
    void AddDip();
    void AddInputType();
    bool IsBad(const Demand& demand);
    void DipStepped(std::int32_t percent);

    void SetDefaults() override;
    void ShowKind(const CMedEquipLoad& load) override;
    bool StoreKind(CMedEquipLoad& load) override;
    bool HoldsOk() override;

    Demand m_contKVA;
    Demand m_contPF;
    Demand m_peakKVA;
    Demand m_peakPF;
    EntryField* m_maxVoltDip = nullptr;
    QLabel* m_warning = nullptr;
    ChoiceBox* m_inputType = nullptr;
};

}  // namespace genvara
