#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "RecoveryFiles.h"

namespace genvara {

class CDefaults;
class Catalogue;

/// What a person is told of a kept project before he decides on it.
struct KeptWords {
    std::string name;  ///< of the project; empty for none
    std::int32_t steps = 0;
    std::int32_t loads = 0;
    bool hasFile = false;                  ///< its file is there, and the differences are those from it
    std::vector<std::string> differences;  ///< as `Differences`
    std::string fault;                     ///< why it cannot be read; empty if it can
};

/// Reads a kept project, and its file, to tell of them.
[[nodiscard]] KeptWords WordsOf(const KeptProject& kept, const CDefaults& defaults, Catalogue& catalogue);

}  // namespace genvara
