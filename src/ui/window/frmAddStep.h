#pragma once

#include <functional>

#include "CLoadProfile.h"
#include "StepDialog.h"

namespace genvara {

/// Adds a step to the profile.
class frmAddStep final : public StepDialog {
    Q_OBJECT

  public:
    frmAddStep(PlatformServices& platform, CLoadProfile& profile, const CPwrSys& site, QWidget* owner);

    /// Shows the dialog until it is closed.
    /// @param display shows the new step, by position and ID.
    void Show(std::function<void(std::int32_t number, std::int32_t id)> display);

  private:
    bool HoldsOk() override;
    void Apply() override;

    CLoadProfile* m_profile;
    EntryField* m_txtStepNum;
    std::function<void(std::int32_t, std::int32_t)> m_display;
};

}  // namespace genvara
