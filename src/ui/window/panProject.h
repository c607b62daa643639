#pragma once

#include <string>

#include "CProject.h"
#include "EntryField.h"
#include "Panel.h"

class QLabel;
class QPlainTextEdit;

namespace genvara {

/// Who and what the design is for.
class panProject final : public Panel, public ProjectDisplay {
    Q_OBJECT

  public:
    explicit panProject(PlatformServices& platform, QWidget* parent = nullptr);

    void ModifiedDateTime(const DateTime& moment) override;
    void CreatedDateTime(const DateTime& moment) override;
    void ProjectName(const std::string& text) override;
    [[nodiscard]] std::string ProjectName() const;
    void CustomerName(const std::string& text) override;
    [[nodiscard]] std::string CustomerName() const;
    void Description(const std::string& text) override;
    [[nodiscard]] std::string Description() const;
    void UserName(const std::string& text) override;
    [[nodiscard]] std::string UserName() const;

    /// Writes the fields into the project.
    void Store(CProject& project) const;

  signals:
    /// The name on screen has changed.
    void ProjectNameChanged(const QString& name);

  private:
    /// Replaces double quotes that were entered in the description, as fields do.
    void ReplaceQuotes();

    EntryField* m_txtName;
    EntryField* m_txtCustomer;
    EntryField* m_txtUserName;
    QPlainTextEdit* m_txtDescription;
    std::string m_description;  ///< as it was shown last
    QLabel* m_lblCreated;
    QLabel* m_lblModified;
};

}  // namespace genvara
