#pragma once

#include <cstdint>

#include "CPwrSys.h"
#include "DesignLimits.h"

namespace genvara {

/// Everything of a site and of the user's settings that decides about a set, read once a run.
struct SiteRequirements {
    double gensets = 1.0;  ///< sets in parallel
    double phases = 3.0;   ///< 1 or 3
    double voltage = 0.0;  ///< line-to-line volts
    std::int32_t connectCode = 0;
    std::int32_t fuel = 0;          ///< fuel code that the site asks for
    std::int32_t riseDutyCode = 0;  ///< column of the nominal rating
    double altitude = 0.0;          ///< m above sea level
    double ambTemp = 0.0;           ///< °C
    bool maxFreqDipEnabled = false;
    double maxFreqDip = 0.0;  ///< percent
    bool maxHarmonicsEnabled = false;
    double maxHarmonics = 0.0;     ///< percent
    std::int32_t minLoading = 0;   ///< percent of the site rating
    std::int32_t maxLoading = 0;   ///< percent of the site rating
    bool distortionValid = false;  ///< whether distortion is worked out for the connection at all

    bool operator==(const SiteRequirements&) const = default;
};

[[nodiscard]] SiteRequirements RequirementsOf(const CPwrSys& site, const DesignLimits& limits);

}  // namespace genvara
