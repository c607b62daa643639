#pragma once

#include <string>

#include "CDefaults.h"
#include "DateTime.h"

namespace genvara {

/// Where a project is shown. Each member may raise; the others are then shown all the same.
class ProjectDisplay {
  public:
    virtual ~ProjectDisplay() = default;
    virtual void CreatedDateTime(const DateTime& moment) = 0;
    virtual void CustomerName(const std::string& text) = 0;
    virtual void Description(const std::string& text) = 0;
    virtual void ModifiedDateTime(const DateTime& moment) = 0;
    virtual void ProjectName(const std::string& text) = 0;
    virtual void UserName(const std::string& text) = 0;
};

/// Who and what a design is for. A copy takes its defaults and its time from the same source.
class CProject {
  public:
    /// Fills the record from the user's defaults; the defaults and the clock outlive the project.
    CProject(const CDefaults& defaults, Clock clock);

    /// Copies every field to a display, whatever happens on the way.
    /// @throws RaisedError 1, "<count> error(s) occured while displaying project data", from
    ///         "CProject::Display", after the last field.
    void Display(ProjectDisplay& panel) const;

    [[nodiscard]] const std::string& ProjName() const noexcept { return m_projName; }
    void ProjName(std::string text);
    [[nodiscard]] const std::string& Customer() const noexcept { return m_customer; }
    void Customer(std::string text);
    [[nodiscard]] const std::string& Description() const noexcept { return m_description; }
    void Description(std::string text);
    [[nodiscard]] const std::string& UserName() const noexcept { return m_userName; }
    void UserName(std::string text);
    [[nodiscard]] const DateTime& Created() const noexcept { return m_created; }
    void Created(const DateTime& moment) noexcept { m_created = moment; }
    [[nodiscard]] const DateTime& LastModified() const noexcept { return m_lastModified; }
    void LastModified(const DateTime& moment) noexcept { m_lastModified = moment; }

    /// User and customer from the defaults, name and description empty; the two times stay.
    void ResetDefaults();
    /// Both times become the present one.
    void SetCreationTime();
    /// `LastModified` becomes the present time. Saving sets it in another way; the program does not call
    /// this.
    void SetModifyTime();

    /// Whether another record holds the same.
    [[nodiscard]] bool HoldsSame(const CProject& other) const noexcept;

  private:
    const CDefaults* m_defaults;
    Clock m_clock;
    std::string m_projName;
    std::string m_customer;
    std::string m_description;
    std::string m_userName;
    DateTime m_created;
    DateTime m_lastModified;
};

}  // namespace genvara
