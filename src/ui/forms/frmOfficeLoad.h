#pragma once

#include <array>

#include "COfficeLoad.h"
#include "LoadForm.h"
#include "OfficeEntry.h"

namespace genvara {

/// Entry form of office equipment: how many of each machine.
class frmOfficeLoad final : public LoadFormOf<COfficeLoad> {
    Q_OBJECT

  public:
    explicit frmOfficeLoad(const LoadFormServices& services);

  private:
    void ShowKind(const COfficeLoad& load) override;
    bool StoreKind(COfficeLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;
    [[nodiscard]] bool NothingCounted() const;
    void ReportNothingCounted();

    std::array<EntryField*, kOfficeCounts.size()> m_counts{};
};

}  // namespace genvara
