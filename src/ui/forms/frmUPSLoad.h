#pragma once

#include "CUPSLoad.h"
#include "InputTypeList.h"
#include "LoadForm.h"
#include "UPSEntry.h"

class QLabel;

namespace genvara {

/// Entry form of a UPS: family, output rating, loading and battery charging, input stage and filter.
class frmUPSLoad final : public LoadFormOf<CUPSLoad> {
    Q_OBJECT

  public:
    explicit frmUPSLoad(const LoadFormServices& services);

  private:
    void AddFigures();
    void AddFamilies();
    void AddWarning();
    void Connect();
    /// Shows what the clicks have come to.
    void Refresh();
    void ShowFigures(const CUPSLoad& load) const;
    void SetDefaults() override;
    void ShowKind(const CUPSLoad& load) override;
    bool StoreKind(CUPSLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;

    UPSEntry m_entry;
    EntryField* m_rating = nullptr;
    Spinner m_loading{};
    Spinner m_charging{};
    InputTypeList m_input;
    OptionFrame* m_family = nullptr;
    QLabel* m_warning = nullptr;
};

}  // namespace genvara
