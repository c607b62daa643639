#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace genvara {

/// Requirements of the site that the tests of a step ask for, read once a run.
struct SiteRequirements {
    double gensets = 1.0;  ///< sets in parallel
    double phases = 3.0;   ///< 1 or 3
    double voltage = 0.0;  ///< line-to-line volts
    std::int32_t connectCode = 0;
    bool maxFreqDipEnabled = false;
    double maxFreqDip = 0.0;  ///< percent
    bool maxHarmonicsEnabled = false;
    double maxHarmonics = 0.0;     ///< percent
    std::int32_t minLoading = 0;   ///< percent of the site rating
    std::int32_t maxLoading = 0;   ///< percent of the site rating
    bool distortionValid = false;  ///< whether distortion is worked out for the connection at all
};

/// Figures of a set that no load step changes. "Site" figures are those of all the sets in parallel; the
/// one-step capability and the frequency dip stay those of one set, however many share the load.
struct Candidate {
    double nominalRating = 0.0;      ///< kW, one set
    double deratedRating = 0.0;      ///< kW, one set
    double siteRating = 0.0;         ///< kW
    double siteStartKVA35 = 0.0;     ///< kVA that start at a dip of 35 percent
    double siteStartingPower = 0.0;  ///< kW
    double maxLoadKW = 0.0;          ///< kW that the user's most loading allows
    double phaseRating = 0.0;        ///< kW on one phase
    double baseFreqDipKW = 0.0;      ///< kW; 0 or less where there is no frequency dip data
    double baseFreqDip = 0.0;        ///< percent
    double expC = 0.0;

    bool hasDistortion = false;  ///< whether its alternator's data allow distortion to be worked out
};

/// What one load step does to a candidate.
struct StepOutcome {
    double freqDip = 0.0;                ///< percent
    double voltDip = 0.0;                ///< percent
    std::array<double, 3> distortion{};  ///< percent, A to C
};

}  // namespace genvara
