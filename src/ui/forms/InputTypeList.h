#pragma once

#include <QString>

class QCheckBox;
class QLabel;

namespace genvara {

class ChoiceBox;
class FormGrid;

/// How UPSs and drives are entered that take part in the harmonic figures: the list of input stages and the
/// box for an input filter.
struct InputTypeList {
    QLabel* label = nullptr;
    ChoiceBox* types = nullptr;
    QCheckBox* filter = nullptr;

    /// Enables or greys the list and its label.
    void EnableTypes(bool enabled) const;
};

/// Adds both to a form's grid; the first input stage is selected.
/// @param caption of the list.
[[nodiscard]] InputTypeList AddInputTypes(FormGrid& grid, const QString& caption,
                                          const QString& filterCaption);

}  // namespace genvara
