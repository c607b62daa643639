#pragma once

#include <QLineEdit>
#include <cstddef>
#include <functional>
#include <string>

#include "KeyFilters.h"
#include "PlatformServices.h"

namespace genvara {

/// A text box that takes only the keys of its filter, is checked before the focus leaves it, and shows its
/// error by ground, outline and status tip.
///
/// The check runs when the user goes elsewhere in the window, by mouse, tab or shortcut; not where he presses
/// a button that leaves unchecked (`LeavesUnchecked`), Enter, or turns to another window.
class EntryField : public QLineEdit {
    Q_OBJECT

  public:
    /// Judges a typed character, given the text and how much of it is selected.
    using KeyFilter = std::function<KeyVerdict(const std::string& text, std::size_t selected, char32_t key)>;

    EntryField(PlatformServices& platform, const QString& name, QWidget* parent = nullptr);

    void Filter(KeyFilter filter) { m_filter = std::move(filter); }
    /// @param holds true if the text is bad and the focus has to stay.
    void CheckBeforeLeaving(std::function<bool()> holds) { m_holds = std::move(holds); }
    /// Runs when the focus has left, behind the check.
    void OnLeft(std::function<void()> left) { m_left = std::move(left); }
    /// Runs when the focus has come.
    void OnEntered(std::function<void()> entered) { m_entered = std::move(entered); }

    [[nodiscard]] std::string Content() const { return text().toStdString(); }
    void Content(const std::string& text) { setText(QString::fromStdString(text)); }

    /// Whether the field shows its error.
    [[nodiscard]] bool InError() const noexcept { return m_inError; }
    /// Shows the light red ground of an error, and the sentence as status tip.
    void ShowError(const QString& sentence = {});
    void ClearError();

    /// Gives the field the focus, with its whole text selected.
    void SelectAllText();

    /// Runs the check; true if the focus has to stay.
    bool HoldsFocus();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] bool Refuses(char32_t key) const;
    void ApplyColours();

    PlatformServices* m_platform;
    KeyFilter m_filter;
    std::function<bool()> m_holds;
    std::function<void()> m_left;
    std::function<void()> m_entered;
    bool m_inError = false;
    bool m_checked = false;
    bool m_applying = false;
    QString m_ownToolTip;  ///< shown while there is no error
};

/// Lets a button be pressed whatever the field at hand holds, as Cancel must be.
void LeavesUnchecked(QWidget& button);

/// Runs the check of the field at hand before a click on a widget is delivered; true if the click would take
/// the focus, and it has to stay.
bool FocusIsHeldFrom(const QWidget& clicked);

/// Runs the check of the field that has the focus in a window, if it is one that is checked; true if the
/// focus has to stay there.
bool FocusIsHeld(const QWidget& window);

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
}  // namespace key_filters

/// Gives what is disabled the grey ground of a field that does not apply; a dark theme keeps its own.
void GreyDisabled(QPalette& colours, QPalette::ColorRole ground);

/// The common check of numeric fields: shows or clears the error, true if the text is bad.
bool ValidateNumericText(EntryField& field);

}  // namespace genvara
