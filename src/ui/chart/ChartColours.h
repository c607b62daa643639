#pragma once

#include <QColor>
#include <QPalette>

namespace genvara {

/// The colours of charts and of bars in cells. The five that carry a meaning are told apart by colour-blind
/// readers, and none of them carries it alone.
struct ChartColours {
    QColor ground;
    QColor text;
    QColor faint;  ///< labels of axes
    QColor grid;
    QColor value;     ///< what is needed
    QColor fails;     ///< what is needed and not there; hatched as well
    QColor limit;     ///< what is there
    QColor other;     ///< what is only mentioned
    QColor selected;  ///< what has been chosen
    bool isDark = false;
};

/// Colours on the grounds of lists, light or dark as the palette is.
[[nodiscard]] ChartColours ColoursOf(const QPalette& palette);
/// Colours on paper.
[[nodiscard]] ChartColours ColoursOnPaper();

/// The colour of a map's cell: from pale to deep, as the share goes from 0 to 1.
[[nodiscard]] QColor MapColour(const ChartColours& colours, double share);
/// Black or white, whichever is read more easily on a ground.
[[nodiscard]] QColor TextOn(const QColor& ground);

}  // namespace genvara
