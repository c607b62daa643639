#pragma once

#include <cstdint>

#include "CLightLoad.h"
#include "LoadForm.h"

class QLabel;

namespace genvara {

/// Entry form of lighting: lamp, ballast, and the running figures, which are taken for the starting ones too.
class frmLightLoad final : public LoadFormOf<CLightLoad> {
    Q_OBJECT

  public:
    explicit frmLightLoad(const LoadFormServices& services);

  private:
    void AddOptions();
    void LampClicked(std::int32_t lightType);
    void SetBallastEnabled(bool enabled);

    void SetDefaults() override;
    void ShowKind(const CLightLoad& load) override;
    bool StoreKind(CLightLoad& load) override;
    [[nodiscard]] EntryField* FieldOf(LoadFigure figure) override;

    EntryField* m_runKW;
    EntryField* m_runPF;
    QLabel* m_runPFLabel;
    OptionFrame* m_lamp;
    OptionFrame* m_ballast;
};

}  // namespace genvara
