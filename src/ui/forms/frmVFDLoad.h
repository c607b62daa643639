#pragma once

#include "CVFDLoad.h"
#include "InputTypeList.h"
#include "LoadForm.h"

namespace genvara {

/// Entry form of a variable frequency drive: the motor's rating, efficiency, starting limit, input stage and
/// filter.
class frmVFDLoad final : public LoadFormOf<CVFDLoad> {
    Q_OBJECT

  public:
    explicit frmVFDLoad(const LoadFormServices& services);

  private:
    void PhasesClicked(std::int32_t code);
    void ShowFigures(const CVFDLoad& load) const;
    void SetDefaults() override;
    void ShowKind(const CVFDLoad& load) override;
    bool StoreKind(CVFDLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;

    EntryField* m_motorRating;
    Spinner m_efficiency{};
    Spinner m_kvaLimit{};
    InputTypeList m_input;
};

}  // namespace genvara
