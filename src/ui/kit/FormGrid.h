#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QString>

class QDialogButtonBox;
class QGroupBox;
class QPushButton;

namespace genvara {

/// Distances that all windows share [pixels].
namespace metrics {
inline constexpr int kMargin = 16;
inline constexpr int kGap = 8;
}  // namespace metrics

/// A text in the lighter tone of units and ranges, in any theme; or in the ordinary one, where it may be
/// both.
class NoteLabel final : public QLabel {
    Q_OBJECT

  public:
    explicit NoteLabel(const QString& text);

    void Pale(bool pale);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void ApplyColours();

    bool m_applying = false;
    bool m_pale = true;
};

/// Labels in one column, fields in one, units and ranges behind them in a lighter tone.
class FormGrid : public QGridLayout {
    Q_OBJECT

  public:
    explicit FormGrid(QWidget* parent = nullptr);

    /// A row of a labelled field; the field takes the label's text as its accessible name.
    /// @param caption with its mnemonic, if any.
    QLabel* AddField(const QString& labelName, const QString& caption, QWidget* field,
                     QWidget* behind = nullptr);
    /// A row of a field behind a widget that is its caption, as a check box is.
    void AddRow(QWidget* caption, QWidget* field, QWidget* behind = nullptr);
    /// A row of a widget that brings its own caption, over the whole width.
    void AddWide(QWidget* widget);

    /// A text in the lighter tone of units and ranges.
    static QLabel* MakeNote(const QString& name, const QString& text = {});
};

/// A number field with its arrows, and a text behind them, as one widget.
QWidget* Beside(QWidget* field, QWidget* arrows, QWidget* note = nullptr);

/// Width of a field that holds texts of so many digits.
void SetDigits(QWidget& field, int digits);

/// OK and Cancel in the desktop's order, named `cmdOK` and `cmdCancel`. Cancel leaves unchecked.
struct OkCancel {
    QDialogButtonBox* box;
    QPushButton* ok;
    QPushButton* cancel;
};
[[nodiscard]] OkCancel MakeOkCancel();

}  // namespace genvara
