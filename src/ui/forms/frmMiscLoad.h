#pragma once

#include "CMiscLoad.h"
#include "LoadForm.h"

namespace genvara {

/// Entry form of a miscellaneous linear load: real power and power factor of one unit.
class frmMiscLoad final : public LoadFormOf<CMiscLoad> {
    Q_OBJECT

  public:
    explicit frmMiscLoad(const LoadFormServices& services);

  private:
    void SetDefaults() override;
    void ShowKind(const CMiscLoad& load) override;
    bool StoreKind(CMiscLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;

    EntryField* m_kW;
    EntryField* m_pF;
};

}  // namespace genvara
