#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace genvara {

/// The content of a profile file (sections in brackets with lines of key and value) after a key of a section
/// has taken a value. It has nothing to do with a load profile. Names do not look at case; everything else
/// stays byte for byte, the name of the key as it was written included. Of several sections or keys of a name
/// the first counts. A new line ends with CR LF, whatever the others end with.
/// @param content, section, key and value in the file's code page.
[[nodiscard]] std::string WithProfileValue(std::string content, std::string_view section,
                                           std::string_view key, std::string_view value);

}  // namespace genvara
