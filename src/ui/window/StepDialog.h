#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "CPwrSys.h"
#include "EntryField.h"

class QLabel;

namespace genvara {

class FormGrid;
class UpDown;

/// What the dialogs of a step have in common: description, dip with its range, OK and Cancel.
class StepDialog : public QDialog {
    Q_OBJECT

  public:
    [[nodiscard]] std::string Description() const;
    void Description(const std::string& text);
    /// Allowed voltage dip of the step [percent].
    /// @throws RaisedError 13 for a text that is no number.
    [[nodiscard]] std::int32_t MaxVoltDip() const;
    void MaxVoltDip(std::int32_t percent);

    /// Runs a change of the project, so that it can be taken back under its name.
    using Changer = std::function<void(const std::string& name, const std::function<void()>& change)>;
    /// Who runs what OK changes; without one it is just done.
    void ChangesThrough(Changer changer) { m_changer = std::move(changer); }

  protected:
    /// @param descriptionField object name of the description.
    StepDialog(PlatformServices& platform, const CPwrSys& site, const QString& caption,
               const char* descriptionField, QWidget* owner);

    /// Lays the fields out; a field of the kind's own stands first.
    void Build(QWidget* firstField, const QString& firstCaption, const char* firstLabel);
    /// Whether a field of the kind's own has to be mended first; it then shows its error.
    virtual bool HoldsOk() { return false; }
    /// Carries the dialog out once the dip has been found within the system's. A failure is shown, and the
    /// dialog stays.
    virtual void Apply() = 0;

    /// Runs what OK changes.
    void Change(const std::string& name, const std::function<void()>& change) const;

    [[nodiscard]] PlatformServices& Platform() const noexcept { return *m_platform; }

  private:
    void OkClicked();

    PlatformServices* m_platform;
    const CPwrSys* m_site;
    Changer m_changer;
    EntryField* m_txtDip;
    UpDown* m_updDip;
    EntryField* m_txtDescription;
    QLabel* m_lblRange;
};

}  // namespace genvara
