#pragma once

#include <QCheckBox>
#include <QString>

class QLabel;

namespace genvara {

class ChoiceBox;
class FormGrid;

/// A box to tick that is never ticked while it does not apply; its tick comes back with it.
class FilterBox final : public QCheckBox {
    Q_OBJECT

  public:
    explicit FilterBox(const QString& caption) : QCheckBox(caption) {}

    /// Ticks the box, now or once it applies.
    void Tick(bool on);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    bool m_wanted = false;  ///< ticked, were it enabled
};

/// How UPSs and drives are entered that take part in the harmonic figures: the list of input stages and the
/// box for an input filter.
struct InputTypeList {
    QLabel* label = nullptr;
    ChoiceBox* types = nullptr;
    FilterBox* filter = nullptr;

    /// Enables or greys the list and its label.
    void EnableTypes(bool enabled) const;
};

/// Adds both to a form's grid; the first input stage is selected.
/// @param caption of the list.
[[nodiscard]] InputTypeList AddInputTypes(FormGrid& grid, const QString& caption,
                                          const QString& filterCaption);

}  // namespace genvara
