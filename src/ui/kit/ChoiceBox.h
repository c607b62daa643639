#pragma once

#include <QComboBox>
#include <cstdint>
#include <optional>

#include "FieldError.h"

namespace genvara {

/// A drop-down list whose rows carry a code. A row that the program selects counts as a click, like one that
/// the user picks; the wheel changes nothing while the list has not the focus.
class ChoiceBox : public QComboBox {
    Q_OBJECT

  public:
    explicit ChoiceBox(const QString& name, QWidget* parent = nullptr);

    void AddRow(const QString& text, std::int32_t code = 0);
    /// Selects a row and clicks it; -1 selects nothing.
    void SelectRow(int row);
    /// Selects the row of a code and clicks it; a code that no row has leaves the selection.
    void SelectCode(std::int32_t code);
    /// Code of the selected row.
    [[nodiscard]] std::optional<std::int32_t> Code() const;

    /// Whether the list shows its error.
    [[nodiscard]] bool InError() const noexcept { return m_error.IsShown(); }
    /// Shows the light red ground of an error, and the sentence beside the list; a selection takes both away.
    void ShowError(const QString& sentence);
    void ClearError();

  signals:
    void Clicked(int row);
    void Entered();

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void ApplyColours();

    FieldError m_error;
    bool m_applying = false;
};

}  // namespace genvara
