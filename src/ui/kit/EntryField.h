#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>
#include <string>

#include "FieldCheck.h"
#include "FieldError.h"
#include "KeyFilters.h"
#include "NumberBounds.h"
#include "PlatformServices.h"

namespace genvara {

/// A text box that takes only the keys of its filter, is checked before it is left, and shows its error by
/// ground, outline and a sentence. What is typed or pasted into it takes the error away.
///
/// The check runs when the user goes elsewhere in the window, by mouse, tab, the key of a caption or a
/// command; not where he presses a button that leaves unchecked (`LeavesUnchecked`), Enter, or turns to
/// another window.
class EntryField : public QLineEdit {
    Q_OBJECT

  public:
    /// Judges a typed character, given the text and how much of it is selected.
    using KeyFilter = std::function<KeyVerdict(const std::string& text, std::size_t selected, char32_t key)>;

    EntryField(PlatformServices& platform, const QString& name, QWidget* parent = nullptr);

    void Filter(KeyFilter filter) { m_filter = std::move(filter); }
    /// The number that the field holds.
    void Bounds(NumberBounds bounds) { m_bounds = std::move(bounds); }
    [[nodiscard]] const std::optional<NumberBounds>& Bounds() const noexcept { return m_bounds; }
    /// One sentence on why the text is out of its bounds; empty if it is not.
    [[nodiscard]] QString Complaint() const;

    /// @param holds true if the text is bad and the focus has to stay.
    void CheckBeforeLeaving(std::function<bool()> holds) { m_holds = std::move(holds); }
    /// Runs when the focus has left, behind the check.
    void OnLeft(std::function<void()> left) { m_left = std::move(left); }
    /// Runs when the focus has come.
    void OnEntered(std::function<void()> entered) { m_entered = std::move(entered); }

    [[nodiscard]] std::string Content() const { return text().toStdString(); }
    void Content(const std::string& text) { setText(QString::fromStdString(text)); }

    /// Whether the field shows its error.
    [[nodiscard]] bool InError() const noexcept { return m_error.IsShown(); }
    /// Shows the light red ground of an error, and the sentence beside the field.
    void ShowError(const QString& sentence = {});
    void ClearError();

    /// Whether the text is a number that 32 bits hold, rounded if need be.
    [[nodiscard]] bool HoldsInteger() const;

    /// Shows an error with a beep, and gives the field the focus: what it holds has to be mended first.
    void Refuse(const QString& sentence);
    /// Refuses a text that is out of its bounds.
    /// @return whether it is.
    bool RefuseOutOfBounds();

    /// Gives the field the focus, with its whole text selected.
    void SelectAllText();

    /// Runs the check; true if the focus has to stay.
    bool HoldsFocus();
    /// Whether the user has entered the field and not left it.
    [[nodiscard]] bool IsAtHand() const { return m_atHand && isVisible() && isEnabled(); }
    /// Leaves a field at hand that has not got the focus, behind its check.
    void Leave();

  public slots:  // NOLINT(readability-redundant-access-specifiers): what the toolkit invokes by name
    /// Puts the clipboard's text in, as if it were typed, or says why not.
    void paste();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] bool Refuses(char32_t key) const;
    /// Whether the filter takes each character of a text in turn, in place of what is selected.
    [[nodiscard]] bool TakesAll(const std::string& text) const;
    [[nodiscard]] QString TextBefore() const;
    /// Puts a text in that comes from elsewhere, in place of what is selected.
    void TakeText(const QString& text);
    void ApplyColours();

    PlatformServices* m_platform;
    KeyFilter m_filter;
    std::optional<NumberBounds> m_bounds;
    std::function<bool()> m_holds;
    std::function<void()> m_left;
    std::function<void()> m_entered;
    FieldError m_error;
    bool m_checked = false;
    bool m_atHand = false;
    bool m_edited = false;  ///< the change of the text at hand is the user's, who has been heard
    bool m_applying = false;
};

/// The filter of each kind of number.
namespace key_filters {
/// Digits and one decimal separator of the user's locale.
[[nodiscard]] EntryField::KeyFilter Numeric();
[[nodiscard]] EntryField::KeyFilter Digits();
/// Another filter, for texts of at most so many characters.
[[nodiscard]] EntryField::KeyFilter UpTo(std::size_t most, EntryField::KeyFilter filter);
/// Digits, at most a number of them.
[[nodiscard]] EntryField::KeyFilter DigitsUpTo(std::size_t most);
/// Digits without a leading zero.
[[nodiscard]] EntryField::KeyFilter NonZeroDigits();
/// Every key, as a number with a sign wants it; what is pasted has to be a number.
[[nodiscard]] EntryField::KeyFilter Signed();
}  // namespace key_filters

/// Gives what is disabled the grey ground of a field that does not apply; a dark theme keeps its own.
void GreyDisabled(QPalette& colours, QPalette::ColorRole ground);

/// The common check of numeric fields: shows or clears the error, true if the text is bad.
bool ValidateNumericText(EntryField& field);

}  // namespace genvara
