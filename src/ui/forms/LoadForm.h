#pragma once

#include <QDialog>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "EntryField.h"
#include "FormGrid.h"
#include "Load.h"
#include "LoadForms.h"
#include "LoadKinds.h"
#include "LoadTrial.h"
#include "OptionFrame.h"
#include "PlatformServices.h"
#include "RaisedError.h"
#include "UpDown.h"

class QTimer;
class QVBoxLayout;

namespace genvara {

/// What all entry forms of loads are: number of the step, quantity, name, description and phases, the way in
/// for a new or a stored load, and the way out by OK or Cancel. A kind adds its own fields.
///
/// A kind's constructor builds its controls, connects them, and then calls `OpenForNewLoad`.
class LoadForm : public QDialog {
    Q_OBJECT

  public:
    /// Shows a stored load, for a form that has just been made and is not shown yet. The form keeps the load
    /// and writes it on OK; its step number can then not be changed.
    void CurrentLoad(Load& load, std::int32_t stepNumber);

    void done(int result) override;

  protected:
    LoadForm(std::int32_t loadType, const LoadFormServices& services);

    /// Opens the form for a new load: tab order, mnemonics, the common fields, the phases that the site
    /// offers, and the kind's `SetDefaults`. Failures leave a field blank, no more.
    void OpenForNewLoad();

    // Hooks of a kind.
    /// What a new load's form shows in the kind's own fields.
    virtual void SetDefaults() {}
    /// Copies the kind's inputs of a stored load into the fields, behind the common ones.
    virtual void ShowInputs(const Load& load) = 0;
    /// Writes the quantity and the kind's fields into a load, in the kind's order, behind name, description
    /// and phases.
    /// @return false if the form has itself told the user why not, unless it `IsTrying`.
    /// @throws RaisedError of a field that cannot be stored; the form reports it at the field at hand.
    virtual bool StoreInputs(Load& load) = 0;
    /// A new load of the kind.
    [[nodiscard]] virtual std::unique_ptr<Load> NewLoad() const;
    /// Text of the message for a field that could not be stored; empty for no message.
    [[nodiscard]] virtual std::string FailureText(const RaisedError& failure) const;
    /// Whether a bad field keeps the user from leaving by OK, although Enter does not leave the field.
    virtual bool HoldsOk() { return false; }
    /// The field that is to blame for a figure that a stored load cannot be asked for.
    [[nodiscard]] virtual EntryField* FieldOf(LoadFigure /*figure*/) { return m_qty; }

    // Places of a kind's controls: in the grid below the common fields, beside it, and below both.
    [[nodiscard]] FormGrid& Fields() noexcept { return *m_fields; }
    [[nodiscard]] QVBoxLayout& Side() noexcept { return *m_side; }
    [[nodiscard]] QHBoxLayout& Below() noexcept { return *m_below; }

    /// How an entry field looks, and what it holds.
    struct FieldLook {
        const char* labelName;
        const char* name;
        QString caption;
        int digits;             ///< width, as a number of digits
        NumberBounds bounds{};  ///< the field's caption is their name
        const char* noteName = "";
        QString note{};            ///< behind the field; the bounds, unless it is told
        bool printsBounds = true;  ///< whether there is a note at all
    };
    /// Adds a labelled entry field to the grid.
    /// @param checked whether its text is checked to be a number before it is left.
    EntryField* AddField(const FieldLook& look, EntryField::KeyFilter filter, bool checked);
    /// Keeps the user from leaving by OK while a field is out of its bounds, although its load takes any
    /// figure.
    void Enforce(EntryField& field) { m_enforced.push_back(&field); }
    struct Spinner {
        EntryField* field;
        UpDown* arrows;
        QLabel* label;
        QLabel* note;
        /// Enables or greys all of them.
        void Enable(bool enabled) const;
    };
    /// Adds a labelled entry field to the grid, with arrows that keep to its bounds.
    Spinner AddSpinner(const FieldLook& look, EntryField::KeyFilter filter, const char* arrowsName);
    /// An entry field that selects its text whenever the focus comes.
    [[nodiscard]] EntryField* MakeField(const QString& name);

