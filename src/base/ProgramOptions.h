#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "clsTRX_Registry.h"

namespace genvara {

/// Where the user's options go as they are read and come from as they are written.
struct OptionTargets {
    std::function<void(const std::string&)> setProjectPath;
    std::function<void(bool)> setIsMetric;
    std::function<void(std::int32_t)> setMaxSetsRecommended;
    std::function<void(std::int32_t)> setMaxSetsUndersized;
    std::function<void(std::int32_t)> setMaxLoading;
    std::function<void(std::int32_t)> setMinLoading;
};

/// The values of the options, in the order in which they are stored.
struct OptionValues {
    std::string projectPath;
    bool isMetric = false;
    std::int32_t maxSetsRecommended = 0;
    std::int32_t maxSetsUndersized = 0;
    std::int32_t maxLoading = 0;  ///< percent
    std::int32_t minLoading = 0;  ///< percent
};

/// Reads the options of the key "Options" below `baseSubkey`; each goes straight to its target. A missing key
/// leaves the targets alone, and so does each value that cannot be read or that its target refuses.
void ReadOptions(clsTRX_Registry& registry, const std::string& baseSubkey, const OptionTargets& targets);

/// Writes all options, creating the key where it is missing. What cannot be written is lost silently.
void WriteOptions(clsTRX_Registry& registry, const std::string& baseSubkey, const OptionValues& values);

}  // namespace genvara
