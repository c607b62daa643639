#pragma once

#include <fmt/format.h>

#include <string>

#include "CPwrSys.h"

namespace genvara {

/// The warning of a site whose harmonic limit nothing can be held against; empty for any other.
[[nodiscard]] inline std::string DistortionWarning(const std::string& file, const CPwrSys& site) {
    if (!site.MaxHarmonicsEnabled() || HasDistortionModel(site.ConnectCode())) {
        return {};
    }
    return fmt::format("{}: warning: {}; the limit of {} % was not tested.", file, kNoDistortionFigures,
                       site.MaxHarmonics());
}

}  // namespace genvara
