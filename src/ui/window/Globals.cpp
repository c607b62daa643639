#include "Globals.h"

namespace genvara {

CApplication* g_App = nullptr;
bool g_ProjectDirty = false;

}  // namespace genvara
