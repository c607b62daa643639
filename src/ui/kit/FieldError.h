#pragma once

#include <QLabel>
#include <QPointer>

namespace genvara {

/// A sentence that hangs below a field, over whatever stands there, so that nothing moves when it comes;
/// above it where it would lie over a button that ends the dialog. One window shows one at a time. A click
/// takes it away.
class FieldNote final : public QLabel {
    Q_OBJECT

  public:
    /// Shows a sentence below a field.
    static FieldNote* ShowBelow(QWidget& field, const QString& sentence);

    [[nodiscard]] const QWidget* Field() const noexcept { return m_field; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    explicit FieldNote(QWidget& field);
    void Place();
    [[nodiscard]] bool HasRoomAt(int top) const;

    QWidget* m_field;
};

/// The error of an entry control: whether it is shown, and its sentence as note, status tip, tool tip and
/// description for readers. The ground and the outline are the control's to draw.
class FieldError {
  public:
    explicit FieldError(QWidget& field) : m_field(&field) {}

    [[nodiscard]] bool IsShown() const noexcept { return m_shown; }
    void Show(const QString& sentence);
    void Clear();

    /// Says something that is no error of what the control holds.
    void Say(const QString& sentence);
    /// Takes the sentence out of the way, as the user goes on.
    void Hide();
    /// Shows the sentence of an error that stands, as the user comes back.
    void Recall();

    /// Draws the outline of an error around the control.
    void PaintOutline() const;
    /// The ground of an error.
    static constexpr QColor kGround{0xFF, 0x80, 0x80};

  private:
    QWidget* m_field;
    bool m_shown = false;
    QString m_sentence;
    QString m_ownToolTip;  ///< shown while there is no error
    QPointer<FieldNote> m_note;
};

}  // namespace genvara
