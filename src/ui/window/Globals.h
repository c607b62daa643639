#pragma once

#include "CApplication.h"

/// What the windows of the program share. Nothing below them knows these names.
namespace genvara {

/// The one application object; set by the start routine before anything else happens. The program itself
/// reads it nowhere: objects are handed what they need.
extern CApplication* g_App;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// Whether there is something that the user would be sorry to lose: set by the load entry forms and by
/// deleting a load or a step, cleared by new, open and save. Nothing else sets it.
extern bool g_ProjectDirty;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

}  // namespace genvara
