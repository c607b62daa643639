#pragma once

#include "CBatChrgLoad.h"
#include "ChargerEntry.h"
#include "LoadForm.h"

namespace genvara {

/// Entry form of a battery charger: application, input stage, battery voltage and charge current.
class frmChargerLoad final : public LoadFormOf<CBatChrgLoad> {
    Q_OBJECT

  public:
    explicit frmChargerLoad(const LoadFormServices& services);

  private:
    void AddOptions();
    void Connect();
    /// Shows what the clicks have come to.
    void Refresh();
    void SetDefaults() override;
    void ShowKind(const CBatChrgLoad& load) override;
    bool StoreKind(CBatChrgLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;

    ChargerEntry m_entry;
    OptionFrame* m_application = nullptr;
    OptionFrame* m_input = nullptr;
    EntryField* m_voltage;
    EntryField* m_current;
};

}  // namespace genvara
