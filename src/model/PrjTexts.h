#pragma once

#include <cstddef>

#include "ProjectModel.h"

namespace genvara {

/// Gives the texts of a project typographic quotes in place of double quotes, which no text of a `.prj` can
/// hold. Nothing else of the project changes.
/// @return the number of texts that changed.
std::size_t ReplaceDoubleQuotes(CProject& project, CLoadProfile& profile);

}  // namespace genvara
