#include "CProject.h"

#include <tuple>
#include <utility>

#include "DisplayCount.h"

namespace genvara {

CProject::CProject(const CDefaults& defaults, Clock clock)
    : m_defaults(&defaults), m_clock(std::move(clock)) {
    ResetDefaults();
}

void CProject::Display(ProjectDisplay& panel) const {
    DisplayCount count;
    count.Show([&] { panel.CreatedDateTime(m_created); });
    count.Show([&] { panel.CustomerName(m_customer); });
    count.Show([&] { panel.Description(m_description); });
    count.Show([&] { panel.ModifiedDateTime(m_lastModified); });
    count.Show([&] { panel.ProjectName(m_projName); });
    count.Show([&] { panel.UserName(m_userName); });
    count.RaiseIfAny(" error(s) occured while displaying project data", "CProject::Display");
}

void CProject::ProjName(std::string text) {
    m_projName = std::move(text);
}

void CProject::Customer(std::string text) {
    m_customer = std::move(text);
}

void CProject::Description(std::string text) {
    m_description = std::move(text);
}

void CProject::UserName(std::string text) {
    m_userName = std::move(text);
}

void CProject::ResetDefaults() {
    m_userName = m_defaults->UserName();
    m_customer = m_defaults->CustomerName();
    m_projName.clear();
    m_description.clear();
}

void CProject::SetCreationTime() {
    m_created = m_clock();
    m_lastModified = m_created;
}

void CProject::SetModifyTime() {
    m_lastModified = m_clock();
}

bool CProject::HoldsSame(const CProject& other) const noexcept {
    const auto held = [](const CProject& project) {
        return std::tie(project.m_projName, project.m_customer, project.m_description, project.m_userName,
                        project.m_created, project.m_lastModified);
    };
    return held(*this) == held(other);
}

}  // namespace genvara
