#pragma once

#include <array>
#include <cstddef>

namespace genvara {

/// Figures of a set that no load step changes. "Site" figures are those of all the sets in parallel; the
/// one-step capability and the frequency dip stay those of one set, however many share the load.
struct Candidate {
    double nominalRating = 0.0;      ///< kW, one set
    double deratedRating = 0.0;      ///< kW, one set
    double startKVA35 = 0.0;         ///< kVA that start at a dip of 35 percent, one set
    double siteRating = 0.0;         ///< kW
    double siteStartKVA35 = 0.0;     ///< kVA that start at a dip of 35 percent
    double siteStartingPower = 0.0;  ///< kW
    double maxLoadKW = 0.0;          ///< kW that the user's most loading allows
    double phaseRating = 0.0;        ///< kW on one phase
    double baseFreqDipKW = 0.0;      ///< kW; 0 or less where there is no frequency dip data
    double baseFreqDip = 0.0;        ///< percent
    double expC = 0.0;

    bool hasDistortion = false;       ///< whether its alternator's data allow distortion to be worked out
    double generatorPower = 0.0;      ///< kW base of the impedance, of all sets
    double generatorImpedance = 0.0;  ///< per unit, at the site's voltage
    std::size_t alternator = 0;       ///< position among the alternators of the run
};

/// What one load step does to a candidate.
struct StepOutcome {
    double freqDip = 0.0;                ///< percent
    double voltDip = 0.0;                ///< percent
    std::array<double, 3> distortion{};  ///< percent, A to C
};

}  // namespace genvara
