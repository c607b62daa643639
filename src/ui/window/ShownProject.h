#pragma once

#include "CApplication.h"
#include "ProjectFile.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"

namespace genvara {

/// Shows each part of a project on its panel as soon as it has been read or begun.
class ShownProject final : public ProjectReadObserver {
  public:
    ShownProject(CApplication& application, panProject& project, panPwrSys& site, panLoadProfile& profile)
        : m_application(&application), m_project(&project), m_site(&site), m_profile(&profile) {
        m_profile->HoldDrawing(true);
    }
    ~ShownProject() override { m_profile->HoldDrawing(false); }
    ShownProject(const ShownProject&) = delete;
    ShownProject& operator=(const ShownProject&) = delete;
    ShownProject(ShownProject&&) = delete;
    ShownProject& operator=(ShownProject&&) = delete;

    void ProjectRead() override { m_application->Project().Display(*m_project); }
    void PowerSystemRead() override {
        m_site->ProjectName(m_application->Project().ProjName());
        m_application->PowerSystem().Display(*m_site, m_application->IsMetric());
    }
    void StepsCleared() override { m_profile->ClearAllLoads(); }
    void StepAdded(std::int32_t stepId) override {
        m_profile->DisplayNewStep(m_application->LoadProfile().NumLoadSteps(), stepId);
    }
    void LoadAdded(std::int32_t stepNumber, std::int32_t loadId) override {
        m_profile->DisplayNewLoad(stepNumber, loadId);
    }
    void Skipped(const SkippedItem& /*item*/) override { ++m_skipped; }

    [[nodiscard]] int CountSkipped() const noexcept { return m_skipped; }

  private:
    CApplication* m_application;
    panProject* m_project;
    panPwrSys* m_site;
    panLoadProfile* m_profile;
    int m_skipped = 0;
};

}  // namespace genvara
