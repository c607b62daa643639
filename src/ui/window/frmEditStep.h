#pragma once

#include "CLoadStep.h"
#include "StepDialog.h"

namespace genvara {

/// Changes a step's description and allowed dip.
class frmEditStep final : public StepDialog {
    Q_OBJECT

  public:
    frmEditStep(PlatformServices& platform, const CPwrSys& site, QWidget* owner);

    /// Position of the step, from 1.
    void StepNum(std::int32_t number) noexcept { m_stepNum = number; }
    [[nodiscard]] std::int32_t StepNum() const noexcept { return m_stepNum; }
    /// The step that OK changes; it outlives the dialog.
    void LoadStep(CLoadStep& step) noexcept { m_step = &step; }

  private:
    void Apply() override;

    std::int32_t m_stepNum = 0;
    CLoadStep* m_step = nullptr;
};

}  // namespace genvara
