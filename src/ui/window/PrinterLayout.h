#pragma once

#include <QPageLayout>

#include "PrintSetup.h"

namespace genvara {

/// Paper and margins as the desktop's print dialogs have them.
[[nodiscard]] QPageLayout PrinterLayout(const PrintSetup& setup);

/// Takes paper and margins over from a print dialog, unless reports cannot be printed with them.
/// @param before what the dialog began with: a length that it left alone keeps its twips.
void TakeLayout(PrintSetup& setup, const QPageLayout& before, const QPageLayout& after);

}  // namespace genvara
