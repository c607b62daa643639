#pragma once

#include <QColor>
#include <QPalette>

/// Colours that hold in light and dark themes alike, made from the theme's own.
namespace genvara::theme {

[[nodiscard]] bool IsDark(const QPalette& palette);

/// Contrast of two colours, 1 to 21, as the Web Content Accessibility Guidelines 2.1 define it.
[[nodiscard]] double Contrast(const QColor& one, const QColor& other);

/// Text in a lighter tone than the ordinary one, that is still read with ease.
[[nodiscard]] QColor LighterText(const QPalette& palette);

/// Outline of boxes to tick and of option buttons, that is seen while they are off.
[[nodiscard]] QColor IndicatorOutline(const QPalette& palette);

/// Ground of the sentence beside a field, and the text on it.
[[nodiscard]] QColor NoteGround(const QPalette& palette);
[[nodiscard]] QColor NoteText(const QPalette& palette);

}  // namespace genvara::theme
