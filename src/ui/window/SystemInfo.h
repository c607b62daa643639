#pragma once

#include <string>

#include "clsTRX_Registry.h"

namespace genvara {

/// A value of the settings store as text; an integer in hexadecimal with the prefix "&h".
/// @return false if there is none.
bool GetKeyValue(clsTRX_Registry& registry, const std::string& key, const std::string& name,
                 std::string& value);

/// Command line of the program that shows the system's information: the one that the settings store names, or
/// one of those that desktops bring along; empty if there is none.
[[nodiscard]] std::string FindSystemInfo(clsTRX_Registry& registry);

}  // namespace genvara