    // Reading fields: each notes its field as the one that a failure highlights.
    /// @throws RaisedError 13 for a text that is no number.
    [[nodiscard]] double Number(EntryField& field);
    /// A field in kW or kVA, in W or VA.
    /// @throws RaisedError 13 for a text that is no number, 6 for one beyond a double's range.
    [[nodiscard]] double FromKilo(EntryField& field);
    /// @throws RaisedError 13 for a text that is no number, 6 for one beyond 32 bits.
    [[nodiscard]] std::int32_t Integer(EntryField& field);
    void StoreQuantity(Load& load) { load.Quantity(Integer(*m_qty)); }
    /// Notes the field that a failure highlights, if any.
    void Current(EntryField* field) noexcept { m_current = field; }
    [[nodiscard]] EntryField* Current() const noexcept { return m_current; }

    /// Shows a message of the kind that stops the user.
    MessageAnswer ShowError(const std::string& text, MessageButtons buttons = MessageButtons::Ok);

    /// Whether the entries are stored for their figures alone, while somebody types: nothing is then said of
    /// them.
    [[nodiscard]] bool IsTrying() const noexcept { return m_trying; }

    /// Figures as fields hold them.
    [[nodiscard]] const EntryNumbers& Numbers() const noexcept { return m_numbers; }

    [[nodiscard]] const LoadKind& Kind() const noexcept { return *m_kind; }
    [[nodiscard]] OptionFrame& Phases() noexcept { return *m_phases; }
    [[nodiscard]] EntryField& Quantity() noexcept { return *m_qty; }
    /// Phases of the site as the window shows them: 1, 3, or 0 for none.
    [[nodiscard]] std::int32_t SystemPhases() const noexcept { return m_systemPhases; }
    [[nodiscard]] bool IsEdit() const noexcept { return m_load != nullptr; }
    [[nodiscard]] PlatformServices& Platform() noexcept { return m_services.platform; }
    [[nodiscard]] const LoadFormProject& Project() const noexcept { return m_services.project; }

    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void AddCommonFields();
    void SetUp(EntryField& field, const FieldLook& look, EntryField::KeyFilter filter) const;
    [[nodiscard]] QLabel* MakeNote(const FieldLook& look) const;
    void AddPhases();
    void AddButtons();
    void AddFigures();
    void WatchEntries();
    void ShowFigures();
    /// What the entries come to, or why they come to nothing.
    struct Outcome {
        QString text{};
        bool holds = false;
    };
    [[nodiscard]] Outcome TryEntries();
    void ShowPhasesOffered();
    void Activate();
    void Confirm();
    void ConfirmEdit();
    void ConfirmNew();
    [[nodiscard]] std::unique_ptr<Load> TryNewLoad();
    bool StoreInLoad(Load& load);
    /// Writes what is entered into a load, as `StoreInputs`.
    bool Fill(Load& load);
    void ReportStore(const RaisedError& failure);
    /// Whether a load that has been stored can be worked out; the field that is to blame shows its error if
    /// not.
    bool CanBeWorkedOut(const Load& load);
    /// Whether a step can be looked up by what its field holds.
    bool NamesAStep();
    [[nodiscard]] static QString SentenceOn(const EntryField& field, const std::string& fallback);
    bool AddToStep(std::unique_ptr<Load> load, std::int32_t& stepNumber, std::int32_t& loadId);
    void Display(std::int32_t stepNumber, std::int32_t loadId);
    void CloseStored();

    LoadFormServices m_services;
    const LoadKind* m_kind;
    EntryNumbers m_numbers;
    std::int32_t m_systemPhases = 0;
    Load* m_load = nullptr;
    EntryField* m_current = nullptr;
    std::vector<EntryField*> m_enforced;
    bool m_activated = false;
    FormGrid* m_fields;
    QVBoxLayout* m_side;
    QHBoxLayout* m_below;
    EntryField* m_stepNum = nullptr;
    EntryField* m_qty = nullptr;
    EntryField* m_name = nullptr;
    EntryField* m_description = nullptr;
    OptionFrame* m_phases = nullptr;
    NoteLabel* m_figures = nullptr;
    QPushButton* m_ok = nullptr;
    QTimer* m_settling = nullptr;
    bool m_trying = false;
};

/// The form of one kind, which sees its loads as what they are.
template <typename LoadClass>
class LoadFormOf : public LoadForm {
  protected:
    using LoadForm::LoadForm;

    /// As `ShowInputs`.
    virtual void ShowKind(const LoadClass& load) = 0;
    /// As `StoreInputs`.
    virtual bool StoreKind(LoadClass& load) = 0;

  private:
    void ShowInputs(const Load& load) final { ShowKind(static_cast<const LoadClass&>(load)); }
    bool StoreInputs(Load& load) final { return StoreKind(static_cast<LoadClass&>(load)); }
};

}  // namespace genvara
