#include "SiteRequirements.h"

#include "StepDistortion.h"

namespace genvara {

SiteRequirements RequirementsOf(const CPwrSys& site, const DesignLimits& limits) {
    return {.gensets = static_cast<double>(site.GensetsInParallel()),
            .phases = static_cast<double>(site.Phases()),
            .voltage = static_cast<double>(site.Voltage()),
            .connectCode = site.ConnectCode(),
            .fuel = site.Fuel(),
            .riseDutyCode = site.RiseDutyCode(),
            .altitude = site.Altitude(),
            .ambTemp = site.AmbTemp(),
            .maxFreqDipEnabled = site.MaxFreqDipEnabled(),
            .maxFreqDip = static_cast<double>(site.MaxFreqDip()),
            .maxHarmonicsEnabled = site.MaxHarmonicsEnabled(),
            .maxHarmonics = static_cast<double>(site.MaxHarmonics()),
            .minLoading = limits.MinLoading(),
            .maxLoading = limits.MaxLoading(),
            .distortionValid = HasDistortionModel(site.ConnectCode())};
}

}  // namespace genvara
