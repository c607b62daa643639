#pragma once

#include <cstdint>
#include <string>

namespace genvara {

/// One entry of the side bar.
struct CBarItem {
    std::string Title;
    int IconIndex = 0;
    std::string Key;
    std::int32_t RaiseValue = 0;
};

}  // namespace genvara
